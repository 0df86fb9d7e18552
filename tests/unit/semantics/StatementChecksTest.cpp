#include "semantics/StatementSource.h"

#include "semantics/Norvane.h"

#include <gtest/gtest.h>

namespace
{

const char g_Variables[] = "i : INT; j : INT; d : DINT; e : DINT; u : UINT; r : REAL; b : BOOL;";

// The statements of these programs begin in line 5, column 1.
std::string MessagesOfStatements(const std::string& statements)
{
    return MessagesOf("", g_Variables, statements);
}

}   // namespace

// ---- Lists.

TEST(StatementChecks, UnreachableStatementsWarnOncePerList)
{
    EXPECT_EQ(MessagesOfStatements("RETURN;\ni := 1;\nj := 2;"), "test.st(6,3) : warning, unreachable statement\n");
    EXPECT_EQ(MessagesOfStatements("i := 1;\nRETURN;"), "");
    EXPECT_EQ(MessagesOfStatements("RETURN;\nRETURN;\nj := 2;"), "test.st(6,1) : warning, unreachable statement\n");
    EXPECT_EQ(MessagesOfStatements("WHILE b DO EXIT; RETURN; i := 1; END_WHILE;"),
              "test.st(5,18) : warning, unreachable statement\n");
}

TEST(StatementChecks, OnlyStatementsOfTheSameListAreUnreachable)
{
    EXPECT_EQ(MessagesOfStatements("IF b THEN RETURN; END_IF;\ni := 1;"), "");
    EXPECT_EQ(MessagesOfStatements("IF b THEN RETURN; i := 1; END_IF;\nRETURN;\nj := 1;"),
              "test.st(5,21) : warning, unreachable statement\n"
              "test.st(7,3) : warning, unreachable statement\n");
}

TEST(StatementChecks, AListEndsWhereItsLastItemEnds)
{
    CNorvane norvane;
    CNode& list = *norvane.m_Nodes.MakeNode(STMT_LIST, {1, 2, 3, 4, "t.st"});
    CNode* pItem = norvane.m_Nodes.MakeNode(NOP, {7, 8, 9, 10, "t.st"});
    EXPECT_EQ(norvane.AppendToList(&list, pItem), &list);
    EXPECT_EQ(list.location.nFirstLine, 1);
    EXPECT_EQ(list.location.nFirstColumn, 2);
    EXPECT_EQ(list.location.nLastLine, 9);
    EXPECT_EQ(list.location.nLastColumn, 10);
    ASSERT_EQ(list.GetChildCount(), 1);
    EXPECT_EQ(list.Child(0), pItem);
}

// ---- Assignments.

TEST(StatementChecks, AssignmentsOfOneTypeAreSilent)
{
    EXPECT_EQ(MessagesOfStatements("i := j;\ni := 100000;\nu := 5;\nr := 1;\nr := 2.5;\nb := TRUE;\nb := 1;\nb := i = j;"), "");
}

TEST(StatementChecks, AssignmentOfAnotherType)
{
    EXPECT_EQ(MessagesOfStatements("i := d;"), "test.st(5,3) : error, mismatch, operator := between INT and DINT \n");
    EXPECT_EQ(MessagesOfStatements("b := i;"), "test.st(5,3) : error, mismatch, operator := between BOOL and INT \n");
    EXPECT_EQ(MessagesOfStatements("i := 2.5;"), "test.st(5,6) : error: cannot assign the value to an INT\n");
    EXPECT_EQ(MessagesOfStatements("i := TRUE;"), "test.st(5,6) : error: cannot assign the value to an INT\n");
    EXPECT_EQ(MessagesOfStatements("b := 2;"), "test.st(5,6) : error: cannot assign the value to an BOOL\n");
}

TEST(StatementChecks, ATypedConstantOfAnotherTypeDrawsTwoMessages)
{
    const std::string source = "PROGRAM main\nVAR CONSTANT c : DINT := 5; END_VAR\nVAR i : INT; d : DINT; END_VAR\n";
    EXPECT_EQ(MessagesOfSource(source + "i := c;\nEND_PROGRAM\n"),
              "test.st(4,6) : error: cannot assign the value to an INT\n"
              "test.st(4,3) : error, mismatch, operator := between INT and DINT \n");
    EXPECT_EQ(MessagesOfSource(source + "d := c;\nEND_PROGRAM\n"), "");
}

TEST(StatementChecks, OneFaultOneMessage)
{
    EXPECT_EQ(MessagesOfStatements("nope := 5;"), "test.st(5,1) : error: variable nope not declared\n");
    EXPECT_EQ(MessagesOfStatements("i := nope;"), "test.st(5,6) : error: variable nope not declared\n");
    EXPECT_EQ(MessagesOfStatements("i := j + d;"), "test.st(5,8) : error, mismatch, operator +\n");
}

