#include "CompileText.h"

#include "model/Member.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"

#include <gtest/gtest.h>

#include <climits>

namespace
{

const std::string g_Program = "PROGRAM main\n;\nEND_PROGRAM\n";

std::string CompileInitialisation(const std::string& source, bool isSubstituting = true)
{
    CompileOptions options;
    options.initialisation = true;
    options.prepare = [=](CNorvane& norvane) { norvane.m_ConstantSubstitution = isSubstituting; };
    const CompiledText text = CompileText(source, options);
    EXPECT_EQ(text.output, "");
    return text.assembler;
}

// What a generated function holds between its heading and its end.
std::string BodyOf(const std::string& assembler, const std::string& name)
{
    const std::string heading = "\n\t;Global Variable List---------------------------------\n";
    const std::size_t function = assembler.find("FUNCTION_" + name + ":");
    const std::size_t list = assembler.find(heading, function);
    const std::size_t end = assembler.find("\n\tRTS\n", list);
    if (function == std::string::npos || list == std::string::npos || end == std::string::npos) return "(no function)";
    return assembler.substr(list + heading.size(), end - list - heading.size());
}

std::string GlobalsOf(const std::string& types, const std::string& variables, bool isSubstituting = true)
{
    return BodyOf(CompileInitialisation(types + "VAR_GLOBAL " + variables + " END_VAR\n" + g_Program, isSubstituting),
                  "__GlobalInitialization__");
}

// The generator alone, for a variable that a test puts together.
class VariableInit : public testing::Test
{
protected:
    VariableInit()
    {
        LoadTarget(norvane);
        norvane.m_Code.m_Area = "global+";
        pInt = norvane.m_DataTypes.FindType("INT");
    }

    std::string Generate(const CVariable& variable)
    {
        TextBuffer text;
        norvane.m_Code.GenerateVariableInit(&variable, text);
        return std::string(text.View());
    }

    static std::unique_ptr<CMember> MakeMember(const std::string& name, CType* pType, std::int32_t offset)
    {
        auto pMember = std::make_unique<CMember>(name, pType);
        pMember->m_Offset = offset;
        return pMember;
    }

    CNorvane norvane;
    CType* pInt = nullptr;
};

}   // namespace

TEST(Initialization, BothFunctionsAreAlwaysThere)
{
    const std::string assembler = CompileInitialisation(g_Program);
    const auto functionOf = [](const std::string& name, const std::string& title) {
        return "\n"
               ";------------------------------------------------------------------------\n"
               "; FUNCTION: " + name + "\n"
               ";          Automatically created by compiler.\n"
               "; ------------------------------------------------------------------------\n"
               "FUNCTION_" + name + ":\n"
               "\n"
               "\tLOCALDATA 0\n"
               "\n"
               "\t;" + title + " variable initialization\n"
               "\n"
               "\t;Global Variable List---------------------------------\n"
               "\n"
               "\tRTS\n";
    };
    const std::string expected = functionOf("__GlobalInitialization__", "Global") + functionOf("__RetainInitialization__", "Retain");
    ASSERT_GE(assembler.size(), expected.size());
    EXPECT_EQ(assembler.substr(assembler.size() - expected.size()), expected);
}

TEST(Initialization, NothingBehindAnError)
{
    CompileOptions options;
    options.initialisation = true;
    const CompiledText text = CompileText("VAR_GLOBAL x : INT := 5; END_VAR\nPROGRAM main\nnope := 1;\nEND_PROGRAM\n", options);
    EXPECT_EQ(text.output, "test.st(3,1) : error: variable nope not declared\n");
    EXPECT_EQ(text.assembler, "");
}

