// Each kind of change between two builds.

#include "unit/report/ReportTest.h"

#include "report/BuildDiff.h"
#include "report/DiffRendering.h"

#include <algorithm>

namespace
{

// Two builds of a program whose declarations and body differ.
class CTestDiff
{
public:
    CTestDiff(const std::string& before, const std::string& after, const std::string& optionsAfter = {})
        : m_Before(before), m_After(after, optionsAfter), m_Diff(m_Before.m_Facts, m_After.m_Facts)
    {
        EXPECT_TRUE(m_Before.m_IsLoaded) << m_Before.m_Printed << m_Before.m_Error;
        EXPECT_TRUE(m_After.m_IsLoaded) << m_After.m_Printed << m_After.m_Error;
    }
    // "moves: moves from ..." of a name; "" if it doesn't change.
    std::string Tell(DiffSection section, const std::string& name) const
    {
        for (const Change& change : m_Diff.m_Changes)
            if (change.section == section && change.name == name)
                return std::string(GetEffectKey(change.effect)) + ": " + change.text;
        return {};
    }
    std::string Guess(const std::string& name) const
    {
        for (const Change& change : m_Diff.m_Changes)
            if (change.name == name) return change.guess.empty() ? "" : change.guess + ": " + change.guessReason;
        return "no change";
    }

    CTestBuild m_Before;
    CTestBuild m_After;
    CBuildDiff m_Diff;
};

}   // namespace

static std::string MakeSource(const std::string& declarations, const std::string& locals = {},
                              const std::string& body = ";")
{
    return declarations + "\nPROGRAM main\nVAR x : INT; END_VAR\n" + locals + "\nx := 1;\n" + body + "\nEND_PROGRAM\n";
}

static std::string Retain(const std::string& variables)
{
    return "VAR_GLOBAL RETAIN " + variables + " END_VAR";
}

static std::string Global(const std::string& variables)
{
    return "VAR_GLOBAL " + variables + " END_VAR";
}

TEST(ReportDiff, ARetainedValueMoves)
{
    const CTestDiff diff(MakeSource(Retain("a : INT; b : INT;")), MakeSource(Retain("n : DINT; a : INT; b : INT;")));
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "a"),
              "moves: moves from retain+0 to retain+4, where nothing lay that the build names");
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "n"), "appears: is new at retain+0 : DINT, where a, b lay");
    EXPECT_TRUE(diff.m_Diff.HasLoss(DiffSection::Retained));
    EXPECT_EQ(diff.Tell(DiffSection::Areas, "retain"), "changes: 4 to 8 bytes (+4)");
}

TEST(ReportDiff, ARetainedValueChangesItsType)
{
    const CTestDiff diff(MakeSource(Retain("a : INT; b : REAL;")), MakeSource(Retain("a : UINT; b : REAL;")));
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "a"), "changes type: changes type from INT to UINT");
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "b"), "");
    EXPECT_TRUE(diff.m_Diff.HasLoss(DiffSection::Retained));
}

TEST(ReportDiff, ARetainedValueVanishes)
{
    const CTestDiff diff(MakeSource(Retain("a : INT; b : REAL;")), MakeSource(Retain("a : INT;")));
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "b"), "vanishes: vanishes from retain+4 : REAL");
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "a"), "");
    EXPECT_TRUE(diff.m_Diff.HasLoss(DiffSection::Retained));
}

TEST(ReportDiff, AValueIsNoLongerRetained)
{
    const CTestDiff diff(MakeSource(Retain("a : INT;")), MakeSource(Global("a : INT;")));
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "a"),
              "vanishes: is no longer retained: from retain+0 : INT to global+0 : INT");
}

// A new retained value behind the others takes nothing away.
TEST(ReportDiff, ARetainedValueAppears)
{
    const CTestDiff diff(MakeSource(Retain("a : INT;")), MakeSource(Retain("a : INT; b : INT;")));
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "b"),
              "appears: is new at retain+2 : INT, where nothing lay that the build names");
    EXPECT_FALSE(diff.m_Diff.HasLoss(DiffSection::Retained));
}

TEST(ReportDiff, RetainedValuesOfAProgram)
{
    const CTestDiff diff(MakeSource("", "VAR RETAIN k : INT; END_VAR", "k := k + 1;"),
                         MakeSource("", "VAR RETAIN j : DINT; k : INT; END_VAR", "k := k + 1; j := 2;"));
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "main.k"),
              "moves: moves from retain+0 to retain+4, where nothing lay that the build names");
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "main.j"), "appears: is new at retain+0 : DINT, where main.k lay");
    EXPECT_TRUE(diff.m_Diff.HasLoss(DiffSection::Retained));
}