TEST(StatementChecks, AssignmentToAConstant)
{
    const std::string source = "TYPE t : STRUCT x : INT; END_STRUCT; END_TYPE\nPROGRAM main\n"
                               "VAR CONSTANT c : t := (x := 1); a : ARRAY [0..1] OF INT := [1, 2]; k : INT := 1; END_VAR\n";
    EXPECT_EQ(MessagesOfSource(source + "c.x := 2;\nEND_PROGRAM\n"),
              "test.st(4,8) : error: attempt to assign a value to a constant variable \n");
    EXPECT_EQ(MessagesOfSource(source + "a[1] := 2;\nEND_PROGRAM\n"),
              "test.st(4,9) : error: attempt to assign a value to a constant variable \n");
    EXPECT_EQ(MessagesOfSource(source + "k := 2;\nEND_PROGRAM\n", /*isSubstituting=*/false),
              "test.st(4,6) : error: attempt to assign a value to a constant variable \n");
}

TEST(StatementChecks, ThroughAnInOutMemberOnlyVariablesAreAssigned)
{
    const std::string block = "FUNCTION_BLOCK tb VAR_IN_OUT io : INT; END_VAR io := 1; END_FUNCTION_BLOCK\n";
    const std::string access = "test.st(6,3) : error: cannot access to IN_OUT element of a FUNCTION_BLOCK\n";
    EXPECT_EQ(MessagesOf(block, "f : tb; i : INT;", "f.io := 5;"),
              access + "test.st(6,2) : error: inout variable of function block requires a l-value\n");
    EXPECT_EQ(MessagesOf(block, "f : tb; i : INT;", "f.io := i;"), access);
}

TEST(StatementChecks, ArraysOfAnotherSize)
{
    const std::string arrays = "a : ARRAY [0..3] OF INT; c : ARRAY [0..4] OF INT; g : ARRAY [5..8] OF INT; "
                               "m : ARRAY [0..1, 0..1] OF INT; x : ARRAY [0..3] OF DINT;";
    EXPECT_EQ(MessagesOf("", arrays, "a := g;"), "") << "the bounds don't matter";
    EXPECT_EQ(MessagesOf("", arrays, "a := c;"),
              "test.st(5,3) : warning, different array dimension: found 8 bytes required 10 bytes\n");
    EXPECT_EQ(MessagesOf("", arrays, "a := m;"),
              "test.st(5,3) : error, mismatch, operator := between INT[] and INT[2dim] \n");
    EXPECT_EQ(MessagesOf("", arrays, "a := x;"),
              "test.st(5,3) : warning, different array dimension: found 8 bytes required 16 bytes\n"
              "test.st(5,3) : error, mismatch, operator := between INT[] and DINT[] \n");
    const std::string function = "FUNCTION f : INT VAR_IN_OUT a : ARRAY [0..3] OF INT; END_VAR\n"
                                 "VAR c : ARRAY [0..4] OF INT; END_VAR\na := c;\nf := 1;\nEND_FUNCTION\n";
    EXPECT_EQ(MessagesOfSource(function),
              "test.st(3,3) : error: different array dimension: found 8 bytes required 10 bytes\n");
}

// The parser needs no further token to see it, so the message stands at the closing bracket.
TEST(StatementChecks, InitialiserListsAreNoValues)
{
    const std::string type = "TYPE t : STRUCT x : INT; END_STRUCT; END_TYPE\n";
    EXPECT_EQ(MessagesOf(type, "s : t; a : ARRAY [0..1] OF INT;", "s := (x := 1);"),
              "test.st(6,13) : error: cannot initialize struct here\n");
    EXPECT_EQ(MessagesOf(type, "s : t; a : ARRAY [0..1] OF INT;", "a := [1, 2];"),
              "test.st(6,11) : error: cannot initialize array here\n");
}

// ---- Conditions.

TEST(StatementChecks, Conditions)
{
    for (const char* condition : {"b", "TRUE", "FALSE", "0", "1", "-1", "-2", "NOT 0", "NOT 1", "i = j", "NOT b", "1 < 2"})
        EXPECT_EQ(MessagesOfStatements(std::string("IF ") + condition + " THEN i := 1; END_IF;"), "") << condition;
    for (const char* condition : {"2", "-3", "i", "1.0", "u", "r"})
        EXPECT_EQ(MessagesOfStatements(std::string("IF ") + condition + " THEN i := 1; END_IF;"),
                  "test.st(5,4) : error: the statement needs a boolean expression\n")
            << condition;
}

