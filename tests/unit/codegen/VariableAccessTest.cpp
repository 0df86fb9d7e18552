#include "CodeFixture.h"

#include "model/ArrayIndex.h"
#include "model/Pou.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"

#include <cstddef>

namespace
{

// Functions that take the address of what they are given.
const std::string g_TakeInt = "FUNCTION take VAR_IN_OUT u : INT; END_VAR ; END_FUNCTION ";
const std::string g_TakeBool = "FUNCTION takeb VAR_IN_OUT u : BOOL; END_VAR ; END_FUNCTION ";
// z at 0, a at 4, f at 6 bit 0, g at 6 bit 1; 7 bytes, in arrays 8
const std::string g_Struct = "TYPE t : STRUCT z : DINT; a : INT; f, g : BOOL; END_STRUCT; END_TYPE ";
// n at 0, v at 2; 10 bytes
const std::string g_ArrayStruct = "TYPE u : STRUCT n : INT; v : ARRAY [1..4] OF INT; END_STRUCT; END_TYPE ";
const std::string g_Pad = "pad : ARRAY [0..5] OF INT; ";   // 12 bytes

}   // namespace

class VariableAccessTest : public CodeFixture
{
protected:
    std::string Accessed(CNorvane& norvane, const CNode* pNode, AccessMode mode)
    {
        TextBuffer text;
        norvane.m_Code.GenerateVariableAccess(pNode, mode, text);
        return std::string(text.View());
    }
};

// ---- Scalars

TEST_F(VariableAccessTest, Local)
{
    EXPECT_EQ(Program(g_Pad + "x : INT;", "x := x; take(x);", g_TakeInt),
              Mark(2) + "\tPUSH(INT)\t[local+12]\t;x\n\tPOP(INT)\t[local+12]\t;x\n" +
              Mark(2) + "\tPUSH&(INT)\t[local+12]\t;x\n\tJSR FUNCTION_take\n");
}

TEST_F(VariableAccessTest, Global)
{
    EXPECT_EQ(Program("", "x := x; take(x);", g_TakeInt + "VAR_GLOBAL " + g_Pad + "x : INT; END_VAR "),
              Mark(2) + "\tPUSH(INT)\t[global+12]\t;x\n\tPOP(INT)\t[global+12]\t;x\n" +
              Mark(2) + "\tPUSH&(INT)\t[global+12]\t;x\n\tJSR FUNCTION_take\n");
}

TEST_F(VariableAccessTest, Retain)
{
    const std::string expected = Mark(2) + "\tPUSH(INT)\t[retain+12]\t;x\n\tPOP(INT)\t[retain+12]\t;x\n" +
                                 Mark(2) + "\tPUSH&(INT)\t[retain+12]\t;x\n\tJSR FUNCTION_take\n";
    EXPECT_EQ(Program("", "x := x; take(x);", g_TakeInt + "VAR_GLOBAL RETAIN " + g_Pad + "x : INT; END_VAR "), expected);
    EXPECT_EQ(Program("y : INT; END_VAR VAR RETAIN " + g_Pad + "x : INT;", "x := x; take(x);", g_TakeInt), expected);
}

TEST_F(VariableAccessTest, Located)
{
    const std::string expected = Mark(2) + "\tPUSH(INT)\t[3012]\t;x\n\tPOP(INT)\t[3012]\t;x\n" +
                                 Mark(2) + "\tPUSH&(INT)\t[3012]\t;x\n\tJSR FUNCTION_take\n";
    EXPECT_EQ(Program("x AT %MW12 : INT;", "x := x; take(x);", g_TakeInt), expected);
    EXPECT_EQ(Program("y : INT; END_VAR VAR RETAIN x AT %MW12 : INT;", "x := x; take(x);", g_TakeInt), expected);
    EXPECT_EQ(Program("", "x := x; take(x);", g_TakeInt + "VAR_GLOBAL x AT %MW12 : INT; END_VAR "), expected);
}

TEST_F(VariableAccessTest, ParametersHeldByPointer)
{
    const std::string expected = Mark(2) + "\tPUSH*(INT)\t[local+12]\t;x\n\tPOP*(INT)\t[local+12]\t;x\n" +
                                 Mark(2) + "\tPUSH(DWORD)\t[local+12]\t;x\n\tJSR FUNCTION_take\n";
    EXPECT_EQ(Function("VAR_IN_OUT a, b, c, x : INT; END_VAR", "x := x; take(x);", g_TakeInt), expected);
    EXPECT_EQ(Function("VAR_OUTPUT a, b, c, x : INT; END_VAR", "x := x; take(x);", g_TakeInt), expected);
}

TEST_F(VariableAccessTest, AnInputIsALocal)
{
    EXPECT_EQ(Function("VAR_INPUT a, x : INT; END_VAR", "x := a;"),
              Mark(2) + "\tPUSH(INT)\t[local+0]\t;a\n\tPOP(INT)\t[local+2]\t;x\n");
}