TEST(Initialization, Scalars)
{
    EXPECT_EQ(GlobalsOf("", "x : INT := 0; y : INT := 5; z : REAL := 0.5; b : BOOL := TRUE; c : BOOL := TRUE; "
                            "d : BOOL := FALSE; n : DINT := -7; w : WORD := 16#FFFF; k : INT;"),
              "\t\t;Variable (0): x (INT,VAR_GLOBAL)\n"
              "\t\t;Variable (2): y (INT,VAR_GLOBAL)\n"
              "\t\t;Variable (4): z (REAL,VAR_GLOBAL)\n"
              "\t\t;Variable (8): b (BOOL,VAR_GLOBAL)\n"
              "\t\t;Variable (8): c (BOOL,VAR_GLOBAL)\n"
              "\t\t;Variable (8): d (BOOL,VAR_GLOBAL)\n"
              "\t\t;Variable (12): n (DINT,VAR_GLOBAL)\n"
              "\t\t;Variable (16): w (WORD,VAR_GLOBAL)\n"
              "\t\t;Variable (18): k (INT,VAR_GLOBAL)\n"
              "\tPUSH\t(INT)\t5\n"
              "\tPOP\t(INT) [global+2] ; y\n"
              "\tPUSH\t(REAL)\t0.500000\n"
              "\tPOP\t(REAL) [global+4] ; z\n"
              "\tPUSH\t(BOOL)\t1\n"
              "\tPOP\t(BOOL) [global+8].0 ; b\n"
              "\tPUSH\t(BOOL)\t1\n"
              "\tPOP\t(BOOL) [global+8].1 ; c\n"
              "\tPUSH\t(DINT)\t-7\n"
              "\tPOP\t(DINT) [global+12] ; n\n"
              "\tPUSH\t(WORD)\t65535\n"
              "\tPOP\t(WORD) [global+16] ; w\n");
}

TEST(Initialization, UnsignedValuesPrintAsSigned)
{
    EXPECT_EQ(GlobalsOf("", "w : DWORD := 16#FFFFFFFF;"),
              "\t\t;Variable (0): w (DWORD,VAR_GLOBAL)\n"
              "\tPUSH\t(DWORD)\t-1\n"
              "\tPOP\t(DWORD) [global+0] ; w\n");
}

TEST(Initialization, SubstitutedConstantsAreLeftOut)
{
    EXPECT_EQ(BodyOf(CompileInitialisation("VAR_GLOBAL CONSTANT c : INT := 5; END_VAR\n" + g_Program),
                     "__GlobalInitialization__"),
              "");
    EXPECT_EQ(BodyOf(CompileInitialisation("VAR_GLOBAL CONSTANT c : INT := 5; END_VAR\n" + g_Program, false),
                     "__GlobalInitialization__"),
              "\t\t;Variable (0): c (INT,VAR_GLOBAL)\n"
              "\tPUSH\t(INT)\t5\n"
              "\tPOP\t(INT) [global+0] ; c\n");
    EXPECT_EQ(BodyOf(CompileInitialisation("VAR_GLOBAL CONSTANT a : ARRAY [0..1] OF INT := [3, 4]; END_VAR\n" + g_Program),
                     "__GlobalInitialization__"),
              "\t\t;Variable (0): a (INT[],VAR_GLOBAL)\n"
              "\tPUSH(INT) \t3\n"
              "\tPOP(INT) \t[global+0];a[0]\n"
              "\tPUSH(INT) \t4\n"
              "\tPOP(INT) \t[global+2];a[1]\n");
}

TEST(Initialization, RetainVariablesHaveTheirOwnFunction)
{
    const std::string assembler =
        CompileInitialisation("VAR_GLOBAL RETAIN n : INT := 7; END_VAR\nVAR_GLOBAL x : INT := 5; END_VAR\n" + g_Program);
    EXPECT_EQ(BodyOf(assembler, "__GlobalInitialization__"),
              "\t\t;Variable (0): x (INT,VAR_GLOBAL)\n"
              "\tPUSH\t(INT)\t5\n"
              "\tPOP\t(INT) [global+0] ; x\n");
    EXPECT_EQ(BodyOf(assembler, "__RetainInitialization__"),
              "\t\t;Variable (0): n (INT,VAR_GLOBAL)\n"
              "\tPUSH\t(INT)\t7\n"
              "\tPOP\t(INT) [retain+0] ; n\n");
}

TEST(Initialization, LocatedVariablesHaveNoAreaWord)
{
    EXPECT_EQ(GlobalsOf("", "x AT %MW4 : INT := 5;"),
              "\t\t;Variable (3004): x (INT,VAR_GLOBAL AT MW4)\n"
              "\tPUSH\t(INT)\t5\n"
              "\tPOP\t(INT) [3004] ; x\n");
}

