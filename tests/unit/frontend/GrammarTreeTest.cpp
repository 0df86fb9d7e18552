// The tree that each form of source gives, as the dump shows it: a node's kind, the value of an integer, and the
// children in parentheses.

#include "frontend/Parser.h"

#include "SourceFixture.h"

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <vector>

namespace
{

// The value of `key` in a line of the dump, empty if there is none.
std::string AttributeOf(const std::string& line, const std::string& key)
{
    const std::size_t start = line.find(" " + key + "=\"");
    if (start == std::string::npos) return {};
    const std::size_t first = start + key.size() + 3;
    return line.substr(first, line.find('"', first) - first);
}

std::string KindOf(const std::string& line)
{
    const std::size_t first = line.find('<') + 1;
    const std::string element = line.substr(first, line.find_first_of(" >", first) - first);
    if (element == "Node") return AttributeOf(line, "name");
    if (element == "IMM_INTEGER") return AttributeOf(line, "value");
    return element;
}

// "A(B C(D))" for the elements of a dump.
std::string Compact(std::istream& dump)
{
    std::string tree;
    std::string line;
    bool isFirstChild = false;
    while (std::getline(dump, line)) {
        if (line.compare(0, 2, "</") == 0) {
            tree += isFirstChild ? "" : ")";
            if (isFirstChild) tree.pop_back();      // a leaf: its "(" again
            isFirstChild = false;
            continue;
        }
        if (!tree.empty() && !isFirstChild) tree += ' ';
        tree += KindOf(line) + "(";
        isFirstChild = true;
    }
    return tree;
}

constexpr std::string_view g_Prefix =
    "TYPE t : STRUCT m : ARRAY [0..3] OF INT; n : INT; END_STRUCT; END_TYPE\n"
    "PROGRAM main\n"
    "VAR x, y : INT; r : REAL; b, c, d : BOOL; a : ARRAY [0..3] OF INT; s : t; v : ARRAY [0..1] OF t; END_VAR\n";

}   // namespace

class GrammarTreeTest : public SourceFixture
{
protected:
    // The tree of a whole source.
    std::string Tree(std::string_view source)
    {
        Restart();
        const std::string name = testing::TempDir() + "tree_" + std::to_string(getpid());
        g_CurrentFileName = name.c_str();
        pNorvane->m_DumpTree = true;
        printed = Parse(source);
        g_CurrentFileName = nullptr;
        std::ifstream dump(name + ".xml", std::ios::binary);
        const std::string tree = Compact(dump);
        dump.close();
        std::remove((name + ".xml").c_str());
        return tree;
    }

    // The statements of a program, without the list around them.
    std::string Statements(std::string_view source)
    {
        const std::string tree = Tree(std::string(g_Prefix) + std::string(source) + "\nEND_PROGRAM\n");
        const std::string_view list = "STMT_LIST(";
        const std::size_t start = tree.find(list);
        if (start == std::string::npos) return tree;
        const std::string_view closing = ")))";     // of the list, the program and the file
        return tree.substr(start + list.size(), tree.size() - closing.size() - start - list.size());
    }

    std::string printed;
};

// ---- The file and its parts.

TEST_F(GrammarTreeTest, Program)
{
    EXPECT_EQ(Tree("PROGRAM main ; END_PROGRAM"), "FILE_GLOBAL(PROGRAM(NEW_ID STMT_LIST(NOP)))");
    EXPECT_EQ(Tree("PROGRAM main VAR x : INT; END_VAR VAR RETAIN y : INT; END_VAR ; ; END_PROGRAM"),
              "FILE_GLOBAL(PROGRAM(NEW_ID VAR_BLOCK(VAR(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER))) "
              "VAR(OPT_LIST(RETAIN) VAR_BLOCK_BODY(LIST_ID(IDENTIFIER)))) STMT_LIST(NOP NOP)))");
}