TEST_F(VariableAccessTest, ABoolHasItsBit)
{
    EXPECT_EQ(Program(g_Pad + "a, b, c, x : BOOL;", "x := x; takeb(x);", g_TakeBool),
              Mark(2) + "\tPUSH(BOOL)\t[local+12].3\t;x\n\tPOP(BOOL)\t[local+12].3\t;x\n" +
              Mark(2) + "\tPUSH&(BOOL)\t[local+12].3\t;x\n\tJSR FUNCTION_takeb\n");
}

TEST_F(VariableAccessTest, ABoolHeldByPointerPrintsABitToo)
{
    EXPECT_EQ(Function("VAR_IN_OUT x : BOOL; END_VAR", "x := x; takeb(x);", g_TakeBool),
              Mark(2) + "\tPUSH*(BOOL)\t[local+0].0\t;x\n\tPOP*(BOOL)\t[local+0].0\t;x\n" +
              Mark(2) + "\tPUSH(DWORD)\t[local+0].0\t;x\n\tJSR FUNCTION_takeb\n");
}

// ---- Constant paths

TEST_F(VariableAccessTest, StructMember)
{
    EXPECT_EQ(Program(g_Pad + "s : t;", "s.a := s.a; take(s.a);", g_Struct + g_TakeInt),
              Mark(2) + "\tPUSH(INT)\t[local+16]\t;s.a\n\tPOP(INT)\t[local+16]\t;s.a\n" +
              Mark(2) + "\tPUSH&(INT)\t[local+16]\t;s.a\n\tJSR FUNCTION_take\n");
    EXPECT_EQ(Program(g_Pad + "s : t;", "s.g := s.f; takeb(s.g);", g_Struct + g_TakeBool),
              Mark(2) + "\tPUSH(BOOL)\t[local+18].0\t;s.f\n\tPOP(BOOL)\t[local+18].1\t;s.g\n" +
              Mark(2) + "\tPUSH&(BOOL)\t[local+18].1\t;s.g\n\tJSR FUNCTION_takeb\n");
}

TEST_F(VariableAccessTest, AStepIsNamedAsTheSourceWritesIt)
{
    EXPECT_EQ(Program("s : t;", "S.A := S.A;", g_Struct),
              Mark(2) + "\tPUSH(INT)\t[local+4]\t;s.A\n\tPOP(INT)\t[local+4]\t;s.A\n");
}

TEST_F(VariableAccessTest, ArrayElement)
{
    EXPECT_EQ(Program(g_Pad + "x : ARRAY [0..4] OF INT;", "x[2] := x[0]; take(x[2]);", g_TakeInt),
              Mark(2) + "\tPUSH(INT)\t[local+12]\t;x[0]\n\tPOP(INT)\t[local+16]\t;x[2]\n" +
              Mark(2) + "\tPUSH&(INT)\t[local+16]\t;x[2]\n\tJSR FUNCTION_take\n");
}

TEST_F(VariableAccessTest, TheCommentHasTheLowBoundTakenOff)
{
    EXPECT_EQ(Program(g_Pad + "x : ARRAY [-1..4] OF INT;", "x[2] := x[-1];"),
              Mark(2) + "\tPUSH(INT)\t[local+12]\t;x[0]\n\tPOP(INT)\t[local+18]\t;x[3]\n");
}

TEST_F(VariableAccessTest, ElementsOfSeveralDimensions)
{
    // rows of 5 elements: 1 * 5 + 3
    EXPECT_EQ(Program("x : ARRAY [1..3, 0..4] OF INT;", "x[2, 3] := x[1, 0];"),
              Mark(2) + "\tPUSH(INT)\t[local+0]\t;x[0]\n\tPOP(INT)\t[local+16]\t;x[8]\n");
    // 1 * 12 + 2 * 4 + 3
    EXPECT_EQ(Program("x : ARRAY [1..2, 1..3, 1..4] OF INT;", "x[2, 3, 4] := x[1, 2, 1];"),
              Mark(2) + "\tPUSH(INT)\t[local+8]\t;x[4]\n\tPOP(INT)\t[local+46]\t;x[23]\n");
}

TEST_F(VariableAccessTest, BitsOfABoolArray)
{
    EXPECT_EQ(Program(g_Pad + "b : ARRAY [0..15] OF BOOL;", "b[11] := b[0]; takeb(b[11]);", g_TakeBool),
              Mark(2) + "\tPUSH(BOOL)\t[local+12].0\t;b[0]\n\tPOP(BOOL)\t[local+13].3\t;b[11]\n" +
              Mark(2) + "\tPUSH&(BOOL)\t[local+13].3\t;b[11]\n\tJSR FUNCTION_takeb\n");
    EXPECT_EQ(Program(g_Pad + "b : ARRAY [0..1, 0..7] OF BOOL;", "b[1, 3] := b[0, 7];"),
              Mark(2) + "\tPUSH(BOOL)\t[local+12].7\t;b[7]\n\tPOP(BOOL)\t[local+13].3\t;b[11]\n");
}

