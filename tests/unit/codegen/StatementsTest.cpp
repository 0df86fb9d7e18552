#include "CodeFixture.h"

#include "model/Pou.h"
#include "model/TypeStruct.h"

class StatementsTest : public CodeFixture
{
protected:
    // p at 0 bit 0, q at 0 bit 1, a at 2, i at 4, n at 6, s at 8
    std::string Body(const std::string& statements)
    {
        return Program("p, q : BOOL; a, i, n, s : INT;", statements);
    }

    // a := number
    static std::string Set(int number, int line = 2)
    {
        return Mark(line) + "\tPUSH(INT)\t" + std::to_string(number) + "\n\tPOP(INT)\t[local+2]\t;a\n";
    }

    const std::string p = "\tPUSH(BOOL)\t[local+0].0\t;p\n";
    const std::string q = "\tPUSH(BOOL)\t[local+0].1\t;q\n";
    const std::string a = "\tPUSH(INT)\t[local+2]\t;a\n";
    const std::string i = "\tPUSH(INT)\t[local+4]\t;i\n";
    const std::string n = "\tPUSH(INT)\t[local+6]\t;n\n";
    const std::string s = "\tPUSH(INT)\t[local+8]\t;s\n";
    const std::string toI = "\tPOP(INT)\t[local+4]\t;i\n";
};

// ---- Lists

TEST_F(StatementsTest, EachStatementHasItsMark)
{
    EXPECT_EQ(Body("a := 1;\na := 2; a := 3;\n\na := 4;"), Set(1, 2) + Set(2, 3) + Set(3, 3) + Set(4, 5));
}

TEST_F(StatementsTest, AMarkNamesTheFirstSourceOfTheName)
{
    CNorvane norvane;
    LoadTarget(norvane);
    const auto marks = [this, &norvane](std::initializer_list<const char*> files) {
        CNode* pList = MakeTree(STMT_LIST, {});
        for (const char* szFile : files) {
            CNode* pStatement = MakeLeaf(NOP);
            pStatement->location.szFile = szFile;
            pList->AddChild(pStatement);
        }
        TextBuffer text;
        norvane.m_Code.GenerateStatementList(pList, text);
        return std::string(text.View());
    };
    norvane.m_SourceFiles = {"a.st", "b.st"};
    EXPECT_EQ(marks({"a.st", "b.st", "b.st", "a.st"}),
              "DBI FILE 0 LINE 2\n\nDBI FILE 1 LINE 2\n\nDBI FILE 1 LINE 2\n\nDBI FILE 0 LINE 2\n\n");
    norvane.m_SourceFiles.push_back("a.st");
    norvane.m_SourceFiles.push_back("c.st");
    EXPECT_EQ(marks({"a.st", "c.st"}), "DBI FILE 0 LINE 2\n\nDBI FILE 3 LINE 2\n\n") << "sources join during the run";

    EXPECT_EQ(marks({nullptr}), "DBI FILE 0 LINE 2\n\n");
    CPou pou("p", SourceLocation{1, 1, 1, 1, "b.st"});
    norvane.m_Code.m_CurrentPou = &pou;
    EXPECT_EQ(marks({nullptr}), "DBI FILE 1 LINE 2\n\n") << "without a file of its own a statement is in its POU's";
}

// ---- Assignment

TEST_F(StatementsTest, ScalarAssignment)
{
    EXPECT_EQ(Body("a := n;"), Mark(2) + n + "\tPOP(INT)\t[local+2]\t;a\n");
}

TEST_F(StatementsTest, StructAssignment)
{
    const std::string type = "TYPE t : STRUCT z : DINT; a : INT; f, g : BOOL; END_STRUCT; END_TYPE ";
    EXPECT_EQ(Program("s, u : t;", "s := u;", type),
              Mark(2) + "\tPUSH&(DWORD)\t[local+8]\t;u\n\tPUSH&(DWORD)\t[local+0]\t;s\n\tMEMCPY\t7\n\n");
    EXPECT_EQ(Program("x : ARRAY [0..3] OF t; u : t;", "x[1] := u;", type),
              Mark(2) + "\tPUSH&(DWORD)\t[local+32]\t;u\n\tPUSH&(DWORD)\t[local+8]\t;x[1]\n\tMEMCPY\t7\n\n");
}