// Within a structure each value counts: b stays where it is, c moves.
TEST(ReportDiff, RetainedValuesWithinAStructure)
{
    const auto declare = [](const std::string& members) {
        return "TYPE s : STRUCT " + members + " END_STRUCT; END_TYPE\n" + Retain("r : s; a : ARRAY [1..2] OF s;");
    };
    const CTestDiff diff(MakeSource(declare("b : INT; c : INT;")), MakeSource(declare("b : INT; n : INT; c : INT;")));
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "r.b"), "");
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "r.c"),
              "moves: moves from retain+2 : INT to retain+4 : INT, where a lay");
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "r.n"), "appears: is new at retain+2 : INT, where r lay");
    EXPECT_EQ(diff.Tell(DiffSection::Retained, "a[2].b"),
              "moves: moves from retain+8 : INT to retain+12 : INT, where nothing lay that the build names");
    EXPECT_EQ(diff.Tell(DiffSection::Types, "s"),
              "changes type: changes: now STRUCT of 6 bytes; n is new: INT at 2; c: INT at 4, was INT at 2");
}

TEST(ReportDiff, GlobalsMoveAndVanishAndAppear)
{
    const CTestDiff diff(MakeSource(Global("a : DINT; b : INT; c : ARRAY [0..3] OF INT;")),
                         MakeSource(Global("b : INT; c : ARRAY [0..4] OF INT; d : REAL;")));
    EXPECT_EQ(diff.Tell(DiffSection::Globals, "a"), "vanishes: vanishes from global+0 : DINT");
    EXPECT_EQ(diff.Tell(DiffSection::Globals, "b"), "moves: moves from global+4 to global+0");
    EXPECT_EQ(diff.Tell(DiffSection::Globals, "c"),
              "changes type: changes type from INT[0..3] to INT[0..4] and moves from global+6 to global+2");
    EXPECT_EQ(diff.Tell(DiffSection::Globals, "d"), "appears: is new at global+12 : REAL");
    EXPECT_FALSE(diff.m_Diff.HasLoss(DiffSection::Retained));
    EXPECT_TRUE(diff.m_Diff.HasLoss(DiffSection::Globals));
    EXPECT_NE(diff.Tell(DiffSection::Checksums, "global"), "");
    EXPECT_EQ(diff.Tell(DiffSection::Checksums, "retain"), "");
}

TEST(ReportDiff, LocatedVariables)
{
    const CTestDiff diff(MakeSource(Global("a AT %QX0.3 : BOOL; b AT %IW4 : INT; c AT %MW8 : INT;")),
                         MakeSource(Global("a AT %QX0.4 : BOOL; b AT %IW4 : UINT; c AT %MW8 : INT;")));
    EXPECT_EQ(diff.Tell(DiffSection::Located, "a"), "moves: moves from 2000.3 to 2000.4");
    EXPECT_EQ(diff.Tell(DiffSection::Located, "b"), "changes type: changes type from INT to UINT");
    EXPECT_EQ(diff.Tell(DiffSection::Located, "c"), "");
    EXPECT_TRUE(diff.m_Diff.HasLoss(DiffSection::Located));
}

TEST(ReportDiff, RenamesAreGuesses)
{
    const CTestDiff diff(MakeSource(Global("a : INT; b : REAL; c : DINT;")),
                         MakeSource(Global("z : INT; c : DINT; y : REAL; ")));
    EXPECT_EQ(diff.Guess("a"), "z: same type, same place");
    EXPECT_EQ(diff.Guess("z"), "a: same type, same place");
    EXPECT_EQ(diff.Guess("b"), "y: the only one of its type that vanishes and appears");
    const std::string text = RenderTextDiff(diff.m_Diff);
    EXPECT_NE(text.find("a: vanishes from global+0 : INT (a guess: renamed to z; same type, same place)"),
              std::string::npos) << text;
    // Two that could be meant are none.
    const CTestDiff unclear(MakeSource(Global("a : INT; b : INT; c : DINT;")),
                            MakeSource(Global("c : DINT; y : INT; z : INT;")));
    EXPECT_EQ(unclear.Guess("a"), "");
    EXPECT_EQ(unclear.Guess("y"), "");
}

static std::string MakeFunction(const std::string& name, const std::string& locals, const std::string& body)
{
    return "FUNCTION " + name + " : INT\nVAR_INPUT a : INT; END_VAR\n" + locals + "\n" + body + "\n" + name +
           " := a;\nEND_FUNCTION\n";
}