TEST_F(VariableAccessTest, LongerPaths)
{
    EXPECT_EQ(Program("x : ARRAY [0..3] OF t; s : u;", "x[2].a := s.v[3];", g_Struct + g_ArrayStruct),
              Mark(2) + "\tPUSH(INT)\t[local+38]\t;s.v[2]\n\tPOP(INT)\t[local+20]\t;x[2].a\n");
    EXPECT_EQ(Program("x : ARRAY [0..3] OF t;", "x[2].g := x[3].f;", g_Struct),
              Mark(2) + "\tPUSH(BOOL)\t[local+30].0\t;x[3].f\n\tPOP(BOOL)\t[local+22].1\t;x[2].g\n");
    EXPECT_EQ(Program("x : ARRAY [0..3] OF u;", "x[1].v[2] := x[0].n;", g_ArrayStruct),
              Mark(2) + "\tPUSH(INT)\t[local+0]\t;x[0].n\n\tPOP(INT)\t[local+14]\t;x[1].v[1]\n");
}

TEST_F(VariableAccessTest, ArraysOfArrays)
{
    const std::string types = "TYPE row : ARRAY [0..4] OF INT; END_TYPE TYPE grid : ARRAY [1..3] OF row; END_TYPE ";
    EXPECT_EQ(Program("y : INT; g : grid;", "y := g[2][3];", types),
              Mark(2) + "\tPUSH(INT)\t[local+18]\t;g[1][3]\n\tPOP(INT)\t[local+0]\t;y\n");
}

TEST_F(VariableAccessTest, Aggregates)
{
    const std::string give = "FUNCTION give VAR_INPUT s : t; x : ARRAY [0..3] OF INT; END_VAR ; END_FUNCTION ";
    EXPECT_EQ(Program(g_Pad + "s : t; x : ARRAY [0..3] OF INT;", "give(s, x);", g_Struct + give),
              Mark(2) + "\tPUSH&(DWORD)\t[local+12]\t;s\n\tPUSH&(DWORD)\t[local+20]\t;x\n\tJSR FUNCTION_give\n");
}

// ---- Run-time subscripts

TEST_F(VariableAccessTest, RunTimeElement)
{
    const std::string variables = "y : INT; pad : ARRAY [0..4] OF INT; x : ARRAY [1..5] OF INT;";
    const std::string global = "VAR_GLOBAL i : INT; END_VAR ";
    const std::string address = "\t;runtime array address\n"
                                "\tPUSH&(INT)[local+12]\t;&x[0]\n"
                                "\tPUSH(INT)\t[global+0]\t;i\n"
                                "\tADDRESS(INT) 2 1 5\n";
    EXPECT_EQ(Program(variables, "y := x[i];", global),
              Mark(2) + address + "\tPUSHI(INT)\n\tPOP(INT)\t[local+0]\t;y\n");
    EXPECT_EQ(Program(variables, "x[i] := y;", global),
              Mark(2) + "\tPUSH(INT)\t[local+0]\t;y\n" + address + "\tPOPI(INT)\n");
    EXPECT_EQ(Program(variables, "take(x[i]);", global + g_TakeInt),
              Mark(2) + address + "\tPUSHI(INT)\n\tJSR FUNCTION_take\n")
        << "kept: the value comes where the address is asked for";
}

TEST_F(VariableAccessTest, RunTimeElementOfSeveralDimensions)
{
    const std::string i = "\tPUSH(INT)\t[local+2]\t;i\n";
    const std::string j = "\tPUSH(INT)\t[local+4]\t;j\n";
    const std::string base = "\t;runtime array address\n\tPUSH&(INT)[local+6]\t;&x[0]\n";
    const std::string end = "\tPUSHI(INT)\n\tPOP(INT)\t[local+0]\t;y\n";
    const std::string variables = "y, i, j : INT; x : ARRAY [1..3, 0..4] OF INT;";
    EXPECT_EQ(Program(variables, "y := x[i, j];"),
              Mark(2) + base + i + "\tADDRESS(INT) 10 1 3\n" + j + "\tADDRESS(INT) 2 0 4\n" + end);
    EXPECT_EQ(Program(variables, "y := x[2, j];"),
              Mark(2) + base + "\tPUSH(DINT)\t2\n\tADDRESS(DINT) 10 1 3\n" + j + "\tADDRESS(INT) 2 0 4\n" + end)
        << "one subscript that isn't constant makes the list run-time";
    EXPECT_EQ(Program("y, i, j : INT; x : ARRAY [1..2, 1..3, 1..4] OF INT;", "y := x[i, j, i];"),
              Mark(2) + base + i + "\tADDRESS(INT) 24 1 2\n" + j + "\tADDRESS(INT) 8 1 3\n" + i +
              "\tADDRESS(INT) 2 1 4\n" + end);
}