TEST_F(GrammarTreeTest, Functions)
{
    EXPECT_EQ(Tree("FUNCTION f : INT ; END_FUNCTION"), "FILE_GLOBAL(FUNCTION(NEW_ID RETURN_TYPE STMT_LIST(NOP)))");
    EXPECT_EQ(Tree("FUNCTION f ; END_FUNCTION"), "FILE_GLOBAL(FUNCTION(NEW_ID STMT_LIST(NOP)))");
    EXPECT_EQ(Tree("FUNCTION f VAR_INPUT a : INT; END_VAR ; END_FUNCTION"),
              "FILE_GLOBAL(FUNCTION(NEW_ID VAR_BLOCK(VAR_INPUT(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER)))) "
              "STMT_LIST(NOP)))");
    EXPECT_EQ(Tree("FUNCTION f : INT VAR_INPUT a : INT; END_VAR ; END_FUNCTION"),
              "FILE_GLOBAL(FUNCTION(NEW_ID RETURN_TYPE VAR_BLOCK(VAR_INPUT(OPT_LIST "
              "VAR_BLOCK_BODY(LIST_ID(IDENTIFIER)))) STMT_LIST(NOP)))");
}

TEST_F(GrammarTreeTest, FunctionBlockWithEveryKindOfBlock)
{
    EXPECT_EQ(Tree("FUNCTION_BLOCK f VAR_INPUT a : INT; END_VAR VAR_OUTPUT b : INT; END_VAR "
                   "VAR_IN_OUT c : INT; END_VAR VAR_EXTERNAL RETAIN d : INT; END_VAR VAR e : INT; END_VAR ; "
                   "END_FUNCTION_BLOCK"),
              "FILE_GLOBAL(FUNCTION_BLOCK(NEW_ID VAR_BLOCK("
              "VAR_INPUT(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER))) "
              "VAR_OUTPUT(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER))) "
              "VAR_IN_OUT(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER))) "
              "VAR_EXTERNAL(OPT_LIST(RETAIN) VAR_BLOCK_BODY(LIST_ID(IDENTIFIER))) "
              "VAR(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER)))) STMT_LIST(NOP)))");
}

TEST_F(GrammarTreeTest, Attributes)
{
    const std::string body = " VAR_BLOCK_BODY(LIST_ID(IDENTIFIER))))";
    EXPECT_EQ(Tree("VAR_GLOBAL CONSTANT x : INT := 1; END_VAR"),
              "FILE_GLOBAL(VAR_GLOBAL(OPT_LIST(CONSTANT)" + body);
    EXPECT_EQ(Tree("VAR_GLOBAL CONSTANT RETAIN x : INT := 1; END_VAR"),
              "FILE_GLOBAL(VAR_GLOBAL(OPT_LIST(CONSTANT RETAIN)" + body);
    EXPECT_EQ(Tree("VAR_GLOBAL RETAIN CONSTANT x : INT := 1; END_VAR"),
              "FILE_GLOBAL(VAR_GLOBAL(OPT_LIST(RETAIN CONSTANT)" + body);
}

TEST_F(GrammarTreeTest, PartsOfAFileStandInOrder)
{
    EXPECT_EQ(Tree("VAR_GLOBAL g : INT; END_VAR FUNCTION f ; END_FUNCTION TYPE u : INT; END_TYPE "
                   "PROGRAM main ; END_PROGRAM"),
              "FILE_GLOBAL(VAR_GLOBAL(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER))) FUNCTION(NEW_ID STMT_LIST(NOP)) "
              "TYPE_USER(LIST_ID(IDENTIFIER)) PROGRAM(NEW_ID STMT_LIST(NOP)))");
}

// ---- Declarations and types.

TEST_F(GrammarTreeTest, DeclarationsKeepOnlyTheirNames)
{
    EXPECT_EQ(Tree("VAR_GLOBAL x, y : INT := 1; a : ARRAY [0..3] OF INT := [1, 2(3), 4]; b AT %IX0.0 : BOOL; END_VAR"),
              "FILE_GLOBAL(VAR_GLOBAL(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER IDENTIFIER) LIST_ID(IDENTIFIER) "
              "LIST_ID(IDENTIFIER))))");
}

TEST_F(GrammarTreeTest, NamelessAddressGivesAnEmptyList)
{
    EXPECT_EQ(Tree("VAR_GLOBAL AT %IX0.0 : BOOL; x : INT; END_VAR"),
              "FILE_GLOBAL(VAR_GLOBAL(OPT_LIST VAR_BLOCK_BODY(LIST_ID LIST_ID(IDENTIFIER))))");
    EXPECT_EQ(printed, "");
}

