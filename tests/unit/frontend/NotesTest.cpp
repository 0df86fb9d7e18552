#include "frontend/Notes.h"

#include "model/Pou.h"

#include <gtest/gtest.h>

namespace
{

SourceLocation At(const char* szFile, int line, int column)
{
    SourceLocation where;
    where.nFirstLine = line;
    where.nFirstColumn = column;
    where.szFile = szFile;
    return where;
}

const std::vector<std::string> g_Files = {"b.st", "a.st"};

}   // namespace

TEST(NotesTest, StandInTheOrderOfTheSources)
{
    CNotes notes;
    notes.Add(Note::ExitOfCase, At("a.st", 1, 1));
    notes.Add(Note::ExitOfCase, At("b.st", 10, 2));
    notes.Add(Note::ExitOfCase, At("b.st", 9, 7));
    notes.Add(Note::ExitOfCase, At("b.st", 9, 6));
    notes.AddInFile(Note::PointerAlignment, "t.xml", 0, 0, "UDINT");
    const std::string exitText = " : note N24: EXIT leaves the CASE only, not the loop around it\n";
    EXPECT_EQ(notes.GetPrintedLines(g_Files),
              "t.xml : note N25: the alignment of the pointer type UDINT is below its size: function blocks reserve too "
              "little local memory\n"
              "b.st(9,6)" + exitText + "b.st(9,7)" + exitText + "b.st(10,2)" + exitText + "a.st(1,1)" + exitText);
}

TEST(NotesTest, OfUnusedFunctionsArePassedOver)
{
    CFunction used("used", {});
    CFunction unused("unused", {});
    CProgram program("main", {});
    used.m_Used = true;
    CNotes notes;
    notes.Add(Note::SingleMember, At("a.st", 1, 1), "one");
    notes.EndPou(&unused);
    notes.Add(Note::SingleMember, At("a.st", 2, 1), "two");
    notes.EndPou(&used);
    notes.Add(Note::SingleMember, At("a.st", 3, 1), "three");
    notes.EndPou(&program);
    notes.Add(Note::SingleMember, At("a.st", 4, 1), "four");
    const auto line = [](int number, const std::string& name) {
        return "a.st(" + std::to_string(number) + ",1) : note N4: function block " + name +
               " takes a word more from the stack than its caller pushes\n";
    };
    EXPECT_EQ(notes.GetPrintedLines(g_Files), line(2, "two") + line(3, "three") + line(4, "four"));
}

TEST(NotesTest, OutsideOfAnyPouCountInAnUnusedOne)
{
    CFunction unused("unused", {});
    CNotes notes;
    notes.Add(Note::ExitOfCase, At("a.st", 1, 1));
    notes.AddOutsidePou(Note::UnreachableForm, At("a.st", 2, 1), "f");
    notes.EndPou(&unused);
    EXPECT_EQ(notes.GetPrintedLines(g_Files), "a.st(2,1) : note N22: no call can reach this form of f\n");
}

TEST(NotesTest, OnePlaceDrawsTheSameNoteOnce)
{
    CNotes notes;
    notes.Add(Note::JumpWithoutLabel, At("a.st", 1, 1));
    notes.Add(Note::ExitOfCase, At("a.st", 1, 1));
    notes.Add(Note::JumpWithoutLabel, At("a.st", 1, 1));
    const std::string lines = notes.GetPrintedLines(g_Files);
    EXPECT_EQ(lines, "a.st(1,1) : note N5: a literal FALSE in front of ELSIF: the jumps behind its branches have no label\n"
                     "a.st(1,1) : note N24: EXIT leaves the CASE only, not the loop around it\n");
}

TEST(NotesTest, NamesAreExpandedAsInDiagnostics)
{
    CNotes notes;
    notes.Add(Note::ExitOfCase, At("a%%b.st", 2, 1));
    notes.Add(Note::ExitOfCase, At("a%db.st", 3, 4));
    notes.AddInFile(Note::PointerAlignment, "%d%%.xml", 0, 0, "UDINT");
    const std::string exitText = " : note N24: EXIT leaves the CASE only, not the loop around it\n";
    EXPECT_EQ(notes.GetPrintedLines({"a%%b.st", "a%db.st"}),
              "%d%.xml : note N25: the alignment of the pointer type UDINT is below its size: function blocks reserve too "
              "little local memory\n"
              "a%b.st(2,1)" + exitText + "a3b.st(4,%d)" + exitText);
}

TEST(NotesTest, AboutTheTargetAreDrawnOnceForEachSubject)
{
    CFunction unused("unused", {});
    CNotes notes;
    notes.m_TargetFile = "t.xml";
    notes.AddInTarget(Note::ProgramInCapitals, "Never");
    notes.EndPou(&unused);
    notes.AddInTarget(Note::ProgramInCapitals, "One");
    notes.AddInTarget(Note::ProgramInCapitals, "Two");
    notes.AddInTarget(Note::ProgramInCapitals, "One");
    const auto line = [](const std::string& name) {
        return "t.xml : note N14: program " + name +
               " has capitals in its name: the sources' program of this name is not found by it\n";
    };
    EXPECT_EQ(notes.GetPrintedLines(g_Files), line("One") + line("Two"));
}

TEST(NotesTest, EveryNoteHasATextAndANumberOfItsOwn)
{
    EXPECT_EQ(static_cast<int>(Note::ValueWithoutType), 1);
    EXPECT_EQ(static_cast<int>(Note::AddressIgnored), 29);
    EXPECT_EQ(static_cast<int>(Note::NotDeclared), 34);
    for (int number = 1; number <= 34; ++number) EXPECT_FALSE(CNotes::GetText(static_cast<Note>(number)).empty());
}
