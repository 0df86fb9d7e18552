#include "semantics/StatementSource.h"

#include "PrintedBy.h"
#include "model/Variable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace
{

// The CASE stands in line 5; its labels begin in column 11.
std::string MessagesOfCase(const std::string& statement)
{
    return MessagesOf("", "i : INT; j : INT; u : UINT; w : WORD; b : BOOL;", statement);
}

// One label of a generated CASE; a single value has two equal bounds.
struct TestLabel
{
    std::int64_t from;
    std::int64_t to;
    bool isRange;
};

SourceLocation PlaceOf(std::size_t position)
{
    const int line = static_cast<int>(position) + 1;
    return {line, 1, line, 2, "test.st"};
}

// A CASE statement with all the labels in one list.
std::string CheckLabels(const std::vector<TestLabel>& labels)
{
    CNorvane norvane;
    LoadTarget(norvane);
    CNode* pList = norvane.m_Nodes.MakeNode(ISV_LIST, PlaceOf(0));
    for (std::size_t i = 0; i < labels.size(); ++i) {
        CNode* pLabel = norvane.MakeInteger(labels[i].from, PlaceOf(i));
        if (labels[i].isRange) {
            CNode* pRange = norvane.m_Nodes.MakeNode(SUBRANGE_DOTS, PlaceOf(i));
            pRange->AddChild(pLabel);
            pRange->AddChild(norvane.MakeInteger(labels[i].to, PlaceOf(i)));
            pLabel = pRange;
        }
        pList->AddChild(pLabel);
    }
    CNode* pBody = norvane.m_Nodes.MakeNode(CASE_BODY_LIST, PlaceOf(0));
    pBody->AddChild(pList);
    CNode* pSelector = norvane.m_Nodes.MakeNode(IDENTIFIER, PlaceOf(0));
    pSelector->pType = norvane.m_DataTypes.FindType("INT");
    CNode* pCase = norvane.m_Nodes.MakeNode(CASE, PlaceOf(0));
    pCase->AddChild(pSelector);
    pCase->AddChild(pBody);

    return PrintedBy([&] { norvane.CheckCase(pCase); });
}

bool Holds(std::int32_t from, std::int32_t to, std::int32_t value)
{
    return from <= value && value <= to;
}

// The rule in its plain form: every label against every earlier one.
std::string ExpectMessages(const std::vector<TestLabel>& labels)
{
    struct Bounds
    {
        std::int32_t from, to;
        bool isRange;
    };
    std::vector<Bounds> earlier;
    std::string messages;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const std::int64_t low = std::min(labels[i].from, labels[i].to);
        const std::int64_t high = std::max(labels[i].from, labels[i].to);
        const Bounds label{static_cast<std::int32_t>(low & 0xFFFFFFFF), static_cast<std::int32_t>(high & 0xFFFFFFFF),
                           labels[i].isRange};
        const std::string name = label.isRange ? "case range (" + std::to_string(label.from) + "," + std::to_string(label.to) + ")"
                                               : "case value " + std::to_string(label.from);
        for (const Bounds& other : earlier) {
            bool isHit = false;
            if (!label.isRange) isHit = Holds(other.from, other.to, label.from);
            else if (!other.isRange) isHit = Holds(label.from, label.to, other.from);
            else isHit = Holds(other.from, other.to, label.from) || Holds(other.from, other.to, label.to) ||
                         Holds(label.from, label.to, other.from) || Holds(label.from, label.to, other.to);
            if (isHit) messages += "test.st(" + std::to_string(i + 1) + ",1) : error: " + name + " already used \n";
        }
        earlier.push_back(label);
    }
    return messages;
}

}   // namespace

TEST(CaseLabels, DifferentLabelsAreSilent)
{
    EXPECT_EQ(MessagesOfCase("CASE i OF 1, 2: j := 1; 3..5, 7: j := 2; -4..0: j := 3; ELSE j := 4; END_CASE;"), "");
}