TEST_F(GrammarTreeTest, StructValuesJoinTheList)
{
    EXPECT_EQ(Tree("TYPE t : STRUCT m, n : INT; END_STRUCT; END_TYPE VAR_GLOBAL s : t := (m := 1, n := 2); END_VAR"),
              "FILE_GLOBAL(TYPE_USER(STRUCT(LIST_ID(IDENTIFIER) INIT_DECL_LIST(LIST_ID(IDENTIFIER IDENTIFIER)))) "
              "VAR_GLOBAL(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER STRUCT_INIT_LIST(NEW_ID 1 NEW_ID 2)))))");
}

TEST_F(GrammarTreeTest, EnumerationsAndSubranges)
{
    EXPECT_EQ(Tree("TYPE c : (red, green); d : (on, off) := on; e : INT (1..5); f : INT (1..5) := 2; END_TYPE"),
              "FILE_GLOBAL(TYPE_USER(ENUM(LIST_ID(IDENTIFIER) LIST_ID(IDENTIFIER IDENTIFIER)) "
              "ENUM(LIST_ID(IDENTIFIER) LIST_ID(IDENTIFIER IDENTIFIER) NEW_ID) "
              "SUB_RANGE(LIST_ID(IDENTIFIER) 1 5) SUB_RANGE(LIST_ID(IDENTIFIER) 1 5 2)))");
}

TEST_F(GrammarTreeTest, LocatedTimeDeclaresNothing)
{
    EXPECT_EQ(Tree("VAR_GLOBAL x AT %MD0 : TIME; y AT %MD0 : TIME := T#1s; z : INT; END_VAR"),
              "FILE_GLOBAL(VAR_GLOBAL(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER) LIST_ID(IDENTIFIER) "
              "LIST_ID(IDENTIFIER))))");
    EXPECT_EQ(pNorvane->FindVariable("x"), nullptr);
    EXPECT_EQ(pNorvane->FindVariable("y"), nullptr);
    EXPECT_NE(pNorvane->FindVariable("z"), nullptr);
}

// ---- Statements.

TEST_F(GrammarTreeTest, Branches)
{
    EXPECT_EQ(Statements("IF b THEN ; END_IF;"), "IF(IDENTIFIER STMT_LIST(NOP))");
    EXPECT_EQ(Statements("IF b THEN ; ELSE RETURN; END_IF;"), "IF(IDENTIFIER STMT_LIST(NOP) STMT_LIST(RETURN))");
    EXPECT_EQ(Statements("IF b THEN ; ELSIF c THEN ; ELSIF d THEN RETURN; END_IF;"),
              "IF(IDENTIFIER STMT_LIST(NOP) ELSEIF_LIST(ELSIF(IDENTIFIER STMT_LIST(NOP)) "
              "ELSIF(IDENTIFIER STMT_LIST(RETURN))))");
    EXPECT_EQ(Statements("IF b THEN ; ELSIF c THEN ; ELSE RETURN; END_IF;"),
              "IF(IDENTIFIER STMT_LIST(NOP) ELSEIF_LIST(ELSIF(IDENTIFIER STMT_LIST(NOP))) STMT_LIST(RETURN))");
}

TEST_F(GrammarTreeTest, Loops)
{
    EXPECT_EQ(Statements("WHILE b DO EXIT; END_WHILE;"), "WHILE(IDENTIFIER STMT_LIST(EXIT))");
    EXPECT_EQ(Statements("REPEAT ; UNTIL b END_REPEAT;"), "REPEAT(STMT_LIST(NOP) IDENTIFIER)");
    EXPECT_EQ(Statements("FOR x := 1 TO 3 DO ; END_FOR;"), "FOR(:=(IDENTIFIER 1) 3 STMT_LIST(NOP))");
    EXPECT_EQ(Statements("FOR x := 1 TO 9 BY 2 DO ; END_FOR;"), "FOR(:=(IDENTIFIER 1) 9 2 STMT_LIST(NOP))");
}