TEST_F(VariableAccessTest, RunTimeElementOfArraysOfArrays)
{
    const std::string types = "TYPE row : ARRAY [0..4] OF INT; END_TYPE TYPE grid : ARRAY [1..3] OF row; END_TYPE ";
    const std::string i = "\tPUSH(INT)\t[local+2]\t;i\n";
    const std::string j = "\tPUSH(INT)\t[local+4]\t;j\n";
    const std::string end = "\tPUSHI(INT)\n\tPOP(INT)\t[local+0]\t;y\n";
    const std::string variables = "y, i, j : INT; g : grid;";
    EXPECT_EQ(Program(variables, "y := g[i][j];", types),
              Mark(2) + "\t;runtime array address\n\tPUSH&(INT)[local+6]\t;&g[0][0]\n" +
              i + "\tADDRESS(INT) 10 1 3\n" + j + "\tADDRESS(INT) 2 0 4\n" + end);
    EXPECT_EQ(Program(variables, "y := g[2][j];", types),
              Mark(2) + "\t;runtime array address\n\tPUSH&(INT)[local+16]\t;&g[1][0]\n" +
              j + "\tADDRESS(INT) 2 0 4\n" + end);
    EXPECT_EQ(Program(variables, "y := g[i][3];", types),
              Mark(2) + "\t;runtime array address\n\tPUSH&(INT)[local+12]\t;&g[0][3]\n" +
              i + "\tADDRESS(INT) 10 1 3\n" + end);
}

TEST_F(VariableAccessTest, RunTimeBits)
{
    const std::string i = "\tPUSH(INT)\t[local+2]\t;i\n";
    const std::string end = "\tPUSHI(BOOL)\n\tPOP(BOOL)\t[local+0].0\t;y\n";
    EXPECT_EQ(Program("y : BOOL; i : INT; b : ARRAY [0..15] OF BOOL;", "y := b[i];"),
              Mark(2) + "\t;runtime array address\n\tPUSH&(BOOL)[local+4].0\t;&b[0]\n" + i +
              "\tADDRESSBIT(INT) 1 0 15\n" + end);
    EXPECT_EQ(Program("y : BOOL; i : INT; b : ARRAY [0..1, 0..7] OF BOOL;", "y := b[i, i];"),
              Mark(2) + "\t;runtime array address\n\tPUSH&(BOOL)[local+4].0\t;&b[0]\n" + i +
              "\tADDRESSBIT(INT) 8 0 1\n" + i + "\tADDRESSBIT(INT) 1 0 7\n" + end);
}

TEST_F(VariableAccessTest, ABoolMemberOfARunTimeElement)
{
    // y at 0, i at 2, x at 4: g of the first element lies at 4 + 6, bit 1
    EXPECT_EQ(Program("y : BOOL; i : INT; x : ARRAY [0..3] OF t;", "y := x[i].g;", g_Struct),
              Mark(2) + "\t;runtime array address\n\tPUSH&(BOOL)[local+10].1\t;&x[0].g\n"
              "\tPUSH(INT)\t[local+2]\t;i\n"
              "\tADDRESS(INT) 8 0 3\n"
              "\tPUSHI(BOOL)\n\tPOP(BOOL)\t[local+0].0\t;y\n");
}

TEST_F(VariableAccessTest, SeveralRunTimeSteps)
{
    EXPECT_EQ(Program("y, i, j : INT; x : ARRAY [0..3] OF u;", "y := x[i].v[j];", g_ArrayStruct),
              Mark(2) + "\t;runtime array address\n\tPUSH&(INT)[local+8]\t;&x[0].v[0]\n"
              "\tPUSH(INT)\t[local+2]\t;i\n"
              "\tADDRESS(INT) 10 0 3\n"
              "\tPUSH(INT)\t[local+4]\t;j\n"
              "\tADDRESS(INT) 2 1 4\n"
              "\tPUSHI(INT)\n\tPOP(INT)\t[local+0]\t;y\n");
}

TEST_F(VariableAccessTest, ASubscriptMayHaveSubscripts)
{
    EXPECT_EQ(Program("y, i : INT; x : ARRAY [0..3] OF INT;", "y := x[x[i] + 1];"),
              Mark(2) + "\t;runtime array address\n\tPUSH&(INT)[local+4]\t;&x[0]\n"
              "\t;runtime array address\n\tPUSH&(INT)[local+4]\t;&x[0]\n"
              "\tPUSH(INT)\t[local+2]\t;i\n"
              "\tADDRESS(INT) 2 0 3\n"
              "\tPUSHI(INT)\n"
              "\tPUSH(INT)\t1\n"
              "\tADD(INT)\n"
              "\tADDRESS(INT) 2 0 3\n"
              "\tPUSHI(INT)\n\tPOP(INT)\t[local+0]\t;y\n");
}

TEST_F(VariableAccessTest, ALocatedArrayHasNoAreaWord)
{
    EXPECT_EQ(Program("y, i : INT; x AT %MW12 : ARRAY [0..3] OF INT;", "y := x[i]; y := x[1];"),
              Mark(2) + "\t;runtime array address\n\tPUSH&(INT)[3012]\t;&x[0]\n"
              "\tPUSH(INT)\t[local+2]\t;i\n"
              "\tADDRESS(INT) 2 0 3\n"
              "\tPUSHI(INT)\n\tPOP(INT)\t[local+0]\t;y\n" +
              Mark(2) + "\tPUSH(INT)\t[3014]\t;x[1]\n\tPOP(INT)\t[local+0]\t;y\n");
}

// ---- Paths through a pointer parameter