TEST_F(StatementsTest, ArrayAssignment)
{
    EXPECT_EQ(Program("x, y : ARRAY [0..3] OF INT;", "x := y;"),
              Mark(2) + "\tPUSH&(DWORD)\t[local+8]\t;y\n\tPUSH&(DWORD)\t[local+0]\t;x\n\tMEMCPY\t8\n\n");
}

TEST_F(StatementsTest, OfTwoArraySizesTheSmallerIsCopied)
{
    Compile("PROGRAM main VAR x : ARRAY [0..3] OF INT; y : ARRAY [0..4] OF INT; END_VAR\nx := y; y := x;\nEND_PROGRAM\n");
    EXPECT_EQ(compiled.pNorvane->m_Errors.GetErrorCount(), 0);
    EXPECT_EQ(compiled.pNorvane->m_Errors.GetWarningCount(), 2);
    EXPECT_EQ(Cut(compiled.assembler, "\t;Program body\n", "\n\t\n\tRTS\n"),
              Mark(2) + "\tPUSH&(DWORD)\t[local+8]\t;y\n\tPUSH&(DWORD)\t[local+0]\t;x\n\tMEMCPY\t8\n\n" +
              Mark(2) + "\tPUSH&(DWORD)\t[local+0]\t;x\n\tPUSH&(DWORD)\t[local+8]\t;y\n\tMEMCPY\t8\n\n");
}

TEST_F(StatementsTest, AnArrayInAPathIsCopiedWhole)
{
    const std::string type = "TYPE u : STRUCT n : INT; v : ARRAY [1..4] OF INT; END_STRUCT; END_TYPE ";
    EXPECT_EQ(Program("r, w : u;", "r.v := w.v;", type),
              Mark(2) + "\tPUSH&(DWORD)\t[local+12]\t;w.v\n\tPUSH&(DWORD)\t[local+2]\t;r.v\n\tMEMCPY\t8\n\n");
    const std::string types = "TYPE row : ARRAY [0..4] OF INT; END_TYPE TYPE grid : ARRAY [1..3] OF row; END_TYPE ";
    EXPECT_EQ(Program("g : grid;", "g[1] := g[2];", types),
              Mark(2) + "\tPUSH&(DWORD)\t[local+10]\t;g[1]\n\tPUSH&(DWORD)\t[local+0]\t;g[0]\n\tMEMCPY\t10\n\n");
}

namespace
{

// Assignments that no source reaches without a diagnostic before.
class HandMadeAssignment : public testing::Test
{
protected:
    HandMadeAssignment()
    {
        LoadTarget(norvane);
        Place(x, "x", 12);
        Place(y, "y", 20);
    }

    void Place(CVariable& variable, const char* name, int offsetBytes)
    {
        variable.m_Name = name;
        variable.m_Type = norvane.m_DataTypes.FindType("INT");
        variable.m_Offset = offsetBytes;
    }

    CNode* Leaf(int kind)
    {
        return norvane.m_Nodes.MakeNode(kind, SourceLocation{2, 1, 2, 2, "test.st"});
    }

    CNode* Use(CVariable& variable, bool throughInOut = false)
    {
        CNode* pNode = Leaf(IDENTIFIER);
        pNode->pVariable = &variable;
        pNode->pType = variable.m_Type;
        pNode->bThroughInOut = throughInOut;
        return pNode;
    }

    std::string Assign(CNode* pTarget, CNode* pValue)
    {
        CNode* pNode = Leaf(ASSIGN);
        pNode->AddChild(pTarget);
        pNode->AddChild(pValue);
        TextBuffer text;
        norvane.m_Code.GenerateNode(pNode, text);
        return std::string(text.View());
    }

    CNorvane norvane;
    CVariable x;
    CVariable y;
};

}   // namespace

