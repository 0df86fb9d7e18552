#include "semantics/StatementSource.h"

#include <gtest/gtest.h>

namespace
{

const char g_Types[] = "TYPE t : STRUCT x : INT; v : ARRAY [0..3] OF INT; y : REAL; END_STRUCT; END_TYPE\n";
const char g_Block[] = "FUNCTION_BLOCK tb VAR_INPUT a : INT; END_VAR VAR_OUTPUT o : INT; END_VAR "
                       "VAR_IN_OUT io : INT; END_VAR VAR p : INT; END_VAR o := a + p; io := p; END_FUNCTION_BLOCK\n";
const char g_Variables[] =
    "i : INT; d : DINT; u : UINT; r : REAL; b : BOOL; w : WORD; a : ARRAY [1..10] OF INT; "
    "m : ARRAY [0..1, 5..7] OF INT; s : t; q : ARRAY [0..2] OF t;";

std::string MessagesOfPath(const std::string& statements)
{
    return MessagesOf(g_Types, g_Variables, statements);
}

}   // namespace

// The statements of these programs begin in line 6, column 1.

TEST(Paths, GoodPathsAreSilent)
{
    EXPECT_EQ(MessagesOfPath("a[1] := 1;\na[10] := 2;\na[i] := 3;\na[i + 1] := 4;"), "");
    EXPECT_EQ(MessagesOfPath("m[1,5] := 1;\nm[i,7] := 2;"), "");
    EXPECT_EQ(MessagesOfPath("s.x := 1;\ns.v[3] := 2;\nq[2].v[0] := 3;\nq[i].y := 1.5;\na[s.x] := 1;\na[a[1]] := 1;"), "");
    EXPECT_EQ(MessagesOfPath("S.X := 1;\nQ[2].V[0] := 3;"), "") << "names are found in any case";
}

TEST(Paths, SubscriptCountMustBeThatOfTheLevel)
{
    EXPECT_EQ(MessagesOfPath("a[1,2] := 1;"), "test.st(6,3) : error: wrong dimension required 1, found 2\n");
    EXPECT_EQ(MessagesOfPath("m[1] := 1;"), "test.st(6,3) : error: wrong dimension required 2, found 1\n");
    EXPECT_EQ(MessagesOfPath("q[0].v[1,2,3] := 1;"), "test.st(6,8) : error: wrong dimension required 1, found 3\n");
}

TEST(Paths, ConstantSubscriptsAreCheckedAgainstBothBounds)
{
    EXPECT_EQ(MessagesOfPath("a[11] := 1;"), "test.st(6,3) : error: index exceeds array dimension \n");
    EXPECT_EQ(MessagesOfPath("a[0] := 1;"), "test.st(6,3) : error: index exceeds array dimension \n");
    EXPECT_EQ(MessagesOfPath("m[2,5] := 1;"), "test.st(6,3) : error: index exceeds array dimension \n");
    EXPECT_EQ(MessagesOfPath("m[1,8] := 1;"), "test.st(6,5) : error: index exceeds array dimension \n");
    EXPECT_EQ(MessagesOfPath("m[9,9] := 1;"), "test.st(6,3) : error: index exceeds array dimension \n"
                                              "test.st(6,5) : error: index exceeds array dimension \n");
    EXPECT_EQ(MessagesOfPath("a[5 + 6] := 1;"), "test.st(6,3) : error: index exceeds array dimension \n");
    EXPECT_EQ(MessagesOfPath("a[-1] := 1;"), "test.st(6,3) : error: index exceeds array dimension \n");
    EXPECT_EQ(MessagesOfPath("i := a[11] + 1;"), "test.st(6,8) : error: index exceeds array dimension \n");
}

TEST(Paths, OnlyTheLow32BitsOfASubscriptCount)
{
    EXPECT_EQ(MessagesOfPath("a[4294967297] := 1;"), "");   // 2^32 + 1
}

TEST(Paths, SubscriptsMustBeSigned)
{
    EXPECT_EQ(MessagesOfPath("a[u] := 1;"), "test.st(6,3) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOfPath("a[2.5] := 1;"), "test.st(6,3) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOfPath("a[r] := 1;"), "test.st(6,3) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOfPath("a[TRUE] := 1;"), "test.st(6,3) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOfPath("a[b] := 1;"), "test.st(6,3) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOfPath("a[w] := 1;"), "test.st(6,3) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOfPath("a[u + 1] := 1;"), "test.st(6,5) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOfPath("a[NOT i] := 1;"), "test.st(6,3) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOfPath("a[i = 1] := 1;"), "test.st(6,5) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOfPath("a[s.y] := 1;"), "test.st(6,4) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOfPath("a[INT_TO_DINT(i)] := 1;"), "");
    EXPECT_EQ(MessagesOfPath("a[INT_TO_UINT(i)] := 1;"), "test.st(6,3) : error: expression requires integer value\n");
}

TEST(Paths, CallsAsSubscripts)
{
    const std::string functions = "FUNCTION f0 : INT f0 := 1; END_FUNCTION FUNCTION f1 : INT VAR_INPUT x : INT; END_VAR "
                                  "f1 := x; END_FUNCTION\n";
    EXPECT_EQ(MessagesOf(functions, "a : ARRAY [1..10] OF INT;", "a[f0()] := 1;"),
              "test.st(6,3) : error: expression requires integer value\n");
    EXPECT_EQ(MessagesOf(functions, "a : ARRAY [1..10] OF INT;", "a[f1(99)] := 1;"), "");
}