TEST(Initialization, ArrayElements)
{
    EXPECT_EQ(GlobalsOf("", "a : ARRAY [0..2] OF INT := [1, 2(7)];"),
              "\t\t;Variable (0): a (INT[],VAR_GLOBAL)\n"
              "\tPUSH(INT) \t1\n"
              "\tPOP(INT) \t[global+0];a[0]\n"
              "\tPUSH(INT) \t7\n"
              "\tPOP(INT) \t[global+2];a[1]\n"
              "\tPUSH(INT) \t7\n"
              "\tPOP(INT) \t[global+4];a[2]\n");
    // Elements are named by their position, whatever the bounds and the dimensions; zeros write nothing.
    EXPECT_EQ(GlobalsOf("", "m : ARRAY [5..6, 1..2] OF DINT := [1, 0, 3];"),
              "\t\t;Variable (0): m (DINT[2dim],VAR_GLOBAL)\n"
              "\tPUSH(DINT) \t1\n"
              "\tPOP(DINT) \t[global+0];m[0]\n"
              "\tPUSH(DINT) \t3\n"
              "\tPOP(DINT) \t[global+8];m[2]\n");
}

TEST(Initialization, ValuesBehindTheLastElementAreDropped)
{
    CompileOptions options;
    options.initialisation = true;
    const CompiledText text = CompileText("VAR_GLOBAL a : ARRAY [0..1] OF INT := [1, 5(2)]; END_VAR\n" + g_Program, options);
    EXPECT_NE(text.output.find("warning, too much initializers"), std::string::npos) << text.output;
    EXPECT_EQ(BodyOf(text.assembler, "__GlobalInitialization__"),
              "\t\t;Variable (0): a (INT[],VAR_GLOBAL)\n"
              "\tPUSH(INT) \t1\n"
              "\tPOP(INT) \t[global+0];a[0]\n"
              "\tPUSH(INT) \t2\n"
              "\tPOP(INT) \t[global+2];a[1]\n");
}

TEST(Initialization, BoolElementsShareBytes)
{
    EXPECT_EQ(GlobalsOf("", "q : ARRAY [0..9] OF BOOL := [TRUE, FALSE, 1, 4(FALSE), 3(TRUE)];"),
              "\t\t;Variable (0): q (BOOL[],VAR_GLOBAL)\n"
              "\tPUSH(BOOL) \t1\n"
              "\tPOP(BOOL) \t[global+0].0;q[0]\n"
              "\tPUSH(BOOL) \t1\n"
              "\tPOP(BOOL) \t[global+0].2;q[2]\n"
              "\tPUSH(BOOL) \t1\n"
              "\tPOP(BOOL) \t[global+0].7;q[7]\n"
              "\tPUSH(BOOL) \t1\n"
              "\tPOP(BOOL) \t[global+1].0;q[8]\n"
              "\tPUSH(BOOL) \t1\n"
              "\tPOP(BOOL) \t[global+1].1;q[9]\n");
}

TEST(Initialization, StructuresByDefaultOrByInitialiser)
{
    const std::string type = "TYPE t : STRUCT x : INT := 1; y : INT := 2; f : BOOL := TRUE; g : BOOL; h : BOOL := TRUE; "
                             "END_STRUCT; END_TYPE\n";
    EXPECT_EQ(GlobalsOf(type, "s : t;"),
              "\t\t;Variable (0): s (t,VAR_GLOBAL)\n"
              "\tPUSH(INT) \t1\n"
              "\tPOP(INT) \t[global+0];s.x\n"
              "\tPUSH(INT) \t2\n"
              "\tPOP(INT) \t[global+2];s.y\n"
              "\tPUSH(BOOL) \t1\n"
              "\tPOP(BOOL) \t[global+4].0;s.f\n"
              "\tPUSH(BOOL) \t1\n"
              "\tPOP(BOOL) \t[global+4].2;s.h\n");
    // An initialiser switches the defaults off, also of the members that it leaves out.
    EXPECT_EQ(GlobalsOf(type, "s : t := (y := 9);"),
              "\t\t;Variable (0): s (t,VAR_GLOBAL)\n"
              "\tPUSH(INT)\t9\n"
              "\tPOP(INT) \t[global+2];s.y\n");
    EXPECT_EQ(GlobalsOf(type, "s : t := (g := TRUE, x := 0);"),
              "\t\t;Variable (0): s (t,VAR_GLOBAL)\n"
              "\tPUSH(BOOL)\t1\n"
              "\tPOP(BOOL) \t[global+4].1;s.g\n");
}