TEST(CaseLabels, TheSelectorMustBeSigned)
{
    const std::string message = "test.st(5,6) : error: CASE statement needs a variable of integer type \n";
    EXPECT_EQ(MessagesOfCase("CASE u OF 1: j := 1; END_CASE;"), message);
    EXPECT_EQ(MessagesOfCase("CASE w OF 1: j := 1; END_CASE;"), message);
    EXPECT_EQ(MessagesOfCase("CASE b OF 1: j := 1; END_CASE;"), message);
    EXPECT_EQ(MessagesOfCase("CASE u OF 1: j := 1; 1: j := 2; END_CASE;"),
              message + "test.st(5,22) : error: case value 1 already used \n")
        << "the labels are checked all the same";
}

TEST(CaseLabels, ALiteralSelectorIsRefused)
{
    const std::string message = "test.st(5,6) : error: CASE statement needs a variable of integer type \n";
    EXPECT_EQ(MessagesOfCase("CASE 3 OF 1: j := 1; END_CASE;"), message);
    EXPECT_EQ(MessagesOfCase("CASE 2.5 OF 1: j := 1; 1: j := 2; END_CASE;"),
              message + "test.st(5,24) : error: case value 1 already used \n");
    EXPECT_EQ(MessagesOfCase("CASE TRUE OF 1: j := 1; END_CASE;"), message);
}

TEST(CaseLabels, AFailedSelectorEndsTheCheck)
{
    EXPECT_EQ(MessagesOfCase("CASE nope OF 1: j := 1; 1: j := 2; END_CASE;"),
              "test.st(5,6) : error: variable nope not declared\n");
}

TEST(CaseLabels, EqualValues)
{
    EXPECT_EQ(MessagesOfCase("CASE i OF 1, 1: j := 1; END_CASE;"), "test.st(5,14) : error: case value 1 already used \n");
    EXPECT_EQ(MessagesOfCase("CASE i OF 1: j := 1; 1: j := 2; END_CASE;"),
              "test.st(5,22) : error: case value 1 already used \n");
    EXPECT_EQ(MessagesOfCase("CASE i OF 1, 1, 1: j := 1; END_CASE;"),
              "test.st(5,14) : error: case value 1 already used \n"
              "test.st(5,17) : error: case value 1 already used \n"
              "test.st(5,17) : error: case value 1 already used \n")
        << "one message for each earlier label";
}

TEST(CaseLabels, RangesOverEarlierLabels)
{
    EXPECT_EQ(MessagesOfCase("CASE i OF 1,2: j := 1; 2..3: j := 2; END_CASE;"),
              "test.st(5,25) : error: case range (2,3) already used \n");
    EXPECT_EQ(MessagesOfCase("CASE i OF 1..5: j := 1; 3: j := 2; END_CASE;"),
              "test.st(5,25) : error: case value 3 already used \n");
    EXPECT_EQ(MessagesOfCase("CASE i OF 1..5: j := 1; 5..9: j := 2; END_CASE;"),
              "test.st(5,26) : error: case range (5,9) already used \n");
    EXPECT_EQ(MessagesOfCase("CASE i OF 2..3: j := 1; 1..9: j := 2; END_CASE;"),
              "test.st(5,26) : error: case range (1,9) already used \n");
    // The range behind a comma stands at the comma.
    EXPECT_EQ(MessagesOfCase("CASE i OF 1, 2, 1..2: j := 1; END_CASE;"),
              "test.st(5,15) : error: case range (1,2) already used \n"
              "test.st(5,15) : error: case range (1,2) already used \n");
}

TEST(CaseLabels, BoundsInTheWrongOrderAreExchanged)
{
    EXPECT_EQ(MessagesOfCase("CASE i OF 5..1: j := 1; 3: j := 2; END_CASE;"),
              "test.st(5,25) : error: case value 3 already used \n");
    const CompiledText text = CompileText("PROGRAM main\nVAR i, j : INT; END_VAR\n"
                                          "CASE i OF 5..1: j := 1; END_CASE;\nEND_PROGRAM\n");
    EXPECT_EQ(text.output, "");
    EXPECT_NE(text.assembler.find("\tCASER (INT) 1  5 LABEL0003\n"), std::string::npos) << text.assembler;
}