TEST_F(VariableAccessTest, AMemberOfAnInOutStruct)
{
    const std::string blocks = "VAR_IN_OUT s : t; END_VAR VAR y : INT; b : BOOL; END_VAR";
    const std::string base = "\tPUSH(DWORD) [local+0] ; s\n";
    const std::string add = "\tPUSH(DWORD)\t4\n\tADD(DWORD)\n";
    EXPECT_EQ(Function(blocks, "y := s.a;", g_Struct),
              Mark(2) + base + add + "\tPUSHI(INT)\n\tPOP(INT)\t[local+4]\t;y\n");
    EXPECT_EQ(Function(blocks, "s.a := y;", g_Struct),
              Mark(2) + "\tPUSH(INT)\t[local+4]\t;y\n" + base + add + "\tPOPI(INT)\n");
    EXPECT_EQ(Function(blocks, "take(s.a);", g_Struct + g_TakeInt),
              Mark(2) + base + add + "\tPUSHI(INT)\n\tJSR FUNCTION_take\n")
        << "kept: the value comes where the address is asked for";
}

TEST_F(VariableAccessTest, AnOffsetOfZeroAddsNothing)
{
    EXPECT_EQ(Function("VAR_IN_OUT s : t; END_VAR VAR y : DINT; END_VAR", "y := s.z;", g_Struct),
              Mark(2) + "\tPUSH(DWORD) [local+0] ; s\n\tPUSHI(DINT)\n\tPOP(DINT)\t[local+4]\t;y\n");
}

TEST_F(VariableAccessTest, TheBitTravelsInTheOffset)
{
    const std::string base = "\tPUSH(DWORD) [local+0] ; s\n";
    EXPECT_EQ(Function("VAR_IN_OUT s : t; END_VAR", "s.f := s.g;", g_Struct),
              Mark(2) + base + "\tPUSH(DWORD)\t16777222\t;0x01000006\n\tADD(DWORD)\n\tPUSHI(BOOL)\n" +
              base + "\tPUSH(DWORD)\t6\n\tADD(DWORD)\n\tPOPI(BOOL)\n");
}

TEST_F(VariableAccessTest, AnOutputArrayAndRunTimeSubscripts)
{
    EXPECT_EQ(Function("VAR_OUTPUT x : ARRAY [1..5] OF INT; END_VAR VAR y, i : INT; END_VAR", "y := x[i]; x[3] := y;"),
              Mark(2) + "\tPUSH(DWORD) [local+0] ; x\n\t;runtime array address\n"
              "\tPUSH(INT)\t[local+6]\t;i\n\tADDRESS(INT) 2 1 5\n\tPUSHI(INT)\n\tPOP(INT)\t[local+4]\t;y\n" +
              Mark(2) + "\tPUSH(INT)\t[local+4]\t;y\n"
              "\tPUSH(DWORD) [local+0] ; x\n\tPUSH(DWORD)\t4\n\tADD(DWORD)\n\tPOPI(INT)\n");
}

TEST_F(VariableAccessTest, AWholeInOutAggregate)
{
    const std::string give = "FUNCTION give VAR_INPUT s : t; END_VAR ; END_FUNCTION ";
    EXPECT_EQ(Function("VAR_IN_OUT s : t; END_VAR", "give(s);", g_Struct + give),
              Mark(2) + "\tPUSH(DWORD)\t[local+0]\t;s\n\tJSR FUNCTION_give\n");
    EXPECT_EQ(Function("VAR_IN_OUT s : t; END_VAR VAR r : t; END_VAR", "r := s;", g_Struct),
              Mark(2) + "\tPUSH&(DWORD)\t[local+0]\t;s\n\tPUSH&(DWORD)\t[local+4]\t;r\n\tMEMCPY\t7\n\n")
        << "kept: the address of the local that holds the pointer";
}

// ---- Inside a function block

TEST_F(VariableAccessTest, ScalarMembersOfTheBlock)
{
    const std::string blocks = "VAR_INPUT a : INT; END_VAR VAR_OUTPUT o : INT; END_VAR VAR_IN_OUT u : INT; END_VAR "
                               "VAR n : INT; f : BOOL; END_VAR";
    EXPECT_EQ(Block(blocks, "o := a; u := n; f := NOT f; take(a); take(u);", g_TakeInt),
              Mark(2) + "\tPUSH*(INT) [local+4]\t;a\n\tPOP*(INT) [local+8]\t;o\n" +
              Mark(2) + "\tPUSH*(INT) [local+16]\t;n\n\tPOP*(INT) [local+12]\t;u\n" +
              Mark(2) + "\tPUSH*(BOOL) [local+20]\t;f\n\tNOT(BOOL)\n\tPOP*(BOOL) [local+20]\t;f\n" +
              Mark(2) + "\tPUSH(DWORD) [local+4]\t;&a\n\tJSR FUNCTION_take\n" +
              Mark(2) + "\tPUSH(DWORD) [local+12]\t;&u\n\tJSR FUNCTION_take\n");
}

