#include "CompileText.h"

#include "model/ArrayIndex.h"
#include "model/Member.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"

#include <limits>

namespace
{

// ---- Helpers.

// Types and variables of every sort, and a declaration of "x" behind them on line 19.
std::string WithVariables(const std::string& declaration)
{
    return "TYPE\n"
           "m : ARRAY [0..1] OF INT := [8, 9];\n"
           "t : STRUCT a : INT := 6; b : REAL; v : ARRAY [0..1] OF INT; d : m; END_STRUCT;\n"
           "o : STRUCT p : t; c : BOOL; e, f : ARRAY [0..1] OF INT; END_STRUCT;\n"
           "al : INT := 5;\n"
           "u : t := (b := 1);\n"
           "END_TYPE\n"
           "FUNCTION_BLOCK f0 VAR_INPUT a : INT; END_VAR ; END_FUNCTION_BLOCK\n"
           "FUNCTION_BLOCK fb\nVAR\n"
           "i : INT := 3; ui : UINT := 4; r : REAL := 2.5; k : INT; q : BOOL := TRUE;\n"
           "s : ARRAY [0..1] OF INT := [8, 9];\n"
           "w : t; w2 : t := 5; w3 : u;\n"
           "mm : ARRAY [1..2, 0..2] OF INT := [1, 2, 3, 4, 5, 6];\n"
           "nm : m;\n"
           "aa : ARRAY [0..1] OF m := [[1, 2], [3, 4]];\n"
           "sa : ARRAY [0..1] OF t := [(a := 1)];\n"
           "am : ARRAY [2..4] OF m;\n" +
           declaration + "\nEND_VAR\n;\nEND_FUNCTION_BLOCK\n";
}

std::string ValueText(const CInitValue* pValue)
{
    return pValue ? pValue->GetBracketedText() : "none";
}

const CMember* FindMember(const CompiledText& compiled, std::string_view name)
{
    CType* pType = compiled.pNorvane->m_DataTypes.FindUserType("fb");
    CTypeStruct* pStruct = pType ? pType->AsStruct() : nullptr;
    return pStruct ? pStruct->FindMember(name) : nullptr;
}

struct InitCase
{
    const char* declaration;
    const char* printed;     // the line's message; its position is (19,column)
    int column;              // 0: nothing is printed
    const char* value;       // of x, "none" or "undeclared"
};

void Check(const InitCase& test)
{
    const CompiledText compiled = CompileText(WithVariables(test.declaration));
    std::string expected;
    if (test.column > 0) expected = "test.st(19," + std::to_string(test.column) + ") : " + test.printed + "\n";
    EXPECT_EQ(compiled.output, expected) << test.declaration;
    const CMember* pMember = FindMember(compiled, "x");
    EXPECT_EQ(pMember ? ValueText(pMember->m_InitValue.get()) : "undeclared", test.value) << test.declaration;
}

// ---- One value.

constexpr InitCase g_ScalarCases[] = {
    // Literals, by the class of the type.
    {"x : INT := 5;", "", 0, "5"},
    {"x : INT := -5;", "", 0, "-5"},
    {"x : SINT := 100000;", "", 0, "100000"},
    {"x : INT := 2.5;", "error: cannot assign the value to an INT", 12, "none"},
    {"x : INT := TRUE;", "error: cannot assign the value to an INT", 12, "none"},
    {"x : REAL := 2;", "", 0, "2.000000"},
    {"x : REAL := 2.5;", "", 0, "2.500000"},
    {"x : UINT := 7;", "", 0, "7"},
    {"x : WORD := 16#1FFFF;", "", 0, "131071"},
    {"x : DWORD := 16#1FFFFFFFF;", "", 0, "-1"},      // 16#FFFFFFFF, which prints as a negative number
    {"x : UDINT := 16#100000005;", "", 0, "5"},
    {"x : BOOL := TRUE;", "", 0, "1"},
    {"x : BOOL := FALSE;", "", 0, "0"},
    {"x : BOOL := 1;", "", 0, "1"},
    {"x : BOOL := 0;", "", 0, "0"},
    {"x : BOOL := -1;", "", 0, "1"},
    {"x : BOOL := -2;", "", 0, "0"},
    {"x : BOOL := 2;", "error: cannot assign the value to an BOOL", 13, "none"},
    // Variables: their own value only.
    {"x : INT := i;", "", 0, "3"},
    {"x : INT := k;", "", 0, "none"},
    {"x : INT := y;", "error: variable y not declared", 12, "none"},
    {"x : DINT := i;", "error, mismatch between DINT and INT ", 1, "none"},
    {"x, z : DINT := i;", "error, mismatch between DINT and INT ", 1, "none"},
    // Expressions.
    {"x : INT := i + 1;", "", 0, "4"},
    {"x : DINT := i + 1;", "error, mismatch between DINT and INT ", 1, "none"},
    {"x : BOOL := i > 2;", "", 0, "1"},
    {"x : INT := 'abc';", "", 0, "none"},
    // Aliases.
    {"x : al := 7;", "", 0, "7"},
    {"x : al;", "", 0, "5"},
    {"x : al := i;", "", 0, "3"},
    {"x : al := k;", "", 0, "5"},                    // no value comes of k, so the alias gives its own
    // Paths.
    {"x : INT := w.a;", "", 0, "6"},
    {"x : DINT := w.a;", "error, mismatch between DINT and INT ", 1, "none"},
    {"x : INT := s[1];", "", 0, "9"},
    {"x : DINT := s[1];", "", 0, "none"},
    // Lists for what is no array type of its own declare nothing.
    {"x : INT := [1, 2];", "", 0, "undeclared"},
    {"x : m := [1, 2];", "", 0, "[1,2]"},
    {"x : m := [1.5, 2];", "error: cannot assign the value to an INT", 11, "undeclared"},
    {"x : m := ['a', 'b'];", "", 0, "undeclared"},
    {"x : m := [1, 2, 3];", "warning, too much initializers required 2 elements, found 3", 11, "[1,2,3]"},
    {"x : m;", "", 0, "[8,9]"},
    {"x : m := s;", "error, mismatch between m and INT[] ", 1, "[8,9]"},
};

TEST(Initialisers, OneValue)
{
    for (const InitCase& test : g_ScalarCases) Check(test);
}

TEST(Initialisers, ATimeGivesNoValueAndNoMessage)
{
    const CompiledText compiled = CompileText(WithVariables("x : TIME := T#1s;"));
    EXPECT_EQ(compiled.output, "test.st(19,9) : error: type TIME not supported for this target\n");
    ASSERT_TRUE(FindMember(compiled, "x"));
    EXPECT_EQ(ValueText(FindMember(compiled, "x")->m_InitValue.get()), "none");
}

TEST(Initialisers, ARefusedListLeavesTheNameUndeclared)
{
    const CompiledText compiled = CompileText("PROGRAM main\nVAR\nx : INT := [1];\nEND_VAR\nx := 1;\nEND_PROGRAM\n");
    EXPECT_EQ(compiled.output, "test.st(5,1) : error: variable x not declared\n");
}

TEST(Initialisers, AVariableNeedNotBeConstant)
{
    for (const char* attribute : {"", " CONSTANT"}) {
        const CompiledText compiled = CompileText("VAR_GLOBAL" + std::string(attribute) +
                                                  "\ny : INT := 5;\nEND_VAR\nVAR_GLOBAL\nx : INT := y;\nEND_VAR\n");
        EXPECT_EQ(compiled.output, "");
        EXPECT_EQ(ValueText(compiled.pNorvane->m_GlobalSymbols.Find("x")->m_InitValue.get()), "5");
    }
}

// ---- Structures.

constexpr InitCase g_StructCases[] = {
    {"x : t := 5;", "", 0, "()"},
    {"x : t := i;", "", 0, "()"},
    {"x : t := (a := 1);", "", 0, "(a:=1)"},
    {"x : t := (B := 2, A := 1);", "", 0, "(b:=2.000000,a:=1)"},
    {"x : u;", "", 0, "(b:=1.000000)"},
    {"x : t := (z := 1);", "error: z is not a member of the struct t", 11, "none"},
    {"x : t := (a := 1, a := 2);", "warning, element a already initialized", 19, "(a:=2)"},
    {"x : t := (a := 1.5);", "error: cannot assign the value to an INT", 16, "none"},
    {"x : t := (a := i);", "", 0, "(a:=3)"},
    {"x : t := (a := k);", "", 0, "(a:=0)"},
    {"x : t := (a := r);", "error, mismatch between INT and REAL ", 16, "none"},
    {"x : t := (a := i + 1);", "", 0, "(a:=4)"},
    {"x : t := (a := r + r);", "error, mismatch between INT and REAL ", 16, "none"},
    {"x : t := (a := w.a);", "", 0, "(a:=6)"},
    {"x : t := (a := w.b);", "error, mismatch between INT and REAL ", 17, "none"},
    {"x : t := (a := s[0]);", "", 0, "none"},
    {"x : t := (a := 'abc');", "", 0, "none"},
    {"x : t := (a := y);", "error: variable y not declared", 16, "none"},
    {"x : t := (a := (b := 1));", "error:  a is not a struct", 11, "none"},
    {"x : t := (a := [1]);", "error:  a is not a struct", 11, "none"},
    {"x : t := (v := (b := 1));", "error:  v is not a struct", 11, "none"},
    {"x : t := (v := 1);", "error: cannot assign the value to an INT[]", 16, "none"},
    {"x : t := (v := [1, 2]);", "", 0, "(v:=[1,2])"},
    {"x : t := (v := [1, 2, 3]);", "warning, too much initializers required 2 elements, found 3", 17, "(v:=[1,2,3])"},
    {"x : t := (d := [1]);", "", 0, "(d:=[1])"},
    {"x : o := (p := (a := 1, b := 2.5), c := TRUE);", "", 0, "(p:=(a:=1,b:=2.500000),c:=1)"},
    {"x : o := (p := w);", "", 0, "(p:=)"},               // of the right type, but nothing is known of its value
    {"x : o := (p := (a := 1), p := w);", "warning, element p already initialized", 26, "(p:=)"},
    {"x : o := (p := w, p := (a := 1));", "warning, element p already initialized", 19, "(p:=(a:=1))"},
    {"x : o := (p := w3);", "", 0, "(p:=(b:=1.000000))"},
    // A nested list's result stands for what came before it, but not for what comes behind.
    {"x : o := (z := 1, p := (a := 1));", "error: z is not a member of the struct o", 11, "(p:=(a:=1))"},
    {"x : o := (p := (a := 1), z := 1);", "error: z is not a member of the struct o", 26, "none"},
    // Of two members declared together the second has no bounds.
    {"x : o := (e := [1]);", "", 0, "(e:=[1])"},
    {"x : o := (f := [1]);", "error:   is not a struct", 17, "none"},
    {"x : f0 := (a := 1);", "error: cannot assign a value to a function block instance ", 12, "(a:=1)"},
};

TEST(Initialisers, Structures)
{
    for (const InitCase& test : g_StructCases) Check(test);
}

TEST(Initialisers, AListIsReadOnBehindAFault)
{
    const CompiledText compiled = CompileText(WithVariables("x : t := (a := y, z := 1);"));
    EXPECT_EQ(compiled.output, "test.st(19,16) : error: variable y not declared\n"
                               "test.st(19,19) : error: z is not a member of the struct t\n");
}

// ---- Arrays. In "x : ARRAY [0..3] OF INT := [" the first element stands in column 29.

constexpr InitCase g_ArrayCases[] = {
    {"x : ARRAY [0..3] OF INT := [1, 2];", "", 0, "[1,2]"},
    {"x : ARRAY [0..1] OF INT := [1, 2];", "", 0, "[1,2]"},
    {"x : ARRAY [0..1] OF INT := [1, 2, 3];", "warning, too much initializers required 2 elements, found 3", 29, "[1,2,3]"},
    {"x : ARRAY [0..3] OF INT := [2(1), 2(0)];", "", 0, "[2(1),2(0)]"},
    {"x : ARRAY [0..3] OF INT := [3(0), 1, 2];", "warning, too much initializers required 4 elements, found 5", 29, "[3(0),1,2]"},
    {"x : ARRAY [0..1, 0..1] OF INT := [1, 2, 3, 4];", "", 0, "[1,2,3,4]"},
    {"x : ARRAY [0..1] OF INT := [1.5, 2];", "error: cannot assign the value to an INT", 29, "none"},
    {"x : ARRAY [0..1] OF INT := ['a', 'b'];", "", 0, "none"},
    {"x : ARRAY [0..1] OF INT := [(a := 1)];", "error:   is not a struct", 30, "none"},
    {"x : ARRAY [0..1] OF INT := [[1]];", "error: is not an array", 30, "none"},
    {"x : ARRAY [0..1] OF al := [1, i];", "", 0, "[1,3]"},
    {"x : ARRAY [0..1] OF al := [r];", "error, mismatch between al and REAL ", 28, "none"},
    {"x : ARRAY [0..1] OF BOOL := [TRUE, 0];", "", 0, "[1,0]"},
    {"x : ARRAY [0..1] OF INT := [i, k];", "", 0, "[3,0]"},
    {"x : ARRAY [0..1] OF INT := [y];", "error: variable y not declared", 29, "none"},
    {"x : ARRAY [0..1] OF INT := [r];", "error, mismatch between INT and REAL ", 29, "none"},
    {"x : ARRAY [0..1] OF INT := [r + r];", "error, mismatch between INT and REAL ", 29, "none"},
    {"x : ARRAY [0..1] OF INT := [i + 1];", "", 0, "[4]"},
    {"x : ARRAY [0..1] OF INT := [w.a];", "", 0, "[6]"},
    {"x : ARRAY [0..1] OF INT := [s[0]];", "", 0, "none"},
    {"x : ARRAY [0..1] OF t := [(a := 1), (b := 2)];", "", 0, "[(a:=1),(b:=2.000000)]"},
    {"x : ARRAY [0..1] OF t := [2((a := 1))];", "", 0, "[2((a:=1))]"},
    {"x : ARRAY [0..1] OF t := [(z := 1)];", "error: z is not a member of the struct t", 28, "none"},
    {"x : ARRAY [0..1] OF m := [[1, 2], [3]];", "", 0, "[[1,2],[3]]"},
    {"x : ARRAY [0..1] OF m := [[1, 2, 3]];", "warning, too much initializers required 2 elements, found 3", 28, "[[1,2,3]]"},
    {"x : ARRAY [0..1] OF m := [2([1, 2])];", "", 0, "[2([1,2])]"},
    {"x : ARRAY [0..1] OF m := [(a := 1)];", "error:   is not a struct", 28, "none"},
    // Repeat counts. A name in front of a parenthesis would be a call, so it stands in parentheses itself.
    {"x : ARRAY [0..3] OF INT := [0(1)];", "", 0, "[0(1)]"},
    {"x : ARRAY [0..3] OF INT := [-3(1)];", "", 0, "none"},
    {"x : ARRAY [0..3] OF INT := [(i)(1)];", "", 0, "[3(1)]"},
    {"x : ARRAY [0..3] OF INT := [(k)(1)];", "", 0, "[0(1)]"},
    {"x : ARRAY [0..3] OF INT := [i + 1(7)];", "", 0, "[4(7)]"},
    {"x : ARRAY [0..9] OF INT := [w.a(1)];", "", 0, "[6(1)]"},
    {"x : ARRAY [0..9] OF INT := [s[1](1)];", "", 0, "[9(1)]"},
    {"x : ARRAY [0..3] OF INT := [(ui)(1)];", "error: array's index requires integer value", 30, "none"},
    {"x : ARRAY [0..3] OF INT := [(r)(1)];", "error: array's index requires integer value", 30, "none"},
    {"x : ARRAY [0..3] OF INT := [(r + r)(1)];", "error: array's index requires integer value", 30, "none"},
    {"x : ARRAY [0..3] OF INT := [2.5(1)];", "error: array's index requires integer value", 29, "none"},
    {"x : ARRAY [0..3] OF INT := [TRUE(1)];", "error: array's index requires integer value", 29, "none"},
    {"x : ARRAY [0..3] OF INT := [9223372036854775807(1), 2];",
     "warning, too much initializers required 4 elements, found 9223372036854775807", 29, "[2147483647(1),2]"},
};

TEST(Initialisers, Arrays)
{
    for (const InitCase& test : g_ArrayCases) Check(test);
}

TEST(Initialisers, NestedListsAreForArraysOfArrayTypes)
{
    const CompiledText compiled = CompileText(WithVariables("x : ARRAY [0..1, 0..1] OF INT := [[1, 2], [3, 4]];"));
    EXPECT_EQ(compiled.output, "test.st(19,36) : error: is not an array\n"
                               "test.st(19,44) : error: is not an array\n");
    ASSERT_TRUE(FindMember(compiled, "x")) << "declared without a value";
    EXPECT_EQ(ValueText(FindMember(compiled, "x")->m_InitValue.get()), "none");
}

// Checking and building both say that the literal doesn't suit.
TEST(Initialisers, ALaterListCoversAnEarlierFailure)
{
    const CompiledText compiled = CompileText(WithVariables("x : ARRAY [0..1] OF m := [[1.5], [3]];"));
    EXPECT_EQ(compiled.output, "test.st(19,28) : error: cannot assign the value to an INT\n"
                               "test.st(19,28) : error: cannot assign the value to an INT\n");
    EXPECT_EQ(ValueText(FindMember(compiled, "x")->m_InitValue.get()), "[[],[3]]");
    const CompiledText refused = CompileText(WithVariables("x : ARRAY [0..1] OF m := [[3], [1.5]];"));
    EXPECT_EQ(ValueText(FindMember(refused, "x")->m_InitValue.get()), "none");
}

TEST(Initialisers, APathAsRepeatCountThatIsNoIntegerIsNoCountedError)
{
    const CompiledText compiled = CompileText(WithVariables("x : ARRAY [0..3] OF INT := [w.b(1)];"));
    EXPECT_EQ(compiled.output, "error required an integer value\n");
    EXPECT_EQ(compiled.pNorvane->m_Errors.GetErrorCount(), 0);
    EXPECT_EQ(ValueText(FindMember(compiled, "x")->m_InitValue.get()), "none");
}

// ---- Elements of values.

constexpr InitCase g_ElementCases[] = {
    {"x : INT := mm[1, 0];", "", 0, "1"},
    {"x : INT := mm[2, 1];", "", 0, "5"},
    {"x : INT := nm[1];", "", 0, "9"},
    {"x : INT := aa[1][0];", "", 0, "3"},
    {"x : INT := am[3][1];", "", 0, "9"},
    {"x : INT := sa[0].a;", "", 0, "1"},
    {"x : INT := sa[1].a;", "", 0, "6"},
    {"x : REAL := sa[0].b;", "", 0, "0.000000"},
    {"x : INT := w.d[0];", "", 0, "8"},
    {"x : INT := w.v[0];", "", 0, "0"},
    {"x : INT := w2.a;", "", 0, "6"},
    {"x : REAL := w3.b;", "", 0, "1.000000"},
    {"x : INT := w3.a;", "", 0, "6"},
    {"x : INT := s[i - 2];", "", 0, "9"},
    {"x : INT := s[5];", "error: index exceeds array dimension ", 14, "0"},
};

TEST(Initialisers, Elements)
{
    for (const InitCase& test : g_ElementCases) Check(test);
}

// ---- What no source reaches.

class InitialiserFixture : public testing::Test
{
protected:
    InitialiserFixture()
    {
        g_CurrentFileName = "test.st";
        LoadTarget(norvane);
    }

