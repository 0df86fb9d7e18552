#include "codegen/CallTree.h"

#include "CompileText.h"

#include "files/XmlStream.h"
#include "model/Pou.h"

#include <gtest/gtest.h>

#include <deque>
#include <utility>

namespace
{

// POUs by hand, with the settings of a target without stack nodes: a call takes its locals and 4 bytes.
class CallTree : public testing::Test
{
protected:
    CPou& Function(const std::string& name, std::int32_t localSize = 0)
    {
        m_Pous.push_back(std::make_unique<CFunction>(name, SourceLocation()));
        m_Pous.back()->m_LocalSize = localSize;
        return *m_Pous.back();
    }
    CPou& Program(const std::string& name)
    {
        m_Pous.push_back(std::make_unique<CProgram>(name, SourceLocation()));
        return *m_Pous.back();
    }

    // Makes the caller's tree that many elements larger: level k of a ladder, whose two POUs call both of the level
    // below, has 2^(k+1) - 1 of them; what is left are functions that call nothing.
    void Grow(CPou& caller, std::int64_t elements)
    {
        std::vector<CPou*> left, right;
        for (int k = 0; (std::int64_t{2} << k) - 1 <= elements; ++k) {
            CPou& a = Function("l" + std::to_string(k));
            CPou& b = Function("r" + std::to_string(k));
            for (CPou* pPou : {&a, &b}) {
                if (k > 0) pPou->AddCallee(left.back());
                if (k > 0) pPou->AddCallee(right.back());
            }
            left.push_back(&a);
            right.push_back(&b);
        }
        for (std::size_t k = left.size(); k-- > 0;) {
            for (CPou* pPou : {left[k], right[k]}) {
                const std::int64_t size = (std::int64_t{2} << k) - 1;
                if (size > elements) continue;
                caller.AddCallee(pPou);
                elements -= size;
            }
        }
        for (; elements > 0; --elements) caller.AddCallee(&Function("e"));
    }

    // Two functions on each level, "a0" and "b0" on the lowest, that both call both of the level below. The top two.
    std::pair<CPou*, CPou*> Ladder(int levels)
    {
        CPou* pA = &Function("a0");
        CPou* pB = &Function("b0");
        for (int k = 1; k < levels; ++k) {
            CPou* pNextA = &Function("a" + std::to_string(k));
            CPou* pNextB = &Function("b" + std::to_string(k));
            for (CPou* pPou : {pNextA, pNextB}) {
                pPou->AddCallee(pA);
                pPou->AddCallee(pB);
            }
            pA = pNextA;
            pB = pNextB;
        }
        return {pA, pB};
    }

    std::string Excess(std::initializer_list<CPou*> programs)
    {
        CCallTree tree(m_Norvane.m_Code);
        for (const CPou* pProgram : programs) tree.Add(*pProgram);
        return tree.DescribeExcess();
    }

    CNorvane m_Norvane;
    std::deque<std::unique_ptr<CPou>> m_Pous;
};

}   // namespace

TEST_F(CallTree, WalksEachPathInOrderOfFirstCall)
{
    CPou& shared = Function("shared", 10);
    CPou& f = Function("f", 2);
    CPou& g = Function("g");
    CPou& main = Program("main");
    f.AddCallee(&shared);
    g.AddCallee(&shared);
    main.AddCallee(&f);
    main.AddCallee(&g);

    using Step = CCallTreeWalk::Step;
    std::string steps;
    CCallTreeWalk walk(m_Norvane.m_Code, main);
    for (Step step = walk.Next(); step != Step::End; step = walk.Next()) {
        steps += step == Step::Enter ? "+" : "-";
        steps += walk.GetPou().m_Name + ":" + std::to_string(walk.GetLevel()) + ":" + std::to_string(walk.GetDepth()) + " ";
    }
    EXPECT_EQ(steps, "+main:0:4 +f:1:10 +shared:2:24 -shared:2:24 -f:1:10 +g:1:8 +shared:2:22 -shared:2:22 -g:1:8 -main:0:4 ");
    EXPECT_EQ(walk.Next(), Step::End);
}

TEST_F(CallTree, CalleesMayBePassedOver)
{
    CPou& inner = Function("inner");
    CPou& f = Function("f");
    CPou& g = Function("g");
    CPou& main = Program("main");
    f.AddCallee(&inner);
    main.AddCallee(&f);
    main.AddCallee(&g);

    using Step = CCallTreeWalk::Step;
    std::string entered;
    CCallTreeWalk walk(m_Norvane.m_Code, main);
    for (Step step = walk.Next(); step != Step::End; step = walk.Next()) {
        if (step != Step::Enter) continue;
        entered += walk.GetPou().m_Name + " ";
        if (&walk.GetPou() == &f) walk.PassOver();
    }
    EXPECT_EQ(entered, "main f g ");
}