// The running bit isn't the member's bit number: a structure between two BOOLs doesn't set it back.
TEST(Initialization, TheRunningBitPassesAggregates)
{
    const std::string types = "TYPE n : STRUCT x : INT; END_STRUCT; "
                              "t : STRUCT f : BOOL := TRUE; k : n; g : BOOL := TRUE; i : INT; h : BOOL := TRUE; END_STRUCT; END_TYPE\n";
    EXPECT_EQ(GlobalsOf(types, "s : t;"),
              "\t\t;Variable (0): s (t,VAR_GLOBAL)\n"
              "\tPUSH(BOOL) \t1\n"
              "\tPOP(BOOL) \t[global+0].0;s.f\n"
              "\tPUSH(BOOL) \t1\n"
              "\tPOP(BOOL) \t[global+4].1;s.g\n"
              "\tPUSH(BOOL) \t1\n"
              "\tPOP(BOOL) \t[global+8].0;s.h\n");
}

TEST(Initialization, StructuresInStructures)
{
    const std::string types = "TYPE n : STRUCT x : INT := 1; y : INT := 2; END_STRUCT; "
                              "t : STRUCT a : n; b : n := (y := 5); c : INT := 6; END_STRUCT; END_TYPE\n";
    EXPECT_EQ(GlobalsOf(types, "s : t;"),
              "\t\t;Variable (0): s (t,VAR_GLOBAL)\n"
              "\tPUSH(INT) \t1\n"
              "\tPOP(INT) \t[global+0];s.a.x\n"
              "\tPUSH(INT) \t2\n"
              "\tPOP(INT) \t[global+2];s.a.y\n"
              "\tPUSH(INT)\t5\n"
              "\tPOP(INT) \t[global+6];s.b.y\n"
              "\tPUSH(INT) \t6\n"
              "\tPOP(INT) \t[global+8];s.c\n");
    // A member structure that the initialiser leaves out has its own value all the same.
    EXPECT_EQ(GlobalsOf(types, "s : t := (a := (x := 3));"),
              "\t\t;Variable (0): s (t,VAR_GLOBAL)\n"
              "\tPUSH(INT)\t3\n"
              "\tPOP(INT) \t[global+0];s.a.x\n"
              "\tPUSH(INT)\t5\n"
              "\tPOP(INT) \t[global+6];s.b.y\n");
}

TEST(Initialization, ArrayMembersKeepTheirOwnValue)
{
    EXPECT_EQ(GlobalsOf("TYPE t : STRUCT v : ARRAY [0..1] OF INT := [4, 5]; k : INT := 1; END_STRUCT; END_TYPE\n",
                        "s : t := (v := [8, 9], k := 2);"),
              "\t\t;Variable (0): s (t,VAR_GLOBAL)\n"
              "\tPUSH(INT) \t4\n"
              "\tPOP(INT) \t[global+0];s.v[0]\n"
              "\tPUSH(INT) \t5\n"
              "\tPOP(INT) \t[global+2];s.v[1]\n"
              "\tPUSH(INT)\t2\n"
              "\tPOP(INT) \t[global+4];s.k\n");
}

TEST(Initialization, ArraysOfStructures)
{
    const std::string type = "TYPE t : STRUCT x : INT := 1; y : INT; END_STRUCT; END_TYPE\n";
    EXPECT_EQ(GlobalsOf(type, "q : ARRAY [1..3] OF t := [(x := 7)];"),
              "\t\t;Variable (0): q (t[],VAR_GLOBAL)\n"
              "\tPUSH(INT)\t7\n"
              "\tPOP(INT) \t[global+0];q[0].x\n"
              "\tPUSH(INT) \t1\n"
              "\tPOP(INT) \t[global+4];q[1].x\n"
              "\tPUSH(INT) \t1\n"
              "\tPOP(INT) \t[global+8];q[2].x\n");
    // A value that writes nothing is told apart from a value that is missing.
    EXPECT_EQ(GlobalsOf(type, "q : ARRAY [0..3] OF t := [2((y := 0)), (y := 6)];"),
              "\t\t;Variable (0): q (t[],VAR_GLOBAL)\n"
              "\tPUSH(INT)\t6\n"
              "\tPOP(INT) \t[global+10];q[2].y\n"
              "\tPUSH(INT) \t1\n"
              "\tPOP(INT) \t[global+12];q[3].x\n");
}

