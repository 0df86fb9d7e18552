// Stacks, POUs, messages and limits of a report.

#include "unit/report/ReportTest.h"

#include "report/HtmlReport.h"
#include "report/JsonReport.h"
#include "report/Limits.h"
#include "report/TextReport.h"
#include "report/Wording.h"

static constexpr const char* g_Calls = R"(
FUNCTION inner : INT
VAR_INPUT a : INT; END_VAR
inner := a + 1;
END_FUNCTION
FUNCTION wide : INT
VAR_INPUT a, b, c : INT; END_VAR
VAR t : ARRAY [0..9] OF INT; END_VAR
t[2] := inner(a);
wide := t[2] + b + c;
END_FUNCTION
FUNCTION nobody : INT
VAR_INPUT a : INT; END_VAR
nobody := a;
END_FUNCTION
PROGRAM main
VAR x : INT; END_VAR
x := inner(1);
x := 1 + (2 + wide(1, 2, 3) * x);
END_PROGRAM
)";

// inner: result and a, 4 bytes, with the call 12. wide: result and three inputs are 8 bytes, t takes 20: 28, with the
// call 36. main: x and __ProgramInit, 4 bytes: 12.
TEST(ReportFacts, DeepestPath)
{
    const CTestBuild build(g_Calls);
    ASSERT_TRUE(build.m_IsLoaded) << build.m_Printed << build.m_Error;
    EXPECT_EQ(build.FindPou("inner")->localBytes, 4);
    EXPECT_EQ(build.FindPou("inner")->frameBytes, 12);
    EXPECT_EQ(build.FindPou("wide")->localBytes, 28);
    EXPECT_EQ(build.FindPou("wide")->depthBytes, 48);
    EXPECT_EQ(build.FindPou("main")->depthBytes, 60);
    ASSERT_FALSE(build.m_Facts.programs.empty());
    EXPECT_EQ(GetPathText(build.m_Facts, build.m_Facts.programs[0].path), "main (12) > wide (36) > inner (12)");
    EXPECT_EQ(build.m_Facts.stacks.deepest, 60);
    EXPECT_EQ(build.FindPou("main")->callees.size(), 2u);
    EXPECT_EQ(build.FindPou("inner")->callers, 2);
}

// Heights count from the start of a POU, where its arguments are on the stack already; it takes them first. So inner
// stands at -1, and a + 1 brings it to 1. wide stands at -3, from where its sums don't come above 0. In front of its call
// main has put 1, 2 and three arguments there.
TEST(ReportFacts, HighestParameterStack)
{
    const CTestBuild build(g_Calls);
    ASSERT_TRUE(build.m_IsLoaded) << build.m_Printed << build.m_Error;
    EXPECT_EQ(build.FindPou("inner")->highestCells, 1);
    EXPECT_EQ(build.FindPou("wide")->highestCells, 0);
    EXPECT_EQ(build.FindPou("main")->highestCells, 5);
    EXPECT_EQ(build.FindPou("wide")->lowestCells, -3);
    EXPECT_EQ(build.m_Facts.stacks.highestCells, 5);
    EXPECT_TRUE(build.m_Facts.stacks.isBalanced);
    EXPECT_EQ(build.m_Facts.programs[0].cellPlace, "main.st(19)");
}

TEST(ReportFacts, UnusedPous)
{
    const CTestBuild build(g_Calls);
    ASSERT_TRUE(build.m_IsLoaded) << build.m_Printed << build.m_Error;
    const PouFacts* pNobody = build.FindPou("nobody");
    ASSERT_NE(pNobody, nullptr);
    EXPECT_FALSE(pNobody->isUsed);
    EXPECT_EQ(pNobody->instructions, 0);
    EXPECT_EQ(pNobody->localBytes, 4);
    EXPECT_EQ(GetSourceText(*pNobody), "main.st(12)");
    EXPECT_TRUE(build.FindPou("inner")->isUsed);
}

TEST(ReportFacts, AStackThatIsTooSmallIsAFinding)
{
    const CTestBuild build(g_Calls, "-ps 16");
    ASSERT_TRUE(build.m_IsLoaded) << build.m_Printed << build.m_Error;
    ASSERT_EQ(build.m_Facts.findings.size(), 1u);
    EXPECT_EQ(build.m_Facts.findings[0],
              "the parameter stack of 16 bytes is too small: 5 values of 4 bytes are on it at a time");
}

