#include "norvane/dap/LineTable.h"

#include "machine/MachineTest.h"

// Instructions: 0 LOCALSET, 1 and 2 of line 4, 3 and 4 of line 9, 5 and 6 of line 4 once more, 7 RTS.
static const std::string g_Body = "\tPUSH(INT)\t1\n\tPOP(INT)\n"
                                  "DBI FILE 0 LINE 6\nDBI FILE 0 LINE 9\n\tPUSH(INT)\t2\n\tPOP(INT)\n"
                                  "DBI FILE 0 LINE 4\n\tPUSH(INT)\t3\n\tPOP(INT)\n";

TEST(LineTable, FindsTheNextLineWithCode)
{
    const CTestMachine machine(MakeProgram(g_Body));
    ASSERT_TRUE(machine.m_pImage) << machine.m_Error;
    const CLineTable table(machine.m_pImage->m_Listing);
    EXPECT_EQ(table.FindLine(0, -5), 4);
    EXPECT_EQ(table.FindLine(0, 4), 4);
    EXPECT_EQ(table.FindLine(0, 5), 9);
    EXPECT_EQ(table.FindLine(0, 6), 9) << "another mark follows before any instruction";
    EXPECT_EQ(table.FindLine(0, 9), 9);
    EXPECT_EQ(table.FindLine(0, 10), -1);
    EXPECT_EQ(table.FindLine(1, 4), -1) << "another file";
}

TEST(LineTable, KnowsEachStatementOfALine)
{
    const CTestMachine machine(MakeProgram(g_Body));
    ASSERT_TRUE(machine.m_pImage) << machine.m_Error;
    const CLineTable table(machine.m_pImage->m_Listing);
    EXPECT_EQ(table.GetInstructions(0, 4), (std::vector<int>{1, 5}));
    EXPECT_EQ(table.GetInstructions(0, 9), (std::vector<int>{3}));
    EXPECT_TRUE(table.GetInstructions(0, 6).empty());
    EXPECT_TRUE(table.GetInstructions(7, 4).empty());
    EXPECT_EQ(table.GetLines(0, 4, 9), (std::vector<int>{4, 9}));
    EXPECT_EQ(table.GetLines(0, 5, 8), std::vector<int>());
    for (int i = 0; i < 8; ++i) EXPECT_EQ(table.BeginsStatement(i), i == 1 || i == 3 || i == 5) << i;
}

TEST(LineTable, MarkAtTheEndHasNoCode)
{
    const std::string listing = MakeProgram("\tPUSH(INT)\t1\n\tPOP(INT)\n\tRTS\nDBI FILE 0 LINE 8\n") +
                                "FUNCTION_f:\n\tDBI POU_BEGIN\n\tLOCALDATA 16\n\tRTS\n\tDBI POU_END\n";
    // The text around the body adds an RTS of its own behind the mark; without it nothing is left there.
    std::string without = listing;
    without.erase(without.find("\tRTS\n\tDBI POU_END"), 5);
    const CTestMachine machine(without);
    ASSERT_TRUE(machine.m_pImage) << machine.m_Error;
    const CLineTable table(machine.m_pImage->m_Listing);
    EXPECT_EQ(table.FindLine(0, 5), -1);
    EXPECT_EQ(table.FindLine(0, 4), 4);
}
