#include "CodeFixture.h"

#include "model/Pou.h"

namespace
{

// i 0, b 2 bit 0, c 2 bit 1, v 4, o 12, d 14 bit 0, w 16; 24 bytes
const std::string g_Wide = "FUNCTION_BLOCK wide VAR_INPUT i : INT; b, c : BOOL; v : ARRAY [0..3] OF INT; END_VAR "
                           "VAR_OUTPUT o : INT; d : BOOL; w : ARRAY [0..3] OF INT; END_VAR o := i; END_FUNCTION_BLOCK ";
// u 0, w 4, f 8, i 12
const std::string g_Refer = "FUNCTION_BLOCK refer VAR_IN_OUT u : INT; w : ARRAY [0..3] OF INT; f : BOOL; END_VAR "
                            "VAR_INPUT i : INT; END_VAR u := i; END_FUNCTION_BLOCK ";
// i 0, j 2, o 4
const std::string g_Small = "FUNCTION_BLOCK small VAR_INPUT i, j : INT; END_VAR VAR_OUTPUT o : INT; END_VAR "
                            "o := i; END_FUNCTION_BLOCK ";
// b 0 bit 0, c 0 bit 1, d 0 bit 2
const std::string g_Bits = "FUNCTION_BLOCK bits VAR_INPUT b, c : BOOL; END_VAR VAR_OUTPUT d : BOOL; END_VAR "
                           "d := b; END_FUNCTION_BLOCK ";

}   // namespace

class FbCallsTest : public CodeFixture
{
};

TEST_F(FbCallsTest, InputsTheCallOutputs)
{
    EXPECT_EQ(Program("f : wide; x : INT; p : BOOL; z : ARRAY [0..3] OF INT;",
                      "f(o => x, i := x + 1, b := p, w => z, c := TRUE, v := z, d => p);", g_Wide),
              Mark(2) +
              "\tPUSH(INT)\t[local+24]\t;x\n\tPUSH(INT)\t1\n\tADD(INT)\n\tPOP(INT)\t[local+0]\t;f.i\n"
              "\tPUSH(BOOL)\t[local+26].0\t;p\n\tPOP(BOOL)\t[local+2].0\t;f.b\n"
              "\tPUSH(BOOL)\t1\n\tPOP(BOOL)\t[local+2].1\t;f.c\n"
              "\tPUSH&(DWORD)\t[local+28]\t;z\n\tPUSH&(DWORD)\t[local+4]\t;f.v\n\tMEMCPY\t8\n"
              "\tPUSH&(DWORD)\t[local+0]\t;f\n\tJSR FUNCTION_wide\n"
              "\tPUSH(INT)\t[local+12]\t;f.o\n\tPOP(INT)\t[local+24]\t;x\n"
              "\tPUSH&(DWORD)\t[local+16]\t;f.w\n\tPUSH&(DWORD)\t[local+28]\t;z\n\tMEMCPY\t8\n"
              "\tPUSH(BOOL)\t[local+14].0\t;f.d\n\tPOP(BOOL)\t[local+26].0\t;p\n"
              "\n");
    ASSERT_EQ(compiled.pNorvane->m_Pous.FindPou("main")->m_Callees.size(), 1u);
    EXPECT_EQ(compiled.pNorvane->m_Pous.FindPou("main")->m_Callees[0], compiled.pNorvane->m_Pous.FindPou("wide"));
}

TEST_F(FbCallsTest, WithoutParameters)
{
    EXPECT_EQ(Program("x : DINT; f : small;", "f();", g_Small),
              Mark(2) + "\tPUSH&(DWORD)\t[local+4]\t;f\n\tJSR FUNCTION_small\n\n");
}

TEST_F(FbCallsTest, NamesAreThoseOfTheDeclarations)
{
    EXPECT_EQ(Program("x : INT; f : small;", "F(I := 5);", g_Small),
              Mark(2) + "\tPUSH(INT)\t5\n\tPOP(INT)\t[local+2]\t;f.i\n\tPUSH&(DWORD)\t[local+2]\t;f\n\tJSR FUNCTION_small\n\n");
}

TEST_F(FbCallsTest, InOutMembersGetAnAddress)
{
    EXPECT_EQ(Program("f : refer; x : INT; y : BOOL; z : ARRAY [0..3] OF INT;", "f(u := x, w := z, f := y, i := 3);", g_Refer),
              Mark(2) +
              "\tPUSH&(INT)\t[local+14]\t;x\n\tPOP(DWORD)\t[local+0]\t;f.u\n"
              "\tPUSH&(DWORD)\t[local+18]\t;z\n\tPOP(DWORD)\t[local+4]\t;f.w\n"
              "\tPUSH&(BOOL)\t[local+16].0\t;y\n\tPOP(DWORD)\t[local+8].0\t;f.f\n"
              "\tPUSH(INT)\t3\n\tPOP(INT)\t[local+12]\t;f.i\n"
              "\tPUSH&(DWORD)\t[local+0]\t;f\n\tJSR FUNCTION_refer\n"
              "\n");
}

