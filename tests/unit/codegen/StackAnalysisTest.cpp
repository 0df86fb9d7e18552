#include "CompileText.h"

#include "files/XmlStream.h"
#include "frontend/Error.h"
#include "model/Pou.h"

#include <gtest/gtest.h>

namespace
{

// POUs by hand in the tables of a compiler, whose target has the given stack nodes.
class StackAnalysis : public testing::Test
{
protected:
    void SetTarget(const std::string& stacks)
    {
        m_Norvane.m_Target.LoadFromString("<T><COMPILER><TARGET><VM>" + stacks + "</VM></TARGET></COMPILER></T>");
    }

    CPou* Add(std::unique_ptr<CPou> pPou, std::int32_t localSize)
    {
        CPou* pAdded = pPou.get();
        pAdded->m_LocalSize = localSize;
        EXPECT_EQ(m_Norvane.m_Pous.AddPou(std::move(pPou)), 1);
        return pAdded;
    }
    CPou* AddFunction(const std::string& name, std::int32_t localSize)
    {
        return Add(std::make_unique<CFunction>(name, SourceLocation()), localSize);
    }
    CPou* AddProgram(const std::string& name, std::int32_t localSize)
    {
        return Add(std::make_unique<CProgram>(name, SourceLocation()), localSize);
    }

    // What the file says of the stacks, without line ends.
    std::string Walk()
    {
        testing::internal::CaptureStdout();
        m_Norvane.m_Code.AnalyseStacks();
        std::fflush(stdout);
        m_Printed = testing::internal::GetCapturedStdout();
        std::string text;
        XmlStream stream(XmlStream::Form::Compact, text, nullptr);
        stream.BeginElement("R");
        m_Norvane.m_Code.WriteCallTree(stream);
        stream.EndElement();
        return text;
    }

    int CountErrors(const std::string& text) const
    {
        int count = 0;
        for (const auto& pError : m_Norvane.m_Errors.m_ErrorList)
            if (pError->strText.find(text) != std::string::npos) ++count;
        return count;
    }
    int CountWarnings(const std::string& text) const
    {
        int count = 0;
        for (const auto& pWarning : m_Norvane.m_Errors.m_WarningList)
            if (pWarning->strText.find(text) != std::string::npos) ++count;
        return count;
    }

    CNorvane m_Norvane;
    std::string m_Printed;
};

}   // namespace

TEST_F(StackAnalysis, LocalsAreRoundedBeforeTheOverloadIsAdded)
{
    SetTarget("<PROGRAM name='main'/><RETURNSTACK size='1000' maxsize='3000' calloverload='6' align='4'/><PARAMETERSTACK size='10' maxsize='20'/>");
    m_Norvane.m_Pous.LoadProgramNames();
    AddProgram("main", 6);
    EXPECT_EQ(Walk(), "<R><CALLTREE><POU name=\"main\" local=\"6\" returnstackdepth=\"14\"/></CALLTREE>"
                      "<RETURNSTACK maxsize=\"3000\" size=\"1000\" maxdepth=\"14\" maxnesteddepth=\"14\"/>"
                      "<PARAMETERSTACK maxsize=\"20\" size=\"10\"/></R>");
    EXPECT_EQ(m_Printed, "");
}

TEST_F(StackAnalysis, TheNodesHaveDefaultsOfTheirOwn)
{
    SetTarget("<PROGRAM name='main'/><RETURNSTACK align='4'/><PARAMETERSTACK/>");
    m_Norvane.m_Pous.LoadProgramNames();
    AddProgram("main", 6);
    EXPECT_EQ(Walk(), "<R><CALLTREE><POU name=\"main\" local=\"6\" returnstackdepth=\"16\"/></CALLTREE>"
                      "<RETURNSTACK maxsize=\"2048\" size=\"1024\" maxdepth=\"16\" maxnesteddepth=\"16\"/>"
                      "<PARAMETERSTACK maxsize=\"2048\" size=\"256\"/></R>");
}