TEST_F(VariableAccessTest, PathsFromAMemberOfTheBlock)
{
    const std::string blocks = "VAR n : INT; f : BOOL; s : t; x : ARRAY [1..5] OF INT; b : ARRAY [0..15] OF BOOL; END_VAR";
    const std::string n = "\tPUSH*(INT) [local+4]\t;n\n";
    const std::string toN = "\tPOP*(INT) [local+4]\t;n\n";
    const std::string add = "\tPUSH(DWORD)\t4\n\tADD(DWORD)\n";
    EXPECT_EQ(Block(blocks, "n := s.a; s.a := n; take(s.a);", g_Struct + g_TakeInt),
              Mark(2) + "\tPUSH(DWORD) [local+12]\t;&s\n" + add + "\tPUSHI(INT)\n" + toN +
              Mark(2) + n + "\tPUSH(DWORD) [local+12]\t;&s\n" + add + "\tPOPI(INT)\n" +
              Mark(2) + "\tPUSH(DWORD) [local+12]\t;&s\n" + add + "\n\tJSR FUNCTION_take\n");
    EXPECT_EQ(Block(blocks, "f := s.g; f := b[11];", g_Struct),
              Mark(2) + "\tPUSH(DWORD) [local+12]\t;&s\n\tPUSH(DWORD)\t16777222\t;0x01000006\n\tADD(DWORD)\n"
              "\tPUSHI(BOOL)\n\tPOP*(BOOL) [local+8]\t;f\n" +
              Mark(2) + "\tPUSH(DWORD) [local+20]\t;&b\n\tPUSH(DWORD)\t50331649\t;0x03000001\n\tADD(DWORD)\n"
              "\tPUSHI(BOOL)\n\tPOP*(BOOL) [local+8]\t;f\n");
    EXPECT_EQ(Block(blocks, "n := x[3]; n := x[1]; n := x[n]; x[n] := n;", g_Struct),
              Mark(2) + "\tPUSH(DWORD) [local+16]\t;&x\n" + add + "\tPUSHI(INT)\n" + toN +
              Mark(2) + "\tPUSH(DWORD) [local+16]\t;&x\n\tPUSHI(INT)\n" + toN +
              Mark(2) + "\tPUSH(DWORD) [local+16]\t;&x\n\t;runtime array address\n" + n + "\tADDRESS(INT) 2 1 5\n\tPUSHI(INT)\n" + toN +
              Mark(2) + n + "\tPUSH(DWORD) [local+16]\t;&x\n\t;runtime array address\n" + n + "\tADDRESS(INT) 2 1 5\n\tPOPI(INT)\n");
    EXPECT_EQ(Block(blocks, "f := b[n];", g_Struct),
              Mark(2) + "\tPUSH(DWORD) [local+20]\t;&b\n\t;runtime array address\n" + n +
              "\tADDRESSBIT(INT) 1 0 15\n\tPUSHI(BOOL)\n\tPOP*(BOOL) [local+8]\t;f\n");
}

TEST_F(VariableAccessTest, AWholeAggregateOfTheBlock)
{
    const std::string give = "FUNCTION give VAR_INPUT s : t; END_VAR ; END_FUNCTION ";
    EXPECT_EQ(Block("VAR s, r : t; END_VAR", "give(s); r := s;", g_Struct + give),
              Mark(2) + "\tPUSH(DWORD) [local+4]\t;&s\n\tPUSHI(DWORD)\n\tJSR FUNCTION_give\n" +
              Mark(2) + "\tPUSH(DWORD) [local+4]\t;&s\n\n\tPUSH(DWORD) [local+8]\t;&r\n\n\tMEMCPY\t7\n\n");
}

TEST_F(VariableAccessTest, AGlobalInsideABlockIsReachedDirectly)
{
    EXPECT_EQ(Block("VAR n : INT; END_VAR", "g := n;", "VAR_GLOBAL g : INT; END_VAR "),
              Mark(2) + "\tPUSH*(INT) [local+4]\t;n\n\tPOP(INT)\t[global+0]\t;g\n");
}

TEST_F(VariableAccessTest, SlotsAreAsWideAsAPointer)
{
    std::string target(g_CompileTarget);
    const std::string pointer = "<DATATYPE name=\"DWORD\" size=\"32\" align=\"4\"/>";
    ASSERT_NE(target.find(pointer), std::string::npos);
    target.replace(target.find(pointer), pointer.size(), "<DATATYPE name=\"DWORD\" size=\"64\" align=\"4\"/>");
    options.target = target;
    EXPECT_EQ(Block("VAR n, m : INT; END_VAR", "n := m;"),
              Mark(2) + "\tPUSH*(INT) [local+16]\t;m\n\tPOP*(INT) [local+8]\t;n\n");
}

// ---- Forms that no source reaches