    static SourceLocation At(int column) { return {1, column, 1, column + 1, "test.st"}; }
    CType* Type(const char* name) { return norvane.m_DataTypes.FindType(name); }

    template <typename Action>
    std::string Printed(const Action& action)
    {
        return PrintedBy(action);
    }

    CNorvane norvane;
};

TEST_F(InitialiserFixture, AFoldThatGaveNothingHasNoValue)
{
    CNode& folded = *norvane.m_Nodes.MakeNode(SIMPLIFIED, At(4));
    folded.pType = Type("INT");
    EXPECT_EQ(norvane.ValueOf(&folded, Type("INT")), nullptr);
    std::int32_t value = 0;
    EXPECT_EQ(Printed([&] { EXPECT_EQ(norvane.EvalConstIndex(&folded, value), -1); }),
              "test.st(1,4) : error: array's index requires integer value\n");
}

TEST_F(InitialiserFixture, ARepeatCountOfAnyOtherKindIsRefused)
{
    for (const int kind : {SIMPLIFIED, IDENTIFIER, FUNCTION_CALL, CAST_FUNCTION_CALL, ERROR_, STR_DIR}) {
        CNode& count = *norvane.m_Nodes.MakeNode(kind, At(5));
        CNode& repeat = *norvane.m_Nodes.MakeNode(DUP, At(5));
        repeat.AddChild(&count);
        CNode& element = *norvane.m_Nodes.MakeNode(IMM_INTEGER, At(7));
        CNode& list = *norvane.m_Nodes.MakeNode(ARRAY_INIT_LIST, At(5));
        list.AddChild(&repeat);
        list.AddChild(&element);
        EXPECT_EQ(Printed([&] { EXPECT_EQ(norvane.CountInitElements(&list), -1); }),
                  "test.st(1,5) : error: array's index requires integer value\n") << kind;
    }
}

TEST_F(InitialiserFixture, CountsStopAtTheEndsOf64Bits)
{
    CNode& lowest = *norvane.m_Nodes.MakeNode(IMM_INTEGER, At(1));
    lowest.nValue = std::numeric_limits<std::int64_t>::min();
    CNode& repeat = *norvane.m_Nodes.MakeNode(DUP, At(1));
    repeat.AddChild(&lowest);
    CNode& element = *norvane.m_Nodes.MakeNode(IMM_INTEGER, At(1));
    CNode& list = *norvane.m_Nodes.MakeNode(ARRAY_INIT_LIST, At(1));
    for (int i = 0; i < 2; ++i) {
        list.AddChild(&repeat);
        list.AddChild(&element);
    }
    EXPECT_LT(norvane.CountInitElements(&list), 0);
    lowest.nValue = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(norvane.CountInitElements(&list), std::numeric_limits<std::int64_t>::max());
}

TEST_F(InitialiserFixture, APlainArrayOfArraysHasADefaultOnEachLevel)
{
    CTypeArray inner("INT[]", Type("INT"));
    CTypeArray outer("INT[][]", &inner);
    CArrayOfArrayIndex index;
    for (const CIndex bounds : {CIndex(0, 1), CIndex(0, 2)}) {
        index.Add(std::make_unique<CArrayIndex>());
        index.m_Levels.back()->m_Dimensions.push_back(bounds);
    }
    EXPECT_EQ(ValueText(norvane.BuildDefaultArrayInit(&index, &outer, 0).get()), "[2([3(0)])]");
    EXPECT_EQ(ValueText(norvane.BuildDefaultArrayInit(&index, Type("INT"), 0).get()), "0");
    EXPECT_EQ(ValueText(norvane.BuildDefaultArrayInit(nullptr, &outer, 0).get()), "[[0]]") << "without bounds one of each";
}

TEST_F(InitialiserFixture, AnArrayWithoutBoundsIsRefused)
{
    CTypeArray type("INT[]", Type("INT"));
    CNode& element = *norvane.m_Nodes.MakeNode(IMM_INTEGER, At(2));
    CNode& list = *norvane.m_Nodes.MakeNode(ARRAY_INIT_LIST, At(2));
    list.AddChild(&element);
    EXPECT_EQ(Printed([&] { EXPECT_FALSE(norvane.CheckArrayInit(&type, &list, nullptr, 0)); }),
              "test.st(1,2) : error:   is not a struct\n");
}

TEST_F(InitialiserFixture, AScalarSuitsItsTypeOrThereIsNone)
{
    CNode& real = *norvane.m_Nodes.MakeNode(IMM_REAL, At(3));
    real.SetReal(1.5);
    EXPECT_EQ(Printed([&] { EXPECT_EQ(norvane.BuildInitScalar(Type("BYTE"), &real), nullptr); }),
              "test.st(1,3) : error: cannot assign the value to an BYTE\n");
    const std::unique_ptr<CInitValue> pValue = norvane.BuildInitScalar(Type("LREAL"), &real);
    ASSERT_TRUE(pValue);
    EXPECT_TRUE(pValue->IsReal());
    EXPECT_EQ(real.pType, Type("LREAL"));
    CNode& wide = *norvane.m_Nodes.MakeNode(IMM_INTEGER, At(3));
    wide.nValue = 0x1FFFFFFFF;
    const std::unique_ptr<CInitValue> pWide = norvane.BuildInitScalar(Type("ULINT"), &wide);
    ASSERT_TRUE(pWide);
    EXPECT_TRUE(pWide->IsUnsigned());
    EXPECT_EQ(pWide->GetUnsigned(), 0xFFFFFFFFu);
}

TEST(Initialisers, ALongListIsKeptWhole)
{
    constexpr int count = 100000;
    std::string source = "VAR_GLOBAL\na : ARRAY [1.." + std::to_string(count) + "] OF DINT := [0";
    for (int i = 1; i < count; ++i) source += "," + std::to_string(i);
    const CompiledText compiled = CompileText(source + "];\nb : DINT := a[70001];\nEND_VAR\n");
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(ValueText(compiled.pNorvane->m_GlobalSymbols.Find("b")->m_InitValue.get()), "70000");
}

}   // namespace