TEST_F(StackAnalysis, WithoutNodesTheInitialValuesApplyAndOptionsDoNot)
{
    SetTarget("<PROGRAM name='main'/>");
    m_Norvane.m_Pous.LoadProgramNames();
    m_Norvane.m_ReturnStackSize = 5000;
    m_Norvane.m_ParameterStackSize = 5000;
    AddProgram("main", 0);
    EXPECT_EQ(Walk(), "<R><CALLTREE><POU name=\"main\" local=\"0\" returnstackdepth=\"4\"/></CALLTREE>"
                      "<RETURNSTACK maxsize=\"2048\" size=\"1024\" maxdepth=\"4\" maxnesteddepth=\"4\"/>"
                      "<PARAMETERSTACK maxsize=\"512\" size=\"256\"/></R>");
    EXPECT_EQ(m_Norvane.m_Errors.GetErrorCount(), 0);
}

TEST_F(StackAnalysis, AnAlignmentBelowTwoRoundsNothing)
{
    for (const char* align : {"0", "-4", "1"}) {
        CNorvane norvane;
        norvane.m_Target.LoadFromString(std::string("<T><COMPILER><TARGET><VM><PROGRAM name='main'/><RETURNSTACK align='") + align +
                                        "'/></VM></TARGET></COMPILER></T>");
        norvane.m_Pous.LoadProgramNames();
        auto pProgram = std::make_unique<CProgram>("main", SourceLocation());
        pProgram->m_LocalSize = 7;
        norvane.m_Pous.AddPou(std::move(pProgram));
        norvane.m_Code.AnalyseStacks();
        std::string text;
        XmlStream stream(XmlStream::Form::Compact, text, nullptr);
        stream.BeginElement("R");
        norvane.m_Code.WriteCallTree(stream);
        EXPECT_NE(text.find("<POU name=\"main\" local=\"7\" returnstackdepth=\"15\"/>"), std::string::npos) << text;
    }
}

TEST_F(StackAnalysis, OptionsNeedAValueAboveZero)
{
    SetTarget("<RETURNSTACK size='1000'/><PARAMETERSTACK size='100'/>");
    for (const int size : {0, -3}) {
        m_Norvane.m_ReturnStackSize = size;
        m_Norvane.m_ParameterStackSize = size;
        Walk();
        EXPECT_EQ(m_Norvane.m_Code.m_ReturnStackBytes, 1000);
        EXPECT_EQ(m_Norvane.m_Code.m_ParameterStackBytes, 100);
    }
    m_Norvane.m_ReturnStackSize = 2048;
    m_Norvane.m_ParameterStackSize = 2048;
    Walk();
    EXPECT_EQ(m_Norvane.m_Code.m_ReturnStackBytes, 2048);
    EXPECT_EQ(m_Norvane.m_Code.m_ParameterStackBytes, 2048);
    EXPECT_EQ(m_Norvane.m_Errors.GetErrorCount(), 0);
}

TEST_F(StackAnalysis, ASizeAboveTheMaximumIsAnErrorAndStaysInForce)
{
    SetTarget("<PROGRAM name='main'/><RETURNSTACK maxsize='2048'/><PARAMETERSTACK maxsize='300'/>");
    m_Norvane.m_Pous.LoadProgramNames();
    m_Norvane.m_ReturnStackSize = 4096;
    m_Norvane.m_ParameterStackSize = 301;
    CPou* pFunction = AddFunction("f", 3000);
    AddProgram("main", 0)->AddCallee(pFunction);
    Walk();
    EXPECT_EQ(m_Norvane.m_Errors.GetErrorCount(), 2);
    EXPECT_EQ(CountErrors("Return stack invalid size (max size is 2048)"), 1);
    EXPECT_EQ(CountErrors("Parameter stack invalid size (max size is 300)"), 1);
    EXPECT_EQ(m_Norvane.m_Code.m_ReturnStackBytes, 4096);
}