TEST_F(HandMadeAssignment, StringLiteral)
{
    x.m_Type = norvane.m_DataTypes.m_StringType;
    ASSERT_EQ(x.m_Type->m_Align, 4);
    CNode* pLiteral = Leaf(STR_DIR);
    pLiteral->SetString("A\xE9");
    EXPECT_EQ(Assign(Use(x), pLiteral),
              "\tPUSH 65 ;A\n"
              "\tPOP(SINT)\t[local+12]\n"
              "\tPUSH -23 ;\xE9\n"
              "\tPOP(SINT)\t[local+16]\n");
    pLiteral->SetString({});
    EXPECT_EQ(Assign(Use(x), pLiteral), "\n");
}

TEST_F(HandMadeAssignment, ThroughInOut)
{
    EXPECT_EQ(Assign(Use(x, true), Use(y)), "\tPUSH&(INT)\t[local+20]\t;y\n\tPOP(DWORD)\t[local+12]\t;x\n");
    EXPECT_EQ(Assign(Use(x, true), Use(y, true)), "\tPUSH(DWORD)\t[local+20]\t;y\n\tPOP(DWORD)\t[local+12]\t;x\n");
    EXPECT_EQ(Assign(Use(x), Use(y, true)), "\tPUSH*(INT)\t[local+20]\t;y\n\tPOP(INT)\t[local+12]\t;x\n");
    CTypeStruct type("t");
    x.m_Type = &type;
    y.m_Type = &type;
    EXPECT_EQ(Assign(Use(x, true), Use(y)), "\tPUSH&(DWORD)\t[local+20]\t;y\n\tPOP(DWORD)\t[local+12]\t;x\n");
}

TEST_F(HandMadeAssignment, AConstantIsRefused)
{
    x.m_IsConstant = true;
    testing::internal::CaptureStdout();
    EXPECT_EQ(Assign(Use(x), Use(y)), "\n");
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "test.st(2,1) : error: attempt to assign a value to a constant variable \n");
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 1);
}

// ---- IF

TEST_F(StatementsTest, If)
{
    EXPECT_EQ(Body("IF p THEN a := 1; END_IF;"),
              Mark(2) + "\t;if\n" + p + "\tJNC LABEL0002\n\t;then\n" + Set(1) + "\tLABEL0002:\n\n");
}

TEST_F(StatementsTest, IfElse)
{
    EXPECT_EQ(Body("IF p THEN a := 1; ELSE a := 2; END_IF;"),
              Mark(2) + "\t;if\n" + p + "\tJNC LABEL0002\n\t;then\n" + Set(1) + "\tJMP LABEL0003\n"
              "\tLABEL0002:\n\t;else\n" + Set(2) + "\tLABEL0003:\n");
}

TEST_F(StatementsTest, IfElsif)
{
    EXPECT_EQ(Body("IF p THEN a := 1; ELSIF q THEN a := 2; END_IF;"),
              Mark(2) + "\t;if\n" + p + "\tJNC LABEL0002\n\t;then\n" + Set(1) + "\tJMP LABEL0003\n"
              "\tLABEL0002:\n" + q + "\tJNC LABEL0003\n" + Set(2) + "\tLABEL0003:\n");
}

TEST_F(StatementsTest, IfWithSeveralElsifs)
{
    EXPECT_EQ(Body("IF p THEN a := 1; ELSIF q THEN a := 2; ELSIF p THEN a := 3; ELSIF q THEN a := 4; END_IF;"),
              Mark(2) + "\t;if\n" + p + "\tJNC LABEL0002\n\t;then\n" + Set(1) + "\tJMP LABEL0003\n"
              "\tLABEL0002:\n" + q + "\tJNC LABEL0004\n" + Set(2) + "\tJMP LABEL0003\n"
              "\tLABEL0004:\n" + p + "\tJNC LABEL0005\n" + Set(3) + "\tJMP LABEL0003\n"
              "\tLABEL0005:\n" + q + "\tJNC LABEL0003\n" + Set(4) + "\tLABEL0003:\n");
}