TEST(Initialization, ArraysOfArrays)
{
    const std::string type = "TYPE row : ARRAY [0..1] OF INT := [1, 2]; END_TYPE\n";
    EXPECT_EQ(GlobalsOf(type, "m : ARRAY [0..1] OF row;"),
              "\t\t;Variable (0): m (INT[][],VAR_GLOBAL)\n"
              "\tPUSH(INT) \t1\n"
              "\tPOP(INT) \t[global+0];m[0][0]\n"
              "\tPUSH(INT) \t2\n"
              "\tPOP(INT) \t[global+2];m[0][1]\n"
              "\tPUSH(INT) \t1\n"
              "\tPOP(INT) \t[global+4];m[1][0]\n"
              "\tPUSH(INT) \t2\n"
              "\tPOP(INT) \t[global+6];m[1][1]\n");
    EXPECT_EQ(GlobalsOf(type, "m : ARRAY [0..1] OF row := [[0, 5]];"),
              "\t\t;Variable (0): m (INT[][],VAR_GLOBAL)\n"
              "\tPUSH(INT) \t5\n"
              "\tPOP(INT) \t[global+2];m[0][1]\n");
}

TEST(Initialization, AliasNames)
{
    const std::string types = "TYPE MYINT : INT := 5; END_TYPE\nTYPE t : STRUCT k : MYINT; END_STRUCT; END_TYPE\n";
    EXPECT_EQ(GlobalsOf(types, "x : MYINT; s : t := (k := 3); a : ARRAY [0..0] OF MYINT := [4];"),
              "\t\t;Variable (0): x (INT,VAR_GLOBAL)\n"
              "\t\t;Variable (2): s (t,VAR_GLOBAL)\n"
              "\t\t;Variable (4): a (MYINT[],VAR_GLOBAL)\n"
              "\tPUSH\t(INT)\t5\n"
              "\tPOP\t(INT) [global+0] ; x\n"
              "\tPUSH(MYINT)\t3\n"
              "\tPOP(MYINT) \t[global+2];s.k\n"
              "\tPUSH(MYINT) \t4\n"
              "\tPOP(MYINT) \t[global+4];a[0]\n");
}

TEST(Initialization, MembersOfInstancesStartWhereTheInstanceIs)
{
    EXPECT_EQ(GlobalsOf("FUNCTION_BLOCK tb VAR_INPUT a : INT := 3; END_VAR VAR p : INT := 4; END_VAR ; END_FUNCTION_BLOCK\n",
                        "k : tb;"),
              "\t\t;Variable (0): k (tb,VAR_GLOBAL)\n"
              "\tPUSH(INT) \t3\n"
              "\tPOP(INT) \t[global+0];k.a\n"
              "\tPUSH(INT) \t4\n"
              "\tPOP(INT) \t[global+2];k.p\n");
}

TEST(Initialization, LocalsUseTheSameGenerators)
{
    const CompiledText text = CompileText("PROGRAM main\nVAR CONSTANT c : INT := 9; END_VAR\n"
                                          "VAR i : INT := 4; a : ARRAY [0..1] OF INT := [0, 6]; END_VAR\ni := c;\nEND_PROGRAM\n");
    EXPECT_EQ(text.output, "");
    EXPECT_NE(text.assembler.find("\t;Local variable initialization\n"
                                  "\tPUSH\t(INT)\t4\n"
                                  "\tPOP\t(INT) [local+0] ; i\n"
                                  "\tPUSH(INT) \t6\n"
                                  "\tPOP(INT) \t[local+4];a[1]\n"
                                  "\n"),
              std::string::npos)
        << text.assembler;
}

