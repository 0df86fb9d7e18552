#include "CodeFixture.h"

#include "model/CastFunction.h"
#include "model/Pou.h"

class ExpressionsTest : public CodeFixture
{
protected:
    // x at 0, a at 2, b at 4, c at 6
    std::string IntValue(const std::string& expression) { return Value("INT", "a, b, c : INT;", expression); }

    // bits of byte 0: x 0, p 1, q 2, r 3, s 4
    std::string BoolValue(const std::string& expression) { return Value("BOOL", "p, q, r, s : BOOL;", expression); }

    const std::string a = "\tPUSH(INT)\t[local+2]\t;a\n";
    const std::string b = "\tPUSH(INT)\t[local+4]\t;b\n";
    const std::string c = "\tPUSH(INT)\t[local+6]\t;c\n";
    const std::string p = "\tPUSH(BOOL)\t[local+0].1\t;p\n";
    const std::string q = "\tPUSH(BOOL)\t[local+0].2\t;q\n";
    const std::string r = "\tPUSH(BOOL)\t[local+0].3\t;r\n";
    const std::string s = "\tPUSH(BOOL)\t[local+0].4\t;s\n";
};

// ---- Literals

TEST_F(ExpressionsTest, Literals)
{
    EXPECT_EQ(Value("INT", "", "5"), "\tPUSH(INT)\t5\n");
    EXPECT_EQ(Value("WORD", "", "16#FF"), "\tPUSH(WORD)\t255\n");
    EXPECT_EQ(Value("REAL", "", "2.5"), "\tPUSH(REAL)\t2.500000\n");
    EXPECT_EQ(Value("BOOL", "", "TRUE"), "\tPUSH(BOOL)\t1\n");
    EXPECT_EQ(Value("BOOL", "", "FALSE"), "\tPUSH(BOOL)\t0\n");
}

TEST_F(ExpressionsTest, AnIntegerPrints64Bits)
{
    EXPECT_EQ(Value("INT", "", "9223372036854775807"), "\tPUSH(INT)\t9223372036854775807\n");
}

TEST_F(ExpressionsTest, ARealHasSixDecimals)
{
    EXPECT_EQ(Value("REAL", "", "1.0E-7"), "\tPUSH(REAL)\t0.000000\n");
}

TEST_F(ExpressionsTest, AnIntegerLiteralOfRealTypePrintsAsInteger)
{
    EXPECT_EQ(Value("REAL", "r : REAL;", "r + 1"),
              "\tPUSH(REAL)\t[local+4]\t;r\n"
              "\tPUSH(REAL)\t1\n"
              "\tADD(REAL)\n");
}

TEST_F(ExpressionsTest, UntypedLiteralsTakeTheTypeOfTheirKind)
{
    EXPECT_EQ(Value("BOOL", "", "1 = 1.5"),
              "\tPUSH(INT)\t1\n"
              "\tPUSH(REAL)\t1.500000\n"
              "\tCMP EQ(INT)\n");
}

TEST_F(ExpressionsTest, AStringLiteralPushesItsBytes)
{
    CNorvane norvane;
    CNode* pString = MakeLeaf(STR_DIR);
    pString->SetString("A;\xE9");
    TextBuffer text;
    norvane.m_Code.GenerateNode(pString, text);
    EXPECT_EQ(text.View(), "\tPUSH65 ;A\n\tPUSH59 ;;\n\tPUSH-23 ;\xE9\n\n");

    pString->SetString({});
    text.Clear();
    norvane.m_Code.GenerateNode(pString, text);
    EXPECT_EQ(text.View(), "\n");
}

TEST_F(ExpressionsTest, AKindWithoutTextGivesTheLineEnd)
{
    EXPECT_EQ(Program("", ";"), Mark(2) + "\n");
    CNorvane norvane;
    TextBuffer text;
    norvane.m_Code.GenerateNode(MakeLeaf(TIME_DIR), text);
    EXPECT_EQ(text.View(), "\n");
}