TEST_F(StatementsTest, IfElsifElse)
{
    EXPECT_EQ(Body("IF p THEN a := 1; ELSIF q THEN a := 2; ELSIF p THEN a := 3; ELSE a := 4; END_IF;"),
              Mark(2) + "\t;if\n" + p + "\tJNC LABEL0002\n\t;then\n" + Set(1) + "\tJMP LABEL0003\n"
              "\tLABEL0002:\n" + q + "\tJNC LABEL0004\n" + Set(2) + "\tJMP LABEL0003\n"
              "\tLABEL0004:\n" + p + "\tJNC LABEL0005\n" + Set(3) + "\tJMP LABEL0003\n"
              "\t;else\n\tLABEL0005:\n" + Set(4) + "\tLABEL0003:\n");
}

TEST_F(StatementsTest, LabelsOfAnElsifLieBehindThoseOfTheThenList)
{
    // The item's label is drawn before its condition, the end label behind the THEN list.
    EXPECT_EQ(Body("IF p THEN IF q THEN a := 1; END_IF; ELSIF p AND q THEN a := 2; ELSE a := 3; END_IF;"),
              Mark(2) + "\t;if\n" + p + "\tJNC LABEL0002\n\t;then\n" +
              Mark(2) + "\t;if\n" + q + "\tJNC LABEL0003\n\t;then\n" + Set(1) + "\tLABEL0003:\n\n"
              "\tJMP LABEL0004\n"
              "\tLABEL0002:\n"
              "\t;and\n" + p + "\tDUP(BOOL)\n\tJNC LABEL0006\n\tPOP(BOOL)\n" + q + "\tLABEL0006:\n\n"
              "\tJNC LABEL0005\n" + Set(2) + "\tJMP LABEL0004\n"
              "\t;else\n\tLABEL0005:\n" + Set(3) + "\tLABEL0004:\n");
}

TEST_F(StatementsTest, IfTrue)
{
    EXPECT_EQ(Body("IF TRUE THEN a := 1; ELSE a := 2; END_IF; IF p THEN a := 3; END_IF;"),
              Mark(2) + "\t;if\n\t;then\n" + Set(1) + "\n" +
              Mark(2) + "\t;if\n" + p + "\tJNC LABEL0003\n\t;then\n" + Set(3) + "\tLABEL0003:\n\n")
        << "the first label is drawn and never used";
    EXPECT_EQ(Body("IF 1 THEN a := 1; ELSIF p THEN a := 2; END_IF;"), Mark(2) + "\t;if\n\t;then\n" + Set(1) + "\n");
}

TEST_F(StatementsTest, IfFalse)
{
    EXPECT_EQ(Body("IF FALSE THEN a := 1; END_IF;"), Mark(2) + "\t;if\n\tLABEL0002:\n\n");
    EXPECT_EQ(Body("IF 0 THEN a := 1; ELSE a := 2; END_IF;"),
              Mark(2) + "\t;if\n\tLABEL0002:\n\t;else\n" + Set(2) + "\n");
}

TEST_F(StatementsTest, IfFalseInFrontOfElsifHasNoEndLabel)
{
    EXPECT_EQ(Body("IF FALSE THEN a := 1; ELSIF p THEN a := 2; END_IF;"),
              Mark(2) + "\t;if\n\tLABEL0002:\n" + p + "\tJNC \n" + Set(2) + "\t:\n");
    EXPECT_EQ(Body("IF FALSE THEN a := 1; ELSIF p THEN a := 2; ELSE a := 3; END_IF;"),
              Mark(2) + "\t;if\n\tLABEL0002:\n" + p + "\tJNC LABEL0003\n" + Set(2) + "\tJMP \n"
              "\t;else\n\tLABEL0003:\n" + Set(3) + "\t:\n");
}

TEST_F(StatementsTest, ALiteralThatIsNeitherZeroNorOneIsTested)
{
    EXPECT_EQ(Body("IF -1 THEN a := 1; END_IF;"),
              Mark(2) + "\t;if\n\tPUSH(BOOL)\t-1\n\tJNC LABEL0002\n\t;then\n" + Set(1) + "\tLABEL0002:\n\n");
}

// ---- WHILE and REPEAT

TEST_F(StatementsTest, While)
{
    EXPECT_EQ(Body("WHILE p DO a := 1; END_WHILE;"),
              Mark(2) + "\t;while\n\tLABEL0002:\n" + p + "\tJNC LABEL0003\n" + Set(1) +
              "\tJMP LABEL0002\n\tLABEL0003:\n\n");
}