TEST_F(GrammarTreeTest, CaseLabelsAndBodiesAlternate)
{
    EXPECT_EQ(Statements("CASE x OF 1, 2..3: ; -5..-4, +6: RETURN; 7, 8..9: ; END_CASE;"),
              "CASE(IDENTIFIER CASE_BODY_LIST(ISV_LIST(1 ..(2 3)) STMT_LIST(NOP) ISV_LIST(..(-5 -4) 6) "
              "STMT_LIST(RETURN) ISV_LIST(7 ..(8 9)) STMT_LIST(NOP)))");
    EXPECT_EQ(Statements("CASE x OF 1: ; ELSE RETURN; END_CASE;"),
              "CASE(IDENTIFIER CASE_BODY_LIST(ISV_LIST(1) STMT_LIST(NOP)) STMT_LIST(RETURN))");
}

TEST_F(GrammarTreeTest, CaseLabelAtTheLimit)
{
    // The scanner's largest value, negated.
    EXPECT_EQ(Statements("CASE x OF -9223372036854775808: ; END_CASE;").find(
                  "CASE(IDENTIFIER CASE_BODY_LIST(ISV_LIST(-9223372036854775807)"), 0u);
}

TEST_F(GrammarTreeTest, SystemCall)
{
    EXPECT_EQ(Statements("SYSTEM(3);"), "SYSTEM(3)");
}

// ---- Paths.

TEST_F(GrammarTreeTest, PathsAreFlat)
{
    EXPECT_EQ(Statements("s.m[1] := v[1].m[2];"),
              ":=(DOT(IDENTIFIER NEW_ID EXP_LIST(1)) ARRAY_ELEMENT(IDENTIFIER EXP_LIST(1) NEW_ID EXP_LIST(2)))");
    EXPECT_EQ(Statements("v[x].n := s.n;"),
              ":=(ARRAY_ELEMENT(IDENTIFIER EXP_LIST(IDENTIFIER) NEW_ID) DOT(IDENTIFIER NEW_ID))");
}

// ---- Expressions.

TEST_F(GrammarTreeTest, OperatorsAreLeftAssociative)
{
    EXPECT_EQ(Statements("x := x - x - x;"), ":=(IDENTIFIER -(-(IDENTIFIER IDENTIFIER) IDENTIFIER))");
    EXPECT_EQ(Statements("r := r ** r ** r;"), ":=(IDENTIFIER POWER(POWER(IDENTIFIER IDENTIFIER) IDENTIFIER))");
    EXPECT_EQ(Statements("x := x / x MOD x * x;"),
              ":=(IDENTIFIER *(MOD(/(IDENTIFIER IDENTIFIER) IDENTIFIER) IDENTIFIER))");
}

TEST_F(GrammarTreeTest, OperatorsBindByLevel)
{
    EXPECT_EQ(Statements("b := b OR c XOR d & b;"),
              ":=(IDENTIFIER OR(IDENTIFIER XOR(IDENTIFIER AND(IDENTIFIER IDENTIFIER))))");
    EXPECT_EQ(Statements("b := b AND c = d;"), ":=(IDENTIFIER AND(IDENTIFIER =(IDENTIFIER IDENTIFIER)))");
    EXPECT_EQ(Statements("b := b = x < y;"), ":=(IDENTIFIER =(IDENTIFIER &lt;(IDENTIFIER IDENTIFIER)))");
    EXPECT_EQ(Statements("b := x + y >= x * y;"),
              ":=(IDENTIFIER &gt;=(+(IDENTIFIER IDENTIFIER) *(IDENTIFIER IDENTIFIER)))");
    EXPECT_EQ(Statements("x := x + y * x;"), ":=(IDENTIFIER +(IDENTIFIER *(IDENTIFIER IDENTIFIER)))");
    EXPECT_EQ(Statements("x := (x + y) * x;"), ":=(IDENTIFIER *(+(IDENTIFIER IDENTIFIER) IDENTIFIER))");
}

TEST_F(GrammarTreeTest, UnaryOperators)
{
    EXPECT_EQ(Statements("b := NOT b = c;"), ":=(IDENTIFIER =(NOT(IDENTIFIER) IDENTIFIER))");
    EXPECT_EQ(Statements("r := - r ** r;"), ":=(IDENTIFIER -(POWER(IDENTIFIER IDENTIFIER)))");
    EXPECT_EQ(Statements("x := - x * y;"), ":=(IDENTIFIER *(-(IDENTIFIER) IDENTIFIER))");
    EXPECT_EQ(Statements("x := + x;"), ":=(IDENTIFIER IDENTIFIER)");
    EXPECT_EQ(Statements("x := x - - y;"), ":=(IDENTIFIER -(IDENTIFIER -(IDENTIFIER)))");
}