TEST_F(ExpressionsTest, IsFalseAndIsTrueLiteral)
{
    CNode* pNumber = MakeLeaf(IMM_INTEGER);
    EXPECT_TRUE(CCodeGeneration::IsFalseLiteral(pNumber));
    EXPECT_FALSE(CCodeGeneration::IsTrueLiteral(pNumber));
    pNumber->nValue = 1;
    EXPECT_FALSE(CCodeGeneration::IsFalseLiteral(pNumber));
    EXPECT_TRUE(CCodeGeneration::IsTrueLiteral(pNumber));
    pNumber->nValue = -1;
    EXPECT_FALSE(CCodeGeneration::IsFalseLiteral(pNumber));
    EXPECT_FALSE(CCodeGeneration::IsTrueLiteral(pNumber));
    EXPECT_TRUE(CCodeGeneration::IsFalseLiteral(MakeLeaf(FALSE)));
    EXPECT_TRUE(CCodeGeneration::IsTrueLiteral(MakeLeaf(TRUE)));
    EXPECT_FALSE(CCodeGeneration::IsTrueLiteral(MakeLeaf(FALSE)));
    EXPECT_FALSE(CCodeGeneration::IsFalseLiteral(MakeLeaf(NOP)));
}

// ---- Operators

TEST_F(ExpressionsTest, Arithmetic)
{
    EXPECT_EQ(IntValue("a + b"), a + b + "\tADD(INT)\n");
    EXPECT_EQ(IntValue("a - b"), a + b + "\tSUB(INT)\n");
    EXPECT_EQ(IntValue("a * b"), a + b + "\tMUL(INT)\n");
    EXPECT_EQ(IntValue("a / b"), a + b + "\tDIV(INT)\n");
    EXPECT_EQ(IntValue("a MOD b"), a + b + "\tMOD(INT)\n");
    EXPECT_EQ(IntValue("MOD(a, b)"), a + b + "\tMOD(INT)\n");
}

TEST_F(ExpressionsTest, OperandsInTheOrderOfTheSource)
{
    EXPECT_EQ(IntValue("a + b * c"), a + b + c + "\tMUL(INT)\n\tADD(INT)\n");
    EXPECT_EQ(IntValue("(a + b) * c"), a + b + "\tADD(INT)\n" + c + "\tMUL(INT)\n");
    EXPECT_EQ(IntValue("a - b - c"), a + b + "\tSUB(INT)\n" + c + "\tSUB(INT)\n");
    EXPECT_EQ(IntValue("a - (b - c)"), a + b + c + "\tSUB(INT)\n\tSUB(INT)\n");
}

TEST_F(ExpressionsTest, ComparisonsCarryTheOperandsType)
{
    const std::string first = "\tPUSH(DINT)\t[local+4]\t;d\n";
    const std::string second = "\tPUSH(DINT)\t[local+8]\t;e\n";
    const auto compare = [this](const std::string& op) { return Value("BOOL", "d, e : DINT;", "d " + op + " e"); };
    EXPECT_EQ(compare("="), first + second + "\tCMP EQ(DINT)\n");
    EXPECT_EQ(compare("<>"), first + second + "\tCMP NE(DINT)\n");
    EXPECT_EQ(compare(">="), first + second + "\tCMP GE(DINT)\n");
    EXPECT_EQ(compare("<="), first + second + "\tCMP LE(DINT)\n");
    EXPECT_EQ(compare(">"), first + second + "\tCMP GT(DINT)\n");
    EXPECT_EQ(compare("<"), first + second + "\tCMP LT(DINT)\n");
}

TEST_F(ExpressionsTest, UnaryOperators)
{
    EXPECT_EQ(IntValue("-a"), a + "\tNEG(INT)\n");
    EXPECT_EQ(IntValue("NOT a"), a + "\tNOT(INT)\n");
    EXPECT_EQ(IntValue("ABS(a)"), a + "\tABS(INT)\n");
    EXPECT_EQ(IntValue("SQRT(a)"), a + "\tSQRT(INT)\n");
    EXPECT_EQ(BoolValue("NOT p"), p + "\tNOT(BOOL)\n");
}