TEST_F(StatementsTest, WhileTrueKeepsItsTest)
{
    EXPECT_EQ(Body("WHILE TRUE DO a := 1; END_WHILE;"),
              Mark(2) + "\t;while\n\tLABEL0002:\n\tPUSH(BOOL)\t1\n\tJNC LABEL0003\n" + Set(1) +
              "\tJMP LABEL0002\n\tLABEL0003:\n\n");
}

TEST_F(StatementsTest, WhileFalseIsNothing)
{
    EXPECT_EQ(Body("WHILE FALSE DO a := 1; END_WHILE; IF p THEN a := 1; END_IF;"),
              Mark(2) + "\n" +
              Mark(2) + "\t;if\n" + p + "\tJNC LABEL0002\n\t;then\n" + Set(1) + "\tLABEL0002:\n\n")
        << "its labels are not drawn";
}

TEST_F(StatementsTest, Repeat)
{
    EXPECT_EQ(Body("REPEAT a := 1; UNTIL p END_REPEAT;"),
              Mark(2) + "\t;repeat\n\tLABEL0002:\n" + Set(1) + p + "\tJNC LABEL0002\n\tLABEL0003:\n\n");
}

TEST_F(StatementsTest, RepeatDrawsBothLabelsBeforeItsStatements)
{
    EXPECT_EQ(Body("REPEAT IF p THEN EXIT; END_IF; UNTIL q END_REPEAT;"),
              Mark(2) + "\t;repeat\n\tLABEL0002:\n" +
              Mark(2) + "\t;if\n" + p + "\tJNC LABEL0004\n\t;then\n" + Mark(2) + "\tJMP LABEL0003\n\n\tLABEL0004:\n\n" +
              q + "\tJNC LABEL0002\n\tLABEL0003:\n\n");
}

// ---- FOR

TEST_F(StatementsTest, ForWithKnownBoundsTestsBelow)
{
    const std::string head = Mark(2) + "\t;for\n\tPUSH(DINT)\t1\n" + toI + "\tLABEL0002:\n" + Set(1) + i;
    const std::string tail = "\tADD(INT)\n" + toI + i;
    EXPECT_EQ(Body("FOR i := 1 TO 10 DO a := 1; END_FOR;"),
              head + "\tPUSH(INT)\t1\n" + tail + "\tPUSH(DINT)\t10\n\tCMP LE(INT)\n\tJC LABEL0002\n\tLABEL0003:\n\n");
    EXPECT_EQ(Body("FOR i := 1 TO 10 BY 2 DO a := 1; END_FOR;"),
              head + "\tPUSH(INT)\t2\n" + tail + "\tPUSH(DINT)\t10\n\tCMP LE(INT)\n\tJC LABEL0002\n\tLABEL0003:\n\n");
    EXPECT_EQ(Body("FOR i := 1 TO 1 DO a := 1; END_FOR;"),
              head + "\tPUSH(INT)\t1\n" + tail + "\tPUSH(DINT)\t1\n\tCMP LE(INT)\n\tJC LABEL0002\n\tLABEL0003:\n\n");
    EXPECT_EQ(Body("FOR i := 1 TO -3 BY -1 DO a := 1; END_FOR;"),
              head + "\tPUSH(INT)\t-1\n" + tail + "\tPUSH(DINT)\t-3\n\tCMP GE(INT)\n\tJC LABEL0002\n\tLABEL0003:\n\n");
}

TEST_F(StatementsTest, ForWithUnknownBoundsTestsAbove)
{
    EXPECT_EQ(Body("FOR i := 1 TO n DO a := 1; END_FOR;"),
              Mark(2) + "\t;for\n\tPUSH(DINT)\t1\n" + toI + "\tLABEL0002:\n" +
              i + n + "\tCMP GT(INT)\n\tJC LABEL0003\n" + Set(1) +
              i + "\tPUSH(INT)\t1\n\tADD(INT)\n" + toI + "\tJMP LABEL0002\n\tLABEL0003:\n\n");
    EXPECT_EQ(Body("FOR i := n TO 1 BY -2 DO a := 1; END_FOR;"),
              Mark(2) + "\t;for\n" + n + toI + "\tLABEL0002:\n" +
              i + "\tPUSH(DINT)\t1\n\tCMP LT(INT)\n\tJC LABEL0003\n" + Set(1) +
              i + "\tPUSH(INT)\t-2\n\tADD(INT)\n" + toI + "\tJMP LABEL0002\n\tLABEL0003:\n\n");
}