TEST_F(VariableInit, Strings)
{
    CVariable variable;
    variable.m_Name = "s";
    variable.m_Type = norvane.m_DataTypes.m_StringType;
    variable.m_Offset = 4;
    EXPECT_EQ(Generate(variable), "");
    variable.m_InitValue = std::make_unique<CInitString>(10, "a\xE9");
    EXPECT_EQ(Generate(variable), "\tPUSH(SINT)\t97\t\t;a\n"
                                  "\tPOP(SINT)\t[global+4]\n"
                                  "\tPUSH(SINT)\t-23\t\t;\xE9\n"
                                  "\tPOP(SINT)\t[global+8]\n");
}

TEST_F(VariableInit, AnArrayWithoutBoundsCountsAsOneElement)
{
    CTypeArray array("INT[]", pInt);
    CVariable variable;
    variable.m_Name = "b";
    variable.m_Type = &array;
    variable.m_Offset = 6;
    EXPECT_EQ(Generate(variable), "");
    auto pInit = std::make_unique<CInitArray>();
    pInit->Add(std::make_unique<CInitValue>(std::int64_t{1}), 3);
    variable.m_InitValue = std::move(pInit);
    EXPECT_EQ(Generate(variable), "\tPUSH(INT) \t1\n\tPOP(INT) \t[global+6];b[0]\n");
}

TEST_F(VariableInit, DeepStructuresNeedNoStack)
{
    constexpr int depth = 100000;
    std::vector<std::unique_ptr<CTypeStruct>> types;
    std::string name = "s";
    for (int i = 0; i < depth; ++i) {
        types.push_back(std::make_unique<CTypeStruct>("t" + std::to_string(i)));
        CType* pInner = i == 0 ? pInt : types[static_cast<std::size_t>(i) - 1].get();
        auto pMember = MakeMember("m", pInner, 1);
        if (i == 0) pMember->m_InitValue = std::make_unique<CInitValue>(std::int64_t{8});
        types.back()->AddMember(std::move(pMember));
        name += ".m";
    }
    CVariable variable;
    variable.m_Name = "s";
    variable.m_Type = types.back().get();
    variable.m_Offset = 0;
    EXPECT_EQ(Generate(variable), "\tPUSH(INT) \t8\n\tPOP(INT) \t[global+100000];" + name + "\n");
}

// Each type holds the one before it twice: 2^60 places, and nothing to write in any of them.
TEST_F(VariableInit, TypesWithoutDefaultsAreWalkedOnce)
{
    std::vector<std::unique_ptr<CTypeStruct>> types;
    for (int i = 0; i < 60; ++i) {
        types.push_back(std::make_unique<CTypeStruct>("t" + std::to_string(i)));
        CType* pInner = i == 0 ? pInt : types[static_cast<std::size_t>(i) - 1].get();
        types.back()->AddMember(MakeMember("a", pInner, 0));
        types.back()->AddMember(MakeMember("b", pInner, 2));
    }
    CVariable variable;
    variable.m_Name = "s";
    variable.m_Type = types.back().get();
    variable.m_Offset = 0;
    EXPECT_EQ(Generate(variable), "");
}