TEST_F(ExpressionsTest, AnAliasIsPrintedAsDeclared)
{
    const std::string type = "TYPE myint : INT; END_TYPE TYPE pair : STRUCT m : myint; n : myint; END_STRUCT; END_TYPE ";
    const std::string m = "\tPUSH(myint)\t[local+2]\t;t.m\n";
    const std::string n = "\tPUSH(myint)\t[local+4]\t;t.n\n";
    EXPECT_EQ(Value("INT", "t : pair;", "t.m + t.n", type), m + n + "\tADD(myint)\n");
}

// ---- AND, OR and XOR

TEST_F(ExpressionsTest, AndJumpsOverItsRightSide)
{
    EXPECT_EQ(BoolValue("p AND q"),
              "\t;and\n" + p +
              "\tDUP(BOOL)\n"
              "\tJNC LABEL0002\n"
              "\tPOP(BOOL)\n" + q +
              "\tLABEL0002:\n"
              "\n");
}

TEST_F(ExpressionsTest, OrJumpsOverItsRightSide)
{
    EXPECT_EQ(BoolValue("p OR q"),
              "\t;or\n" + p +
              "\tDUP(BOOL)\n"
              "\tJC LABEL0002\n"
              "\tPOP(BOOL)\n" + q +
              "\tLABEL0002:\n"
              "\n");
}

TEST_F(ExpressionsTest, AShortcutsLabelIsDrawnBeforeItsOperands)
{
    EXPECT_EQ(BoolValue("p AND q OR r AND s"),
              "\t;or\n"
              "\t;and\n" + p +
              "\tDUP(BOOL)\n"
              "\tJNC LABEL0003\n"
              "\tPOP(BOOL)\n" + q +
              "\tLABEL0003:\n"
              "\n"
              "\tDUP(BOOL)\n"
              "\tJC LABEL0002\n"
              "\tPOP(BOOL)\n"
              "\t;and\n" + r +
              "\tDUP(BOOL)\n"
              "\tJNC LABEL0004\n"
              "\tPOP(BOOL)\n" + s +
              "\tLABEL0004:\n"
              "\n"
              "\tLABEL0002:\n"
              "\n");
}

TEST_F(ExpressionsTest, AChainOfAndsNestsToTheLeft)
{
    EXPECT_EQ(BoolValue("p AND q AND r"),
              "\t;and\n"
              "\t;and\n" + p +
              "\tDUP(BOOL)\n"
              "\tJNC LABEL0003\n"
              "\tPOP(BOOL)\n" + q +
              "\tLABEL0003:\n"
              "\n"
              "\tDUP(BOOL)\n"
              "\tJNC LABEL0002\n"
              "\tPOP(BOOL)\n" + r +
              "\tLABEL0002:\n"
              "\n");
}

TEST_F(ExpressionsTest, WithoutShortcutsNothingJumps)
{
    options.prepare = [](CNorvane& norvane) { norvane.m_BooleanShortcut = false; };
    EXPECT_EQ(BoolValue("p AND q"), "\t;and\n" + p + q + "\tAND(BOOL)\n\n");
    EXPECT_EQ(BoolValue("p OR q"), "\t;or\n" + p + q + "\tOR(BOOL)\n\n");
    EXPECT_EQ(BoolValue("p OR q AND r"), "\t;or\n" + p + "\t;and\n" + q + r + "\tAND(BOOL)\n\n\tOR(BOOL)\n\n");
}

TEST_F(ExpressionsTest, BitStringsHaveTheCommentAndNoJump)
{
    const std::string v = "\tPUSH(WORD)\t[local+2]\t;v\n";
    const std::string w = "\tPUSH(WORD)\t[local+4]\t;w\n";
    EXPECT_EQ(Value("WORD", "v, w : WORD;", "v AND w"), "\t;and\n" + v + w + "\tAND(WORD)\n\n");
    EXPECT_EQ(Value("WORD", "v, w : WORD;", "v OR w"), "\t;or\n" + v + w + "\tOR(WORD)\n\n");
    EXPECT_EQ(Value("WORD", "v, w : WORD;", "v XOR w"), v + w + "\tXOR(WORD)\n");
    EXPECT_EQ(Value("WORD", "v : WORD;", "v AND 16#0F"), "\t;and\n" + v + "\tPUSH(WORD)\t15\n\tAND(WORD)\n\n");
}