TEST_F(StatementsTest, ForWithAVariableStep)
{
    EXPECT_EQ(Body("FOR i := 1 TO 10 BY s DO a := 1; END_FOR;"),
              Mark(2) + "\t;for\n\tPUSH(DINT)\t1\n" + toI + "\tLABEL0002:\n" +
              s + "\tPUSH(INT)\t0\n\tCMP GT(INT)\n\tJC LABEL0004\n" +
              s + "\tPUSH(INT)\t0\n\tCMP LT(INT)\n\tJC LABEL0005\n"
              "\tJMP LABEL0003\n"
              "\tLABEL0005:\n" + i + "\tPUSH(DINT)\t10\n\tCMP LT(INT)\n\tJC LABEL0003\n\tJMP LABEL0006\n"
              "\tLABEL0004:\n" + i + "\tPUSH(DINT)\t10\n\tCMP GT(INT)\n\tJC LABEL0003\n"
              "\tLABEL0006:\n" + Set(1) + i + s + "\tADD(INT)\n" + toI + "\tJMP LABEL0002\n"
              "\tLABEL0003:\n\n");
}

TEST_F(StatementsTest, AStepWithoutAVariableIsRefused)
{
    Compile("PROGRAM main VAR i, s : INT; END_VAR\nFOR i := 1 TO 10 BY s + 1 DO ; END_FOR;\nEND_PROGRAM\n");
    EXPECT_EQ(compiled.pNorvane->m_Errors.GetErrorCount(), 1);
    EXPECT_EQ(compiled.output, "test.st(2,23) : error: expression requires integer value\n");
}

TEST_F(StatementsTest, ADeadForLeavesItsAssignment)
{
    const std::string dead = "\t;for\n\tPUSH(DINT)\t10\n" + toI + "\tLABEL0002:\n";
    for (const char* head : {"FOR i := 10 TO 1 DO", "FOR i := 10 TO 11 BY -1 DO", "FOR i := 10 TO 10 BY 0 DO",
                             "FOR i := 10 TO n BY 0 DO"}) {
        SCOPED_TRACE(head);
        Compile("PROGRAM main VAR p, q : BOOL; a, i, n : INT; END_VAR\n" + std::string(head) +
                " a := 1; END_FOR; EXIT; IF p THEN a := 1; END_IF;\nEND_PROGRAM\n");
        EXPECT_EQ(compiled.pNorvane->m_Errors.GetErrorCount(), 0);
        EXPECT_EQ(compiled.pNorvane->m_Errors.GetWarningCount(), 2) << "the other one is for the code behind EXIT";
        EXPECT_NE(compiled.output.find("unreachable statement, FOR cicle already satisfy;\nonly assignment executed \n"),
                  std::string::npos);
        // No line end of its own, and its exit label stays for the EXIT behind it; both labels are drawn.
        EXPECT_EQ(Cut(compiled.assembler, "\t;Program body\n", "\n\t\n\tRTS\n"),
                  Mark(2) + dead + Mark(2) + "\tJMP LABEL0003\n\n" +
                  Mark(2) + "\t;if\n" + p + "\tJNC LABEL0004\n\t;then\n" + Set(1) + "\tLABEL0004:\n\n");
    }
}

// ---- CASE

TEST_F(StatementsTest, Case)
{
    EXPECT_EQ(Body("CASE n OF\n1, 3: a := 1;\n5..7, -2: a := 2;\nELSE\na := 3;\nEND_CASE;"),
              Mark(2) + "\t;case\n" + n +
              "\tCASE (INT) 1 LABEL0003\n"
              "\tCASE (INT) 3 LABEL0003\n"
              "\tCASER (INT) 5  7 LABEL0004\n"
              "\tCASE (INT) -2 LABEL0004\n"
              "\tPOP(INT)\n" + Set(3, 6) +
              "\tJMP LABEL0002\n\tLABEL0003:\n" + Set(1, 3) +
              "\tJMP LABEL0002\n\tLABEL0004:\n" + Set(2, 4) +
              "\tLABEL0002:\n\n");
}