TEST(ReportFacts, Limits)
{
    const CTestBuild build(g_Calls);
    ASSERT_TRUE(build.m_IsLoaded) << build.m_Printed << build.m_Error;
    std::string error;
    const auto crosses = [&](const char* text) {
        const std::optional<Limit> limit = ParseLimit(text, error);
        EXPECT_TRUE(limit) << text << ": " << error;
        const std::optional<bool> isCrossed = limit ? IsCrossed(build.m_Facts, *limit, error) : std::nullopt;
        EXPECT_TRUE(isCrossed) << text << ": " << error;
        return isCrossed.value_or(false);
    };
    EXPECT_TRUE(crosses("stack>59"));
    EXPECT_FALSE(crosses("stack>60"));
    EXPECT_TRUE(crosses("stack>=60"));
    EXPECT_FALSE(crosses("stack > 5.9%"));       // 60 of 1024 bytes are 5.86 percent
    EXPECT_TRUE(crosses("stack>5.8%"));
    EXPECT_TRUE(crosses("nested>=60"));
    EXPECT_TRUE(crosses("parameters>19"));       // five values of four bytes
    EXPECT_FALSE(crosses("parameters>20"));
    EXPECT_FALSE(crosses("global>0"));
    EXPECT_TRUE(crosses("retain>=0%"));
    for (const char* text : {"", "retain", "retain>", "retain>x", "retain>5 bytes", "retain<5", "heap>5", "retain>-1"})
        EXPECT_FALSE(ParseLimit(text, error)) << text;

    const CTestBuild alone(g_Calls, "", /*withTarget=*/false);
    EXPECT_FALSE(IsCrossed(alone.m_Facts, *ParseLimit("retain>90%", error), error));
    EXPECT_EQ(error, "retain>90%: the size of this area stands in the target description (-i)");
    EXPECT_TRUE(IsCrossed(alone.m_Facts, *ParseLimit("stack>5%", error), error).value_or(false));
}

TEST(ReportFacts, MessagesOfTheCompiler)
{
    BuildFacts facts;
    ReadMessages("Compiling...\na.st\na.st(3,4) : error: x not found\r\na.st(4,1) : warning, y\n"
                 "a.st warning: Return stack overflow in nested PROGRAM (-2 byte)\na.st(5,1) : note N5: z\n"
                 "a.asm - 1 error(s), 2 warning(s)\n",
                 facts);
    ASSERT_EQ(facts.messages.size(), 4u);
    EXPECT_EQ(facts.messages[0].kind, MessageFacts::Error);
    EXPECT_EQ(facts.messages[0].text, "a.st(3,4) : error: x not found");
    EXPECT_EQ(facts.messages[1].kind, MessageFacts::Warning);
    EXPECT_EQ(facts.messages[2].kind, MessageFacts::Warning);
    EXPECT_EQ(facts.messages[3].kind, MessageFacts::Note);
}

TEST(ReportFacts, TextOfTheUserIsNoMarkup)
{
    BuildFacts facts;
    facts.programName = "</script><script>alert(1)</script>";
    facts.listingName = "a\"b'c<d>&.asm";
    facts.findings.push_back("<img src=x>");
    VariableFacts variable;
    variable.name = "</script><b>";
    facts.variables.push_back(variable);
    facts.messages.push_back({MessageFacts::Note, "\xFF<i>"});
    const std::string page = CHtmlReport(facts).Render();
    EXPECT_EQ(page.find("<script>alert"), std::string::npos);
    EXPECT_EQ(page.find("<img"), std::string::npos);
    EXPECT_EQ(page.find("<i>"), std::string::npos);
    EXPECT_EQ(page.find("<d>"), std::string::npos);
    EXPECT_NE(page.find("\\u003c/script>"), std::string::npos);
    std::size_t ends = 0;
    for (std::size_t at = page.find("</script>"); at != std::string::npos; at = page.find("</script>", at + 1)) ++ends;
    EXPECT_EQ(ends, 2u);   // of the facts and of the script itself
    EXPECT_NE(RenderJsonReport(facts).find("</script><b>"), std::string::npos);
}