TEST_F(FbCallsTest, AGlobalInstanceIsGlobalEvenIfRetained)
{
    EXPECT_EQ(Program("x : INT;", "f(i := x, o => x);", g_Small + "VAR_GLOBAL RETAIN f : small; END_VAR "),
              Mark(2) +
              "\tPUSH(INT)\t[local+0]\t;x\n\tPOP(INT)\t[global+0]\t;f.i\n"
              "\tPUSH&(DWORD)\t[global+0]\t;f\n\tJSR FUNCTION_small\n"
              "\tPUSH(INT)\t[global+4]\t;f.o\n\tPOP(INT)\t[local+0]\t;x\n\n");
}

TEST_F(FbCallsTest, AnInstanceHeldByPointerIsReachedByPosition)
{
    EXPECT_EQ(Function("VAR_IN_OUT f : small; END_VAR VAR x, y : INT; END_VAR", "f(i := x, j := y, o => x);", g_Small),
              Mark(2) +
              "\tPUSH(INT)\t[local+4]\t;x\n\tPUSH(DWORD) [local+0] ; f\n\tPOPI(INT)\n"
              "\tPUSH(INT)\t[local+6]\t;y\n\tPUSH(DWORD) [local+0] ; f\n\tPUSH(DWORD)\t8\n\tADD(DWORD)\n\tPOPI(INT)\n"
              "\tPUSH(DWORD)\t[local+0]\t;f\n\tJSR FUNCTION_small\n"
              "\tPUSH(DWORD) [local+0] ; f\n\tPUSH(DWORD)\t12\n\tADD(DWORD)\n\tPUSHI(INT)\n"
              "\tPUSH(INT)\t[local+6]\t;y\n\n")
        << "kept: behind the output's value comes the last value assigned";
}

TEST_F(FbCallsTest, AnInstanceHeldByPointerTakesAnyValue)
{
    EXPECT_EQ(Function("VAR_IN_OUT f : small; END_VAR VAR x : INT; END_VAR", "f(i := 5);", g_Small),
              Mark(2) + "\tPUSH(INT)\t5\n\tPUSH(DWORD) [local+0] ; f\n\tPOPI(INT)\n"
              "\tPUSH(DWORD)\t[local+0]\t;f\n\tJSR FUNCTION_small\n\n");
}

TEST_F(FbCallsTest, AnInOutMemberOfAnInstanceHeldByPointer)
{
    EXPECT_EQ(Function("VAR_IN_OUT f : refer; END_VAR VAR x : INT; y : BOOL; z : ARRAY [0..3] OF INT; END_VAR",
                       "f(u := x, w := z, f := y);", g_Refer),
              Mark(2) +
              "\tPUSH&(INT)\t[local+4]\t;x\n\tPUSH(DWORD) [local+0] ; f\n\tPOPI(INT)\n"
              "\tPUSH&(DWORD)\t[local+8]\t;z\n\tPUSH(DWORD) [local+0] ; f\n\tPUSH(DWORD)\t8\n\tADD(DWORD)\n\tPOPI(DWORD)\n"
              "\tPUSH&(BOOL)\t[local+6].0\t;y\n\tPUSH(DWORD) [local+0] ; f\n\tPUSH(DWORD)\t12\n\tADD(DWORD)\n\tPOPI(BOOL)\n"
              "\tPUSH(DWORD)\t[local+0]\t;f\n\tJSR FUNCTION_refer\n\n");
}

TEST_F(FbCallsTest, AnOutputOfAPointedInstanceNeedsAnAssignedValue)
{
    EXPECT_EXIT(Function("VAR_IN_OUT f : small; END_VAR VAR x : INT; END_VAR", "f(o => x);", g_Small),
                testing::ExitedWithCode(1), "test.st.2,1. : error: the call of f through a pointer takes an output");
}

TEST_F(FbCallsTest, InABlockAnInstanceIsReachedThroughItsSlot)
{
    EXPECT_EQ(Block("VAR n : INT; f : small; END_VAR", "f(i := n, j := 5, o => n);", g_Small),
              Mark(2) +
              "\tPUSH*(INT) [local+4]\t;n\n\tPUSH(DWORD)\t[local+8]\t;&f\n\tPOPI(INT)\n"
              "\tPUSH(INT)\t5\n\tPUSH(DWORD)\t[local+8]\t;&f\n\tPUSH(DWORD)\t2\n\tADD(DWORD)\n\tPOPI(INT)\n"
              "\tPUSH(DWORD) [local+8]\t;&f\n\tJSR FUNCTION_small\n"
              "\tPUSH(DWORD)\t[local+8]\t;&f\n\tPUSH(DWORD)\t4\n\tADD(DWORD)\n\tPUSHI(INT)\n\tPOP*(INT) [local+4]\t;n\n"
              "\n");
}