TEST_F(StatementsTest, CaseWithoutElse)
{
    EXPECT_EQ(Body("CASE n OF 1: a := 1; END_CASE;"),
              Mark(2) + "\t;case\n" + n + "\tCASE (INT) 1 LABEL0003\n\tPOP(INT)\n"
              "\tJMP LABEL0002\n\tLABEL0003:\n" + Set(1) + "\tLABEL0002:\n\n");
}

TEST_F(StatementsTest, ArmsOfOneTextShareALabel)
{
    EXPECT_EQ(Body("CASE n OF 1: a := 1; 2: a := 2; 3: a := 1; 4: a := 4; 5: a := 1; END_CASE;"),
              Mark(2) + "\t;case\n" + n +
              "\tCASE (INT) 1 LABEL0003\n"
              "\tCASE (INT) 2 LABEL0004\n"
              "\tCASE (INT) 3 LABEL0003\n"
              "\tCASE (INT) 4 LABEL0005\n"
              "\tCASE (INT) 5 LABEL0003\n"
              "\tPOP(INT)\n"
              "\tJMP LABEL0002\n\tLABEL0003:\n" + Set(1) +
              "\tJMP LABEL0002\n\tLABEL0004:\n" + Set(2) +
              "\tJMP LABEL0002\n\tLABEL0005:\n" + Set(4) +
              "\tLABEL0002:\n\n");
}

TEST_F(StatementsTest, ArmsOnDifferentLinesDiffer)
{
    EXPECT_EQ(Body("CASE n OF 1: a := 1;\n2: a := 1; END_CASE;"),
              Mark(2) + "\t;case\n" + n + "\tCASE (INT) 1 LABEL0003\n\tCASE (INT) 2 LABEL0004\n\tPOP(INT)\n"
              "\tJMP LABEL0002\n\tLABEL0003:\n" + Set(1, 2) +
              "\tJMP LABEL0002\n\tLABEL0004:\n" + Set(1, 3) + "\tLABEL0002:\n\n");
}

TEST_F(StatementsTest, AnArmsLabelIsDrawnBehindThoseInItButForTheFirst)
{
    const auto branch = [this](const std::string& label, int number) {
        return Mark(2) + "\t;if\n" + p + "\tJNC " + label + "\n\t;then\n" + Set(number) + "\t" + label + ":\n\n";
    };
    EXPECT_EQ(Body("CASE n OF 1: IF p THEN a := 1; END_IF; 2: IF p THEN a := 2; END_IF; "
                   "ELSE IF p THEN a := 3; END_IF; END_CASE;"),
              Mark(2) + "\t;case\n" + n + "\tCASE (INT) 1 LABEL0003\n\tCASE (INT) 2 LABEL0006\n\tPOP(INT)\n" +
              branch("LABEL0007", 3) +
              "\tJMP LABEL0002\n\tLABEL0003:\n" + branch("LABEL0004", 1) +
              "\tJMP LABEL0002\n\tLABEL0006:\n" + branch("LABEL0005", 2) + "\tLABEL0002:\n\n");
}

TEST_F(StatementsTest, LabelsOfTheSelectorLieBehindThoseOfTheArms)
{
    const std::string f = "FUNCTION f : INT VAR_INPUT b : BOOL; END_VAR f := 1; END_FUNCTION ";
    EXPECT_EQ(Program("p, q : BOOL; a : INT;", "CASE f(p AND q) OF 1: a := 1; END_CASE;", f),
              Mark(2) + "\t;case\n\t;and\n" + p + "\tDUP(BOOL)\n\tJNC LABEL0004\n\tPOP(BOOL)\n" + q + "\tLABEL0004:\n\n"
              "\tJSR FUNCTION_f\n\tCASE (INT) 1 LABEL0003\n\tPOP(INT)\n"
              "\tJMP LABEL0002\n\tLABEL0003:\n" + Set(1) + "\tLABEL0002:\n\n");
}