TEST_F(CallTree, SumsAndMarks)
{
    CPou& shared = Function("shared", 10);
    CPou& f = Function("f", 2);
    CPou& g = Function("g", 1);
    CPou& unused = Function("unused");
    CPou& main = Program("main");
    f.AddCallee(&shared);
    g.AddCallee(&shared);
    main.AddCallee(&f);
    main.AddCallee(&g);

    CCallTree tree(m_Norvane.m_Code);
    tree.Add(main);
    EXPECT_EQ(tree.CountElements(main), 5);
    EXPECT_EQ(tree.GetDeepest(shared), 14);
    EXPECT_EQ(tree.GetDeepest(main), 4 + 6 + 14);
    EXPECT_TRUE(shared.m_Used);
    EXPECT_TRUE(g.m_Used);
    EXPECT_FALSE(unused.m_Used);
    EXPECT_FALSE(main.m_Used);
    EXPECT_EQ(tree.DescribeExcess(), "");
}

// Against the text itself: names with entities and bytes above 0x7F, depths of several lengths.
TEST_F(CallTree, BytesAreThoseOfTheText)
{
    CPou& wide = Function("\xE4\xE9&<\"", 123456);
    CPou& f = Function("f", 93);
    CPou& main = Program("main");
    f.AddCallee(&wide);
    main.AddCallee(&f);
    main.AddCallee(&wide);

    std::string text;
    XmlStream stream(XmlStream::Form::Formatted, text, nullptr);
    stream.BeginElement("DBI");
    stream.BeginElement("CALLTREE");
    const std::size_t begin = (std::string("<DBI>\r\n\t<CALLTREE>\r\n")).size();
    CCallTreeWalk walk(m_Norvane.m_Code, main);
    for (CCallTreeWalk::Step step = walk.Next(); step != CCallTreeWalk::Step::End; step = walk.Next()) {
        if (step == CCallTreeWalk::Step::Enter) BeginCallElement(stream, walk.GetPou(), walk.GetDepth());
        else stream.EndElement();
    }
    std::int64_t bytes = 0;
    for (const char c : text.substr(begin)) bytes += static_cast<unsigned char>(c) < 0x80 ? 1 : 2;

    CCallTree tree(m_Norvane.m_Code);
    tree.Add(main);
    EXPECT_EQ(tree.CountBytes(main), bytes);
}

TEST_F(CallTree, TenMillionElementsAreTheMost)
{
    CPou& main = Program("main");
    Grow(main, g_LargestCallTreeElements - 1);
    CCallTree tree(m_Norvane.m_Code);
    tree.Add(main);
    EXPECT_EQ(tree.CountElements(main), 10000000);
    EXPECT_EQ(tree.DescribeExcess(), "");

    main.AddCallee(&Function("one"));
    EXPECT_EQ(Excess({&main}).substr(0, 79), "program main: the call tree grows to 10000001 elements, more than 10000000; its");
}

TEST_F(CallTree, ElementsOfAllProgramsCount)
{
    CPou& main = Program("main");
    CPou& second = Program("second");
    Grow(main, 5999999);
    Grow(second, 4000001);
    EXPECT_EQ(Excess({&main}), "");
    EXPECT_EQ(Excess({&second}), "");
    EXPECT_EQ(Excess({&main, &second}).substr(0, 64), "program second: the call tree grows to 10000002 elements, more t");
}

// 2^22 paths lead to each of a1 and b1, which both call two: no other pair has as many parting at it. With the two
// trees of 2^24 - 1 elements below it the program has 2^25 - 1.
TEST_F(CallTree, TheExcessNamesThePouWhereMostPathsPart)
{
    CPou& main = Program("main");
    const auto [pA, pB] = Ladder(24);
    main.AddCallee(pA);
    main.AddCallee(pB);
    EXPECT_EQ(Excess({&main}),
              "program main: the call tree grows to 33554431 elements, more than 10000000; its paths multiply in POU a1");
}