TEST_F(StackAnalysis, EachPathHasItsElementsInOrderOfFirstCall)
{
    SetTarget("<PROGRAM name='main'/><RETURNSTACK calloverload='8'/>");
    m_Norvane.m_Pous.LoadProgramNames();
    CPou* pShared = AddFunction("shared", 10);
    CPou* pUnused = AddFunction("unused", 999);
    CPou* pF = AddFunction("f", 2);
    CPou* pBlock = Add(std::make_unique<CFunctionBlock>("block", SourceLocation()), 0);
    CPou* pMain = AddProgram("main", 4);
    pF->AddCallee(pShared);
    pBlock->AddCallee(pShared);
    pMain->AddCallee(pF);
    pMain->AddCallee(pBlock);
    // main: 4+8 = 12. f: 12+2+8 = 22, shared in it 22+10+8 = 40. block: 12+0+8 = 20, shared in it 20+18 = 38.
    EXPECT_EQ(Walk(), "<R><CALLTREE><POU name=\"main\" local=\"4\" returnstackdepth=\"12\">"
                      "<POU name=\"f\" local=\"2\" returnstackdepth=\"22\"><POU name=\"shared\" local=\"10\" returnstackdepth=\"40\"/></POU>"
                      "<POU name=\"block\" local=\"0\" returnstackdepth=\"20\"><POU name=\"shared\" local=\"10\" returnstackdepth=\"38\"/></POU>"
                      "</POU></CALLTREE>"
                      "<RETURNSTACK maxsize=\"2048\" size=\"1024\" maxdepth=\"40\" maxnesteddepth=\"40\"/>"
                      "<PARAMETERSTACK maxsize=\"512\" size=\"256\"/></R>");
    EXPECT_TRUE(pF->m_Used);
    EXPECT_TRUE(pBlock->m_Used);
    EXPECT_TRUE(pShared->m_Used);
    EXPECT_FALSE(pUnused->m_Used);
    EXPECT_FALSE(pMain->m_Used);
}

TEST_F(StackAnalysis, AnOverflowIsToldForEachPath)
{
    SetTarget("<PROGRAM name='main'/><RETURNSTACK size='100' calloverload='8' nestedprogram='False'/>");
    m_Norvane.m_Pous.LoadProgramNames();
    CPou* pDeep = AddFunction("deep", 40);
    CPou* pF = AddFunction("f", 50);
    CPou* pG = AddFunction("g", 52);
    CPou* pMain = AddProgram("main", 0);
    pF->AddCallee(pDeep);
    pG->AddCallee(pDeep);
    pMain->AddCallee(pF);
    pMain->AddCallee(pG);
    Walk();   // main 8; f 66, deep 114; g 68, deep 116
    EXPECT_EQ(m_Norvane.m_Errors.GetErrorCount(), 2);
    EXPECT_EQ(CountErrors("Return stack overflow (-14 byte in POU deep)"), 1);
    EXPECT_EQ(CountErrors("Return stack overflow (-16 byte in POU deep)"), 1);
}

TEST_F(StackAnalysis, AProgramAloneIsNotCompared)
{
    SetTarget("<PROGRAM name='main'/><RETURNSTACK size='100' nestedprogram='0'/>");
    m_Norvane.m_Pous.LoadProgramNames();
    AddProgram("main", 5000);
    Walk();
    EXPECT_EQ(m_Norvane.m_Errors.GetErrorCount(), 0);
    EXPECT_EQ(m_Norvane.m_Errors.GetWarningCount(), 0);
    EXPECT_EQ(m_Norvane.m_Code.m_MaxDepth, 5008);
}

TEST_F(StackAnalysis, NestedProgramsShareTheStack)
{
    const std::string programs = "<PROGRAM name='main'/><PROGRAM name='second'/>";
    SetTarget(programs + "<RETURNSTACK size='1024' calloverload='8' nestedprogram='true'/>");
    m_Norvane.m_Pous.LoadProgramNames();
    AddProgram("main", 592);
    AddProgram("second", 592);
    Walk();
    EXPECT_EQ(m_Norvane.m_Code.m_MaxDepth, 600);
    EXPECT_EQ(m_Norvane.m_Code.m_MaxNestedDepth, 1200);
    EXPECT_EQ(CountWarnings("Return stack overflow in nested PROGRAM (-176 byte)"), 1);
    EXPECT_EQ(m_Norvane.m_Errors.GetErrorCount(), 0);

    SetTarget(programs + "<RETURNSTACK size='1024' calloverload='8' nestedprogram='false'/>");
    Walk();
    EXPECT_EQ(m_Norvane.m_Errors.GetWarningCount(), 1);   // that of the first walk
}