TEST_F(ExpressionsTest, XorNeverJumps)
{
    EXPECT_EQ(BoolValue("p XOR q"), p + q + "\tXOR(BOOL)\n");
}

// Folding takes such a node away before, so the tree is made by hand.
TEST_F(ExpressionsTest, AFalseLeftOfAndGeneratesNoRightSide)
{
    CNorvane norvane;
    LoadTarget(norvane);
    CType* pBool = norvane.m_DataTypes.FindType("BOOL");
    CPou caller("caller", SourceLocation{});
    CFunction function("f", SourceLocation{});
    norvane.m_Code.m_CurrentPou = &caller;
    CNode* pCall = MakeLeaf(FUNCTION_CALL, pBool);
    pCall->SetPou(&function);

    TextBuffer text;
    norvane.m_Code.GenerateNode(MakeTree(AND, {MakeLeaf(FALSE, pBool), pCall}, pBool), text);
    EXPECT_EQ(text.View(), "\t;and\n\tPUSH(BOOL)\t0\n");
    EXPECT_TRUE(caller.m_Callees.empty());
    EXPECT_EQ(norvane.m_Code.m_Label.m_Counter, 0);

    text.Clear();
    norvane.m_Code.GenerateNode(MakeTree(OR, {MakeLeaf(TRUE, pBool), pCall}, pBool), text);
    EXPECT_EQ(text.View(), "\t;or\n\tPUSH(BOOL)\t1\n");
    EXPECT_TRUE(caller.m_Callees.empty());

    norvane.m_BooleanShortcut = false;
    text.Clear();
    norvane.m_Code.GenerateNode(MakeTree(AND, {MakeLeaf(FALSE, pBool), pCall}, pBool), text);
    EXPECT_EQ(text.View(), "\t;and\n\tPUSH(BOOL)\t0\n\tJSR FUNCTION_f\n\tAND(BOOL)\n\n");
    EXPECT_EQ(caller.m_Callees, std::vector<CPou*>{&function});
}

TEST_F(ExpressionsTest, ADecidedNodeEndsTheLeftChain)
{
    CNorvane norvane;
    LoadTarget(norvane);
    CType* pBool = norvane.m_DataTypes.FindType("BOOL");
    CNode* pInner = MakeTree(AND, {MakeLeaf(FALSE, pBool), MakeLeaf(TRUE, pBool)}, pBool);
    TextBuffer text;
    norvane.m_Code.GenerateNode(MakeTree(XOR, {pInner, MakeLeaf(TRUE, pBool)}, pBool), text);
    EXPECT_EQ(text.View(), "\t;and\n\tPUSH(BOOL)\t0\n\tPUSH(BOOL)\t1\n\tXOR(BOOL)\n");
}

// ---- Power, shifts, and the functions of the language

TEST_F(ExpressionsTest, PowerTakesAnIntExponent)
{
    EXPECT_EQ(IntValue("a ** b"), a + b + "\tPOW(INT)\n");
    EXPECT_EQ(IntValue("a ** 2"), a + "\tPUSH(INT)\t2\n\tPOW(INT)\n");
    EXPECT_EQ(IntValue("a ** b ** c"), a + b + "\tPOW(INT)\n" + c + "\tPOW(INT)\n");
    EXPECT_EQ(Value("INT", "a : INT; n : SINT;", "a ** n"),
              a + "\tPUSH(SINT)\t[local+4]\t;n\n\tTO_INT(SINT)\n\tPOW(INT)\n");
}

TEST_F(ExpressionsTest, PowerTakesARealExponent)
{
    const std::string y = "\tPUSH(REAL)\t[local+4]\t;y\n";
    EXPECT_EQ(Value("REAL", "y, e : REAL;", "y ** e"), y + "\tPUSH(REAL)\t[local+8]\t;e\n\tPOWR(REAL)\n");
    EXPECT_EQ(Value("REAL", "y : REAL;", "y ** 0.5"), y + "\tPUSH(REAL)\t0.500000\n\tPOWR(REAL)\n");
    EXPECT_EQ(Value("REAL", "y : REAL; e : LREAL;", "y ** e"),
              y + "\tPUSH(LREAL)\t[local+8]\t;e\n\tTO_REAL(LREAL)\n\tPOWR(REAL)\n");
}