TEST_F(VariableAccessTest, ReadThrough)
{
    CNorvane norvane;
    LoadTarget(norvane);
    CVariable variable;
    variable.m_Name = "x";
    variable.m_Type = norvane.m_DataTypes.FindType("INT");
    variable.m_Offset = 12;
    CNode* pNode = MakeLeaf(IDENTIFIER, variable.m_Type);
    pNode->pVariable = &variable;
    EXPECT_EQ(Accessed(norvane, pNode, AccessMode::ReadThrough), "\tPUSH*(INT)\t[local+12]\t;x");

    pNode->bThroughInOut = true;
    EXPECT_EQ(Accessed(norvane, pNode, AccessMode::ReadThrough), "\tPUSH*(INT)\t[local+12]\t;x");
    EXPECT_EQ(Accessed(norvane, pNode, AccessMode::Read), "\tPUSH(DWORD)\t[local+12]\t;x");
    EXPECT_EQ(Accessed(norvane, pNode, AccessMode::Write), "\tPOP(DWORD)\t[local+12]\t;x");
    EXPECT_EQ(Accessed(norvane, pNode, AccessMode::Address), "\tPUSH&(DWORD)\t[local+12]\t;x");
}

TEST_F(VariableAccessTest, FormsOfMemberAccess)
{
    Block("VAR n : INT; s : t; END_VAR", "n := s.a;", g_Struct);
    CNorvane& norvane = *compiled.pNorvane;
    norvane.m_Code.m_CurrentFb = norvane.m_Pous.FindPou("blk");
    CVariable scalar;
    scalar.m_Name = "n";
    scalar.m_Type = norvane.m_DataTypes.FindType("INT");
    CVariable aggregate;
    aggregate.m_Name = "s";
    aggregate.m_Type = norvane.m_DataTypes.FindUserType("t");
    const auto access = [this, &norvane](CVariable& variable, FbAccessForm form) {
        CNode* pNode = MakeLeaf(IDENTIFIER, variable.m_Type);
        pNode->pVariable = &variable;
        TextBuffer text;
        norvane.m_Code.GenerateFbMemberAccess(pNode, form, text);
        return std::string(text.View());
    };
    EXPECT_EQ(access(scalar, FbAccessForm::Push), "\tPUSH(DWORD) [local+4]\t;&n");
    EXPECT_EQ(access(scalar, FbAccessForm::Pop), "\tPOP(INT) [local+4]\t;n");
    EXPECT_EQ(access(scalar, FbAccessForm::Plain), "(INT) [local+4]\t;n");
    EXPECT_EQ(access(scalar, FbAccessForm::PushThrough), "PUSH*(INT) [local+4]\t;n");
    EXPECT_EQ(access(scalar, FbAccessForm::PopThrough), "POP*(INT) [local+4]\t;n");
    EXPECT_EQ(access(aggregate, FbAccessForm::Push), "\tPUSH(DWORD) [local+8]\t;&s");
    EXPECT_EQ(access(aggregate, FbAccessForm::Pop), "\tPOP(DWORD) [local+8]\t;&s");
    EXPECT_EQ(access(aggregate, FbAccessForm::Plain), "(DWORD) [local+8]\t;&s");
    EXPECT_EQ(access(aggregate, FbAccessForm::PushThrough), "PUSH*(DWORD) [local+8]\t;&s");

    CNode* pNode = MakeLeaf(IDENTIFIER, scalar.m_Type);
    pNode->pVariable = &scalar;
    EXPECT_EQ(Accessed(norvane, pNode, AccessMode::ReadThrough), "\t(INT) [local+4]\t;n") << "a form without mnemonic";
}

// ---- Helpers

TEST_F(VariableAccessTest, CountIndexLevels)
{
    const auto count = [this](std::initializer_list<int> kinds) {
        CNode* pNode = MakeTree(ARRAY_ELEMENT, {});
        for (const int kind : kinds) pNode->AddChild(MakeLeaf(kind));
        return CCodeGeneration::CountIndexLevels(pNode);
    };
    EXPECT_EQ(count({}), 0);
    EXPECT_EQ(count({IDENTIFIER}), 0);
    EXPECT_EQ(count({IDENTIFIER, EXP_LIST}), 1);
    EXPECT_EQ(count({IDENTIFIER, EXP_LIST, EXP_LIST}), 2);
    EXPECT_EQ(count({IDENTIFIER, NEW_ID}), 1);
    EXPECT_EQ(count({IDENTIFIER, NEW_ID, EXP_LIST}), 1);
    EXPECT_EQ(count({IDENTIFIER, EXP_LIST, NEW_ID, EXP_LIST}), 2);
}

TEST_F(VariableAccessTest, EvalLinearIndex)
{
    CNorvane norvane;
    LoadTarget(norvane);
    auto pBounds = std::make_unique<CArrayIndex>();
    pBounds->m_Dimensions = {CIndex(1, 3), CIndex(0, 4)};
    CArrayOfArrayIndex index;
    index.Add(std::move(pBounds));
    const auto list = [this](std::initializer_list<std::int64_t> values) {
        CNode* pList = MakeTree(EXP_LIST, {});
        for (const std::int64_t value : values) {
            CNode* pNumber = MakeLeaf(IMM_INTEGER);
            pNumber->nValue = value;
            pList->AddChild(pNumber);
        }
        return pList;
    };
    EXPECT_EQ(norvane.m_Code.EvalLinearIndex(list({2}), &index, 0), 1);
    EXPECT_EQ(norvane.m_Code.EvalLinearIndex(list({1, 0}), &index, 0), 0);
    EXPECT_EQ(norvane.m_Code.EvalLinearIndex(list({3, 4}), &index, 0), 14);
    EXPECT_EXIT(norvane.m_Code.EvalLinearIndex(list({}), &index, 0), testing::ExitedWithCode(3), "internal fault: ");
    EXPECT_EXIT(norvane.m_Code.EvalLinearIndex(list({1}), nullptr, 0), testing::ExitedWithCode(3), "internal fault: ");
    EXPECT_EXIT(norvane.m_Code.EvalLinearIndex(list({1}), &index, 1), testing::ExitedWithCode(3), "internal fault: ");
}