// 6,000 paths lead to a function with 2,000 callees: 1 + 6000 * (1 + 1 + 2000) elements.
TEST_F(CallTree, ManyCalleesOutdoManyPaths)
{
    CPou& wide = Function("wide");
    for (int i = 0; i < 2000; ++i) wide.AddCallee(&Function("leaf"));
    CPou& main = Program("main");
    for (int i = 0; i < 6000; ++i) {
        CPou& caller = Function("caller");
        caller.AddCallee(&wide);
        main.AddCallee(&caller);
    }
    EXPECT_EQ(Excess({&main}),
              "program main: the call tree grows to 12012001 elements, more than 10000000; its paths multiply in POU wide");
}

// 2^201 - 1 elements.
TEST_F(CallTree, WhatFitsNoNumberIsTooLarge)
{
    CPou& main = Program("main");
    const auto [pA, pB] = Ladder(200);
    main.AddCallee(pA);
    main.AddCallee(pB);
    EXPECT_EQ(Excess({&main}), "program main: the call tree grows to 1000000000000000000 or more elements, more than 10000000; "
                               "its paths multiply in POU a1");
}

// A chain of the given length below main, whose innermost function has a name of the given length; and the bytes
// of its text, line by line: tabs, tag, line end.
struct Chain
{
    std::int64_t length;
    std::size_t innermostName;

    std::int64_t CountBytes() const
    {
        const auto digits = [](std::int64_t n) { return static_cast<std::int64_t>(std::to_string(n).size()); };
        const std::int64_t tag = std::string_view("<POU name=\"\" local=\"0\" returnstackdepth=\"\">").size();
        std::int64_t bytes = 0;
        for (std::int64_t level = 0; level <= length; ++level) {
            const bool isInnermost = level == length;
            const std::int64_t name = level == 0 ? 4 : isInnermost ? static_cast<std::int64_t>(innermostName) : 1;
            bytes += 2 + level + tag + name + digits(4 * (level + 1)) + (isInnermost ? 1 : 0) + 2;
            if (!isInnermost) bytes += 2 + level + 6 + 2;
        }
        return bytes;
    }
};

TEST_F(CallTree, AGibibyteIsTheMost)
{
    Chain chain{32700, 1};
    while (Chain{chain.length + 1, 1}.CountBytes() <= g_LargestCallTreeBytes) ++chain.length;
    chain.innermostName += static_cast<std::size_t>(g_LargestCallTreeBytes - chain.CountBytes());
    ASSERT_EQ(chain.CountBytes(), std::int64_t{1} << 30);

    CPou* pLast = &Function(std::string(chain.innermostName, 'i'));
    CPou& innermost = *pLast;
    for (std::int64_t i = 1; i < chain.length; ++i) {
        CPou& next = Function("f");
        next.AddCallee(pLast);
        pLast = &next;
    }
    CPou& main = Program("main");
    main.AddCallee(pLast);
    EXPECT_EQ(Excess({&main}), "");
    innermost.m_Name = std::string(chain.innermostName + 1, 'i');
    EXPECT_EQ(Excess({&main}), "program main: the call tree grows to 1073741825 bytes, more than 1073741824; its calls are nested " +
                                   std::to_string(chain.length) + " deep, down to POU " + innermost.m_Name);
}

TEST_F(CallTree, AVeryLongChainIsToldAtOnce)
{
    CPou* pLast = &Function("f");
    for (int i = 1; i < 100000; ++i) {
        CPou& next = Function("f");
        next.AddCallee(pLast);
        pLast = &next;
    }
    CPou& main = Program("main");
    main.AddCallee(pLast);
    EXPECT_EQ(Excess({&main}), "program main: the call tree grows to " + std::to_string(Chain{100000, 1}.CountBytes()) +
                                   " bytes, more than 1073741824; its calls are nested 100000 deep, down to POU f");
}

using CallTreeDeathTest = CallTree;

TEST_F(CallTreeDeathTest, AnExcessEndsTheRun)
{
    auto pMain = std::make_unique<CProgram>("main", SourceLocation());
    m_Norvane.m_Target.LoadFromString("<T><COMPILER><TARGET><VM><PROGRAM name='main'/></VM></TARGET></COMPILER></T>");
    m_Norvane.m_Pous.LoadProgramNames();
    Grow(*pMain, g_LargestCallTreeElements);
    ASSERT_EQ(m_Norvane.m_Pous.AddPou(std::move(pMain)), 1);
    EXPECT_EXIT(m_Norvane.m_Code.AnalyseStacks(), testing::ExitedWithCode(1),
                "^program main: the call tree grows to 10000001 elements, more than 10000000; its paths multiply in POU .*\n$");
}