TEST(StatementChecks, EveryConditionIsChecked)
{
    EXPECT_EQ(MessagesOfStatements("WHILE i DO j := 1; END_WHILE;"),
              "test.st(5,7) : error: the statement needs a boolean expression\n");
    EXPECT_EQ(MessagesOfStatements("REPEAT i := 1; UNTIL i END_REPEAT;"),
              "test.st(5,22) : error: the statement needs a boolean expression\n");
    EXPECT_EQ(MessagesOfStatements("IF b THEN i := 1; ELSIF i THEN j := 1; END_IF;"),
              "test.st(5,25) : error: the statement needs a boolean expression\n");
}

TEST(StatementChecks, AFailedConditionIsReportedOnceMore)
{
    EXPECT_EQ(MessagesOfStatements("IF nope THEN i := 1; END_IF;"),
              "test.st(5,4) : error: variable nope not declared\n"
              "test.st(5,4) : error: the statement needs a boolean expression\n");
}

TEST(StatementChecks, AnAliasOfBoolIsBoolean)
{
    EXPECT_EQ(MessagesOf("TYPE flag : BOOL; END_TYPE\n", "x : flag; i : INT;", "IF x THEN i := 1; END_IF;"), "");
}

// ---- FOR.

TEST(StatementChecks, GoodForStatements)
{
    EXPECT_EQ(MessagesOfStatements("FOR i := 1 TO 10 DO j := 1; END_FOR;"), "");
    EXPECT_EQ(MessagesOfStatements("FOR i := 10 TO 1 BY -1 DO j := 1; END_FOR;"), "");
    EXPECT_EQ(MessagesOfStatements("FOR i := j TO i BY j DO j := 1; END_FOR;"), "");
    EXPECT_EQ(MessagesOfStatements("FOR i := j + 1 TO j * 2 DO j := 1; END_FOR;"), "");
}

TEST(StatementChecks, ForNeedsIntegers)
{
    const std::string text = " : error: expression requires integer value\n";
    EXPECT_EQ(MessagesOfStatements("FOR i := 1 TO 2.5 DO j := 1; END_FOR;"), "test.st(5,15)" + text);
    EXPECT_EQ(MessagesOfStatements("FOR i := 1 TO u DO j := 1; END_FOR;"), "test.st(5,15)" + text);
    EXPECT_EQ(MessagesOfStatements("FOR u := 1 TO 5 DO j := 1; END_FOR;"), "");
    // The step comes first, then the start, then the end.
    EXPECT_EQ(MessagesOfStatements("FOR r := 1.5 TO 2.5 BY 3.5 DO j := 1; END_FOR;"),
              "test.st(5,24)" + text + "test.st(5,10)" + text + "test.st(5,17)" + text);
}

TEST(StatementChecks, ForComparesTypesOfVariables)
{
    EXPECT_EQ(MessagesOfStatements("FOR i := j TO d DO j := 1; END_FOR;"),
              "test.st(5,15) : error, mismatch between INT and DINT \n");
    EXPECT_EQ(MessagesOfStatements("FOR i := j TO 10 BY d DO j := 1; END_FOR;"),
              "test.st(5,21) : error, mismatch between INT and DINT \n");
    EXPECT_EQ(MessagesOfStatements("FOR i := 1 TO j BY d DO j := 1; END_FOR;"),
              "test.st(5,20) : error, mismatch between INT and DINT \n");
    EXPECT_EQ(MessagesOfStatements("FOR i := j TO d BY e DO j := 1; END_FOR;"),
              "test.st(5,15) : error, mismatch between INT and DINT \n")
        << "the first mismatch ends the check";
    EXPECT_EQ(MessagesOfStatements("FOR i := 1 TO d DO j := 1; END_FOR;"), "") << "a literal start isn't compared";
    EXPECT_EQ(MessagesOfStatements("FOR i := j TO d + 1 DO j := 1; END_FOR;"), "") << "an expression isn't compared";
}

TEST(StatementChecks, ForOverAConstant)
{
    EXPECT_EQ(MessagesOfSource("PROGRAM main\nVAR CONSTANT c : INT := 1; END_VAR\nVAR j : INT; END_VAR\n"
                               "FOR c := 1 TO 3 DO j := 1; END_FOR;\nEND_PROGRAM\n",
                               /*isSubstituting=*/false),
              "test.st(4,10) : error: attempt to assign a value to a constant variable \n"
              "test.st(4,5) : error: attempt to assign a value to a constant variable \n");
}

TEST(StatementChecks, ForWithFailedPartsAddsNothing)
{
    EXPECT_EQ(MessagesOfStatements("FOR i := nope TO d DO j := 1; END_FOR;"),
              "test.st(5,10) : error: variable nope not declared\n");
    EXPECT_EQ(MessagesOfStatements("FOR i := j TO nope BY nope DO j := 1; END_FOR;"),
              "test.st(5,15) : error: variable nope not declared\n"
              "test.st(5,23) : error: variable nope not declared\n");
}