TEST_F(VariableAccessTest, GetElementStride)
{
    CNorvane norvane;
    LoadTarget(norvane);
    CTypeArray row("row", norvane.m_DataTypes.FindType("INT"));
    row.m_Stride = 2;
    CTypeArray grid("grid", &row);
    CTypeArray bits("bits", norvane.m_DataTypes.FindType("BOOL"));
    bits.m_Stride = 0;
    CTypeArray bitRows("bitRows", &bits);

    CArrayOfArrayIndex flat;   // [3, 4, 5]
    auto pFlat = std::make_unique<CArrayIndex>();
    pFlat->m_Dimensions = {CIndex(1, 3), CIndex(1, 4), CIndex(1, 5)};
    flat.Add(std::move(pFlat));
    CArrayOfArrayIndex nested;   // [3, 4] of [5, 6]
    auto pOuter = std::make_unique<CArrayIndex>();
    pOuter->m_Dimensions = {CIndex(1, 3), CIndex(1, 4)};
    auto pInner = std::make_unique<CArrayIndex>();
    pInner->m_Dimensions = {CIndex(1, 5), CIndex(1, 6)};
    nested.Add(std::move(pOuter));
    nested.Add(std::move(pInner));

    const CCodeGeneration& code = norvane.m_Code;
    EXPECT_EQ(code.GetElementStride(&row, &flat, 0, -1), 2);
    EXPECT_EQ(code.GetElementStride(&row, &flat, 0, 0), 40);
    EXPECT_EQ(code.GetElementStride(&row, &flat, 0, 1), 10);
    EXPECT_EQ(code.GetElementStride(&row, &flat, 0, 2), 2);
    EXPECT_EQ(code.GetElementStride(&bits, &flat, 0, -1), 1);
    EXPECT_EQ(code.GetElementStride(&bits, &flat, 0, 0), 20);
    EXPECT_EQ(code.GetElementStride(&grid, &nested, 0, -1), 60);
    EXPECT_EQ(code.GetElementStride(&grid, &nested, 1, -1), 2) << "no level is left behind the last";
    EXPECT_EQ(code.GetElementStride(&grid, &nested, 0, 0), 12) << "kept: the dimensions of the next level";
    EXPECT_EQ(code.GetElementStride(&grid, &nested, 0, 1), 2);
    EXPECT_EQ(code.GetElementStride(&bitRows, &nested, 0, -1), 0) << "the stride of a BOOL array is 0 bytes";
    EXPECT_EQ(code.GetElementStride(&row, nullptr, 0, -1), 2);
    EXPECT_EQ(code.GetElementStride(&row, nullptr, 0, 0), 2);
    EXPECT_EXIT(code.GetElementStride(norvane.m_DataTypes.FindType("INT"), &flat, 0, -1), testing::ExitedWithCode(3),
                "internal fault: ");
}

// ---- Faults

TEST_F(VariableAccessTest, AnAddressInAVariablesPlaceIsRefused)
{
    Compile("PROGRAM main VAR y : BOOL; END_VAR\n%MX0.0 := y;\nEND_PROGRAM\n");
    EXPECT_EQ(compiled.pNorvane->m_Errors.GetErrorCount(), 1);
    EXPECT_EQ(compiled.output, "test.st(2,1) : error: invalid address\n");
}

TEST_F(VariableAccessTest, AValueHasNoAddress)
{
    Compile("PROGRAM main VAR a, b, c : ARRAY [0..3] OF INT; END_VAR\na := MAX(b, c);\nEND_PROGRAM\n");
    EXPECT_EQ(compiled.pNorvane->m_Errors.GetErrorCount(), 1);
    EXPECT_NE(compiled.output.find("test.st(2,6) : error: cannot assign "), std::string::npos) << compiled.output;
}

TEST_F(VariableAccessTest, WhatIsNoVariableIsRefusedAndWritesNothing)
{
    CNorvane norvane;
    LoadTarget(norvane);
    for (const int kind : {IMM_INTEGER, IDENTIFIER})   // a name may have lost its variable
        EXPECT_EQ(Accessed(norvane, MakeLeaf(kind, norvane.m_DataTypes.FindType("INT")), AccessMode::Read), "");
    EXPECT_EQ(Accessed(norvane, MakeLeaf(IMM_INTEGER), AccessMode::Address), "");   // without a type of its own
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 3);
}