TEST_F(VariableInit, HugeArraysCostWhatTheyWrite)
{
    CTypeStruct structure("t");
    structure.AddMember(MakeMember("x", pInt, 0));
    structure.SetSizeBytes(2);
    structure.SetAlign(2);
    CTypeArray numbers("INT[]", pInt);
    CTypeArray structures("t[]", &structure);
    numbers.m_Stride = 2;
    structures.m_Stride = 2;
    CVariableArray variable;
    variable.m_Name = "a";
    variable.m_Offset = 0;
    variable.m_Index = std::make_unique<CArrayOfArrayIndex>();
    variable.m_Index->Add(std::make_unique<CArrayIndex>());
    variable.m_Index->GetFirst()->m_Dimensions.emplace_back(1, INT_MAX);

    variable.m_Type = &numbers;
    EXPECT_EQ(Generate(variable), "");
    variable.m_Type = &structures;
    EXPECT_EQ(Generate(variable), "");

    auto pZeros = std::make_unique<CInitArray>();
    pZeros->Add(std::make_unique<CInitValue>(std::int64_t{0}), INT_MAX - 1);
    pZeros->Add(std::make_unique<CInitValue>(std::int64_t{3}), 1);
    variable.m_InitValue = std::move(pZeros);
    variable.m_Type = &numbers;
    EXPECT_EQ(Generate(variable), "\tPUSH(INT) \t3\n\tPOP(INT) \t[global+4294967292];a[2147483646]\n");

    auto pStructs = std::make_unique<CInitArray>();
    auto pZero = std::make_unique<CInitStruct>();
    pZero->Add("x", std::make_unique<CInitValue>(std::int64_t{0}), {}, norvane.m_Errors);
    pStructs->Add(std::move(pZero), INT_MAX - 1);
    auto pThree = std::make_unique<CInitStruct>();
    pThree->Add("X", std::make_unique<CInitValue>(std::int64_t{3}), {}, norvane.m_Errors);
    pStructs->Add(std::move(pThree), 1);
    variable.m_InitValue = std::move(pStructs);
    variable.m_Type = &structures;
    EXPECT_EQ(Generate(variable), "\tPUSH(INT)\t3\n\tPOP(INT) \t[global+4294967292];a[2147483646].x\n");
}

// ---- How many stores a variable takes.

TEST(InitialStores, AreAsManyAsAreWritten)
{
    const std::string types = "TYPE pair : STRUCT a : INT := 1; b : INT; c : BOOL := TRUE; END_STRUCT; END_TYPE\n"
                              "TYPE row : ARRAY[1..4] OF INT := [1, 0, 2(3)]; END_TYPE\n"
                              "TYPE both : STRUCT p : pair; q : pair := (b := 7); r : row; s : ARRAY[0..2] OF pair; END_STRUCT; END_TYPE\n"
                              "FUNCTION_BLOCK fb VAR_INPUT i : INT := 5; END_VAR VAR_IN_OUT io : INT; END_VAR VAR v : both; END_VAR\n"
                              ";\nEND_FUNCTION_BLOCK\n";
    const std::pair<const char*, int> variables[] = {
        {"x : pair;", 2},                                        // a, c
        {"x : pair := (b := 2);", 1},                            // b: the defaults don't come in
        {"x : pair := (a := 0);", 0},
        {"x : ARRAY[1..5] OF INT;", 0},
        {"x : ARRAY[1..5] OF INT := [0, 3(8)];", 3},             // elements 2, 3, 4
        {"x : ARRAY[1..5] OF INT := [9(8)];", 5},                // no more than there are
        {"x : ARRAY[0..1, 1..3] OF BOOL := [FALSE, 5(TRUE)];", 5},
        {"x : row;", 3},                                         // 1, 3, 3
        {"x : ARRAY[1..5] OF pair;", 10},
        {"x : ARRAY[1..5] OF pair := [2((a := 1, b := 2)), (b := 0)];", 8},   // 2 * 2, none, 2 * 2
        {"x : both;", 12},                                       // p 2, q 1, r 3, s 6
        {"x : both := (p := (a := 3), r := [1]);", 11},          // p 1: the list doesn't reach r
        {"x : ARRAY[1..3] OF both;", 36},
        {"x : fb;", 13},                                         // i, and those of v
        {"x : ARRAY[1..2] OF fb;", 26},
    };
    for (const auto& [declaration, stores] : variables) {
        CompileOptions options;
        options.initialisation = true;
        const CompiledText text = CompileText(types + "VAR_GLOBAL " + declaration + " END_VAR\n" + g_Program, options);
        // Some declarations say that values are too many, or leave some out.
        const CVariable* pVariable = text.pNorvane->m_GlobalSymbols.Find("x");
        ASSERT_NE(pVariable, nullptr) << declaration << text.output;
        EXPECT_EQ(text.pNorvane->m_Code.CountInitialStores(pVariable), stores) << declaration;
        const std::string body = BodyOf(text.assembler, "__GlobalInitialization__");
        int written = 0;
        for (std::size_t found = body.find("\tPOP("); found != std::string::npos; found = body.find("\tPOP(", found + 1)) ++written;
        EXPECT_EQ(written, stores) << declaration << body;
    }
}