// Of 2^20 paths only those below one function are too deep: the messages come in their order, and soon.
TEST_F(StackAnalysis, OnlyPathsThatOverflowAreWalked)
{
    SetTarget("<PROGRAM name='main'/><RETURNSTACK size='1000' calloverload='8' nestedprogram='0'/>");
    m_Norvane.m_Pous.LoadProgramNames();
    CPou* pSmall = AddFunction("small", 0);
    CPou* pLarge = AddFunction("large", 2000);
    CPou* pA = pSmall;
    CPou* pB = nullptr;
    for (int i = 0; i < 20; ++i) {
        CPou* pNextA = AddFunction("a" + std::to_string(i), 0);
        CPou* pNextB = AddFunction("b" + std::to_string(i), 0);
        for (CPou* pCaller : {pNextA, pNextB}) {
            pCaller->AddCallee(pA);
            if (pB) pCaller->AddCallee(pB);
        }
        pA = pNextA;
        pB = pNextB;
    }
    CPou* pFirst = AddFunction("first", 4);
    CPou* pSecond = AddFunction("second", 12);
    pFirst->AddCallee(pLarge);
    pSecond->AddCallee(pLarge);
    CPou* pMain = AddProgram("main", 0);
    for (CPou* pCallee : {pA, pFirst, pSecond}) pMain->AddCallee(pCallee);
    g_CurrentFileName = nullptr;   // messages without a position begin with its name
    Walk();                        // main 8, first 20, large in it 2028; second 28, large in it 2036
    EXPECT_EQ(m_Printed, " error: Return stack overflow (-1028 byte in POU large)\n"
                         " error: Return stack overflow (-1036 byte in POU large)\n");
}

// A negative overload makes deeper calls shallower: the deepest point is not the end of the path.
TEST_F(StackAnalysis, TheDeepestPointMayLieAboveTheEnd)
{
    SetTarget("<PROGRAM name='main'/><RETURNSTACK size='100' calloverload='-50' nestedprogram='0'/>");
    m_Norvane.m_Pous.LoadProgramNames();
    CPou* pEnd = AddFunction("end", 0);
    CPou* pMiddle = AddFunction("middle", 201);
    pMiddle->AddCallee(pEnd);
    AddProgram("main", 0)->AddCallee(pMiddle);
    Walk();   // main -50, middle 101, end 51
    EXPECT_EQ(m_Norvane.m_Code.m_MaxDepth, 101);
    EXPECT_EQ(m_Norvane.m_Errors.GetErrorCount(), 1);
    EXPECT_EQ(CountErrors("Return stack overflow (-1 byte in POU middle)"), 1);
}

// Not much longer a chain may be: in the file each level is indented by one tab more, which makes 0.4 GB of these.
TEST_F(StackAnalysis, ALongChainNeedsNoDeepStack)
{
    constexpr int length = 20000;
    SetTarget("<PROGRAM name='main'/><RETURNSTACK size='1000000' maxsize='1000000' calloverload='8'/>");
    m_Norvane.m_Pous.LoadProgramNames();
    CPou* pFirst = AddFunction("f0", 0);
    CPou* pLast = pFirst;
    for (int i = 1; i < length; ++i) {
        CPou* pNext = AddFunction("f" + std::to_string(i), 0);
        pNext->AddCallee(pLast);
        pLast = pNext;
    }
    AddProgram("main", 0)->AddCallee(pLast);
    Walk();
    EXPECT_EQ(m_Norvane.m_Code.m_MaxDepth, 160008);
    EXPECT_TRUE(pFirst->m_Used);
    EXPECT_EQ(m_Norvane.m_Errors.GetErrorCount(), 0);
}

TEST_F(StackAnalysis, StatisticsShowTheCursors)
{
    m_Norvane.m_Memory.m_GlobalSize = 1000;
    m_Norvane.m_Memory.m_GlobalBytes = 12;
    m_Norvane.m_Memory.m_GlobalBits = 7;
    m_Norvane.m_Memory.m_RetainSize = 200;
    m_Norvane.m_Memory.m_RetainBytes = 3;
    m_Norvane.m_Code.m_MaxDepth = 40;
    m_Norvane.m_Code.m_MaxNestedDepth = 80;
    EXPECT_EQ(m_Norvane.m_Code.GetStatistics(), "======== Statistics ========\n"
                                                "Global variable (1000 bytes): used 12 bytes\n"
                                                "Retain variable (200 bytes): used 3 bytes\n"
                                                "Stack (1024 bytes): max depth 40 bytes, max nested depth 80 bytes\n"
                                                "============================\n");
}