TEST_F(FbCallsTest, InABlockTheBitTravelsInTheOffset)
{
    EXPECT_EQ(Block("VAR n : BOOL; f : bits; END_VAR", "f(b := n, c := n, d => n);", g_Bits),
              Mark(2) +
              "\tPUSH*(BOOL) [local+4]\t;n\n\tPUSH(DWORD)\t[local+8]\t;&f\n\tPOPI(BOOL)\n"
              "\tPUSH*(BOOL) [local+4]\t;n\n\tPUSH(DWORD)\t[local+8]\t;&f\n"
              "\tPUSH(DWORD)\t16777216\t;0x01000000\n\tADD(DWORD)\n\tPOPI(BOOL)\n"
              "\tPUSH(DWORD) [local+8]\t;&f\n\tJSR FUNCTION_bits\n"
              "\tPUSH(DWORD)\t[local+8]\t;&f\n\tPUSH(DWORD)\t33554432\t;0x02000000\n\tADD(DWORD)\n"
              "\tPUSHI(BOOL)\n\tPOP*(BOOL) [local+4]\t;n\n"
              "\n");
}

TEST_F(FbCallsTest, InABlockAnInOutMemberStoresAPointer)
{
    EXPECT_EQ(Block("VAR x : INT; y : BOOL; z : ARRAY [0..3] OF INT; g : refer; END_VAR", "g(u := x, w := z, f := y);", g_Refer),
              Mark(2) +
              "\tPUSH(DWORD) [local+4]\t;&x\n\tPUSH(DWORD)\t[local+16]\t;&g\n\tPOPI(DWORD)\n"
              "\tPUSH(DWORD) [local+12]\t;&z\n\n\tPUSH(DWORD)\t[local+16]\t;&g\n\tPUSH(DWORD)\t4\n\tADD(DWORD)\n\tPOPI(DWORD)\n"
              "\tPUSH(DWORD) [local+8]\t;&y\n\tPUSH(DWORD)\t[local+16]\t;&g\n\tPUSH(DWORD)\t8\n\tADD(DWORD)\n\tPOPI(DWORD)\n"
              "\tPUSH(DWORD) [local+16]\t;&g\n\tJSR FUNCTION_refer\n\n");
}

TEST_F(FbCallsTest, InABlockAGlobalInstanceIsReachedDirectly)
{
    const std::string global = "VAR_GLOBAL g : small; END_VAR ";
    const std::string expected =
        Mark(2) +
        "\tPUSH*(INT) [local+4]\t;n\n\tPOP(INT)\t[global+0]\t;g.i\n"
        "\tPUSH&(DWORD)\t[global+0]\t;g\n\tJSR FUNCTION_small\n"
        "\tPUSH(INT) [global+4]\t; g.o\n\tPOP*(INT) [local+4]\t;n\n"
        "\n";
    EXPECT_EQ(Block("VAR n : INT; END_VAR", "g(i := n, o => n);", g_Small + global), expected);
    EXPECT_EQ(Block("VAR n : INT; END_VAR VAR_EXTERNAL g : small; END_VAR", "g(i := n, o => n);", g_Small + global), expected);
}

TEST_F(FbCallsTest, InABlockAnInOutMemberOfAGlobalInstance)
{
    EXPECT_EQ(Block("VAR x : INT; y : BOOL; z : ARRAY [0..3] OF INT; END_VAR", "g(u := x, w := z, f := y);",
                    g_Refer + "VAR_GLOBAL g : refer; END_VAR "),
              Mark(2) +
              "\tPUSH(DWORD) [local+4]\t;&x\n\tPOP(INT)\t[global+0]\t;g.u\n"
              "\tPUSH(DWORD) [local+12]\t;&z\n\n\tPOP(DWORD)\t[global+4]\t;g.w\n"
              "\tPUSH(DWORD) [local+8]\t;&y\n\tPOP(BOOL)\t[global+8].0\t;g.f\n"
              "\tPUSH&(DWORD)\t[global+0]\t;g\n\tJSR FUNCTION_refer\n\n")
        << "kept: the member's own type, not a pointer's";
}

TEST_F(FbCallsTest, AValueLargerThanItsMemberIsCutToIt)
{
    Compile(g_Wide + "PROGRAM main VAR f : wide; z : ARRAY [0..7] OF INT; END_VAR\nf(v := z);\nEND_PROGRAM\n");
    EXPECT_EQ(compiled.pNorvane->m_Errors.GetErrorCount(), 0);
    EXPECT_EQ(compiled.pNorvane->m_Errors.GetWarningCount(), 1);
    EXPECT_EQ(Cut(compiled.assembler, "\t;Program body\n", "\n\t\n\tRTS\n"),
              Mark(2) + "\tPUSH&(DWORD)\t[local+24]\t;z\n\tPUSH&(DWORD)\t[local+4]\t;f.v\n\tMEMCPY\t8\n"
              "\tPUSH&(DWORD)\t[local+0]\t;f\n\tJSR FUNCTION_wide\n\n");
}
