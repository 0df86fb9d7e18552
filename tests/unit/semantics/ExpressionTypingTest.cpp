#include "semantics/ExpressionFixture.h"

#include "model/ArrayIndex.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"

#include <array>
#include <limits>
#include <sstream>

namespace {

class ExpressionTyping : public ExpressionFixture
{
};

// ---- A table over operators, operand types and literals.

// What a literal beside a variable of some type leads to.
//   .  accepted, the node and the literal have the type of the variable
//   b  accepted, the node is a BOOL and the literal has the type of the variable
//   p  accepted, the node has the type of the variable, the literal is not looked at
//   I  the node and the literal on its left are INT
//   R  the node and the literal on its left are REAL
//   _  nothing is said and nothing is typed
//   T  the node is the literal TRUE of type BOOL
//   m  operator mismatch, the node has the error type
//   n  not allowed on the type of the variable, error type
//   N  not allowed on INT, error type
//   e  not allowed on a type without a name, error type
//   c  the literal cannot take the type; the node stays untyped
//   k  bit string expected, then the literal and the node take the type all the same
//   x  bit string expected, then the literal cannot take the type; error type
struct LiteralRow
{
    std::vector<int> operators;
    std::string_view types;       // blank-separated
    std::string_view right;       // with 5, -5, 2.5, TRUE on the right of the variable
    std::string_view left;        // and on its left
};

constexpr std::array<std::string_view, 4> g_Literals = {"5", "-5", "2.5", "TRUE"};

constexpr std::string_view g_Signed = "SINT INT DINT LINT";
constexpr std::string_view g_Unsigned = "USINT UINT UDINT ULINT";
constexpr std::string_view g_Reals = "REAL LREAL";
constexpr std::string_view g_Bits = "BYTE WORD DWORD LWORD";
constexpr std::string_view g_Others = "STRING TIME DATE TIME_OF_DAY DATE_AND_TIME";

static const std::vector<LiteralRow>& GetLiteralTable()
{
    static const std::vector<int> arithmetic = {'+', '-', '*', '/'};
    static const std::vector<int> comparisons = {EQUAL, NOT_EQUAL, GREATER, LESS, GREATER_EQUAL, LESS_EQUAL};
    static const std::vector<int> shifts = {SHL, SHR, ROL, ROR};
    static const std::vector<LiteralRow> table = {
        {arithmetic, g_Signed, "..mm", "..mm"},
        {arithmetic, g_Unsigned, ".mmm", ".mmm"},
        {arithmetic, g_Reals, "...m", "mmmm"},
        {arithmetic, g_Bits, "mmmm", "mmmm"},
        {arithmetic, "BOOL", "mmmm", "mmmm"},
        {arithmetic, g_Others, "mmmm", "mmmm"},

        {{MOD}, g_Signed, "..cc", "..cc"},
        {{MOD}, g_Unsigned, "..cc", "..cc"},
        {{MOD}, g_Reals, "...c", "...c"},
        {{MOD}, g_Bits, "..cc", "..cc"},
        {{MOD}, "BOOL", "ccc.", "ccc."},
        {{MOD}, g_Others, "cccc", "cccc"},

        {{POWER}, g_Signed, "pppp", "IIR_"},
        {{POWER}, g_Unsigned, "pppp", "IIR_"},
        {{POWER}, g_Reals, "pppp", "IIR_"},
        {{POWER}, g_Bits, "nnnn", "IIR_"},
        {{POWER}, "BOOL", "nnnn", "IIR_"},
        {{POWER}, g_Others, "nnnn", "IIR_"},

        {comparisons, g_Signed, "bbcc", "bbcc"},
        {comparisons, g_Unsigned, "bbcc", "bbcc"},
        {comparisons, g_Reals, "bbbc", "bbbc"},
        {comparisons, g_Bits, "bbcc", "bbcc"},
        {comparisons, "BOOL", "cccb", "cccb"},
        {comparisons, g_Others, "cccc", "cccc"},

        {{AND, XOR}, g_Signed, "kkxx", "kkxx"},
        {{AND, XOR}, g_Unsigned, "kkxx", "kkxx"},
        {{AND, XOR}, g_Reals, "kkkx", "kkkx"},
        {{AND, XOR}, g_Bits, "..cc", "..cc"},
        {{AND, XOR}, "BOOL", "ccc.", "ccc."},
        {{AND, XOR}, g_Others, "xxxx", "xxxx"},

        {{OR}, g_Signed, "kkxx", "kkxT"},
        {{OR}, g_Unsigned, "kkxx", "kkxT"},
        {{OR}, g_Reals, "kkkx", "kkkT"},
        {{OR}, g_Bits, "..cc", "..cT"},
        {{OR}, "BOOL", "ccc.", "cccT"},
        {{OR}, g_Others, "xxxx", "xxxT"},

        {shifts, g_Signed, "nnnn", "NNee"},
        {shifts, g_Unsigned, "nnnn", "NNee"},
        {shifts, g_Reals, "nnnn", "NNee"},
        {shifts, g_Bits, "pppp", "NNee"},
        {shifts, "BOOL", "nnnn", "NNee"},
        {shifts, g_Others, "nnnn", "NNee"},
    };
    return table;
}

static std::vector<std::string> SplitWords(std::string_view text)
{
    std::istringstream stream{std::string(text)};
    std::vector<std::string> words;
    std::string word;
    while (stream >> word) words.push_back(word);
    return words;
}

struct Expected
{
    std::string output;
    std::string nodeType;
    std::string literalType = "any";     // any: not part of the expectation
};

static Expected Translate(char code, const std::string& op, const std::string& type, int literalColumn)
{
    const std::string mismatch = "t.st(1,50) : error, mismatch, operator " + op + "\n";
    const std::string notAllowed = "t.st(1,50) : error, mismatch, operation " + op + " not allowed on ";
    const std::string bits = "t.st(1,50) : error: mismatch, BOOLEAN, WORD, DWORD, LWORD or BYTE expected\n";
    const std::string cannot =
        "t.st(1," + std::to_string(literalColumn) + ") : error: cannot assign the value to an " + type + "\n";
    switch (code) {
        case '.': return {"", type, type};
        case 'b': return {"", "BOOL", type};
        case 'p': return {"", type};
        case 'I': return {"", "INT", "INT"};
        case 'R': return {"", "REAL", "REAL"};
        case '_': return {"", "none", "none"};
        case 'T': return {"", "BOOL"};
        case 'm': return {mismatch, "ERROR"};
        case 'n': return {notAllowed + type + "\n", "ERROR"};
        case 'N': return {notAllowed + "INT\n", "ERROR", "INT"};
        case 'e': return {notAllowed + "\n", "ERROR", "none"};
        case 'c': return {cannot, "none", "none"};
        case 'k': return {bits, type, type};
        case 'x': return {bits + cannot, "ERROR", "none"};
        default: return {"unknown code", ""};
    }
}

TEST_F(ExpressionTyping, LiteralsBesideVariablesOfEveryType)
{
    for (const LiteralRow& row : GetLiteralTable()) {
        for (const std::string& type : SplitWords(row.types)) {
            Declare("v", type);
            for (const int op : row.operators) {
                for (std::size_t i = 0; i < 2 * g_Literals.size(); ++i) {
                    const bool onRight = i < g_Literals.size();
                    const std::string_view literal = g_Literals[i % g_Literals.size()];
                    const char code = (onRight ? row.right : row.left)[i % g_Literals.size()];
                    SCOPED_TRACE(GetOperatorText(op) + ", variable of " + type + ", literal " + std::string(literal)
                                 + (onRight ? " right" : " left"));
                    const Expected expected = Translate(code, GetOperatorText(op), type, onRight ? 20 : 10);

                    CNode* pNode = Run([&] { return onRight ? Op(op, "v", literal) : Op(op, literal, "v"); });

                    EXPECT_EQ(printed, expected.output);
                    EXPECT_EQ(NameOf(pNode->pType), expected.nodeType);
                    if (code == 'T') {
                        EXPECT_EQ(pNode->nKind, TRUE);
                        continue;
                    }
                    ASSERT_EQ(pNode->GetChildCount(), 2);
                    if (expected.literalType == "any") continue;
                    EXPECT_EQ(NameOf(pNode->Child(onRight ? 1 : 0)->pType), expected.literalType);
                }
            }
        }
    }
}

// Two variables of one type: "." the type, "b" BOOL, "w" operator between, "n" not allowed, "k" bit string
// expected.
struct PairRow
{
    std::vector<int> operators;
    std::string_view signedOnes, unsignedOnes, reals, bits, boolean, others;
};

static char GetPairCode(const PairRow& row, const std::string& type)
{
    const auto contains = [&type](std::string_view list) {
        for (const std::string& word : SplitWords(list)) {
            if (word == type) return true;
        }
        return false;
    };
    if (contains(g_Signed)) return row.signedOnes[0];
    if (contains(g_Unsigned)) return row.unsignedOnes[0];
    if (contains(g_Reals)) return row.reals[0];
    if (contains(g_Bits)) return row.bits[0];
    return type == "BOOL" ? row.boolean[0] : row.others[0];
}

static const std::vector<PairRow>& GetPairTable()
{
    static const std::vector<PairRow> table = {
        {{'+', '-', '*', '/'}, ".", ".", ".", "w", "w", "w"},
        {{MOD}, ".", "n", "n", "n", "n", "n"},
        {{POWER}, ".", ".", ".", "n", "n", "n"},
        {{EQUAL, NOT_EQUAL, GREATER, LESS, GREATER_EQUAL, LESS_EQUAL}, "b", "b", "b", "b", "b", "b"},
        {{AND, OR, XOR}, "k", "k", "n", ".", ".", "n"},
        {{SHL, SHR, ROL, ROR}, "n", "n", "n", ".", "n", "n"},
    };
    return table;
}

static Expected TranslatePair(char code, const std::string& op, const std::string& type)
{
    switch (code) {
        case '.': return {"", type};
        case 'b': return {"", "BOOL"};
        case 'w': return {"t.st(1,50) : error, mismatch, operator " + op + " between " + type + " and " + type + " \n", "ERROR"};
        case 'n': return {"t.st(1,50) : error, mismatch, operation " + op + " not allowed on " + type + "\n", "ERROR"};
        case 'k': return {"t.st(1,50) : error: mismatch, BOOLEAN, WORD, DWORD, LWORD or BYTE expected\n", "ERROR"};
        default: return {"unknown code", ""};
    }
}

static std::vector<std::string> GetAllTypes()
{
    std::vector<std::string> all;
    for (const std::string_view list : {g_Signed, g_Unsigned, g_Reals, g_Bits, std::string_view("BOOL"), g_Others}) {
        for (const std::string& type : SplitWords(list)) all.push_back(type);
    }
    return all;
}

TEST_F(ExpressionTyping, TwoVariablesOfOneType)
{
    for (const PairRow& row : GetPairTable()) {
        for (const std::string& type : GetAllTypes()) {
            Declare("v", type);
            Declare("w", type);
            for (const int op : row.operators) {
                SCOPED_TRACE(GetOperatorText(op) + " on " + type);
                const Expected expected = TranslatePair(GetPairCode(row, type), GetOperatorText(op), type);
                CNode* pNode = Run([&] { return Op(op, "v", "w"); });
                EXPECT_EQ(printed, expected.output);
                EXPECT_EQ(NameOf(pNode->pType), expected.nodeType);
                EXPECT_EQ(pNode->GetChildCount(), 2);
            }
        }
    }
}

// There is no rank of types: any two that differ are a mismatch, but for a power and a shift, which don't look
// at their right operand.
TEST_F(ExpressionTyping, TwoVariablesOfDifferentTypes)
{
    const std::vector<std::string> types = GetAllTypes();
    for (const PairRow& row : GetPairTable()) {
        for (const std::string& left : types) {
            for (const std::string& right : types) {
                if (left == right) continue;
                Declare("v", left);
                Declare("w", right);
                for (const int op : row.operators) {
                    SCOPED_TRACE(GetOperatorText(op) + " between " + left + " and " + right);
                    const bool ignoresRight = op == POWER || op == SHL || op == SHR || op == ROL || op == ROR;
                    Expected expected{"t.st(1,50) : error, mismatch, operator " + GetOperatorText(op) + "\n", "ERROR"};
                    if (ignoresRight) expected = TranslatePair(GetPairCode(row, left), GetOperatorText(op), left);
                    CNode* pNode = Run([&] { return Op(op, "v", "w"); });
                    EXPECT_EQ(printed, expected.output);
                    EXPECT_EQ(NameOf(pNode->pType), expected.nodeType);
                }
            }
        }
    }
}

TEST_F(ExpressionTyping, OneOperandOfEveryType)
{
    struct Row { int op; std::string_view accepted; };
    const Row rows[] = {
        {UNARY_MINUS, "SINT INT DINT LINT USINT UINT UDINT ULINT REAL LREAL "},
        {ABS, "SINT INT DINT LINT USINT UINT UDINT ULINT REAL LREAL "},
        {SQRT, "SINT INT DINT LINT USINT UINT UDINT ULINT REAL LREAL "},
        {NOT, "SINT INT DINT LINT USINT UINT UDINT ULINT BYTE WORD DWORD LWORD BOOL "},
    };
    for (const Row& row : rows) {
        for (const std::string& type : GetAllTypes()) {
            SCOPED_TRACE(GetOperatorText(row.op) + " of " + type);
            Declare("v", type);
            bool accepted = false;
            for (const std::string& word : SplitWords(row.accepted)) accepted = accepted || word == type;
            CNode* pNode = Run([&] { return Op(row.op, "v"); });
            EXPECT_EQ(NameOf(pNode->pType), accepted ? type : "ERROR");
            const std::string message =
                "t.st(1,50) : error, mismatch, operation " + GetOperatorText(row.op) + " not allowed on " + type + "\n";
            EXPECT_EQ(printed, accepted ? "" : message);
        }
    }
}

// ---- Literals that have a type already: substituted constants.

TEST_F(ExpressionTyping, ConstantBecomesALiteralOfItsType)
{
    DeclareConstant("ci", "DINT", Signed(-7));
    DeclareConstant("cu", "UINT", Unsigned(9));
    DeclareConstant("cr", "REAL", Real(1.5));
    DeclareConstant("cb", "BOOL", Bool(true));
    DeclareConstant("cd", "INT", nullptr);

    CNode* pNode = Var("CI");
    EXPECT_EQ(pNode->nKind, IMM_INTEGER);
    EXPECT_EQ(pNode->nValue, -7);
    EXPECT_EQ(NameOf(pNode->pType), "DINT");
    EXPECT_EQ(pNode->pVariable, norvane.FindVariable("ci"));
    EXPECT_TRUE(pNode->pVariable->m_IsUsed);

    pNode = Var("cu");
    EXPECT_EQ(pNode->nKind, IMM_INTEGER);
    EXPECT_EQ(pNode->nValue, 9);

    pNode = Var("cr");
    EXPECT_EQ(pNode->nKind, IMM_REAL);
    EXPECT_EQ(pNode->GetReal(), 1.5);

    EXPECT_EQ(Var("cb")->nKind, TRUE);
    norvane.FindVariable("cb")->m_InitValue = Bool(false);
    EXPECT_EQ(Var("cb")->nKind, FALSE);

    pNode = Var("cd");                       // without a value of its own that of its type counts
    EXPECT_EQ(pNode->nKind, IMM_INTEGER);
    EXPECT_EQ(pNode->nValue, 0);

    norvane.m_ConstantSubstitution = false;
    EXPECT_EQ(Var("ci")->nKind, IDENTIFIER);
}

TEST_F(ExpressionTyping, StructuresAndArraysAreNotSubstituted)
{
    CType* pStruct = norvane.m_DataTypes.AddType(std::make_unique<CTypeStruct>("point"));
    Declare("s", pStruct)->m_IsConstant = true;
    EXPECT_EQ(Var("s")->nKind, IDENTIFIER);

    CType* pArray = norvane.m_DataTypes.AddType(std::make_unique<CTypeArray>("INT_array", Type("INT")));
    auto pVariable = std::make_unique<CVariableArray>();
    pVariable->m_Name = "a";
    pVariable->m_Type = pArray;
    pVariable->m_IsConstant = true;
    pVariable->m_Index = std::make_unique<CArrayOfArrayIndex>();
    auto pIndex = std::make_unique<CArrayIndex>();
    pIndex->m_Dimensions.emplace_back(0, 3);
    pVariable->m_Index->Add(std::move(pIndex));
    norvane.m_LocalSymbols.Add(std::move(pVariable));
    const CNode* pNode = Var("a");
    EXPECT_EQ(pNode->nKind, IDENTIFIER);
    EXPECT_EQ(pNode->pType, pArray);
}

TEST_F(ExpressionTyping, UnknownNameIsReportedOnce)
{
    CNode* pNode = Run([&] { return Op('+', "nobody", "1"); });
    EXPECT_EQ(printed, "t.st(1,10) : error: variable nobody not declared\n");
    EXPECT_EQ(pNode->Child(0)->nKind, ERROR_);
    EXPECT_TRUE(norvane.IsPoison(pNode));
}

TEST_F(ExpressionTyping, TypedConstantOnEitherSideOfARealVariable)
{
    DeclareConstant("c", "REAL", Real(2.5));
    Declare("x", "REAL");
    CNode* pNode = Run([&] { return Op('*', "c", "x"); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(NameOf(pNode->pType), "REAL");

    pNode = Run([&] { return Op('*', "2.5", "c"); });       // both literal: folded, untyped
    EXPECT_EQ(printed, "");
    EXPECT_EQ(pNode->nKind, IMM_REAL);
    EXPECT_EQ(pNode->GetReal(), 6.25);
    EXPECT_EQ(pNode->pType, nullptr);

    norvane.m_ConstantSubstitution = false;
    Run([&] { return Op('*', "2.5", "c"); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator *\n");
}

TEST_F(ExpressionTyping, TypedConstantOfAnotherType)
{
    DeclareConstant("c", "DINT", Signed(3));
    Declare("i", "INT");
    Run([&] { return Op('+', "i", "c"); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator +\n");

    Run([&] { return Op(MOD, "i", "c"); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator MOD\n");
}

TEST_F(ExpressionTyping, ModuloOfUnsignedConstantPassesWhereAVariableDoesNot)
{
    DeclareConstant("c", "UINT", Unsigned(3));
    Declare("u", "UINT");
    CNode* pNode = Run([&] { return Op(MOD, "u", "c"); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(NameOf(pNode->pType), "UINT");
}

TEST_F(ExpressionTyping, WhatBothOperandsLackIsNotNamed)
{
    Run([&] { return Op(MOD, "1", "TRUE"); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operation MOD not allowed on \n");
    Run([&] { return Op(AND, "2", "TRUE"); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator AND\n");
}

TEST_F(ExpressionTyping, OperandWithoutTypeThatIsNoLiteral)
{
    Declare("i", "INT");
    const auto direct = [&](int column) { return Leaf(DIRECT_VARIABLE, column); };

    Run([&] { return Op(EQUAL, Var("i"), direct(20)); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operation = not allowed on INT\n");
    CNode* pNode = Run([&] { return Op(EQUAL, direct(10), Var("i", 20)); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(pNode->pType, nullptr);

    Run([&] { return Op(MOD, Var("i"), direct(20)); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator MOD between INT and  \n");
    Run([&] { return Op(AND, Var("i"), direct(20)); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operation AND not allowed on INT\n");
    Run([&] { return Op(AND, direct(10), Var("i", 20)); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator AND\n");
}

// ---- Poison.

TEST_F(ExpressionTyping, PoisonPassesUpwardsSilently)
{
    Declare("i", "INT");
    const int kinds[] = {'+', MOD, POWER, EQUAL, AND, SHL, DOT};
    for (const int op : kinds) {
        CNode* pNode = Run([&] { return Op(op, Leaf(ERROR_), Var("i", 20)); });
        EXPECT_EQ(printed, "");
        EXPECT_TRUE(norvane.IsPoison(pNode));
        pNode = Run([&] { return Op(op, Var("i"), Leaf(ERROR_, 20)); });
        EXPECT_EQ(printed, "");
        EXPECT_TRUE(norvane.IsPoison(pNode));
    }
    for (const int op : {MULDIV, LIMIT}) {
        CNode* pNode = Run([&] { return Op(op, Int(1), Var("i", 20), Leaf(ERROR_, 30)); });
        EXPECT_EQ(printed, "");
        EXPECT_TRUE(norvane.IsPoison(pNode));
    }
    CNode* pNode = Run([&] { return Op(SQRT, Leaf(ERROR_)); });
    EXPECT_EQ(printed, "");
    EXPECT_TRUE(norvane.IsPoison(pNode));
}

TEST_F(ExpressionTyping, ListIsPoisonedByItsFirstElementOnly)
{
    EXPECT_TRUE(norvane.IsPoison(Op(PARAMETER_LIST, Leaf(ERROR_))));
    CNode* pList = Op(PARAMETER_LIST, Int(1));
    norvane.AppendToList(pList, Leaf(ERROR_, 20));
    EXPECT_FALSE(norvane.IsPoison(pList));
}

// ---- Shifts.

TEST_F(ExpressionTyping, LiteralCountsOfShiftsAndRotations)
{
    Declare("w", "WORD");
    struct Row { int op; std::int64_t count; std::int64_t expected; };
    const Row rows[] = {
        {SHL, 100000, 32767}, {SHL, 32767, 32767}, {SHL, 32768, 32767}, {SHL, -32768, -32768}, {SHR, -32769, -32768},
        {SHR, 4, 4},          {ROL, 32769, 1},     {ROL, 32768, 0},     {ROR, -32769, -1},     {ROR, 3, 3},
        {ROL, std::numeric_limits<std::int64_t>::min(), 0},
    };
    for (const Row& row : rows) {
        CNode* pNode = Run([&] { return Op(row.op, Var("w"), Int(row.count, 20)); });
        EXPECT_EQ(printed, "");
        EXPECT_EQ(NameOf(pNode->pType), "WORD");
        EXPECT_EQ(pNode->Child(1)->nValue, row.expected);
        EXPECT_EQ(NameOf(pNode->Child(1)->pType), "INT");
    }
}

TEST_F(ExpressionTyping, TypedConstantCountBecomesAnInt)
{
    Declare("w", "WORD");
    DeclareConstant("c", "DINT", Signed(2));
    CNode* pNode = Run([&] { return Op(SHL, "w", "c"); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(NameOf(pNode->Child(1)->pType), "INT");
}

TEST_F(ExpressionTyping, TwoLiteralsAreNeverShifted)
{
    Run([&] { return Op(SHL, "1", "2"); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operation SHL not allowed on INT\n");
}

// ---- MIN, MAX, MULDIV, LIMIT.

TEST_F(ExpressionTyping, MinAndMaxTakeTheFirstType)
{
    Declare("i", "INT");
    CNode* pNode = Run([&] { return List(MAX, {"i", "1", "2"}); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(NameOf(pNode->pType), "INT");
    const CNode* pList = pNode->Child(0);
    EXPECT_EQ(NameOf(pList->pType), "INT");
    ASSERT_EQ(pList->GetChildCount(), 2);
    EXPECT_EQ(pList->Child(0)->nKind, IDENTIFIER);
    EXPECT_EQ(pList->Child(1)->nKind, IMM_INTEGER);
    EXPECT_EQ(pList->Child(1)->nValue, 2);
    EXPECT_EQ(NameOf(pList->Child(1)->pType), "INT");

    pNode = Run([&] { return List(MIN, {"1", "i"}); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(NameOf(pNode->Child(0)->Child(0)->pType), "INT");
}

TEST_F(ExpressionTyping, EveryFurtherTypeInAListIsReported)
{
    Declare("i", "INT");
    Declare("d", "DINT");
    Declare("r", "REAL");
    CNode* pNode = Run([&] { return List(MAX, {"i", "d"}); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator MAX\n");
    EXPECT_TRUE(norvane.IsPoison(pNode));
    EXPECT_TRUE(norvane.IsPoison(pNode->Child(0)));

    pNode = Run([&] { return List(MIN, {"i", "d", "i", "r", "4"}); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator MIN\nt.st(1,50) : error, mismatch, operator MIN\n");
    EXPECT_EQ(pNode->Child(0)->Child(4)->pType, nullptr);
}

TEST_F(ExpressionTyping, ListWithAPoisonedElement)
{
    Declare("i", "INT");
    Declare("d", "DINT");
    CNode* pNode = Run([&] { return ListOf(MAX, {Var("i"), Var("d", 20), Leaf(ERROR_, 30)}); });
    EXPECT_EQ(printed, "");
    EXPECT_TRUE(norvane.IsPoison(pNode));
    EXPECT_TRUE(norvane.IsPoison(pNode->Child(0)));
}

TEST_F(ExpressionTyping, ListWithoutAnyType)
{
    CNode* pNode = Run([&] { return ListOf(MAX, {Leaf(TIME_OF_DAY_DIR), Leaf(TIME_OF_DAY_DIR, 20)}); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(pNode->pType, nullptr);
    EXPECT_EQ(pNode->nKind, MAX);
}

TEST_F(ExpressionTyping, MuldivNeedsAnInteger)
{
    Declare("i", "INT");
    Declare("j", "INT");
    Declare("d", "DINT");
    Declare("u", "UINT");
    Declare("r", "REAL");
    struct Row { std::string a, b, c, output, type; };
    const std::string at10 = "t.st(1,10) : error, mismatch, operator MULDIV\n";
    const std::string at20 = "t.st(1,20) : error, mismatch, operator MULDIV\n";
    const std::string at30 = "t.st(1,30) : error, mismatch, operator MULDIV\n";
    const std::string atNode = "t.st(1,50) : error, mismatch, operator MULDIV\n";
    const Row rows[] = {
        {"i", "j", "i", "", "INT"},        {"i", "2", "3", "", "INT"},        {"2", "3", "i", "", "INT"},
        {"u", "u", "u", "", "UINT"},       {"u", "-1", "2", "", "UINT"},      {"i", "d", "2", at20, "ERROR"},
        {"i", "d", "u", at20 + at30, "ERROR"}, {"r", "r", "r", atNode, "ERROR"},  {"r", "i", "2", at10, "ERROR"},
        {"i", "2.5", "2", at20, "ERROR"},  {"TRUE", "i", "2", at10, "ERROR"}, {"TRUE", "1", "2", atNode, "ERROR"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.a + ", " + row.b + ", " + row.c);
        CNode* pNode = Run([&] { return Op(MULDIV, row.a, row.b, row.c); });
        EXPECT_EQ(printed, row.output);
        EXPECT_EQ(NameOf(pNode->pType), row.type);
    }
}

TEST_F(ExpressionTyping, LimitTakesTheFirstTypedOperandWhateverItIs)
{
    Declare("i", "INT");
    Declare("d", "DINT");
    Declare("r", "REAL");
    Declare("w", "WORD");
    struct Row { std::string a, b, c, output, type; };
    const std::string at10 = "t.st(1,10) : error, mismatch, operator LIMIT\n";
    const std::string at20 = "t.st(1,20) : error, mismatch, operator LIMIT\n";
    const std::string atNode = "t.st(1,50) : error, mismatch, operator LIMIT\n";
    const Row rows[] = {
        {"i", "i", "i", "", "INT"},     {"r", "r", "r", "", "REAL"},      {"w", "w", "w", "", "WORD"},
        {"0", "w", "5", "", "WORD"},    {"0", "r", "1.5", "", "REAL"},    {"1.5", "i", "3", "", "INT"},
        {"i", "d", "5", at20, "ERROR"}, {"TRUE", "i", "5", at10, "ERROR"}, {"TRUE", "1", "5", atNode, "ERROR"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.a + ", " + row.b + ", " + row.c);
        CNode* pNode = Run([&] { return Op(LIMIT, row.a, row.b, row.c); });
        EXPECT_EQ(printed, row.output);
        EXPECT_EQ(NameOf(pNode->pType), row.type);
    }
}

// ---- CheckImmediate.

TEST_F(ExpressionTyping, WhichLiteralsATypeTakes)
{
    struct Row { std::string_view types; std::string_view accepted; };
    const std::vector<std::string> literals = {"0", "1", "-1", "-2", "2", "-3", "100000", "2.5", "TRUE", "FALSE"};
    const Row rows[] = {
        {g_Signed, "+++++++   "}, {g_Unsigned, "+++++++   "}, {g_Bits, "+++++++   "},
        {g_Reals, "++++++++  "},  {"BOOL", "++++    ++"},     {g_Others, "          "},
    };
    for (const Row& row : rows) {
        for (const std::string& type : SplitWords(row.types)) {
            for (std::size_t i = 0; i < literals.size(); ++i) {
                for (const bool report : {true, false}) {
                    SCOPED_TRACE(type + " takes " + literals[i]);
                    const bool accepted = row.accepted[i] == '+';
                    CNode* pNode = Operand(literals[i], 10);
                    bool result = false;
                    Run([&] { result = norvane.CheckImmediate(Type(type), pNode, report); return pNode; });
                    EXPECT_EQ(result, accepted);
                    EXPECT_EQ(NameOf(pNode->pType), accepted ? type : "none");
                    const std::string message = "t.st(1,10) : error: cannot assign the value to an " + type + "\n";
                    EXPECT_EQ(printed, accepted || !report ? "" : message);
                }
            }
        }
    }
}

TEST_F(ExpressionTyping, CheckImmediateOfWhatIsAlreadyTyped)
{
    DeclareConstant("c", "INT", Signed(1));
    CNode* pNode = Var("c");
    EXPECT_TRUE(norvane.CheckImmediate(Type("INT"), pNode, false));
    for (const bool report : {true, false}) {
        Run([&] { EXPECT_FALSE(norvane.CheckImmediate(Type("DINT"), pNode, report)); return pNode; });
        EXPECT_EQ(printed, "t.st(1,10) : error: cannot assign the value to an DINT\n");
    }
    EXPECT_EQ(NameOf(pNode->pType), "INT");
}

TEST_F(ExpressionTyping, CheckImmediateIsSilentOnPoison)
{
    CNode* pError = Leaf(ERROR_);
    CNode* pOne = Int(1);
    Run([&] {
        EXPECT_FALSE(norvane.CheckImmediate(Type("INT"), pError, true));
        EXPECT_FALSE(norvane.CheckImmediate(Type("ERROR"), pOne, true));
        EXPECT_FALSE(norvane.CheckImmediate(nullptr, pOne, true));
        return pOne;
    });
    EXPECT_EQ(printed, "");
}

// ---- Casts.

TEST_F(ExpressionTyping, CastsOfLiterals)
{
    struct Row { std::string cast, from, accepted; };      // of 5, 0, -1, -2, 2.5, TRUE
    const std::vector<std::string> literals = {"5", "0", "-1", "-2", "2.5", "TRUE"};
    const Row rows[] = {
        {"INT_TO_REAL", "INT", "++++  "},  {"UINT_TO_INT", "UINT", "++++  "}, {"WORD_TO_INT", "WORD", "++++  "},
        {"REAL_TO_INT", "REAL", "+++++ "}, {"BOOL_TO_INT", "BOOL", " +++ +"}, {"TIME_TO_DINT", "TIME", "      "},
    };
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < literals.size(); ++i) {
            SCOPED_TRACE(row.cast + " of " + literals[i]);
            CCastFunction* pCast = norvane.m_CastFunctions.Find(row.cast);
            ASSERT_NE(pCast, nullptr);
            CNode* pArgument = Operand(literals[i], 10);
            CNode* pNode = Run([&] { return norvane.MakeCast(pCast, At(50), pArgument); });
            const bool accepted = row.accepted[i] == '+';
            const std::string message =
                "t.st(1,10) : error, mismatch found in castfunction argument, required " + row.from + "\n";
            EXPECT_EQ(printed, accepted ? "" : message);
            EXPECT_EQ(NameOf(pArgument->pType), accepted ? row.from : "none");
            EXPECT_EQ(pNode->nKind, CAST_FUNCTION_CALL);
            EXPECT_EQ(pNode->GetCast(), pCast);
            EXPECT_EQ(pNode->pType, pCast->m_To);
        }
    }
}

TEST_F(ExpressionTyping, CastsOfVariablesAndConstants)
{
    Declare("i", "INT");
    Declare("d", "DINT");
    DeclareConstant("c", "DINT", Signed(3));
    CCastFunction* pCast = norvane.m_CastFunctions.Find("INT_TO_REAL");
    Run([&] { return norvane.MakeCast(pCast, At(50), Var("i")); });
    EXPECT_EQ(printed, "");

    Run([&] { return norvane.MakeCast(pCast, At(50), Var("d")); });
    EXPECT_EQ(printed, "t.st(1,10) : error, mismatch found in castfunction argument, found DINT required INT\n");

    Run([&] { return norvane.MakeCast(pCast, At(50), Var("c")); });
    EXPECT_EQ(printed, "t.st(1,10) : error: cannot assign the value to an INT\n"
                       "t.st(1,10) : error, mismatch found in castfunction argument, found DINT required INT\n");

    Run([&] { return norvane.MakeCast(pCast, At(50), Leaf(ERROR_)); });
    EXPECT_EQ(printed, "");
}

TEST_F(ExpressionTyping, NoCastInAVarBlock)
{
    CCastFunction* pCast = norvane.m_CastFunctions.Find("INT_TO_REAL");
    for (const int flag : {InVar, InVarInput, InVarOutput, InVarInOut, InVarGlobal, InVarExternal}) {
        norvane.m_VarBlockFlags = flag;
        CNode* pNode = Run([&] { return norvane.MakeCast(pCast, At(50), Int(1)); });
        EXPECT_EQ(printed, "t.st(1,50) : error: cannot use castfunction in any var block body \n");
        EXPECT_TRUE(norvane.IsPoison(pNode));
    }
    norvane.m_VarBlockFlags = InType;
    CNode* pNode = Run([&] { return norvane.MakeCast(pCast, At(50), Int(1)); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(NameOf(pNode->pType), "REAL");
}

// ---- Single remarks.

TEST_F(ExpressionTyping, StringLiteralHasItsTypeAndAPlaceOfItsOwn)
{
    auto* pLiteral = new CStringLiteral(3, 7);
    pLiteral->AppendText("abc");
    CNode* pNode = norvane.MakeString(pLiteral, SourceLocation{3, 10, 4, 11, "t.st"});
    EXPECT_EQ(pNode->nKind, STR_DIR);
    EXPECT_EQ(pNode->GetString(), "abc");
    EXPECT_EQ(NameOf(pNode->pType), "STRING");
    EXPECT_EQ(pNode->location.nFirstLine, 3);
    EXPECT_EQ(pNode->location.nFirstColumn, 7);
    EXPECT_EQ(pNode->location.nLastLine, 4);
    EXPECT_EQ(pNode->location.nLastColumn, 10);
    EXPECT_EQ(pNode->location.szFile, nullptr);

    Declare("i", "INT");
    Run([&] { return Op(EQUAL, Var("i"), pNode); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator =\n");
}

TEST_F(ExpressionTyping, TimeLiteralsHaveNoType)
{
    Run([&] { return Op('+', Leaf(TIME_DIR), Leaf(TIME_DIR, 20)); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator +\n");
}

TEST_F(ExpressionTyping, LeavesRunNoChecks)
{
    CNode* pNode = norvane.MakeIdentifier(norvane.m_Names.Intern("Name"), At(4));
    EXPECT_EQ(pNode->nKind, NEW_ID);
    EXPECT_EQ(pNode->GetName(), "Name");
    EXPECT_EQ(norvane.MakeNode(IF, At(4))->GetChildCount(), 0);     // without children no condition is asked for
}

TEST_F(ExpressionTyping, AliasesCompareByTheirBaseAndKeepTheirName)
{
    CType* pAlias = norvane.m_DataTypes.AddAlias("MYINT", Type("INT"), nullptr);
    Declare("a", pAlias);
    Declare("i", "INT");
    CNode* pNode = Run([&] { return Op('+', "a", "i"); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(pNode->pType, pAlias);
    pNode = Run([&] { return Op('+', "i", "a"); });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(NameOf(pNode->pType), "INT");
}

// 100,000 terms nest to the left; each node must cost what it has children, and none may recurse into the rest.
TEST_F(ExpressionTyping, LongSums)
{
    Declare("a", "INT");
    CNode* pSum = Var("a");
    for (int i = 1; i < 100000; ++i) pSum = Op('+', pSum, Var("a", 20));
    EXPECT_EQ(NameOf(pSum->pType), "INT");
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 0);
}

}
