#include "semantics/ExpressionFixture.h"

#include "PrintedBy.h"
#include "semantics/Wrapping.h"

#include <cmath>
#include <functional>
#include <limits>

namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

// ---- Wrapping arithmetic.

TEST(Wrapping, WrapsAtTheEnds)
{
    EXPECT_EQ(WrapAdd(highest, 1), lowest);
    EXPECT_EQ(WrapSub(lowest, 1), highest);
    EXPECT_EQ(WrapMul(highest, 2), -2);
    EXPECT_EQ(WrapNeg(lowest), lowest);
    EXPECT_EQ(WrapAbs(lowest), lowest);
    EXPECT_EQ(WrapAbs(-5), 5);
}

TEST(Wrapping, DivisionNeverTraps)
{
    EXPECT_EQ(DivideWrapping(lowest, -1), lowest);
    EXPECT_EQ(RemainderWrapping(lowest, -1), 0);
    EXPECT_EQ(DivideWrapping(5, 0), 0);
    EXPECT_EQ(RemainderWrapping(5, 0), 0);
    EXPECT_EQ(DivideWrapping(-7, 2), -3);
    EXPECT_EQ(RemainderWrapping(-7, 2), -1);
    EXPECT_EQ(RemainderWrapping(7, -2), 1);
}

TEST(Wrapping, TruncationOfRealsThatDoNotFit)
{
    EXPECT_EQ(TruncateToInt64(2.9), 2);
    EXPECT_EQ(TruncateToInt64(-2.9), -2);
    EXPECT_EQ(TruncateToInt64(-9223372036854775808.0), lowest);
    EXPECT_EQ(TruncateToInt64(9223372036854775808.0), lowest);
    EXPECT_EQ(TruncateToInt64(std::numeric_limits<double>::infinity()), lowest);
    EXPECT_EQ(TruncateToInt64(std::nan("")), lowest);
    EXPECT_EQ(TruncateToUInt32(4294967297.0), 1u);
}

// ---- Literals.

class LiteralFolding : public ExpressionFixture
{
protected:
    // The literal that a node became: "7", "2.500000", "TRUE"; "error" for an error node, "kept" otherwise.
    static std::string TextOf(const CNode* pNode)
    {
        switch (pNode->nKind) {
            case IMM_INTEGER: return std::to_string(pNode->nValue);
            case IMM_REAL: return std::to_string(pNode->GetReal());
            case TRUE: return "TRUE";
            case FALSE: return "FALSE";
            case ERROR_: return "error";
            default: return "kept";
        }
    }

    static std::string Mismatch(int op) { return "t.st(1,50) : error, mismatch, operator " + GetOperatorText(op) + "\n"; }
    static std::string NoReal(int op)
    {
        return "t.st(1,50) : error, mismatch, cannot use " + GetOperatorText(op) + " with REAL or LREAL value\n";
    }
};

static const std::string g_ByZero = "t.st(1,50) : error: division by zero\n";
static const std::string g_Quotient = "t.st(1,50) : warning, non-integer quotient cast to int, possible precision's loss\n";

TEST_F(LiteralFolding, TwoNumbers)
{
    struct Row { int op; std::string left, right, result, output; };
    const Row rows[] = {
        {'+', "2", "3", "5", ""},
        {'+', "2.5", "3.0", "5.500000", ""},
        {'+', "2", "3.0", "error", Mismatch('+')},
        {'-', "2", "3", "-1", ""},
        {'-', "2.5", "3.0", "-0.500000", ""},
        {'-', "2.5", "3", "error", Mismatch('-')},
        {'*', "4", "-3", "-12", ""},
        {'*', "2.0", "3.0", "6.000000", ""},
        {'*', "2", "3.0", "error", Mismatch('*')},
        {'/', "7", "2", "3", g_Quotient},
        {'/', "-7", "2", "-3", g_Quotient},
        {'/', "6", "2", "3", ""},
        {'/', "5", "0", "error", g_ByZero},
        {'/', "5.0", "0.0", "error", g_ByZero},
        {'/', "5.0", "2.0", "2.500000", ""},
        {'/', "5.0", "2", "error", Mismatch('/')},
        {MOD, "7", "-2", "1", ""},
        {MOD, "-7", "2", "-1", ""},
        {MOD, "7", "0", "error", g_ByZero},
        {MOD, "7.0", "2.0", "error", NoReal(MOD)},
        {MOD, "7", "2.0", "error", Mismatch(MOD)},
        {POWER, "2", "10", "1024", ""},
        {POWER, "2", "-1", "0", ""},
        {POWER, "2", "0.5", "1", ""},
        {POWER, "2.0", "2", "4.000000", ""},
        {POWER, "2.0", "0.5", "1.414214", ""},
        {AND, "12", "10", "8", ""},
        {OR, "12", "10", "14", ""},
        {XOR, "12", "10", "6", ""},
        {AND, "1", "1", "1", ""},
        {AND, "1.0", "1.0", "error", NoReal(AND)},
        {OR, "1.0", "1.0", "error", NoReal(OR)},
        {XOR, "1.0", "1.0", "error", NoReal(XOR)},
        {AND, "0", "1.0", "error", Mismatch(AND)},
        {OR, "1.0", "1", "error", Mismatch(OR)},
        {EQUAL, "2", "2", "TRUE", ""},
        {NOT_EQUAL, "2", "2", "FALSE", ""},
        {GREATER, "-1", "1", "FALSE", ""},
        {LESS, "-1", "1", "TRUE", ""},
        {GREATER_EQUAL, "2.5", "2.5", "TRUE", ""},
        {LESS_EQUAL, "2.5", "1.5", "FALSE", ""},
        {EQUAL, "1", "1.0", "kept", ""},
        {LESS, "1.0", "2", "kept", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.left + " " + GetOperatorText(row.op) + " " + row.right);
        CNode* pNode = Run([&] { return Op(row.op, row.left, row.right); });
        EXPECT_EQ(TextOf(pNode), row.result);
        EXPECT_EQ(printed, row.output);
        EXPECT_EQ(pNode->pType, nullptr);
        const bool hasChildren = row.result == "error" || row.result == "kept";
        EXPECT_EQ(pNode->GetChildCount(), hasChildren ? 2 : 0);
    }
}