TEST_F(ExpressionsTest, ShiftsTakeAnIntCount)
{
    const std::string v = "\tPUSH(WORD)\t[local+2]\t;v\n";
    const std::string n = "\tPUSH(INT)\t[local+4]\t;n\n";
    const auto shift = [this](const std::string& name) { return Value("WORD", "v : WORD; n : INT;", name + "(v, n)"); };
    EXPECT_EQ(shift("SHL"), v + n + "\tSHL(WORD)\n");
    EXPECT_EQ(shift("SHR"), v + n + "\tSHR(WORD)\n");
    EXPECT_EQ(shift("ROL"), v + n + "\tROL(WORD)\n");
    EXPECT_EQ(shift("ROR"), v + n + "\tROR(WORD)\n");
    EXPECT_EQ(Value("WORD", "v : WORD;", "SHL(v, 100000)"), v + "\tPUSH(INT)\t32767\n\tSHL(WORD)\n");
    EXPECT_EQ(Value("WORD", "v : WORD; d : DINT;", "SHL(v, d)"),
              v + "\tPUSH(DINT)\t[local+4]\t;d\n\tTO_INT(DINT)\n\tSHL(WORD)\n");
}

TEST_F(ExpressionsTest, AnAliasOfIntIsConvertedAsACount)
{
    const std::string type = "TYPE myint : INT; END_TYPE TYPE one : STRUCT m : myint; END_STRUCT; END_TYPE ";
    EXPECT_EQ(Value("WORD", "v : WORD; t : one;", "SHL(v, t.m)", type),
              "\tPUSH(WORD)\t[local+2]\t;v\n"
              "\tPUSH(myint)\t[local+4]\t;t.m\n"
              "\tTO_INT(myint)\n"
              "\tSHL(WORD)\n");
}

TEST_F(ExpressionsTest, MulDiv)
{
    EXPECT_EQ(IntValue("MULDIV(a, b, c)"), a + b + c + "\tMULDIV(INT)\n");
}

TEST_F(ExpressionsTest, MinAndMax)
{
    EXPECT_EQ(IntValue("MIN(a, b)"), a + b + "\tMIN(INT)\n\n");
    EXPECT_EQ(IntValue("MAX(a, b, c)"), a + b + "\tMAX(INT)\n" + c + "\tMAX(INT)\n\n");
}

TEST_F(ExpressionsTest, MaxOfOneArgumentIsTheArgument)
{
    CNorvane norvane;
    TextBuffer text;
    norvane.m_Code.GenerateNode(MakeTree(MAX, {MakeTree(EXP_LIST, {MakeLeaf(TRUE)})}), text);
    EXPECT_EQ(text.View(), "\tPUSH(BOOL)\t1\n\n");
}

TEST_F(ExpressionsTest, Limit)
{
    EXPECT_EQ(IntValue("LIMIT(a, b, c)"), a + b + "\tMAX(INT)\n" + c + "\tMIN(INT)\n");
}

TEST_F(ExpressionsTest, Casts)
{
    EXPECT_EQ(Value("REAL", "a : INT;", "INT_TO_REAL(a)"), "\tPUSH(INT)\t[local+4]\t;a\n\tTO_REAL (INT)\n\n");
    EXPECT_EQ(IntValue("INT_TO_INT(a)"), a + "\tTO_INT (INT)\n\n");
}

// ---- Calls

TEST_F(ExpressionsTest, ACallPushesItsArgumentsInOrder)
{
    const std::string f = "FUNCTION f : INT VAR_INPUT i, j : INT; END_VAR f := i; END_FUNCTION ";
    EXPECT_EQ(Value("INT", "a, b : INT;", "f(a, b + 1)", f),
              a + b + "\tPUSH(INT)\t1\n\tADD(INT)\n\tJSR FUNCTION_f\n");
    ASSERT_EQ(compiled.pNorvane->m_Pous.FindPou("main")->m_Callees.size(), 1u);
    EXPECT_EQ(compiled.pNorvane->m_Pous.FindPou("main")->m_Callees[0], compiled.pNorvane->m_Pous.FindPou("f"));
}