TEST(ReportDiff, SizeAndStackOfPous)
{
    const CTestDiff diff(MakeSource(MakeFunction("f", "", ";"), "", "x := f(x);"),
                         MakeSource(MakeFunction("f", "VAR t : DINT; END_VAR", "t := 5;"), "", "x := f(x);"));
    // Two instructions more; result and a are 4 bytes, and t 4 more; the call adds 8.
    EXPECT_EQ(diff.Tell(DiffSection::Pous, "f"),
              "changes: instructions 6 to 8 (+2); local bytes 4 to 8 (+4); stack bytes 12 to 16 (+4)");
    EXPECT_EQ(diff.Tell(DiffSection::Stacks, "return stack of main"), "changes: 24 to 28 bytes (+4)");
    EXPECT_TRUE(diff.m_Diff.IsDeeper());
    EXPECT_EQ(diff.m_Diff.CountInstructions(diff.m_After.m_Facts) - diff.m_Diff.CountInstructions(diff.m_Before.m_Facts), 2);
    const CBuildDiff back(diff.m_After.m_Facts, diff.m_Before.m_Facts);
    EXPECT_FALSE(back.IsDeeper());
}

TEST(ReportDiff, PousAppearVanishAndAreReached)
{
    const CTestDiff diff(MakeSource(MakeFunction("f", "", ";") + MakeFunction("g", "", "a := 7;"), "", "x := f(x);"),
                         MakeSource(MakeFunction("h", "", ";") + MakeFunction("g", "", "a := 7;"), "", "x := g(h(x));"));
    EXPECT_EQ(diff.Guess("f"), "h: the same instructions");
    EXPECT_EQ(diff.Tell(DiffSection::Pous, "g"), "changes: is reached by a program now");
    EXPECT_NE(diff.Tell(DiffSection::Programs, "main"), "");
}

TEST(ReportDiff, CodeOfTheSameLength)
{
    const CTestDiff other(MakeSource("", "", "x := 5;"), MakeSource("", "", "x := 6;"));
    EXPECT_EQ(other.Tell(DiffSection::Programs, "main"), "changes: other code of the same length");
    const CTestDiff moved(MakeSource(Global("a : INT;"), "", "a := 5;"), MakeSource(Global("n : INT; a : INT;"), "", "a := 5;"));
    EXPECT_EQ(moved.Tell(DiffSection::Programs, "main"), "changes: the same code with other addresses");
}

TEST(ReportDiff, TypesAndPrograms)
{
    const std::string second = "PROGRAM second\nVAR y : INT; END_VAR\ny := 2;\nEND_PROGRAM\n";
    const CTestDiff diff(MakeSource("TYPE t : INT; END_TYPE\nTYPE u : INT; END_TYPE"),
                         MakeSource("TYPE t : DINT; END_TYPE\nTYPE v : INT; END_TYPE") + second);
    EXPECT_EQ(diff.Tell(DiffSection::Types, "t"), "changes type: changes: now DINT, 32 bits");
    EXPECT_EQ(diff.Tell(DiffSection::Types, "u"), "vanishes: vanishes: INT, 16 bits");
    EXPECT_EQ(diff.Tell(DiffSection::Types, "v"), "appears: is new: INT, 16 bits");
    EXPECT_TRUE(diff.Tell(DiffSection::Programs, "second").starts_with("appears: is new: PROGRAM, "));
}

TEST(ReportDiff, EqualBuilds)
{
    const std::string source = MakeSource(Retain("a : INT;"), "", "x := a;");
    const CTestDiff stamps(source, source, "-v 7 -n other");
    EXPECT_EQ(stamps.m_Diff.GetSamenessText(),
              "The builds are equal but for their stamps (program name, version, file time).");
    EXPECT_TRUE(stamps.m_Diff.m_Changes.empty());
    const CBuildDiff same(stamps.m_Before.m_Facts, stamps.m_Before.m_Facts);
    EXPECT_EQ(same.GetSamenessText(), "The builds are equal.");
    const CTestDiff lines(source, "\n\n" + source);
    EXPECT_EQ(lines.m_Diff.GetSamenessText(),
              "Code, places and types are equal; only lines, comments or file names differ.");
    const CTestDiff different(source, MakeSource(Retain("a : INT;"), "", "x := a + 1;"));
    EXPECT_EQ(different.m_Diff.GetSamenessText(), "");
    EXPECT_FALSE(different.m_Diff.m_Changes.empty());
}

TEST(ReportDiff, MarkdownAndJson)
{
    const CTestDiff diff(MakeSource(Retain("a_b : INT; c : INT;")), MakeSource(Retain("n : DINT; a_b : INT; c : INT;")));
    const std::string markdown = RenderMarkdownDiff(diff.m_Diff);
    EXPECT_NE(markdown.find("**Retained values are lost or misread by a download.**"), std::string::npos);
    EXPECT_NE(markdown.find("| `a_b` | moves from retain\\+0 to retain\\+4"), std::string::npos) << markdown;
    const std::string json = RenderJsonDiff(diff.m_Diff);
    EXPECT_NE(json.find("\"result\": \"different\""), std::string::npos);
    EXPECT_NE(json.find("\"effect\": \"moves\""), std::string::npos);
}