// ---- EXIT and RETURN

TEST_F(StatementsTest, ExitLeavesTheInnermostLoop)
{
    EXPECT_EQ(Body("WHILE p DO WHILE q DO EXIT; END_WHILE; EXIT; END_WHILE;"),
              Mark(2) + "\t;while\n\tLABEL0002:\n" + p + "\tJNC LABEL0003\n" +
              Mark(2) + "\t;while\n\tLABEL0004:\n" + q + "\tJNC LABEL0005\n" + Mark(2) + "\tJMP LABEL0005\n\n" +
              "\tJMP LABEL0004\n\tLABEL0005:\n\n" +
              Mark(2) + "\tJMP LABEL0003\n\n\tJMP LABEL0002\n\tLABEL0003:\n\n");
}

TEST_F(StatementsTest, ExitInACaseLeavesTheCase)
{
    EXPECT_EQ(Body("WHILE p DO CASE n OF 1: EXIT; END_CASE; END_WHILE;"),
              Mark(2) + "\t;while\n\tLABEL0002:\n" + p + "\tJNC LABEL0003\n" +
              Mark(2) + "\t;case\n" + n + "\tCASE (INT) 1 LABEL0005\n\tPOP(INT)\n"
              "\tJMP LABEL0004\n\tLABEL0005:\n" + Mark(2) + "\tJMP LABEL0004\n\n\tLABEL0004:\n\n"
              "\tJMP LABEL0002\n\tLABEL0003:\n\n");
    EXPECT_EQ(Body("CASE n OF 1: EXIT; END_CASE;"),
              Mark(2) + "\t;case\n" + n + "\tCASE (INT) 1 LABEL0003\n\tPOP(INT)\n"
              "\tJMP LABEL0002\n\tLABEL0003:\n" + Mark(2) + "\tJMP LABEL0002\n\n\tLABEL0002:\n\n");
}

TEST_F(StatementsTest, ExitOutOfALoopIsAnError)
{
    Compile("PROGRAM main VAR a : INT; END_VAR\nEXIT;\nEND_PROGRAM\n");
    EXPECT_EQ(compiled.output, "test.st(2,1) : error: EXIT out of a cicle\n");
    EXPECT_EQ(compiled.pNorvane->m_Errors.GetErrorCount(), 1);
    EXPECT_EQ(Cut(compiled.assembler, "\t;Program body\n", "\n\t\n\tRTS\n"), Mark(2)) << "not even a line end";
}

TEST_F(StatementsTest, ReturnJumpsToOneLabel)
{
    EXPECT_EQ(Function("VAR_INPUT p : BOOL; END_VAR", "IF p THEN RETURN; END_IF; RETURN;"),
              Mark(2) + "\t;if\n" + p + "\tJNC LABEL0001\n\t;then\n" + Mark(2) + "\tJMP LABEL0002\n\tLABEL0001:\n\n" +
              Mark(2) + "\tJMP LABEL0002\n");
    EXPECT_NE(compiled.assembler.find("\t;Return value\n\tLABEL0002:\n\tRTS\n"), std::string::npos);
}

// ---- Size

TEST_F(StatementsTest, ALongListOfStatements)
{
    constexpr int statements = 20000;
    std::string source;
    std::string expected;
    for (int k = 0; k < statements; ++k) {
        source += "a := 1;\n";
        expected += Set(1, k + 2);
    }
    EXPECT_TRUE(Body(source) == expected);
}

TEST_F(StatementsTest, ACaseOfManyArms)
{
    constexpr int arms = 5000;
    std::string source = "CASE n OF\n";
    for (int k = 0; k < arms; ++k) source += std::to_string(k) + ": a := 1;\n";
    const std::string body = Body(source + "END_CASE;");
    EXPECT_NE(body.find("\tCASE (INT) 0 LABEL0003\n\tCASE (INT) 1 LABEL0004\n"), std::string::npos);
    EXPECT_NE(body.find("\tCASE (INT) 4999 LABEL5002\n\tPOP(INT)\n"), std::string::npos);
}