TEST_F(LiteralFolding, IntegersWrapAndNeverTrap)
{
    const auto fold = [this](int op, std::int64_t a, std::int64_t b) { return Op(op, Int(a), Int(b, 20))->nValue; };
    EXPECT_EQ(fold('+', highest, 1), lowest);
    EXPECT_EQ(fold('-', lowest, 1), highest);
    EXPECT_EQ(fold('*', highest, 2), -2);
    EXPECT_EQ(fold('/', lowest, -1), lowest);
    EXPECT_EQ(fold(MOD, lowest, -1), 0);
    EXPECT_EQ(fold(POWER, 2, 64), lowest);
    EXPECT_EQ(Op(UNARY_MINUS, Int(lowest))->nValue, lowest);
    EXPECT_EQ(Op(ABS, Int(lowest))->nValue, lowest);
    EXPECT_EQ(Op(SQRT, Int(-1))->nValue, lowest);
}

TEST_F(LiteralFolding, OneNumber)
{
    struct Row { int op; std::string operand, result, output; };
    const Row rows[] = {
        {UNARY_MINUS, "5", "-5", ""}, {UNARY_MINUS, "2.5", "-2.500000", ""},
        {ABS, "-5", "5", ""},         {ABS, "-2.5", "2.500000", ""},
        {SQRT, "10", "3", ""},        {SQRT, "6.25", "2.500000", ""},
        {NOT, "0", "-1", ""},         {NOT, "1", "-2", ""},
        {NOT, "2", "-3", ""},         {NOT, "2.5", "error", NoReal(NOT)},
        {ABS, "TRUE", "kept", ""},    {UNARY_MINUS, "TRUE", "kept", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(GetOperatorText(row.op) + " " + row.operand);
        CNode* pNode = Run([&] { return Op(row.op, row.operand); });
        EXPECT_EQ(TextOf(pNode), row.result);
        EXPECT_EQ(printed, row.output);
        EXPECT_EQ(pNode->pType, nullptr);
    }
    EXPECT_TRUE(std::signbit(Op(UNARY_MINUS, Float(0.0))->GetReal()));
}

TEST_F(LiteralFolding, NotOfABooleanLiteralIsRefused)
{
    DeclareConstant("c", "BOOL", Bool(false));
    for (const std::string operand : {"TRUE", "FALSE", "c"}) {
        CNode* pNode = Run([&] { return Op(NOT, operand); });
        EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operation NOT not allowed on BOOL\n");
        EXPECT_EQ(pNode->nKind, ERROR_);
        EXPECT_EQ(pNode->GetChildCount(), 1);
    }
}

TEST_F(LiteralFolding, BooleanLiterals)
{
    struct Row { int op; std::string left, right, result; };
    const Row rows[] = {
        {AND, "TRUE", "TRUE", "TRUE"},  {AND, "TRUE", "FALSE", "FALSE"}, {OR, "FALSE", "FALSE", "FALSE"},
        {OR, "FALSE", "TRUE", "TRUE"},  {XOR, "TRUE", "TRUE", "FALSE"},  {XOR, "TRUE", "FALSE", "TRUE"},
        {AND, "1", "TRUE", "TRUE"},     {AND, "TRUE", "1", "TRUE"},      {OR, "FALSE", "0", "FALSE"},
        {XOR, "1", "FALSE", "TRUE"},    {XOR, "0", "FALSE", "FALSE"},    {AND, "0", "TRUE", "FALSE"},
        {OR, "0", "TRUE", "TRUE"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.left + " " + GetOperatorText(row.op) + " " + row.right);
        CNode* pNode = Run([&] { return Op(row.op, row.left, row.right); });
        EXPECT_EQ(TextOf(pNode), row.result);
        EXPECT_EQ(printed, "");
        EXPECT_EQ(pNode->GetChildCount(), 0);
        EXPECT_EQ(pNode->pType, nullptr);
    }
    CNode* pNode = Run([&] { return Op(AND, "2", "TRUE"); });
    EXPECT_EQ(TextOf(pNode), "kept");
    EXPECT_EQ(printed, Mismatch(AND));
}

TEST_F(LiteralFolding, LeftOperandThatSettlesDropsTheRight)
{
    Declare("b", "BOOL");
    Declare("w", "WORD");
    struct Row { int op; std::string left, right, result; };
    const Row rows[] = {
        {AND, "FALSE", "b", "FALSE"}, {AND, "0", "w", "FALSE"},    {OR, "TRUE", "b", "TRUE"},
        {OR, "1", "w", "TRUE"},       {AND, "FALSE", "5", "FALSE"}, {OR, "TRUE", "2.5", "TRUE"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.left + " " + GetOperatorText(row.op) + " " + row.right);
        CNode* pNode = Run([&] { return Op(row.op, row.left, row.right); });
        EXPECT_EQ(TextOf(pNode), row.result);
        EXPECT_EQ(NameOf(pNode->pType), "BOOL");
        EXPECT_EQ(pNode->GetChildCount(), 0);
        EXPECT_EQ(printed, "");
    }
    CNode* pNode = Run([&] { return Op(AND, Truth(false), norvane.MakeNode(FUNCTION_CALL, At(20))); });
    EXPECT_EQ(TextOf(pNode), "FALSE");

    const Row kept[] = {{AND, "b", "FALSE", "kept"}, {AND, "TRUE", "b", "kept"}, {OR, "b", "TRUE", "kept"},
                        {OR, "FALSE", "b", "kept"},  {XOR, "TRUE", "b", "kept"}, {XOR, "FALSE", "b", "kept"}};
    for (const Row& row : kept) {
        SCOPED_TRACE(row.left + " " + GetOperatorText(row.op) + " " + row.right);
        pNode = Run([&] { return Op(row.op, row.left, row.right); });
        EXPECT_EQ(TextOf(pNode), row.result);
        EXPECT_EQ(NameOf(pNode->pType), "BOOL");
        EXPECT_EQ(printed, "");
    }
}

TEST_F(LiteralFolding, ThreeNumbers)
{
    struct Row { int op; std::string a, b, c, result, output; };
    const Row rows[] = {
        {MULDIV, "7", "3", "2", "10", ""},
        {MULDIV, "7", "3", "0", "error", g_ByZero},
        {MULDIV, "7.0", "3.0", "2.0", "10.500000", ""},
        {MULDIV, "7.0", "3.0", "0.0", "error", g_ByZero},
        {MULDIV, "7", "3.0", "2", "error", Mismatch(MULDIV)},
        {LIMIT, "1", "5", "3", "3", ""},
        {LIMIT, "1", "0", "3", "1", ""},
        {LIMIT, "1", "2", "3", "2", ""},
        {LIMIT, "5", "4", "3", "3", ""},            // exchanged bounds: the upper one wins
        {LIMIT, "1.0", "5.0", "3.0", "3.000000", ""},
        {LIMIT, "1", "5.0", "3", "error", Mismatch(LIMIT)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(GetOperatorText(row.op) + " " + row.a + ", " + row.b + ", " + row.c);
        CNode* pNode = Run([&] { return Op(row.op, row.a, row.b, row.c); });
        EXPECT_EQ(TextOf(pNode), row.result);
        EXPECT_EQ(printed, row.output);
    }
    // The product wraps to -2 before it is divided.
    EXPECT_EQ(Op(MULDIV, Int(highest), Int(2, 20), Int(2, 30))->nValue, -1);
    EXPECT_EQ(Op(MULDIV, Int(lowest), Int(1, 20), Int(-1, 30))->nValue, lowest);
}

TEST_F(LiteralFolding, MinAndMax)
{
    Declare("i", "INT");
    struct Row { int op; std::vector<std::string> elements; std::string result, output; };
    const std::string count = "t.st(1,50) : error: function does not take 1 parameter\n";
    const Row rows[] = {
        {MIN, {"3", "1", "2"}, "1", ""},
        {MAX, {"3", "1", "7", "2"}, "7", ""},
        {MIN, {"-1.5", "2.5"}, "-1.500000", ""},
        {MAX, {"-1.5", "-2.5"}, "-1.500000", ""},
        {MIN, {"1", "2.0"}, "error", Mismatch(MIN)},
        {MAX, {"i", "1", "2.0"}, "error", Mismatch(MAX)},
        {MIN, {"1"}, "error", count},
        {MAX, {"i"}, "error", count},
        {MIN, {"1", "TRUE"}, "error", Mismatch(MIN)},
        {MIN, {"FALSE", "i"}, "error", Mismatch(MIN)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(GetOperatorText(row.op) + " of " + row.elements.front() + "...");
        CNode* pNode = Run([&] { return List(row.op, row.elements); });
        EXPECT_EQ(TextOf(pNode), row.result);
        EXPECT_EQ(printed, row.output);
        EXPECT_EQ(pNode->pType, nullptr);
    }
    for (const int kind : {STR_DIR, DATE_AND_TIME_DIR, DATE_DIR, TIME_DIR}) {
        CNode* pNode = Run([&] { return ListOf(MAX, {Var("i"), Leaf(kind, 20)}); });
        EXPECT_EQ(TextOf(pNode), "error");
        EXPECT_EQ(printed, Mismatch(MAX));
    }
    // A time of day passes here, and has no type that could differ.
    CNode* pNode = Run([&] { return ListOf(MAX, {Var("i"), Leaf(TIME_OF_DAY_DIR, 20)}); });
    EXPECT_EQ(TextOf(pNode), "kept");
    EXPECT_EQ(printed, "");
}

TEST_F(LiteralFolding, LiteralsOfAListMergeIntoTheFirst)
{
    for (const char* name : {"x", "y", "z"}) Declare(name, "INT");
    const CNode* pNode = List(MIN, {"x", "5", "y", "3", "z", "4"});
    const CNode* pList = pNode->Child(0);
    ASSERT_EQ(pList->GetChildCount(), 4);
    EXPECT_EQ(pList->Child(0)->GetName(), "x");
    EXPECT_EQ(pList->Child(1)->nValue, 3);
    EXPECT_EQ(pList->Child(2)->GetName(), "y");
    EXPECT_EQ(pList->Child(3)->GetName(), "z");
}

TEST_F(LiteralFolding, LongLists)
{
    std::vector<CNode*> elements;
    for (int i = 0; i < 100000; ++i) elements.push_back(Int(i));
    EXPECT_EQ(ListOf(MAX, elements)->nValue, 99999);
}

TEST_F(LiteralFolding, WhatIsNeverFolded)
{
    for (const int op : {SHL, SHR, ROL, ROR}) {
        CNode* pNode = Run([&] { return Op(op, "1", "2"); });
        EXPECT_EQ(pNode->nKind, op);
        EXPECT_EQ(pNode->GetChildCount(), 2);
    }
}

TEST_F(LiteralFolding, ErrorNodesPoisonTheirParentsSilently)
{
    CNode* pNode = Run([&] { return Op('+', Op('/', "5", "0"), Int(1, 20)); });
    EXPECT_EQ(printed, g_ByZero);
    EXPECT_TRUE(norvane.IsPoison(pNode));
}

TEST_F(LiteralFolding, FoldedConstantsLoseTheirType)
{
    DeclareConstant("c1", "DINT", Signed(2));
    DeclareConstant("c2", "DINT", Signed(3));
    Declare("i", "INT");
    CNode* pNode = Run([&] { return Op('+', Op('+', "c1", "c2"), Var("i", 20)); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(NameOf(pNode->pType), "INT");
}

TEST_F(LiteralFolding, LocationOfAFoldedNode)
{
    CNode* pA = norvane.MakeInteger(1, SourceLocation{2, 3, 2, 9, "t.st"});
    CNode* pB = norvane.MakeInteger(2, SourceLocation{4, 5, 4, 9, "t.st"});
    const CNode* pNode = Op('+', pA, pB);
    EXPECT_EQ(pNode->location.nFirstLine, 2);
    EXPECT_EQ(pNode->location.nFirstColumn, 3);
    EXPECT_EQ(pNode->location.nLastLine, 4);
    EXPECT_EQ(pNode->location.nLastColumn, 5);

    CNode* pC = norvane.MakeInteger(3, SourceLocation{6, 7, 6, 9, "t.st"});
    pNode = Op(LIMIT, Int(1), Int(2), pC);
    EXPECT_EQ(pNode->location.nFirstColumn, 10);
    EXPECT_EQ(pNode->location.nLastLine, 6);
    EXPECT_EQ(pNode->location.nLastColumn, 7);

    pNode = Op(UNARY_MINUS, Int(1));                // one operand: the operator's own
    EXPECT_EQ(pNode->location.nFirstColumn, 50);
    EXPECT_EQ(pNode->location.nLastColumn, 51);
}

// ---- Values.

class ValueFolding : public ExpressionFixture
{
protected:
    // "s7", "u7", "r2.500000", "b1"; "none" without a value.
    static std::string TextOf(const CInitValue* pValue)
    {
        if (!pValue) return "none";
        switch (pValue->m_Kind) {
            case CInitValue::Signed: return "s" + std::to_string(pValue->GetInt64());
            case CInitValue::Unsigned: return "u" + std::to_string(pValue->GetUnsigned());
            case CInitValue::Real: return "r" + std::to_string(pValue->GetDouble());
            case CInitValue::Bool: return pValue->GetBool() ? "b1" : "b0";
            default: return "other";
        }
    }

    static std::unique_ptr<CInitValue> ValueFrom(const std::string& text)
    {
        const std::string rest = text.substr(1);
        switch (text[0]) {
            case 's': return Signed(std::stoll(rest));
            case 'u': return Unsigned(static_cast<std::uint32_t>(std::stoul(rest)));
            case 'r': return Real(std::stod(rest));
            default: return Bool(rest == "1");
        }
    }

    std::string Fold(const std::function<std::unique_ptr<CInitValue>()>& action)
    {
        std::unique_ptr<CInitValue> pValue;
        printed = PrintedBy([&] { pValue = action(); });
        return TextOf(pValue.get());
    }
};

TEST_F(ValueFolding, TwoValues)
{
    struct Row { int op; std::string left, right, result, output; };
    const Row rows[] = {
        {POWER, "s2", "s10", "s1024", ""},     {POWER, "r2", "r0.5", "r1.414214", ""}, {POWER, "u2", "u33", "u0", ""},
        {MOD, "s-7", "s2", "s-1", ""},         {MOD, "u7", "u4", "u3", ""},
        {'+', "s7", "s2", "s9", ""},           {'+', "r7", "r2.5", "r9.500000", ""},
        {'+', "u4294967295", "u2", "u1", ""},  {'-', "u1", "u2", "u4294967295", ""},
        {'-', "s1", "s2", "s-1", ""},          {'-', "r1", "r2", "r-1.000000", ""},
        {'*', "s-3", "s2", "s-6", ""},         {'*', "u65536", "u65536", "u0", ""},    {'*', "r2", "r3", "r6.000000", ""},
        {'/', "s-7", "s2", "s-3", g_Quotient}, {'/', "u7", "u2", "u3", g_Quotient},    {'/', "r7", "r2", "r3.500000", ""},
        {'/', "s6", "s2", "s3", ""},           {'/', "s6", "s0", "none", ""},          {MOD, "u6", "u0", "none", ""},
        {AND, "s12", "s10", "s8", ""},         {OR, "s12", "s10", "s14", ""},          {XOR, "s12", "s10", "s6", ""},
        {AND, "u12", "u10", "u8", ""},         {OR, "u12", "u10", "u14", ""},          {XOR, "u12", "u10", "u6", ""},
        {AND, "b1", "b0", "b0", ""},           {OR, "b1", "b0", "b1", ""},             {XOR, "b1", "b1", "b0", ""},
        {EQUAL, "s2", "s2", "b1", ""},         {NOT_EQUAL, "r2", "r2", "b0", ""},      {LESS, "s-1", "s1", "b1", ""},
        {GREATER, "u4294967295", "u1", "b1", ""}, {LESS_EQUAL, "r2", "r2", "b1", ""},  {GREATER_EQUAL, "u1", "u2", "b0", ""},
        // Where a kind has no branch, the next operator that has one takes over.
        {MOD, "r7", "r2", "r9.000000", ""},    // adds
        {AND, "r2", "r2", "b1", ""},           // compares for equality, as do the next two
        {OR, "r2", "r3", "b0", ""},            {XOR, "r2", "r2", "b1", ""},
        {POWER, "b1", "b0", "b0", ""},         // ends at AND, as all arithmetic on booleans does
        {MOD, "b1", "b1", "b1", ""},           {'+', "b1", "b0", "b0", ""},            {'-', "b1", "b1", "b1", ""},
        {'*', "b0", "b1", "b0", ""},           {'/', "b1", "b1", "b1", ""},
        {EQUAL, "b1", "b1", "none", ""},       {GREATER_EQUAL, "b1", "b1", "none", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.left + " " + GetOperatorText(row.op) + " " + row.right);
        const auto pLeft = ValueFrom(row.left);
        const auto pRight = ValueFrom(row.right);
        EXPECT_EQ(Fold([&] { return norvane.FoldValues(*pLeft, *pRight, row.op, At(50)); }), row.result);
        EXPECT_EQ(printed, row.output);
    }
    EXPECT_EQ(Fold([&] { return norvane.FoldValues(*Signed(lowest), *Signed(-1), '/', At(50)); }),
              "s" + std::to_string(lowest));
    EXPECT_EQ(Fold([&] { return norvane.FoldValues(CInitValue(), *Signed(1), '+', At(50)); }), "none");
}

TEST_F(ValueFolding, ValueAndLiteral)
{
    struct Row { int op; std::string left, right, result; };
    const Row rows[] = {
        {'+', "s7", "2", "s9"},                  {'-', "s7", "2", "s5"},           {POWER, "s3", "2", "s9"},
        {MOD, "s7", "-2", "s1"},                 {AND, "s12", "10", "s8"},
        {'+', "r7", "2", "r9.000000"},           {'-', "r7", "2.5", "r4.500000"},  {'/', "r7", "2", "r3.500000"},
        {MOD, "r7", "2", "r9.000000"},           {AND, "r2", "2", "b1"},           {POWER, "r2", "3", "r8.000000"},
        {'+', "u4294967295", "2", "s4294967297"}, {'-', "u1", "2", "s-1"},         {'*', "u65536", "65536", "s4294967296"},
        {'/', "u6", "2", "s3"},                  {MOD, "u7", "4", "s3"},           {AND, "u12", "10", "s8"},
        {OR, "u12", "10", "s14"},                {XOR, "u12", "10", "s6"},         {POWER, "u3", "2", "u9"},
        {EQUAL, "u4294967295", "-1", "b0"},      {GREATER, "u1", "-1", "b1"},
        {AND, "b1", "TRUE", "b1"},               {OR, "b0", "FALSE", "b0"},        {XOR, "b1", "-2", "b0"},
        {OR, "b0", "0", "b0"},                   {EQUAL, "b1", "TRUE", "none"},    {'+', "b1", "1", "b1"},
        {POWER, "s3", "2.0", "s1"},              // a real exponent of an integer counts as 0
        {LESS, "r2", "3", "b1"},                 {'/', "s6", "0", "none"},         {MOD, "u6", "0", "none"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.left + " " + GetOperatorText(row.op) + " " + row.right);
        const auto pLeft = ValueFrom(row.left);
        const CNode* pRight = Operand(row.right, 20);
        EXPECT_EQ(Fold([&] { return norvane.FoldValueImmediate(*pLeft, *pRight, row.op, At(50)); }), row.result);
        EXPECT_EQ(printed, "");
    }
    EXPECT_EQ(Fold([&] { return norvane.FoldValueImmediate(*Unsigned(7), *Int(2), '/', At(50)); }), "s3");
    EXPECT_EQ(printed, g_Quotient);
}

TEST_F(ValueFolding, LiteralAndValue)
{
    struct Row { int op; std::string left, right, result; };
    const Row rows[] = {
        {'+', "7", "s2", "s9"},              {'-', "7", "s2", "s5"},             {'/', "6", "s2", "s3"},
        {MOD, "-7", "s2", "s-1"},            {POWER, "3", "s2", "s9"},           {LESS, "1", "s2", "b1"},
        {'-', "1.0", "r3", "r2.000000"},     // exchanged: 3 - 1
        {'/', "2.0", "r7", "r3.500000"},     // exchanged: 7 / 2
        {'+', "1.5", "r3", "r4.500000"},     {'*', "2", "r3", "r6.000000"},      {POWER, "2.0", "r3", "r8.000000"},
        {LESS, "1.0", "r3", "b1"},           {GREATER, "1.0", "r3", "b0"},       {MOD, "2", "r7", "r9.000000"},
        {'-', "1", "u2", "s-1"},             {'+', "2", "u4294967295", "s4294967297"}, {POWER, "3", "u2", "u9"},
        {GREATER, "-1", "u1", "b0"},         {AND, "TRUE", "b1", "b1"},          {XOR, "0", "b1", "b1"},
        {EQUAL, "TRUE", "b1", "none"},       {'/', "6", "s0", "none"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.left + " " + GetOperatorText(row.op) + " " + row.right);
        const CNode* pLeft = Operand(row.left, 10);
        const auto pRight = ValueFrom(row.right);
        EXPECT_EQ(Fold([&] { return norvane.FoldImmediateValue(*pLeft, *pRight, row.op, At(50)); }), row.result);
        EXPECT_EQ(printed, "");
    }
}

TEST_F(ValueFolding, OneValue)
{
    struct Row { int op; std::string value, result; };
    const Row rows[] = {
        {UNARY_MINUS, "s5", "s-5"}, {UNARY_MINUS, "u4294967295", "s-4294967295"}, {UNARY_MINUS, "r2.5", "r-2.500000"},
        {UNARY_MINUS, "b1", "b0"},  // no branch: the next one is NOT
        {NOT, "s1", "s-2"},         {NOT, "u0", "u4294967295"},                   {NOT, "b0", "b1"},
        {NOT, "r6.25", "r2.500000"}, // no branch: the next one is SQRT
        {SQRT, "s10", "s3"},        {SQRT, "u10", "u3"},                          {SQRT, "r6.25", "r2.500000"},
        {SQRT, "b1", "none"},       {ABS, "s-5", "s5"},                           {ABS, "u7", "u7"},
        {ABS, "r-2.5", "r2.500000"}, {ABS, "b1", "none"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(GetOperatorText(row.op) + " " + row.value);
        const auto pValue = ValueFrom(row.value);
        EXPECT_EQ(Fold([&] { return norvane.FoldUnaryValue(*pValue, row.op); }), row.result);
    }
}

// ---- Expressions in declarations.

class ConstantFolding : public ValueFolding
{
protected:
    ConstantFolding() { norvane.m_VarBlockFlags = InVar; }

    // What the node became: its value as above, "kept" if it was not folded.
    static std::string ResultOf(const CNode* pNode)
    {
        if (pNode->nKind != SIMPLIFIED) return "kept";
        EXPECT_EQ(pNode->GetChildCount(), 0);
        return TextOf(pNode->GetInit());
    }
};

TEST_F(ConstantFolding, OnlyInDeclarations)
{
    Declare("y", "INT", Signed(5));
    for (const int flags : {static_cast<int>(InVar), static_cast<int>(InVarGlobal), static_cast<int>(InType),
                            InVarInput | WithRetain}) {
        norvane.m_VarBlockFlags = flags;
        EXPECT_EQ(ResultOf(Op('+', "y", "1")), "s6");
    }
    for (const int flags : {0, static_cast<int>(InStruct)}) {
        norvane.m_VarBlockFlags = flags;
        EXPECT_EQ(ResultOf(Op('+', "y", "1")), "kept");
    }
}

TEST_F(ConstantFolding, TwoOperands)
{
    Declare("i", "INT", Signed(7));
    Declare("j", "INT", Signed(2));
    Declare("zero", "INT");                       // the default of its type
    Declare("u", "UINT", Unsigned(7));
    Declare("r", "REAL", Real(7.0));
    Declare("rzero", "REAL");
    Declare("b", "BOOL", Bool(true));
    Declare("w", "WORD", Unsigned(12));
    struct Row { int op; std::string left, right, result, type, output; };
    const Row rows[] = {
        {'+', "i", "j", "s9", "INT", ""},
        {'/', "i", "j", "s3", "INT", g_Quotient},
        {'/', "i", "zero", "kept", "ERROR", g_ByZero},
        {MOD, "i", "zero", "kept", "ERROR", g_ByZero},
        {'/', "i", "0", "kept", "ERROR", g_ByZero},
        {MOD, "i", "0", "kept", "ERROR", g_ByZero},
        {MOD, "u", "0", "kept", "ERROR", g_ByZero},
        {'/', "9", "zero", "kept", "ERROR", g_ByZero},
        {MOD, "9", "zero", "kept", "ERROR", g_ByZero},
        {'/', "r", "rzero", "kept", "ERROR", g_ByZero},
        {'/', "r", "0", "kept", "ERROR", g_ByZero},
        {'/', "r", "0.0", "kept", "ERROR", g_ByZero},
        {'/', "r", "2", "r3.500000", "REAL", ""},
        {MOD, "r", "2", "r9.000000", "REAL", ""},
        {MOD, "r", "0", "r7.000000", "REAL", ""},   // adds, so nothing is divided
        {'-', "9", "i", "s2", "INT", ""},
        {'+', "u", "1", "s8", "UINT", ""},
        {LESS, "i", "8", "b1", "BOOL", ""},
        {EQUAL, "i", "j", "b0", "BOOL", ""},
        {AND, "w", "10", "s8", "WORD", ""},
        {AND, "b", "TRUE", "b1", "BOOL", ""},
        {EQUAL, "b", "b", "none", "BOOL", ""},
        {POWER, "2", "j", "s4", "INT", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.left + " " + GetOperatorText(row.op) + " " + row.right);
        CNode* pNode = Run([&] { return Op(row.op, row.left, row.right); });
        EXPECT_EQ(ResultOf(pNode), row.result);
        EXPECT_EQ(NameOf(pNode->pType), row.type);
        EXPECT_EQ(printed, row.output);
    }
}

TEST_F(ConstantFolding, ConstantLeftOfARealVariableIsExchanged)
{
    DeclareConstant("c", "REAL", Real(1.0));
    Declare("y", "REAL", Real(3.0));
    EXPECT_EQ(ResultOf(Op('-', "c", "y")), "r2.000000");
    EXPECT_EQ(ResultOf(Op('-', "y", "c")), "r2.000000");
}

TEST_F(ConstantFolding, OneOperand)
{
    Declare("i", "INT", Signed(-9));
    Declare("b", "BOOL", Bool(false));
    struct Row { int op; std::string operand, result, type; };
    const Row rows[] = {
        {UNARY_MINUS, "i", "s9", "INT"}, {ABS, "i", "s9", "INT"}, {NOT, "i", "s8", "INT"}, {NOT, "b", "b1", "BOOL"},
    };
    for (const Row& row : rows) {
        const CNode* pNode = Op(row.op, row.operand);
        EXPECT_EQ(ResultOf(pNode), row.result);
        EXPECT_EQ(NameOf(pNode->pType), row.type);
    }
    EXPECT_EQ(ResultOf(Op(UNARY_MINUS, Op(ABS, "i"))), "s-9");      // a folded operand folds on

    CNode* pElement = Leaf(ARRAY_ELEMENT);
    pElement->pType = Type("INT");
    EXPECT_EQ(ResultOf(Op(UNARY_MINUS, pElement)), "kept");
}

TEST_F(ConstantFolding, ThreeOperands)
{
    Declare("i", "INT", Signed(7));
    Declare("zero", "INT", Signed(0));
    Declare("u", "UINT", Unsigned(7));
    Declare("r", "REAL", Real(7.5));
    Declare("w", "WORD", Unsigned(7));
    struct Row { int op; std::string a, b, c, result, output; };
    const Row rows[] = {
        {MULDIV, "i", "3", "2", "s10", ""},
        {MULDIV, "3", "i", "2", "s10", ""},
        {MULDIV, "i", "3", "0", "kept", g_ByZero},
        {MULDIV, "i", "3", "zero", "kept", g_ByZero},
        {MULDIV, "u", "3", "2", "s10", ""},
        {LIMIT, "1", "i", "5", "s5", ""},
        {LIMIT, "8", "i", "9", "s8", ""},
        {LIMIT, "9", "i", "3", "s9", ""},              // exchanged bounds: the lower one wins here
        {LIMIT, "0.5", "r", "5", "r5.000000", ""},
        {LIMIT, "w", "w", "w", "none", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(GetOperatorText(row.op) + " " + row.a + ", " + row.b + ", " + row.c);
        CNode* pNode = Run([&] { return Op(row.op, row.a, row.b, row.c); });
        EXPECT_EQ(ResultOf(pNode), row.result);
        EXPECT_EQ(printed, row.output);
    }
}

TEST_F(ConstantFolding, Lists)
{
    Declare("i", "DINT", Signed(7));
    Declare("j", "DINT", Signed(-3));
    Declare("huge", "DINT", Signed(5000000000));
    Declare("u", "UDINT", Unsigned(4000000000u));
    Declare("r", "REAL", Real(-2.5));
    Declare("q", "REAL", Real(-1.5));
    Declare("w", "WORD", Unsigned(7));
    struct Row { int op; std::vector<std::string> elements; std::string result, output; };
    const Row rows[] = {
        {MIN, {"i", "j"}, "s-3", ""},
        {MAX, {"i", "j", "9"}, "s9", ""},
        {MIN, {"huge", "huge"}, "s2147483647", ""},    // the start value is the smaller one
        {MAX, {"huge", "i"}, "s5000000000", ""},
        {MAX, {"u", "1"}, "s4000000000", ""},
        {MIN, {"r", "q"}, "r-2.500000", ""},
        {MAX, {"r", "q"}, "r0.000000", ""},            // the start value is the smallest positive number
        {MIN, {"r", "1"}, "kept", "t.st(1,50) : error, mismatch between REAL and INT \n"},
        {MIN, {"i", "1.5"}, "kept", "t.st(1,50) : error, mismatch between DINT and REAL \n"},
        {MAX, {"w", "w"}, "none", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(GetOperatorText(row.op) + " of " + row.elements.front() + ", " + row.elements[1]);
        CNode* pNode = Run([&] { return List(row.op, row.elements); });
        EXPECT_EQ(ResultOf(pNode), row.result);
        EXPECT_EQ(printed, row.output);
        EXPECT_EQ(norvane.IsPoison(pNode), row.result == "kept");
    }
    EXPECT_EQ(List(MAX, {"r", "q"})->GetInit()->GetDouble(), std::numeric_limits<double>::min());
}

TEST_F(ConstantFolding, PoisonAndUnknownShapesStay)
{
    Declare("i", "INT", Signed(7));
    CNode* pNode = Run([&] { return Op('+', Leaf(ERROR_), Var("i", 20)); });
    EXPECT_EQ(ResultOf(pNode), "kept");
    EXPECT_EQ(printed, "");

    CNode* pCall = Leaf(FUNCTION_CALL);
    pCall->pType = Type("INT");
    EXPECT_EQ(ResultOf(Op('+', pCall, Var("i", 20))), "kept");
    CNode* pOther = Leaf(FUNCTION_CALL);
    pOther->pType = Type("INT");
    EXPECT_EQ(ResultOf(Op(MULDIV, pOther, Var("i", 20), Int(2, 30))), "kept");
}

TEST_F(ConstantFolding, OperandWithoutAValueGivesNone)
{
    Declare("i", "INT", Signed(7));
    CNode* pUnknown = Leaf(SIMPLIFIED);
    pUnknown->pType = Type("INT");
    const CNode* pNode = Op('+', pUnknown, Var("i", 20));
    EXPECT_EQ(ResultOf(pNode), "none");
    EXPECT_EQ(NameOf(pNode->pType), "INT");
}

// ---- What the parser's own pipeline never hands on, asked of the folds themselves

class FoldShapes : public ConstantFolding
{
protected:
    CNode* Unknown(const char* type)
    {
        CNode* pNode = Leaf(SIMPLIFIED);
        pNode->pType = Type(type);
        return pNode;
    }

    CNode* Fold(int kind, std::initializer_list<CNode*> children)
    {
        CNode* pNode = norvane.m_Nodes.MakeNode(kind, At(50));
        for (CNode* pChild : children) pNode->AddChild(pChild);
        norvane.FoldConstants(pNode);
        return pNode;
    }

    const SourceLocation where = At(50);
};

// Typing refuses it of variables, so that no source comes here.
TEST_F(FoldShapes, MulDivOfReals)
{
    Declare("r", "REAL", Real(7.5));
    Declare("rzero", "REAL", Real(0.0));
    struct Row { std::string c, result, output; };
    const Row rows[] = {
        {"2.0", "r11.250000", ""},
        {"0.0", "kept", g_ByZero},
        {"rzero", "kept", g_ByZero},
        {"0", "none", ""},                             // a literal of the other class isn't tested
    };
    for (const Row& row : rows) {
        CNode* pNode = Run([&] { return Fold(MULDIV, {Var("r"), Float(3.0, 20), Operand(row.c, 30)}); });
        EXPECT_EQ(ResultOf(pNode), row.result) << row.c;
        EXPECT_EQ(printed, row.output) << row.c;
        EXPECT_EQ(norvane.IsPoison(pNode), row.result == "kept") << row.c;
    }
}

TEST_F(FoldShapes, ARealDivisorOfIntegersIsCutAndNotTested)
{
    Declare("i", "INT", Signed(7));
    EXPECT_EQ(ResultOf(Fold(MULDIV, {Var("i"), Int(3), Float(2.9)})), "s10");
    EXPECT_EQ(ResultOf(Fold(MULDIV, {Var("i"), Int(3), Float(0.9)})), "none");
}

TEST_F(FoldShapes, AnyUnknownOperandLeavesThreeWithoutValue)
{
    Declare("i", "INT", Signed(7));
    Declare("r", "REAL", Real(7.5));
    for (const int kind : {MULDIV, LIMIT}) {
        for (const char* type : {"INT", "REAL"}) {
            const char* name = type == std::string("INT") ? "i" : "r";
            EXPECT_EQ(ResultOf(Fold(kind, {Unknown(type), Var(name), Var(name)})), "none") << type;
            EXPECT_EQ(ResultOf(Fold(kind, {Var(name), Unknown(type), Var(name)})), "none") << type;
            EXPECT_EQ(ResultOf(Fold(kind, {Var(name), Var(name), Unknown(type)})), "none") << type;
        }
    }
    EXPECT_EQ(ResultOf(Fold(LIMIT, {Int(1), Int(2), Int(3)})), "none");   // no variable says of what class it is
    CNode* pUntyped = Leaf(SIMPLIFIED);
    EXPECT_EQ(ResultOf(Fold(LIMIT, {pUntyped, Int(2), Int(3)})), "none");
}

TEST_F(FoldShapes, AnyUnknownElementLeavesAListWithoutValue)
{
    Declare("i", "INT", Signed(7));
    Declare("r", "REAL", Real(7.5));
    const auto list = [this](std::initializer_list<CNode*> elements) {
        CNode* pList = norvane.m_Nodes.MakeNode(EXP_LIST, At(10));
        for (CNode* pElement : elements) pList->AddChild(pElement);
        return pList;
    };
    for (const int kind : {MIN, MAX}) {
        EXPECT_EQ(ResultOf(Fold(kind, {list({Var("i"), Unknown("INT")})})), "none");
        EXPECT_EQ(ResultOf(Fold(kind, {list({Unknown("REAL"), Var("r")})})), "none");
        EXPECT_EQ(ResultOf(Fold(kind, {list({Int(1), Int(2)})})), "none");   // none has a type
        CNode* pCall = Leaf(FUNCTION_CALL);
        pCall->pType = Type("INT");
        EXPECT_EQ(ResultOf(Fold(kind, {list({Var("i"), pCall})})), "kept");
    }
}

TEST_F(FoldShapes, AnUnknownOperandLeavesOneAndTwoWithoutValue)
{
    Declare("i", "INT", Signed(7));
    for (const int kind : {UNARY_MINUS, NOT, ABS, SQRT}) EXPECT_EQ(ResultOf(Fold(kind, {Unknown("INT")})), "none");
    EXPECT_EQ(ResultOf(Fold('+', {Var("i"), Unknown("INT")})), "none");
    EXPECT_EQ(ResultOf(Fold('+', {Unknown("INT"), Var("i")})), "none");
    EXPECT_EQ(ResultOf(Fold('+', {Int(1), Unknown("INT")})), "none");
    EXPECT_EQ(ResultOf(Fold('+', {Unknown("INT"), Int(1)})), "none");
    EXPECT_EQ(ResultOf(Fold('+', {Int(1), Int(2)})), "kept");
    EXPECT_EQ(ResultOf(Fold('+', {Var("i")})), "kept");
    EXPECT_EQ(ResultOf(Fold(ASSIGN, {Var("i"), Int(2)})), "kept");
    EXPECT_EQ(ResultOf(Fold(ERROR_, {Var("i"), Int(2)})), "kept");
}

// Behind the last operator that could be computed instead there is no value.
TEST_F(FoldShapes, OperatorsThatAKindDoesNotKnow)
{
    for (const int op : {+UNARY_MINUS, +NOT, +SQRT, +ABS, +'+'})
        EXPECT_EQ(norvane.FoldUnaryValue(CInitString(3, "abc"), op), nullptr);
    for (const CInitValue& value : {CInitValue(true), CInitValue(std::int64_t{-9}), CInitValue(9u), CInitValue(9.0)})
        EXPECT_EQ(norvane.FoldUnaryValue(value, '+'), nullptr);

    const CInitString text(3, "abc");
    const CInitValue number(std::int64_t{2});
    const CInitValue truth(true);
    EXPECT_EQ(norvane.FoldValues(text, number, '+', where), nullptr);
    EXPECT_EQ(norvane.FoldValueImmediate(text, *Int(2), '+', where), nullptr);
    EXPECT_EQ(norvane.FoldImmediateValue(*Int(2), text, '+', where), nullptr);
    EXPECT_EQ(norvane.FoldValues(truth, truth, EQUAL, where), nullptr);
    EXPECT_EQ(norvane.FoldValues(number, number, ASSIGN, where), nullptr);
    EXPECT_EQ(norvane.FoldValues(CInitValue(2u), CInitValue(2u), ASSIGN, where), nullptr);
    EXPECT_EQ(norvane.FoldValues(CInitValue(2.0), CInitValue(2.0), ASSIGN, where), nullptr);
    EXPECT_EQ(norvane.FoldValues(number, CInitValue(std::int64_t{0}), '/', where), nullptr);
    EXPECT_EQ(norvane.FoldValues(number, CInitValue(std::int64_t{0}), MOD, where), nullptr);
    EXPECT_EQ(norvane.FoldValues(CInitValue(2u), CInitValue(0u), '/', where), nullptr);
    EXPECT_EQ(norvane.FoldValues(CInitValue(2u), CInitValue(0u), MOD, where), nullptr);
    EXPECT_EQ(norvane.FoldValues(CInitValue(2.0), CInitValue(0.0), '/', where), nullptr);
}

}