TEST_F(ExpressionsTest, ACallStatementDropsTheResult)
{
    const std::string f = "FUNCTION f : DINT VAR_INPUT i : INT; END_VAR f := 1; END_FUNCTION ";
    EXPECT_EQ(Program("", "f(3);", f), Mark(2) + "\tPUSH(INT)\t3\n\tJSR FUNCTION_f\n\tPOP(DINT)\n");
}

TEST_F(ExpressionsTest, ACallStatementWithoutResultDropsNothing)
{
    const std::string f = "FUNCTION f VAR_INPUT i : INT; END_VAR ; END_FUNCTION ";
    EXPECT_EQ(Program("", "f(3);", f), Mark(2) + "\tPUSH(INT)\t3\n\tJSR FUNCTION_f\n");
    EXPECT_EQ(Program("", "g();", "FUNCTION g ; END_FUNCTION "), Mark(2) + "\tJSR FUNCTION_g\n");
}

TEST_F(ExpressionsTest, OutputAndInOutScalarsGoByAddress)
{
    const std::string f = "FUNCTION f VAR_INPUT i : INT; END_VAR VAR_OUTPUT o : INT; END_VAR VAR_IN_OUT u : INT; END_VAR "
                          "o := i; END_FUNCTION ";
    EXPECT_EQ(Program("x, y, z : INT;", "f(x, y, z);", f),
              Mark(2) +
              "\tPUSH(INT)\t[local+0]\t;x\n"
              "\tPUSH&(INT)\t[local+2]\t;y\n"
              "\tPUSH&(INT)\t[local+4]\t;z\n"
              "\tJSR FUNCTION_f\n");
}

TEST_F(ExpressionsTest, AggregatesGoByAddressInAnyCase)
{
    const std::string f = "TYPE t : STRUCT m : INT; END_STRUCT; END_TYPE "
                          "FUNCTION f VAR_INPUT i : t; END_VAR VAR_IN_OUT u : ARRAY [0..3] OF INT; END_VAR ; END_FUNCTION ";
    EXPECT_EQ(Program("s : t; a : ARRAY [0..3] OF INT;", "f(s, a);", f),
              Mark(2) +
              "\tPUSH&(DWORD)\t[local+0]\t;s\n"
              "\tPUSH&(DWORD)\t[local+2]\t;a\n"
              "\tJSR FUNCTION_f\n");
}

TEST_F(ExpressionsTest, AnOverloadIsCalledByItsNumber)
{
    const std::string forms = "FUNCTION f : INT VAR_INPUT i : INT; END_VAR f := i; END_FUNCTION "
                              "FUNCTION f : INT VAR_INPUT i : DINT; END_VAR f := 1; END_FUNCTION "
                              "FUNCTION f : INT VAR_INPUT i : REAL; END_VAR f := 1; END_FUNCTION ";
    EXPECT_EQ(Value("INT", "a : INT;", "f(a)", forms), a + "\tJSR FUNCTION_f\n");
    EXPECT_EQ(Value("INT", "d : DINT;", "f(d)", forms), "\tPUSH(DINT)\t[local+4]\t;d\n\tJSR FUNCTION_f__1\n");
    EXPECT_EQ(Value("INT", "r : REAL;", "f(r)", forms), "\tPUSH(REAL)\t[local+4]\t;r\n\tJSR FUNCTION_f__2\n");
    EXPECT_EQ(Program("r : REAL;", "f(r);", forms),
              Mark(2) + "\tPUSH(REAL)\t[local+0]\t;r\n\tJSR FUNCTION_f__2\n\tPOP(INT)\n");
}

TEST_F(ExpressionsTest, ACallInASubscriptCounts)
{
    const std::string f = "FUNCTION f : INT VAR_INPUT i : INT; END_VAR f := i; END_FUNCTION ";
    Program("x : INT; t : ARRAY [0..3] OF INT;", "x := t[f(x)];", f);
    ASSERT_EQ(compiled.pNorvane->m_Pous.FindPou("main")->m_Callees.size(), 1u);
}