TEST(CaseLabels, OnlyTheLow32BitsCount)
{
    EXPECT_EQ(MessagesOfCase("CASE i OF 4294967297: j := 1; 1: j := 2; END_CASE;"),
              "test.st(5,31) : error: case value 1 already used \n");
    // 2^31 is the smallest number in 32 bits, and -2^31 the same.
    EXPECT_EQ(MessagesOfCase("CASE i OF 2147483648: j := 1; -2147483648: j := 2; END_CASE;"),
              "test.st(5,31) : error: case value -2147483648 already used \n");
    // 2^32 - 1 ends as -1: a range that holds nothing. Only its own bounds meet an earlier one.
    EXPECT_EQ(MessagesOfCase("CASE i OF 1: j := 1; 0..4294967295: j := 2; 0: j := 3; END_CASE;"), "");
    EXPECT_EQ(MessagesOfCase("CASE i OF -1..0: j := 1; 0..4294967295: j := 2; END_CASE;"),
              "test.st(5,27) : error: case range (0,-1) already used \n");
    EXPECT_EQ(MessagesOfCase("CASE i OF 0..4294967295: j := 1; -1..0: j := 2; END_CASE;"),
              "test.st(5,36) : error: case range (-1,0) already used \n");
}

TEST(CaseLabels, CountsAreThoseOfThePlainRule)
{
    std::mt19937 random(1);
    const auto number = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 300; ++round) {
        std::vector<TestLabel> labels;
        for (int i = 0; i < 30; ++i) {
            const std::int64_t from = number(40) - 20;
            const bool isRange = number(2) == 0;
            // Some ranges end beyond 32 bits, in front of where they begin or behind it.
            const std::int64_t to = from + number(12) + (number(3) == 0 ? (std::int64_t{1} << 32) - 6 : 0);
            labels.push_back({from, isRange ? to : from, isRange});
        }
        ASSERT_EQ(CheckLabels(labels), ExpectMessages(labels)) << "round " << round;
    }
}

TEST(CaseLabels, TheBoundsOfTheNumbersAreLabelsToo)
{
    const std::vector<TestLabel> labels = {{INT32_MIN, INT32_MIN, false}, {INT32_MAX, INT32_MAX, false},
                                           {INT32_MIN, INT32_MAX, true},  {0, 0, false},
                                           {INT64_MIN, INT64_MAX, true}};
    EXPECT_EQ(CheckLabels(labels), ExpectMessages(labels));
}

TEST(CaseLabels, ManyLabelsTakeNoTime)
{
    std::vector<TestLabel> labels;
    for (std::int64_t i = 0; i < 200000; ++i) labels.push_back({i * 4, i * 4 + i % 3, i % 3 != 0});
    labels.push_back({400005, 400007, true});   // meets the range 400004 .. 400006 only
    EXPECT_EQ(CheckLabels(labels), "test.st(200001,1) : error: case range (400005,400007) already used \n");
}

TEST(CaseLabels, LabelsTakeTheSelectorsType)
{
    CNorvane norvane;
    LoadTarget(norvane);
    const SourceLocation place = PlaceOf(0);
    CNode* pValue = norvane.MakeInteger(1, place);
    CNode* pLow = norvane.MakeInteger(9, place);
    CNode* pHigh = norvane.MakeInteger(5, place);
    CNode* pRange = norvane.MakeNode(SUBRANGE_DOTS, place, {pLow, pHigh});
    CNode* pList = norvane.AppendToList(norvane.MakeNode(ISV_LIST, place, {pValue}), pRange);
    CNode* pStatements = norvane.MakeNode(STMT_LIST, place, {norvane.MakeNode(NOP, place)});
    CNode* pBody = norvane.MakeNode(CASE_BODY_LIST, place, {pList, pStatements});
    CNode* pSelector = norvane.m_Nodes.MakeNode(IDENTIFIER, place);
    pSelector->pType = norvane.m_DataTypes.FindType("DINT");
    norvane.MakeNode(CASE, place, {pSelector, pBody});
    EXPECT_EQ(pValue->pType, pSelector->pType);
    EXPECT_EQ(pLow->pType, pSelector->pType);
    EXPECT_EQ(pHigh->pType, pSelector->pType);
    EXPECT_EQ(pRange->Child(0), pHigh);
    EXPECT_EQ(pRange->Child(1), pLow);
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 0);
}