TEST(Paths, SubscriptsOfWhatIsNoArray)
{
    EXPECT_EQ(MessagesOfPath("i[1] := 1;"), "test.st(6,1) : error: iis not an array\n");
    EXPECT_EQ(MessagesOfPath("s[1].x := 1;"), "test.st(6,1) : error: sis not an array\n");
    // The subscript list stands in place of a name and has none.
    EXPECT_EQ(MessagesOfPath("s.x[1] := 1;"), "test.st(6,5) : error: is not an array\n");
    EXPECT_EQ(MessagesOfPath("a[1][2] := 1;"), "test.st(6,6) : error: is not an array\n");
}

TEST(Paths, MembersOfWhatIsNoStructure)
{
    EXPECT_EQ(MessagesOfPath("i.x := 1;"), "test.st(6,1) : error:  i is not a struct\n");
    EXPECT_EQ(MessagesOfPath("a[1].x := 1;"), "test.st(6,6) : error:  x is not a struct\n");
    EXPECT_EQ(MessagesOfPath("s.x.z := 1;"), "test.st(6,5) : error:  z is not a struct\n");
}

TEST(Paths, UnknownMembers)
{
    EXPECT_EQ(MessagesOfPath("s.z := 1;"), "test.st(6,3) : error: z is not a member of the struct t\n");
    EXPECT_EQ(MessagesOfPath("q[1].z.k := 1;"), "test.st(6,6) : error: z is not a member of the struct t\n");
}

TEST(Paths, UndeclaredRootsDrawOneMessage)
{
    EXPECT_EQ(MessagesOfPath("nope.x := 1;"), "test.st(6,1) : error: variable nope not declared\n");
    EXPECT_EQ(MessagesOfPath("nope[1] := 1;"), "test.st(6,1) : error: variable nope not declared\n");
    EXPECT_EQ(MessagesOfPath("a[nope] := 1;"), "test.st(6,3) : error: variable nope not declared\n");
}

TEST(Paths, MembersOfFunctionBlocks)
{
    const auto messagesOf = [](const std::string& statements) {
        return MessagesOf(g_Block, "f : tb; i : INT; q : ARRAY [0..1] OF tb;", statements);
    };
    EXPECT_EQ(messagesOf("f.a := 1;"), "");
    EXPECT_EQ(messagesOf("i := f.o;"), "");
    EXPECT_EQ(messagesOf("f.p := 1;"), "test.st(6,3) : error: cannot access to private element of a FUNCTION_BLOCK\n");
    EXPECT_EQ(messagesOf("q[1].p := 1;"), "test.st(6,6) : error: cannot access to private element of a FUNCTION_BLOCK\n");
    EXPECT_EQ(messagesOf("i := f.io;"), "test.st(6,8) : error: cannot access to IN_OUT element of a FUNCTION_BLOCK\n");
    EXPECT_EQ(messagesOf("f.z := 1;"), "test.st(6,3) : error: z is not a member of the struct tb\n");
}

// In a declaration the value of a path's subscript is that of any variable's initial value.
TEST(Paths, SubscriptsInDeclarations)
{
    EXPECT_EQ(MessagesOf("", "k : INT := 2; a : ARRAY [0..2] OF INT := [1, 2, 3]; x : INT := a[k];", "x := 1;"), "");
    EXPECT_EQ(MessagesOf("", "k : INT := 3; a : ARRAY [0..2] OF INT;\nx : INT := a[k];", "x := 1;"),
              "test.st(4,14) : error: index exceeds array dimension \n");
}

TEST(Paths, UnsubstitutedConstantsHaveTheirValue)
{
    const std::string source = "PROGRAM main\nVAR CONSTANT c : INT := 10; k : UINT := 1; END_VAR\n"
                               "VAR a : ARRAY [1..10] OF INT; i : INT := 99; END_VAR\n";
    const auto messagesOf = [&](const std::string& statements) {
        return MessagesOfSource(source + statements + "\nEND_PROGRAM\n", /*isSubstituting=*/false);
    };
    EXPECT_EQ(messagesOf("a[c] := 1;\na[c - 1] := 1;\na[-c + 11] := 1;"), "");
    EXPECT_EQ(messagesOf("a[c + 1] := 1;"), "test.st(4,3) : error: index exceeds array dimension \n");
    EXPECT_EQ(messagesOf("a[c * 2] := 1;"), "test.st(4,3) : error: index exceeds array dimension \n");
    EXPECT_EQ(messagesOf("a[k] := 1;"), "test.st(4,3) : error: expression requires integer value\n");
    EXPECT_EQ(messagesOf("a[i] := 1;"), "") << "an initial value is no constant's";
    EXPECT_EQ(messagesOf("a[c / 0] := 1;"), "test.st(4,5) : error: division by zero\n");
    // A list of operands isn't looked through, so the value of MIN isn't asked for.
    EXPECT_EQ(messagesOf("a[MAX(c, 11)] := 1;"), "");
}

TEST(Paths, SubstitutedConstantsAreLiterals)
{
    const std::string source = "PROGRAM main\nVAR CONSTANT c : INT := 10; k : UINT := 11; END_VAR\n"
                               "VAR a : ARRAY [1..10] OF INT; END_VAR\n";
    EXPECT_EQ(MessagesOfSource(source + "a[c] := 1;\nEND_PROGRAM\n"), "");
    EXPECT_EQ(MessagesOfSource(source + "a[k] := 1;\nEND_PROGRAM\n"),
              "test.st(4,3) : error: index exceeds array dimension \n");
}