TEST_F(GrammarTreeTest, BuiltInFunctions)
{
    EXPECT_EQ(Statements("x := MOD(x, y);"), ":=(IDENTIFIER MOD(IDENTIFIER IDENTIFIER))");
    EXPECT_EQ(Statements("x := MULDIV(x, y, x);"), ":=(IDENTIFIER MULDIV(IDENTIFIER IDENTIFIER IDENTIFIER))");
    EXPECT_EQ(Statements("x := LIMIT(x, y, x);"), ":=(IDENTIFIER LIMIT(IDENTIFIER IDENTIFIER IDENTIFIER))");
    EXPECT_EQ(Statements("x := MIN(x, y, x);"), ":=(IDENTIFIER MIN(EXP_LIST(IDENTIFIER IDENTIFIER IDENTIFIER)))");
    EXPECT_EQ(Statements("x := MAX(x, y);"), ":=(IDENTIFIER MAX(EXP_LIST(IDENTIFIER IDENTIFIER)))");
    EXPECT_EQ(Statements("x := ABS(x);"), ":=(IDENTIFIER ABS(IDENTIFIER))");
    EXPECT_EQ(Statements("r := SQRT(r);"), ":=(IDENTIFIER SQRT(IDENTIFIER))");
    EXPECT_EQ(Statements("r := INT_TO_REAL(x);"), ":=(IDENTIFIER CAST_FUNCTION_CALL(IDENTIFIER))");
    EXPECT_EQ(Statements("b := TRUE;"), ":=(IDENTIFIER TRUE)");
    EXPECT_EQ(Statements("b := FALSE;"), ":=(IDENTIFIER FALSE)");
}

TEST_F(GrammarTreeTest, TimesAreLeaves)
{
    EXPECT_EQ(Statements("x := T#1s;"), ":=(IDENTIFIER TIME_DIR)");
    EXPECT_EQ(Statements("x := DATE#2020-01-01;"), ":=(IDENTIFIER DATE_DIR)");
    EXPECT_EQ(Statements("x := TOD#12:00:00;"), ":=(IDENTIFIER TIME_OF_DAY_DIR)");
    EXPECT_EQ(Statements("x := DT#2020-01-01-12:00:00;"), ":=(IDENTIFIER DATE_AND_TIME_DIR)");
}

// ---- What recovery leaves.

TEST_F(GrammarTreeTest, EveryDiscardedTokenAddsAnErrorNode)
{
    EXPECT_EQ(Statements("x 1; ;"), "ERROR_ ERROR_ NOP NOP");       // for "x" and for "1"
    EXPECT_EQ(Statements("; x 1 2 3; ;"), "NOP ERROR_ ERROR_ ERROR_ ERROR_ NOP NOP");
}

TEST_F(GrammarTreeTest, ErrorsOfAFile)
{
    EXPECT_EQ(Tree(""), "FILE_GLOBAL(ERROR_)");
    EXPECT_EQ(Tree("PROGRAM main ; END_PROGRAM x y"),
              "FILE_GLOBAL(PROGRAM(NEW_ID STMT_LIST(NOP)) ERROR_ ERROR_ ERROR_)");
}

TEST_F(GrammarTreeTest, ErrorsOfBlocks)
{
    EXPECT_EQ(Tree("VAR_GLOBAL 5 x : INT; 5 END_VAR"),
              "FILE_GLOBAL(VAR_GLOBAL(OPT_LIST VAR_BLOCK_BODY(ERROR_ ERROR_ LIST_ID(IDENTIFIER) ERROR_ ERROR_)))");
}

TEST_F(GrammarTreeTest, BrokenDeclarationKeepsItsNames)
{
    EXPECT_EQ(Tree("VAR_GLOBAL x, y : 5 6 7; END_VAR"),
              "FILE_GLOBAL(VAR_GLOBAL(OPT_LIST VAR_BLOCK_BODY(LIST_ID(IDENTIFIER IDENTIFIER))))");
}