// Each type holds the one before it twice, with a list that names no member of it but the first: 2^60 places. What the
// lists of types say is counted once for each type, whether it writes nothing or too much.
TEST_F(VariableInit, ListsOfTypesAreCountedOnce)
{
    for (const std::int64_t value : {0, 1}) {
        std::vector<std::unique_ptr<CTypeStruct>> types;
        for (int i = 0; i < 60; ++i) {
            types.push_back(std::make_unique<CTypeStruct>("t" + std::to_string(i)));
            CType* pInner = i == 0 ? pInt : types[static_cast<std::size_t>(i) - 1].get();
            for (const char* name : {"a", "b"}) {
                auto pMember = MakeMember(name, pInner, 0);
                if (i == 0) pMember->m_InitValue = std::make_unique<CInitValue>(value);
                else pMember->m_InitValue = std::make_unique<CInitStruct>();
                types.back()->AddMember(std::move(pMember));
            }
            if (i == 1) {
                for (const auto& pMember : types.back()->m_Members)
                    static_cast<CInitStruct&>(*pMember->m_InitValue)
                        .Add("a", std::make_unique<CInitValue>(value), SourceLocation(), norvane.m_Errors);
            }
        }
        CVariable variable;
        variable.m_Name = "s";
        variable.m_Type = types.back().get();
        variable.m_Offset = 0;
        // One store in each of the 2^59 places of the innermost type, if its value isn't zero.
        EXPECT_EQ(norvane.m_Code.CountInitialStores(&variable), value == 0 ? 0 : std::int64_t{1} << 59);
        if (value == 0) {
            EXPECT_EQ(Generate(variable), "");
        }
    }
}

TEST_F(VariableInit, CountsThatFitNoNumberStop)
{
    CTypeStruct inner("inner");
    inner.AddMember(MakeMember("x", pInt, 0));
    inner.m_Members[0]->m_InitValue = std::make_unique<CInitValue>(std::int64_t{1});
    CTypeArray array("inner[]", &inner);
    CTypeArray arrays("inner[][]", &array);
    CVariableArray variable;
    variable.m_Name = "a";
    variable.m_Offset = 0;
    variable.m_Type = &arrays;
    variable.m_Index = std::make_unique<CArrayOfArrayIndex>();
    for (int level = 0; level < 2; ++level) {
        auto pLevel = std::make_unique<CArrayIndex>();
        pLevel->m_Dimensions = {CIndex(1, INT_MAX), CIndex(1, INT_MAX)};
        variable.m_Index->Add(std::move(pLevel));
    }
    EXPECT_EQ(norvane.m_Code.CountInitialStores(&variable), 1'000'000'000'000'000'000);
}

TEST_F(VariableInit, AMillionStoresAreTheMost)
{
    CTypeArray numbers("INT[]", pInt);
    numbers.m_Stride = 2;
    CVariableArray variable;
    variable.m_Name = "many";
    variable.m_Offset = 0;
    variable.m_Type = &numbers;
    variable.m_Location = {7, 3, 7, 7, "a.st"};
    variable.m_Index = std::make_unique<CArrayOfArrayIndex>();
    variable.m_Index->Add(std::make_unique<CArrayIndex>());
    variable.m_Index->GetFirst()->m_Dimensions.emplace_back(1, 2000000);
    auto pInit = std::make_unique<CInitArray>();
    pInit->Add(std::make_unique<CInitValue>(std::int64_t{0}), 500000);   // zeros write nothing
    pInit->Add(std::make_unique<CInitValue>(std::int64_t{1}), 1000000);
    CInitArray& values = *pInit;
    variable.m_InitValue = std::move(pInit);

    const std::string text = Generate(variable);
    const std::string last = "\tPUSH(INT) \t1\n\tPOP(INT) \t[global+2999998];many[1499999]\n";
    ASSERT_GT(text.size(), last.size());
    EXPECT_EQ(text.substr(text.size() - last.size()), last);

    values.m_Repeats[1] = 1000001;
    EXPECT_EXIT(Generate(variable), testing::ExitedWithCode(1),
                "^a\\.st\\(7,3\\) : error: more than 1000000 elements of many have an initial value to be written\n$");
}