TEST_F(ExpressionsTest, ACallCountsOnce)
{
    const std::string f = "FUNCTION f : INT VAR_INPUT i : INT; END_VAR f := i; END_FUNCTION ";
    EXPECT_EQ(Value("INT", "a : INT;", "f(a) + f(a)", f),
              a + "\tJSR FUNCTION_f\n" + a + "\tJSR FUNCTION_f\n\tADD(INT)\n");
    EXPECT_EQ(compiled.pNorvane->m_Pous.FindPou("main")->m_Callees.size(), 1u);
}

TEST_F(ExpressionsTest, System)
{
    EXPECT_EQ(Program("", "SYSTEM(5);"), Mark(2) + "\tSYS 5\n");
    EXPECT_EQ(Program("", "SYSTEM(4294967297);"), Mark(2) + "\tSYS 1\n");
    EXPECT_EQ(Program("", "SYSTEM(4294967295);"), Mark(2) + "\tSYS -1\n");
}

// ---- Faults and size

TEST_F(ExpressionsTest, AMissingOperandIsAFault)
{
    CNorvane norvane;
    TextBuffer text;
    EXPECT_EXIT(norvane.m_Code.GenerateNode(MakeLeaf('+'), text), testing::ExitedWithCode(3), "internal fault: ");
    EXPECT_EXIT(norvane.m_Code.GenerateNode(MakeLeaf(NOT), text), testing::ExitedWithCode(3), "internal fault: ");
    EXPECT_EXIT(norvane.m_Code.GenerateNode(nullptr, text), testing::ExitedWithCode(3), "internal fault: ");
    EXPECT_EXIT(norvane.m_Code.GenerateNode(MakeLeaf(FUNCTION_CALL), text), testing::ExitedWithCode(3), "internal fault: ");
}

TEST_F(ExpressionsTest, AHundredThousandTerms)
{
    constexpr int terms = 100000;
    std::string expression = "a";
    for (int i = 1; i < terms; ++i) expression += " + a";
    std::string expected = a;
    for (int i = 1; i < terms; ++i) expected += a + "\tADD(INT)\n";
    EXPECT_TRUE(Value("INT", "a : INT;", expression) == expected);
}

TEST_F(ExpressionsTest, AHundredThousandShortcuts)
{
    constexpr int terms = 100000;
    CNorvane norvane;
    LoadTarget(norvane);
    CType* pBool = norvane.m_DataTypes.FindType("BOOL");
    CNode* pChain = MakeLeaf(NOP, pBool);
    for (int i = 1; i < terms; ++i) pChain = MakeTree(AND, {pChain, MakeLeaf(NOP, pBool)}, pBool);
    TextBuffer text;
    norvane.m_Code.GenerateNode(pChain, text);
    EXPECT_EQ(norvane.m_Code.m_Label.m_Counter, terms - 1);
    EXPECT_EQ(text.View().substr(text.GetSize() - 13), "\tLABEL0001:\n\n") << "the outermost node drew the first label";
}

// ---- The list of operators

TEST_F(ExpressionsTest, EveryOperatorOfTheListHasItsInstruction)
{
    struct Operator
    {
        int kind;
        std::string mark;
        std::string mnemonic;
    };
    const std::vector<Operator> operators = {
#define OPERATOR(kind, mark, mnemonic) {kind, mark, mnemonic},
#include "frontend/Operators.def"
#undef OPERATOR
    };
    options.prepare = [](CNorvane& norvane) { norvane.m_BooleanShortcut = false; };
    for (const Operator& each : operators) {
        SCOPED_TRACE(each.mark);
        const std::string type = IsBitOperator(each.kind) ? "WORD" : "INT";
        const std::string text =
            Program("x : " + std::string(IsComparison(each.kind) ? "BOOL" : type) + "; a, b : " + type + ";",
                    "x := a " + each.mark + " b;");
        EXPECT_NE(text.find("\n\t" + each.mnemonic + "(" + type + ")\n"), std::string::npos) << text;
    }
}
