#include "CompileText.h"

#include "frontend/StringLiteral.h"
#include "model/ArrayIndex.h"
#include "model/Member.h"
#include "model/Pou.h"
#include "model/Type.h"
#include "model/TypeAny.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"


namespace
{

// ---- Helpers.

std::string Globals(const std::string& body)
{
    return "VAR_GLOBAL\n" + body + "\nEND_VAR\n";
}

// The body's first line is line 3 of the source.
std::string Block(const std::string& body, const std::string& kind = "VAR")
{
    return "FUNCTION_BLOCK fb\n" + kind + "\n" + body + "\nEND_VAR\n;\nEND_FUNCTION_BLOCK\n";
}

CVariable* Global(const CompiledText& compiled, std::string_view name)
{
    return compiled.pNorvane->m_GlobalSymbols.Find(name);
}

CMember* Member(const CompiledText& compiled, std::string_view type, std::string_view name)
{
    CType* pType = compiled.pNorvane->m_DataTypes.FindUserType(type);
    CTypeStruct* pStruct = pType ? pType->AsStruct() : nullptr;
    return pStruct ? pStruct->FindMember(name) : nullptr;
}

std::string ValueText(const CInitValue* pValue)
{
    return pValue ? pValue->GetBracketedText() : "none";
}

std::string BoundsText(const CArrayOfArrayIndex* pIndex)
{
    if (!pIndex) return "none";
    std::string text;
    for (int level = 0; level < pIndex->GetLevelCount(); ++level) {
        text += "[";
        for (const CIndex& bounds : pIndex->GetLevel(level)->m_Dimensions)
            text += std::to_string(bounds.m_Low) + ".." + std::to_string(bounds.m_High) + ",";
        text.back() = ']';
    }
    return text;
}

// Drives the methods without a parser, for what no source can reach.
class DeclarationFixture : public testing::Test
{
protected:
    DeclarationFixture()
    {
        g_CurrentFileName = "test.st";
        LoadTarget(norvane);
    }

    static SourceLocation At(int line, int column) { return {line, column, line, column + 1, "test.st"}; }

    CNode* List(std::initializer_list<const char*> names)
    {
        CNode* pList = nullptr;
        int column = 1;
        for (const char* name : names) {
            CNode* pName = norvane.MakeDeclaredIdentifier(norvane.m_Names.Intern(name), At(1, column));
            if (pList) norvane.AppendToList(pList, pName);
            else pList = norvane.MakeNode(LIST_ID, At(1, column), {pName});
            column += 3;
        }
        return pList;
    }

    template <typename Action>
    std::string Printed(const Action& action)
    {
        return PrintedBy(action);
    }

    CNorvane norvane;
    CTypeAny any{"ANY_INT"};
};

// ---- Names.

TEST_F(DeclarationFixture, LooksUpElementaryTypesExactly)
{
    CType* pType = nullptr;
    EXPECT_EQ(norvane.LookupTypeName(norvane.m_Names.Intern("INT"), pType), TYPE_IDENTIFIER);
    EXPECT_EQ(pType, norvane.m_DataTypes.FindType("INT"));
    EXPECT_EQ(norvane.LookupTypeName(norvane.m_Names.Intern("LINT"), pType), NEW_ID) << "no target allows it";
    EXPECT_EQ(pType, norvane.m_DataTypes.FindType("LINT")) << "the type is handed out all the same";
    EXPECT_EQ(norvane.LookupTypeName(norvane.m_Names.Intern("TOD"), pType), NEW_ID);
    EXPECT_EQ(pType, nullptr);
    EXPECT_EQ(norvane.LookupTypeName(norvane.m_Names.Intern("int"), pType), NEW_ID);
    EXPECT_EQ(pType, nullptr);
}

TEST_F(DeclarationFixture, ClassifiesNames)
{
    norvane.m_DataTypes.AddAlias("Speed", norvane.m_DataTypes.FindType("INT"), nullptr);
    YYSTYPE value{};
    EXPECT_EQ(norvane.ClassifyName(norvane.m_Names.Intern("INT_TO_REAL"), value), CAST_FUNCTION_CALL);
    EXPECT_EQ(value.pCast, norvane.m_CastFunctions.Find("INT_TO_REAL"));
    EXPECT_EQ(norvane.ClassifyName(norvane.m_Names.Intern("int_to_real"), value), NEW_ID);
    EXPECT_EQ(norvane.ClassifyName(norvane.m_Names.Intern("SPEED"), value), TYPE_IDENTIFIER);
    EXPECT_EQ(value.pType, norvane.m_DataTypes.FindUserType("speed"));
    EXPECT_EQ(norvane.ClassifyName(norvane.m_Names.Intern("other"), value), NEW_ID);
    EXPECT_EQ(value.pType, nullptr);
}

TEST_F(DeclarationFixture, ReportsTwoUnderscoresOnceAndGoesOn)
{
    yylineno = 4;
    nColumn = 9;
    YYSTYPE value{};
    int kind = 0;
    const std::string printed = Printed([&] { kind = norvane.ClassifyName(norvane.m_Names.Intern("a__b__c"), value); });
    EXPECT_EQ(printed, "test.st(4,9) : error: two underscore in identifier's name\n");
    EXPECT_EQ(kind, NEW_ID);
    EXPECT_EQ(Printed([&] { norvane.ClassifyName(norvane.m_Names.Intern("a_b_c_"), value); }), "");
}

TEST_F(DeclarationFixture, FindsLocalsBeforeGlobals)
{
    norvane.BeginVarBlock(VAR_GLOBAL, nullptr);
    norvane.AddVariables(List({"a", "b"}), norvane.m_DataTypes.FindType("INT"), nullptr);
    norvane.BeginVarBlock(VAR, nullptr);
    norvane.AddVariables(List({"A"}), norvane.m_DataTypes.FindType("DINT"), nullptr);
    ASSERT_TRUE(norvane.FindVariable("a"));
    EXPECT_TRUE(norvane.FindVariable("a")->m_IsLocal);
    ASSERT_TRUE(norvane.FindVariable("B"));
    EXPECT_FALSE(norvane.FindVariable("B")->m_IsLocal);
    EXPECT_EQ(norvane.FindVariable("c"), nullptr);
}

// ---- Blocks.

TEST_F(DeclarationFixture, BlockFlags)
{
    const struct { int token; int flags; } blocks[] = {
        {VAR, 1}, {VAR_INPUT, 2}, {VAR_OUTPUT, 4}, {VAR_IN_OUT, 8}, {VAR_GLOBAL, 16}, {VAR_EXTERNAL, 32},
        {TYPE_USER, 256}, {STRUCT_TYPE_USER, 512},
    };
    for (const auto& block : blocks) {
        norvane.BeginVarBlock(block.token, nullptr);
        EXPECT_EQ(norvane.m_VarBlockFlags, block.flags);
    }
    EXPECT_TRUE(norvane.m_StructInProgress);
    EXPECT_EQ(norvane.m_StructInProgress->m_Name, "tmp");
    norvane.EndVarBlock();
    EXPECT_EQ(norvane.m_VarBlockFlags, 0);
}

TEST_F(DeclarationFixture, AttributeFlags)
{
    const auto attributes = [this](std::initializer_list<int> kinds) {
        CNode* pList = norvane.m_Nodes.MakeNode(OPT_LIST, At(1, 1));
        for (const int kind : kinds) pList->AddChild(norvane.m_Nodes.MakeNode(kind, At(1, 1)));
        return pList;
    };
    norvane.BeginVarBlock(VAR, attributes({}));
    EXPECT_EQ(norvane.m_VarBlockFlags, 1);
    norvane.BeginVarBlock(VAR, attributes({RETAIN}));
    EXPECT_EQ(norvane.m_VarBlockFlags, 1 + 128);
    norvane.BeginVarBlock(VAR_GLOBAL, attributes({CONSTANT}));
    EXPECT_EQ(norvane.m_VarBlockFlags, 16 + 64);
    norvane.BeginVarBlock(VAR, attributes({CONSTANT, RETAIN}));
    EXPECT_EQ(norvane.m_VarBlockFlags, 1 + 192);
    norvane.BeginVarBlock(VAR, attributes({RETAIN, CONSTANT}));
    EXPECT_EQ(norvane.m_VarBlockFlags, 1 + 192);
}

// The parameter lists hold what joined them: of a function its interface, of a block everything.
TEST(Declarations, WhatANameGetsInEachBlock)
{
    const std::string blocks = "VAR\nv : INT;\nEND_VAR\nVAR_INPUT\ni : INT;\nEND_VAR\nVAR_OUTPUT\no : INT;\nEND_VAR\n"
                               "VAR_IN_OUT\nio : INT;\nEND_VAR\nVAR_EXTERNAL\ne : INT;\nEND_VAR\n";
    const CompiledText compiled = CompileText(Globals("e : INT;") + "FUNCTION f : INT\n" + blocks + "f := 1;\nEND_FUNCTION\n"
                                              "FUNCTION_BLOCK fb\n" + blocks + ";\nEND_FUNCTION_BLOCK\n");
    EXPECT_EQ(compiled.output, "");

    const CPou* pFunction = compiled.pNorvane->m_Pous.FindPou("f");
    ASSERT_TRUE(pFunction);
    EXPECT_EQ(pFunction->m_ParameterCount, 3);
    ASSERT_EQ(pFunction->m_Parameters.size(), 3u);
    EXPECT_EQ(pFunction->m_Parameters[0]->m_Name, "i");
    EXPECT_TRUE(pFunction->m_Parameters[0]->m_IsInput);
    EXPECT_EQ(pFunction->m_Parameters[1]->m_Name, "o");
    EXPECT_TRUE(pFunction->m_Parameters[1]->m_IsOutput);
    EXPECT_EQ(pFunction->m_Parameters[2]->m_Name, "io");
    EXPECT_TRUE(pFunction->m_Parameters[2]->m_IsInOut);
    for (const auto& pParameter : pFunction->m_Parameters) EXPECT_TRUE(pParameter->m_IsLocal);

    const CPou* pBlock = compiled.pNorvane->m_Pous.FindPou("fb");
    ASSERT_TRUE(pBlock);
    std::string names;
    for (const auto& pParameter : pBlock->m_Parameters) names += pParameter->m_Name + " ";
    EXPECT_EQ(names, "v i o io e ");
    const CVariable& external = *pBlock->m_Parameters[4];
    EXPECT_TRUE(external.m_IsLocal);
    EXPECT_FALSE(external.IsParameter());
    ASSERT_TRUE(Global(compiled, "e"));
    EXPECT_FALSE(Global(compiled, "e")->m_IsLocal);
}

TEST_F(DeclarationFixture, AnExternalIsEnteredNowhere)
{
    norvane.BeginVarBlock(VAR_EXTERNAL, nullptr);
    CNode* pList = List({"x"});
    norvane.AddVariables(pList, norvane.m_DataTypes.FindType("INT"), nullptr);
    EXPECT_EQ(norvane.FindVariable("x"), nullptr);
    EXPECT_TRUE(norvane.m_Memory.m_LocalVariables.empty());
    ASSERT_TRUE(pList->Child(0)->pVariable);
    EXPECT_EQ(pList->Child(0)->pVariable->m_Name, "x");
}

TEST(Declarations, ConstantAndRetainInEveryBlock)
{
    const CompiledText compiled = CompileText("VAR_GLOBAL CONSTANT\nc : INT := 3;\nEND_VAR\n"
                                              "VAR_GLOBAL RETAIN\nr : INT;\nEND_VAR\n"
                                              "VAR_GLOBAL RETAIN CONSTANT\nb : INT;\nEND_VAR\n");
    EXPECT_EQ(compiled.output, "");
    EXPECT_TRUE(Global(compiled, "c")->m_IsConstant);
    EXPECT_FALSE(Global(compiled, "c")->m_IsRetain);
    EXPECT_FALSE(Global(compiled, "r")->m_IsConstant);
    EXPECT_TRUE(Global(compiled, "r")->m_IsRetain);
    EXPECT_TRUE(Global(compiled, "b")->m_IsConstant && Global(compiled, "b")->m_IsRetain);
}

// ---- Names declared again.

TEST(Declarations, ANameDeclaredAgainIsReportedInTheSpellingDeclaredBefore)
{
    const CompiledText compiled = CompileText(Globals("abc : INT;\nx, ABC : DINT;"));
    EXPECT_EQ(compiled.output, "test.st(3,4) : error: variable abc already declared\n");
    EXPECT_EQ(Global(compiled, "abc")->m_Type->m_Name, "INT");
    EXPECT_EQ(Global(compiled, "x")->m_Type->m_Name, "DINT");
    EXPECT_EQ(compiled.pNorvane->m_Memory.m_GlobalVariables.size(), 2u);
}

TEST(Declarations, TheSameNameTwiceInOneListIsNotNoticed)
{
    const CompiledText compiled = CompileText(Globals("a, a : INT;"));
    EXPECT_EQ(compiled.output, "");
    ASSERT_EQ(compiled.pNorvane->m_Memory.m_GlobalVariables.size(), 2u);
    EXPECT_EQ(Global(compiled, "a"), compiled.pNorvane->m_Memory.m_GlobalVariables[1]);
}

TEST(Declarations, ALocalHidesAGlobal)
{
    const CompiledText compiled = CompileText(Globals("a : INT;") + Block("a : BOOL;\nb : BOOL := a;"));
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(Member(compiled, "fb", "a")->m_Type->m_Name, "BOOL");
}

// Locals are left when a POU is given up. A global block finds them, and a global of the name as well.
TEST_F(DeclarationFixture, AGlobalIsComparedWithBothTables)
{
    norvane.BeginVarBlock(VAR_GLOBAL, nullptr);
    norvane.AddVariables(List({"g", "a"}), norvane.m_DataTypes.FindType("INT"), nullptr);
    norvane.BeginVarBlock(VAR, nullptr);
    norvane.AddVariables(List({"l", "a"}), norvane.m_DataTypes.FindType("INT"), nullptr);
    norvane.BeginVarBlock(VAR_GLOBAL, nullptr);
    CNode* pList = nullptr;
    const std::string printed = Printed([&] { pList = List({"l", "a", "n"}); });
    EXPECT_EQ(printed, "test.st(1,1) : error: variable l already declared\n"
                       "test.st(1,4) : error: variable a already declared\n"
                       "test.st(1,4) : error: variable a already declared\n");
    EXPECT_EQ(pList->Child(0)->nKind, ERROR_);
    EXPECT_EQ(pList->Child(1)->nKind, ERROR_);
    EXPECT_EQ(pList->Child(2)->nKind, IDENTIFIER);
}

// ---- Types of variables.

TEST(Declarations, AVariableHasTheBaseTypeAndTheAliasesDefault)
{
    const CompiledText compiled = CompileText("TYPE\nt1 : INT := 5;\nt2 : t1;\nt3 : t2 := 6;\nEND_TYPE\n" +
                                              Globals("a, b : t2;\nc : T3;\nd : INT;"));
    EXPECT_EQ(compiled.output, "");
    CType* pInt = compiled.pNorvane->m_DataTypes.FindType("INT");
    for (const char* name : {"a", "b", "c", "d"}) EXPECT_EQ(Global(compiled, name)->m_Type, pInt) << name;
    EXPECT_EQ(ValueText(Global(compiled, "a")->m_InitValue.get()), "5");
    EXPECT_EQ(ValueText(Global(compiled, "b")->m_InitValue.get()), "5");
    EXPECT_EQ(ValueText(Global(compiled, "c")->m_InitValue.get()), "6");
    EXPECT_EQ(ValueText(Global(compiled, "d")->m_InitValue.get()), "none");
}

TEST_F(DeclarationFixture, TheListCarriesTheTypesNameAndTheNamesTheirVariables)
{
    CType* pAlias = norvane.m_DataTypes.AddAlias("Speed", norvane.m_DataTypes.FindType("INT"), nullptr);
    norvane.BeginVarBlock(VAR, nullptr);
    CNode* pList = List({"a"});
    norvane.AddVariables(pList, pAlias, nullptr);
    EXPECT_EQ(pList->GetName(), "Speed");
    EXPECT_EQ(pList->Child(0)->pType, norvane.m_DataTypes.FindType("INT"));
    EXPECT_EQ(pList->Child(0)->pVariable, norvane.m_LocalSymbols.Find("a"));
    EXPECT_EQ(ValueText(pList->Child(0)->GetInit()), "0");
}

TEST_F(DeclarationFixture, NoTypeIsTheErrorType)
{
    norvane.BeginVarBlock(VAR, nullptr);
    CNode* pList = List({"a"});
    norvane.AddVariables(pList, nullptr, nullptr);
    EXPECT_EQ(pList->GetName(), "ERROR");
    EXPECT_EQ(norvane.m_LocalSymbols.Find("a")->m_Type, norvane.m_DataTypes.m_ErrorType);
    CNode* pReturnType = norvane.MakeReturnType(norvane.m_Nodes.MakeNode(RETURN_TYPE, At(1, 1)), nullptr);
    EXPECT_EQ(pReturnType->pType, norvane.m_DataTypes.m_ErrorType);
    norvane.AddReturnVariable(norvane.m_Names.Intern("f"), pReturnType);
    EXPECT_EQ(norvane.m_LocalSymbols.Find("f")->m_Type, norvane.m_DataTypes.m_ErrorType);
}

// ---- ANY, which only the tables can bring in.

TEST_F(DeclarationFixture, AnyIsForFormalParametersOnly)
{
    const std::string message =
        "test.st(1,1) : error: type ANY are allowed only in function's formal parameters \n";
    norvane.BeginPou(FUNCTION);
    for (const int kind : {VAR_INPUT, VAR_OUTPUT, VAR_IN_OUT}) {
        norvane.BeginVarBlock(kind, nullptr);
        EXPECT_EQ(Printed([&] { norvane.AddVariables(List({"a"}), &any, nullptr); }), "");
        norvane.m_LocalSymbols.Clear();
    }
    norvane.BeginVarBlock(VAR, nullptr);
    EXPECT_EQ(Printed([&] { norvane.AddVariables(List({"b"}), &any, nullptr); }), message);
    EXPECT_TRUE(norvane.FindVariable("b")) << "declared all the same";
    norvane.BeginVarBlock(TYPE_USER, nullptr);
    EXPECT_EQ(Printed([&] { norvane.AddVariables(List({"t"}), &any, nullptr); }), message);
    EXPECT_TRUE(norvane.m_DataTypes.FindUserType("t"));
    norvane.BeginVarBlock(STRUCT_TYPE_USER, nullptr);
    EXPECT_EQ(Printed([&] { norvane.AddVariables(List({"m"}), &any, nullptr); }), message);
    EXPECT_TRUE(norvane.m_StructInProgress->FindMember("m"));
}

TEST_F(DeclarationFixture, AnyCantBeInitialisedOrStandInAnArray)
{
    norvane.BeginVarBlock(VAR, nullptr);
    CNode* pValue = norvane.MakeInteger(1, At(1, 9));
    EXPECT_EQ(Printed([&] { norvane.DeclareWithInit(List({"a"}), &any, pValue); }),
              "test.st(1,1) : error: cannot initialize an ANY variable\n"
              "test.st(1,1) : error: type ANY are allowed only in function's formal parameters \n");
    EXPECT_TRUE(norvane.FindVariable("a"));
    CNode* pRanges = norvane.m_Nodes.MakeNode(ARRAY_ARG, At(1, 9));
    EXPECT_EQ(Printed([&] { norvane.DeclareArray(List({"b"}), pRanges, &any, nullptr); }),
              "test.st(1,1) : error: type ANY are allowed only in function's formal parameters \n"
              "test.st(1,1) : error: cannot initialize an ANY variable\n");
    EXPECT_EQ(norvane.FindVariable("b"), nullptr);
}

class AnyFunction : public DeclarationFixture
{
protected:
    // FUNCTION f with the given parameter types and return type.
    CNode* Declare(std::vector<CType*> parameters, CType* pReturn)
    {
        norvane.BeginPou(FUNCTION);
        norvane.BeginVarBlock(VAR_INPUT, nullptr);
        const char* names[] = {"p0", "p1", "p2"};
        for (std::size_t i = 0; i < parameters.size(); ++i)
            norvane.AddVariables(List({names[i]}), parameters[i], nullptr);
        norvane.EndVarBlock();
        CNode* pName = norvane.MakeIdentifier(norvane.m_Names.Intern("f"), At(1, 10));
        CNode* pReturnType = norvane.MakeReturnType(norvane.m_Nodes.MakeNode(RETURN_TYPE, At(1, 14)), pReturn);
        CNode* pBlock = norvane.m_Nodes.MakeNode(VAR_BLOCK, At(2, 1));
        CNode* pStatements = norvane.m_Nodes.MakeNode(STMT_LIST, At(3, 1));
        CNode* pFunction = norvane.MakeNode(FUNCTION, At(1, 10), {pName, pReturnType, pBlock, pStatements});
        norvane.m_Memory.ClearLocalVariables();
        norvane.m_LocalSymbols.Clear();
        return pFunction;
    }

    CTypeAny other{"ANY_REAL"};
};

TEST_F(AnyFunction, OneAnyTypeKeepsTheFunctionOutOfTheTable)
{
    CType* pInt = norvane.m_DataTypes.FindType("INT");
    CNode* pFunction = Declare({&any, pInt, &any}, &any);
    ASSERT_TRUE(pFunction->GetPou());
    EXPECT_EQ(pFunction->GetPou()->m_ParameterCount, 3);
    EXPECT_EQ(norvane.m_Pous.FindPou("f"), nullptr);
    EXPECT_TRUE(Declare({&any}, pInt)->GetPou());
}

// Its code is left as it is when that of unused functions becomes a comment, so its notes are printed.
TEST_F(AnyFunction, NotesOfAFunctionOutsideOfTheTableCount)
{
    CType* pInt = norvane.m_DataTypes.FindType("INT");
    CNode* pListed = Declare({pInt}, pInt);
    norvane.m_Notes.Add(Note::ExitOfCase, At(1, 10));
    norvane.m_Notes.EndPou(pListed->GetPou());
    EXPECT_EQ(norvane.m_Notes.GetPrintedLines({}), "") << "nothing uses it";

    CNode* pFunction = Declare({&any}, pInt);
    norvane.m_Notes.Add(Note::ExitOfCase, At(2, 3));
    norvane.m_Notes.EndPou(pFunction->GetPou());
    const std::string line = "(2,3) : note N24: EXIT leaves the CASE only, not the loop around it\n";
    EXPECT_TRUE(norvane.m_Notes.GetPrintedLines({}).ends_with(line));
}

TEST_F(AnyFunction, MixedAnyTypesAreRefusedWithoutACountedError)
{
    CType* pInt = norvane.m_DataTypes.FindType("INT");
    const std::string line = "type ANY must be of the same type\n";
    CNode* pFunction = nullptr;
    EXPECT_EQ(Printed([&] { pFunction = Declare({&any, &other}, pInt); }), line);
    EXPECT_EQ(pFunction->GetPou(), nullptr);
    EXPECT_EQ(Printed([&] { pFunction = Declare({&any, pInt}, &other); }), line);
    EXPECT_EQ(pFunction->GetPou(), nullptr);
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 0);
}

// ---- Programs, functions and blocks.

TEST(Declarations, AProgramHasNoInterface)
{
    const std::string message = "error: not supported VAR_INPUT VAR_OUTPUT and VAR_IN_OUT for program; "
                                "(cannot call a program)\n";
    for (const char* kind : {"VAR_INPUT", "VAR_OUTPUT", "VAR_IN_OUT"}) {
        const CompiledText compiled =
            CompileText("PROGRAM main\n" + std::string(kind) + "\na, b : INT;\nEND_VAR\n;\nEND_PROGRAM\n");
        EXPECT_EQ(compiled.output, "test.st(3,1) : " + message) << kind;
    }
    const CompiledText compiled = CompileText("PROGRAM main\nVAR_INPUT\na : INT;\nEND_VAR\na := 1;\nEND_PROGRAM\n");
    EXPECT_EQ(compiled.output, "test.st(3,1) : " + message +
                               "test.st(5,1) : error: variable a not declared\n");
}

TEST(Declarations, AnArrayThatIsDroppedLeavesNothingForTheNextDeclaration)
{
    const CompiledText compiled = CompileText("PROGRAM main\nVAR_INPUT\na : ARRAY [0..1] OF INT;\nEND_VAR\n;\nEND_PROGRAM\n" +
                                              Globals("x : INT;"));
    EXPECT_FALSE(Global(compiled, "x")->IsArray());
}

TEST(Declarations, AnInitialisedParameterOfAFunctionWarnsAndKeepsItsValue)
{
    const CompiledText compiled = CompileText("FUNCTION f : INT\nVAR_INPUT\na, b : INT := 3;\nEND_VAR\nVAR\nc : INT := 4;\nEND_VAR\n"
                                              "f := a;\nEND_FUNCTION\n");
    EXPECT_EQ(compiled.output, "test.st(3,1) : warning, function actual parameter cannot be initialized\n"
                               "test.st(3,4) : warning, function actual parameter cannot be initialized\n");
    const CPou* pFunction = compiled.pNorvane->m_Pous.FindPou("f");
    ASSERT_EQ(pFunction->m_Parameters.size(), 2u);
    EXPECT_EQ(ValueText(pFunction->m_Parameters[0]->m_InitValue.get()), "3");
}

TEST(Declarations, ADefaultOfTheTypeIsNoInitialisedParameter)
{
    const CompiledText compiled = CompileText("TYPE\nt : INT := 5;\nu : ARRAY [0..1] OF INT := [1, 2];\nEND_TYPE\n"
                                              "FUNCTION f : INT\nVAR_INPUT\na : t;\nb : u;\nEND_VAR\nf := 1;\nEND_FUNCTION\n");
    EXPECT_EQ(compiled.output, "");
    const CPou* pFunction = compiled.pNorvane->m_Pous.FindPou("f");
    EXPECT_EQ(ValueText(pFunction->m_Parameters[0]->m_InitValue.get()), "5");
    EXPECT_EQ(ValueText(pFunction->m_Parameters[1]->m_InitValue.get()), "[1,2]");
}

TEST(Declarations, InAFunctionBlockOnlyAnInOutWarns)
{
    EXPECT_EQ(CompileText(Block("a : INT := 3;", "VAR_INPUT")).output, "");
    EXPECT_EQ(CompileText(Block("a : INT := 3;", "VAR_OUTPUT")).output, "");
    const CompiledText compiled = CompileText(Block("a : INT := 3;", "VAR_IN_OUT"));
    EXPECT_EQ(compiled.output, "test.st(3,1) : warning, useless assignment \n");
    EXPECT_EQ(ValueText(Member(compiled, "fb", "a")->m_InitValue.get()), "3");
}

TEST(Declarations, AFunctionBlockIsAStructureOfItsVariables)
{
    const CompiledText compiled =
        CompileText("FUNCTION_BLOCK Fb\nVAR_INPUT\ni : INT := 2;\nEND_VAR\nVAR_OUTPUT\no : ARRAY [1..3] OF BOOL;\nEND_VAR\n"
                    "VAR_IN_OUT\nio : INT;\nEND_VAR\nVAR\nv : INT;\nEND_VAR\n;\nEND_FUNCTION_BLOCK\n" +
                    Globals("x : FB;"));
    EXPECT_EQ(compiled.output, "");
    CTypeStructFB* pType = Global(compiled, "x")->m_Type->AsStructFB();
    ASSERT_TRUE(pType);
    EXPECT_EQ(pType->m_Name, "Fb");
    CPou* pPou = compiled.pNorvane->m_Pous.FindPou("fb");
    ASSERT_TRUE(pPou);
    EXPECT_EQ(pType->m_FunctionBlock, pPou);
    EXPECT_EQ(pPou->AsFunctionBlock()->m_Type, pType);
    ASSERT_EQ(pType->m_Members.size(), 4u);
    EXPECT_TRUE(pType->GetMember(0)->m_IsInput);
    EXPECT_EQ(ValueText(pType->GetMember(0)->m_InitValue.get()), "2");
    EXPECT_TRUE(pType->GetMember(1)->m_IsOutput);
    EXPECT_EQ(BoundsText(pType->GetMember(1)->m_Index.get()), "[1..3]");
    EXPECT_TRUE(pType->GetMember(2)->m_IsInOut);
    const CMemberFB* pPrivate = pType->GetMember(3);
    EXPECT_FALSE(pPrivate->m_IsInput || pPrivate->m_IsOutput || pPrivate->m_IsInOut);
}

TEST(Declarations, AFunctionsResultIsALocalOfItsName)
{
    const CompiledText compiled = CompileText("TYPE\nt : INT := 5;\nEND_TYPE\nFUNCTION f : t\nf := 1;\nEND_FUNCTION\n"
                                              "FUNCTION g ;\nEND_FUNCTION\n");
    EXPECT_EQ(compiled.output, "");
    CFunction* pFunction = compiled.pNorvane->m_Pous.FindPou("f")->AsFunction();
    EXPECT_EQ(pFunction->m_ReturnType->m_Name, "t") << "an alias stays one";
    EXPECT_TRUE(pFunction->m_ReturnVariable);
    EXPECT_EQ(pFunction->m_ParameterCount, 0);
    CFunction* pPlain = compiled.pNorvane->m_Pous.FindPou("g")->AsFunction();
    EXPECT_EQ(pPlain->m_ReturnType, nullptr);
    EXPECT_EQ(pPlain->m_ReturnVariable, nullptr);
}

TEST_F(DeclarationFixture, OnlyAnAliasGivesTheResultAValue)
{
    const CInitValue five(std::int64_t{5});
    CType* pInt = norvane.m_DataTypes.FindType("INT");
    CType* pAlias = norvane.m_DataTypes.AddAlias("t", pInt, &five);
    CNode* pAliasNode = norvane.MakeReturnType(norvane.m_Nodes.MakeNode(RETURN_TYPE, At(1, 1)), pAlias);
    CNode* pIntNode = norvane.MakeReturnType(norvane.m_Nodes.MakeNode(RETURN_TYPE, At(1, 1)), pInt);
    norvane.AddReturnVariable(norvane.m_Names.Intern("f"), pAliasNode);
    norvane.AddReturnVariable(norvane.m_Names.Intern("g"), pIntNode);
    EXPECT_EQ(pAliasNode->GetName(), "t");
    EXPECT_EQ(pAliasNode->pVariable, norvane.m_LocalSymbols.Find("f"));
    EXPECT_EQ(norvane.m_LocalSymbols.Find("f")->m_Type, pInt);
    EXPECT_EQ(ValueText(norvane.m_LocalSymbols.Find("f")->m_InitValue.get()), "5");
    EXPECT_EQ(ValueText(norvane.m_LocalSymbols.Find("g")->m_InitValue.get()), "none");
}

TEST(Declarations, AFunctionReturnsNoAggregate)
{
    const CompiledText compiled =
        CompileText("TYPE\ns : STRUCT\na : INT;\nEND_STRUCT;\nv : ARRAY [0..1] OF INT;\nEND_TYPE\n"
                    "FUNCTION f : s\n;\nEND_FUNCTION\nFUNCTION g : v\n;\nEND_FUNCTION\n");
    EXPECT_EQ(compiled.output, "test.st(7,14) : error: function cannot return struct or array\n"
                               "test.st(10,14) : error: function cannot return struct or array\n");
}

TEST(Declarations, ParametersBelongToTheFunctionThatDeclaresThem)
{
    const CompiledText compiled = CompileText("FUNCTION f : INT\nVAR_INPUT\na : INT;\nEND_VAR\nf := a;\nEND_FUNCTION\n"
                                              "FUNCTION g : INT\ng := 1;\nEND_FUNCTION\n"
                                              "FUNCTION h VAR_INPUT\nb : INT;\nEND_VAR\n;\nEND_FUNCTION\n");
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(compiled.pNorvane->m_Pous.FindPou("g")->m_ParameterCount, 0);
    const CPou* pLast = compiled.pNorvane->m_Pous.FindPou("h");
    ASSERT_EQ(pLast->m_Parameters.size(), 1u);
    EXPECT_EQ(pLast->m_Parameters[0]->m_Name, "b");
}

TEST(Declarations, ARefusedPouIsReportedAtItsOwnPlace)
{
    EXPECT_EQ(CompileText("PROGRAM other\n;\nEND_PROGRAM\n").output, "test.st(1,1) : error: program not supported\n");
    EXPECT_EQ(CompileText("FUNCTION f : INT\nf := 1;\nEND_FUNCTION\nFUNCTION F : INT\nF := 1;\nEND_FUNCTION\n").output,
              "test.st(4,10) : error: function  f already declaredtest.st (1,10)\n");
}

TEST_F(DeclarationFixture, TheEndOfAPouEmptiesItsScope)
{
    norvane.BeginVarBlock(VAR, nullptr);
    norvane.AddVariables(List({"a"}), norvane.m_DataTypes.FindType("INT"), nullptr);
    norvane.AddProgramInit();
    const CVariable* pMark = norvane.m_LocalSymbols.Find("__ProgramInit");
    ASSERT_TRUE(pMark);
    EXPECT_EQ(pMark->m_Type, norvane.m_DataTypes.FindType("INT"));
    EXPECT_TRUE(pMark->m_IsLocal);
    EXPECT_EQ(norvane.m_Memory.m_LocalVariables.back(), pMark);
    norvane.EndPouScope();
    EXPECT_TRUE(norvane.m_Memory.m_LocalVariables.empty());
    EXPECT_EQ(norvane.m_LocalSymbols.Find("a"), nullptr);
}

// ---- Direct addresses.

TEST(Declarations, AnAddressIsKeptAndPlaced)
{
    const CompiledText compiled = CompileText(Globals("a, b AT %QW4 : INT := 7;\nc AT %IX1.2 : BOOL;"));
    EXPECT_EQ(compiled.output, "");
    for (const char* name : {"a", "b"}) {
        EXPECT_EQ(Global(compiled, name)->m_DirectAddress, "QW4");
        EXPECT_EQ(Global(compiled, name)->m_Offset, 2004);
        EXPECT_EQ(ValueText(Global(compiled, name)->m_InitValue.get()), "7");
    }
    EXPECT_EQ(Global(compiled, "c")->m_Offset, 1001);
    EXPECT_EQ(Global(compiled, "c")->m_BitOffset, 2);
}

TEST(Declarations, TheAlignmentOfAnAddressIsChecked)
{
    const CompiledText compiled = CompileText(Globals("x, y AT %MW3 : INT;"));
    EXPECT_EQ(compiled.output, "test.st(2,1) : error: invalid alignment for the type\n"
                               "test.st(2,4) : error: invalid alignment for the type\n");
    EXPECT_TRUE(Global(compiled, "x")) << "declared all the same";
}

TEST(Declarations, AnAddressWithoutANameDeclaresNothing)
{
    const CompiledText compiled = CompileText(Globals("AT %IX0.0 : BOOL;\nAT %MW0 : ARRAY [0..1] OF INT;"));
    EXPECT_EQ(compiled.output, "");
    EXPECT_TRUE(compiled.pNorvane->m_Memory.m_GlobalVariables.empty());
}

TEST(Declarations, ATimeAtAnAddressDeclaresNothing)
{
    const CompiledText compiled = CompileText(Globals("x AT %MD0 : TIME;\ny AT %MD0 : TIME := T#1s;"));
    EXPECT_EQ(compiled.output, "test.st(2,17) : error: type TIME not supported for this target\n"
                               "test.st(3,17) : error: type TIME not supported for this target\n");
    EXPECT_EQ(Global(compiled, "x"), nullptr);
    EXPECT_EQ(Global(compiled, "y"), nullptr);
}

TEST(Declarations, OnlyAnInputMayStandAtAnAddress)
{
    const std::string message = "test.st(3,1) : error: direct variables cannot be used as formal parameters \n";
    EXPECT_EQ(CompileText(Block("a AT %MW0 : INT;", "VAR_INPUT")).output, "");
    EXPECT_EQ(CompileText(Block("a AT %MW0 : INT;", "VAR_OUTPUT")).output, message);
    const CompiledText compiled = CompileText(Block("a AT %MW0 : INT;", "VAR_IN_OUT"));
    EXPECT_EQ(compiled.output, message);
    EXPECT_EQ(compiled.pNorvane->m_Pous.FindPou("fb")->m_Parameters[0]->m_DirectAddress, "MW0");
}

// ---- Structures and renamed types.

TEST(Declarations, AStructureHasItsMembersInOrder)
{
    const CompiledText compiled = CompileText("TYPE\nt : INT := 5;\nS : STRUCT\na, b : INT := 1;\nc : t;\nEND_STRUCT;\nEND_TYPE\n");
    EXPECT_EQ(compiled.output, "");
    CTypeStruct* pType = compiled.pNorvane->m_DataTypes.FindUserType("s")->AsStruct();
    ASSERT_TRUE(pType);
    EXPECT_EQ(pType->m_Name, "S");
    ASSERT_EQ(pType->m_Members.size(), 3u);
    EXPECT_EQ(pType->m_Members[1]->m_Name, "b");
    EXPECT_EQ(ValueText(pType->m_Members[1]->m_InitValue.get()), "1");
    EXPECT_EQ(pType->m_Members[2]->m_Type->m_Name, "t") << "an alias stays one";
    EXPECT_EQ(ValueText(pType->m_Members[2]->m_InitValue.get()), "none");
    EXPECT_EQ(compiled.pNorvane->m_DataTypes.FindUserType("tmp"), nullptr);
    EXPECT_FALSE(compiled.pNorvane->m_StructInProgress);
}

TEST(Declarations, EachNameOfAStructureIsATypeOfItsOwn)
{
    const CompiledText compiled = CompileText("TYPE\ns, u : STRUCT\na : INT;\nEND_STRUCT;\nEND_TYPE\n" + Globals("x : s;\ny : u;"));
    EXPECT_EQ(compiled.output, "");
    EXPECT_NE(Global(compiled, "x")->m_Type, Global(compiled, "y")->m_Type);
    EXPECT_EQ(Global(compiled, "x")->m_Type->m_Name, "s");
    EXPECT_EQ(Global(compiled, "y")->m_Type->m_Name, "u");
    EXPECT_NE(Member(compiled, "s", "a"), Member(compiled, "u", "a"));
}

TEST(Declarations, AMemberDeclaredAgainIsReportedAndAdded)
{
    const CompiledText compiled = CompileText("TYPE\ns : STRUCT\na : INT;\nA : BOOL;\nb, b : INT;\nEND_STRUCT;\nEND_TYPE\n");
    EXPECT_EQ(compiled.output, "test.st(4,1) : error: member A already declared\n"
                               "test.st(5,4) : error: member b already declared\n");
    EXPECT_EQ(compiled.pNorvane->m_DataTypes.FindUserType("s")->AsStruct()->m_Members.size(), 4u);
}

TEST(Declarations, OnlyTheFirstMemberOfAnArrayDeclarationHasBounds)
{
    const CompiledText compiled =
        CompileText("TYPE\nt : ARRAY [1..2] OF INT := [3, 4];\ns : STRUCT\na, b : ARRAY [0..1] OF INT;\nc, d : t;\n"
                    "e : INT;\nEND_STRUCT;\nEND_TYPE\n");
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(BoundsText(Member(compiled, "s", "a")->m_Index.get()), "[0..1]");
    EXPECT_EQ(BoundsText(Member(compiled, "s", "b")->m_Index.get()), "none");
    EXPECT_EQ(Member(compiled, "s", "b")->m_Type->m_Name, "INT[]");
    for (const char* name : {"c", "d"}) {
        EXPECT_EQ(BoundsText(Member(compiled, "s", name)->m_Index.get()), "[1..2]") << name;
        EXPECT_EQ(ValueText(Member(compiled, "s", name)->m_InitValue.get()), "[3,4]") << name;
        EXPECT_FALSE(Member(compiled, "s", name)->m_Type->IsArrayUser()) << name;
    }
    EXPECT_EQ(BoundsText(Member(compiled, "s", "e")->m_Index.get()), "none");
}

TEST(Declarations, EnumeratedAndSubrangeTypesDeclareNoType)
{
    const CompiledText compiled = CompileText("TYPE\nc : (red, green);\nr : INT (0..5);\nEND_TYPE\n");
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(compiled.pNorvane->m_DataTypes.FindUserType("c"), nullptr);
    EXPECT_EQ(compiled.pNorvane->m_DataTypes.FindUserType("r"), nullptr);
    const CompiledText used = CompileText("TYPE\nc : (red, green);\nEND_TYPE\n" + Globals("x : c;"));
    EXPECT_EQ(used.output.substr(0, used.output.find(',', 12)), "test.st(5,5) : error: syntax error") << used.output;
    EXPECT_EQ(Global(used, "x"), nullptr);
}

// A structure whose member is a structure whose member ...: nothing may recurse through the types.
TEST(Declarations, StructuresDeclaredOneInTheOther)
{
    constexpr int depth = 100000;
    std::string source = "TYPE\ns0 : STRUCT\na : INT;\nEND_STRUCT;\n";
    for (int i = 1; i < depth; ++i) {
        source += "s" + std::to_string(i) + " : STRUCT\nm : s" + std::to_string(i - 1) + ";\nEND_STRUCT;\n";
    }
    source += "END_TYPE\n";
    CompiledText compiled;
    compiled.pNorvane = std::make_unique<CNorvane>();
    LoadTarget(*compiled.pNorvane);
    EXPECT_EQ(PrintedBy([&] { ParseText(*compiled.pNorvane, source); }), "");
    EXPECT_EQ(Member(compiled, "s" + std::to_string(depth - 1), "m")->m_Type->m_Name, "s" + std::to_string(depth - 2));
}

// ---- Arrays.

TEST(Declarations, ArraysOfOneElementTypeAndDimensionCountShareAType)
{
    const CompiledText compiled = CompileText(Globals("a : ARRAY [0..1] OF INT;\nb : ARRAY [3..9] OF INT;\nc : ARRAY [0..1, 0..2] OF INT;\n"
                                                      "d : ARRAY [0..1] OF DINT;\ne : ARRAY [0..1, 1..2, 2..3] OF INT;"));
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(Global(compiled, "a")->m_Type, Global(compiled, "b")->m_Type);
    EXPECT_EQ(Global(compiled, "a")->m_Type->m_Name, "INT[]");
    EXPECT_EQ(Global(compiled, "c")->m_Type->m_Name, "INT[2dim]");
    EXPECT_EQ(Global(compiled, "d")->m_Type->m_Name, "DINT[]");
    EXPECT_EQ(Global(compiled, "e")->m_Type->m_Name, "INT[3dim]");
    EXPECT_EQ(BoundsText(Global(compiled, "e")->GetIndex()), "[0..1,1..2,2..3]");
    EXPECT_EQ(compiled.pNorvane->m_DataTypes.FindUserType("int[]"), Global(compiled, "a")->m_Type);
}

TEST(Declarations, ATypeNamedLikeAnElementaryOneHasItsOwnArrays)
{
    const CompiledText compiled = CompileText("TYPE\nint : DINT;\nEND_TYPE\n" +
                                              Globals("a : ARRAY [0..1] OF INT;\nb : ARRAY [0..1] OF int;\nc : ARRAY [0..1] OF int;"));
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(Global(compiled, "a")->m_Type->AsArray()->m_Element->m_Name, "INT");
    EXPECT_EQ(Global(compiled, "b")->m_Type->AsArray()->m_Element->m_Name, "int");
    EXPECT_EQ(Global(compiled, "b")->m_Type, Global(compiled, "c")->m_Type);
}

TEST(Declarations, NamesOfOneArrayDeclarationHaveEqualBoundsOfTheirOwn)
{
    const CompiledText compiled = CompileText(Globals("a, b : ARRAY [5..1] OF INT;\nx : INT;"));
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(BoundsText(Global(compiled, "a")->GetIndex()), "[1..5]");
    EXPECT_EQ(BoundsText(Global(compiled, "b")->GetIndex()), "[1..5]");
    EXPECT_NE(Global(compiled, "a")->GetIndex(), Global(compiled, "b")->GetIndex());
    EXPECT_FALSE(Global(compiled, "x")->IsArray());
    EXPECT_FALSE(compiled.pNorvane->m_ArrayPending);
}

TEST(Declarations, OfSeveralNamesOnlyTheFirstTakesTheBoundsOfANamedArrayType)
{
    const CompiledText compiled = CompileText("TYPE\nt : ARRAY [1..2] OF INT := [3, 4];\nEND_TYPE\n" + Globals("a, b : t;"));
    EXPECT_EQ(compiled.output, "");
    const CVariable* pFirst = Global(compiled, "a");
    const CVariable* pSecond = Global(compiled, "b");
    EXPECT_TRUE(pFirst->IsArray());
    EXPECT_EQ(BoundsText(pFirst->GetIndex()), "[1..2]");
    EXPECT_EQ(ValueText(pFirst->m_InitValue.get()), "[3,4]");
    EXPECT_FALSE(pSecond->IsArray());
    EXPECT_EQ(pSecond->m_Type, pFirst->m_Type);
    EXPECT_EQ(pSecond->m_Type->m_Name, "INT[]");
    EXPECT_EQ(ValueText(pSecond->m_InitValue.get()), "none");
}

TEST(Declarations, ANamedArrayTypeHasADefaultForEachElement)
{
    const CompiledText compiled = CompileText("TYPE\nt : ARRAY [0..2] OF INT;\nm : ARRAY [0..1, 0..2] OF INT;\n"
                                              "d : INT := 7;\nu : ARRAY [0..1] OF d;\nEND_TYPE\n" +
                                              Globals("a : t;\nb : m;\nc : u;\ne : ARRAY [0..1] OF d;"));
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(ValueText(Global(compiled, "a")->m_InitValue.get()), "[3(0)]");
    // Wanted: 2 * 2 * 3, which is more than there are elements.
    EXPECT_EQ(ValueText(Global(compiled, "b")->m_InitValue.get()), "[12(0)]");
    EXPECT_EQ(ValueText(Global(compiled, "c")->m_InitValue.get()), "[2(7)]");
    EXPECT_EQ(ValueText(Global(compiled, "e")->m_InitValue.get()), "none");
}

TEST(Declarations, AnArrayOfArraysHasALevelForEach)
{
    const CompiledText compiled = CompileText("TYPE\nt : ARRAY [1..2] OF INT := [3, 4];\nu : ARRAY [0..4] OF t;\nw : u;\nEND_TYPE\n" +
                                              Globals("a : ARRAY [7..9] OF t;\nb : u;\nc : ARRAY [0..1] OF w;"));
    EXPECT_EQ(compiled.output, "");
    const CVariable* pOuter = Global(compiled, "a");
    EXPECT_EQ(BoundsText(pOuter->GetIndex()), "[7..9][1..2]");
    EXPECT_EQ(pOuter->m_Type->m_Name, "INT[][]");
    EXPECT_EQ(pOuter->m_Type->AsArray()->m_Element->m_Name, "INT[]");
    EXPECT_EQ(ValueText(pOuter->m_InitValue.get()), "[3([3,4])]");
    EXPECT_EQ(BoundsText(Global(compiled, "b")->GetIndex()), "[0..4][1..2]");
    EXPECT_EQ(Global(compiled, "b")->m_Type, pOuter->m_Type);
    EXPECT_EQ(ValueText(Global(compiled, "b")->m_InitValue.get()), "[5([3,4])]");
    EXPECT_EQ(BoundsText(Global(compiled, "c")->GetIndex()), "[0..1][0..4][1..2]");
    EXPECT_EQ(ValueText(Global(compiled, "c")->m_InitValue.get()), "[2([5([3,4])])]");
}

TEST(Declarations, TheFirstNameOfAnArrayTypeTakesTheBoundsAway)
{
    const CompiledText compiled = CompileText("TYPE\nt, u : ARRAY [1..2] OF INT := [3, 4];\nEND_TYPE\n" + Globals("a : t;\nb : u;"));
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(BoundsText(Global(compiled, "a")->GetIndex()), "[1..2]");
    EXPECT_EQ(BoundsText(Global(compiled, "b")->GetIndex()), "none");
    EXPECT_EQ(ValueText(Global(compiled, "b")->m_InitValue.get()), "[3,4]");
}

TEST(Declarations, ArraysWrittenInArraysAreRefused)
{
    const CompiledText compiled = CompileText(Globals("x : ARRAY [1..2] OF ARRAY [1..2] OF INT;"));
    EXPECT_NE(compiled.output.find("SORRY, WILL BE SUPPORTED SOON"), std::string::npos);
    ASSERT_TRUE(Global(compiled, "x"));
    EXPECT_EQ(Global(compiled, "x")->m_Type->m_Name, "ERROR[]");
}

// i, u, n and r start with 3, 4, -2 and 2.5; k has no value; s is an array, w a structure that starts with 6.
std::string WithVariables(const char* declaration)
{
    return "TYPE\nt : STRUCT a : INT := 6; b : REAL; END_STRUCT;\nEND_TYPE\nFUNCTION_BLOCK fb\nVAR\n"
           "i : INT := 3; u : UINT := 4; n : INT := -2; r : REAL := 2.5; k : INT;\n"
           "s : ARRAY [0..1] OF INT := [8, 9]; w : t; q : BOOL := TRUE;\n\n" +
           std::string(declaration) + "\nEND_VAR\n;\nEND_FUNCTION_BLOCK\n";
}

TEST(Declarations, BoundsOfEveryKind)
{
    const std::string integer = "error: array's index requires integer value\n";
    const std::string unknown = "error: cannot check array dimension\n";
    const struct { const char* declaration; std::string printed; const char* bounds; } cases[] = {
        {"x : ARRAY [-1..i] OF INT;", "", "[-1..3]"},
        {"x : ARRAY [k..u] OF INT;", "", "[0..4]"},
        {"x : ARRAY [0..i + 1] OF INT;", "", "[0..4]"},
        {"x : ARRAY [0..w.a] OF INT;", "", "[0..6]"},
        {"x : ARRAY [0..s[1]] OF INT;", "", "[0..9]"},
        {"x : ARRAY [0..4294967297] OF INT;", "", "[0..1]"},
        {"x : ARRAY [0..2.5] OF INT;", "test.st(9,15) : " + integer, "undeclared"},
        {"x : ARRAY [1.5..2.5] OF INT;", "test.st(9,12) : " + integer, "undeclared"},
        {"x : ARRAY [0..r] OF INT;", "test.st(9,15) : " + integer, "undeclared"},
        {"x : ARRAY [0..r + r] OF INT;", "test.st(9,15) : " + integer, "undeclared"},
        {"x : ARRAY [0..q] OF INT;", "test.st(9,15) : " + integer, "undeclared"},
        {"x : ARRAY [0..w] OF INT;", "test.st(9,15) : " + integer, "undeclared"},
        {"x : ARRAY [0..w.b] OF INT;", "test.st(9,16) : " + integer, "undeclared"},
        {"x : ARRAY [0..TRUE] OF INT;", "test.st(9,15) : " + unknown, "undeclared"},
        {"x : ARRAY [TRUE..FALSE] OF INT;", "test.st(9,12) : " + unknown, "undeclared"},
    };
    for (const auto& test : cases) {
        const CompiledText compiled = CompileText(WithVariables(test.declaration));
        EXPECT_EQ(compiled.output, test.printed) << test.declaration;
        const CMember* pMember = Member(compiled, "fb", "x");
        EXPECT_EQ(pMember ? BoundsText(pMember->m_Index.get()) : "undeclared", test.bounds) << test.declaration;
    }
}

// ---- Strings.

std::string StringLength(const CMember* pMember)
{
    if (!pMember) return "undeclared";
    if (pMember->m_Type->m_Name != "STRING") return pMember->m_Type->m_Name;
    if (!pMember->m_InitValue) return "plain";
    const auto& value = static_cast<const CInitString&>(*pMember->m_InitValue);
    return std::to_string(value.m_Length) + ":" + value.m_Text;
}

TEST(Declarations, StringLengthsOfEveryKind)
{
    const std::string refused = "error: dimension must be a non-negative integer value \n";
    const struct { const char* length; std::string first; const char* found; } cases[] = {
        {"3", "", "3:"},
        {"0", "", "0:"},
        {"9999999999", "", "2147483647:"},
        {"-3", "test.st(9,12) : " + refused, "plain"},
        {"2.9", "test.st(9,12) : " + refused, "2:"},
        {"y", "test.st(9,12) : error: variable y not declared\n", "plain"},
        {"i", "", "3:"},
        {"u", "", "4:"},
        {"k", "", "0:"},
        {"n", "test.st(9,12) : " + refused, "plain"},
        {"r", "test.st(9,12) : " + refused, "plain"},
        {"q", "test.st(9,12) : " + refused, "plain"},
        {"w", "test.st(9,12) : error: cannot check string size\n", "plain"},
        {"w.a", "test.st(9,13) : error: cannot check string size\n", "plain"},
        {"TRUE", "test.st(9,12) : error: cannot check string size\n", "plain"},
    };
    for (const auto& test : cases) {
        const std::string declaration = "x : STRING[" + std::string(test.length) + "];";
        const CompiledText compiled = CompileText(WithVariables(declaration.c_str()));
        // The type is reported where the scanner stands, behind the semicolon.
        const std::string type = "test.st(9," + std::to_string(declaration.size() + 1) +
                                 ") : error: type STRING not supported for this target\n";
        EXPECT_EQ(compiled.output, test.first + type) << test.length;
        EXPECT_EQ(StringLength(Member(compiled, "fb", "x")), test.found) << test.length;
    }
}

TEST(Declarations, AStringThatIsTooLongWarnsAndIsKept)
{
    const CompiledText compiled = CompileText(Globals("s : STRING[3] := 'abcde';\nt : STRING[5] := 'abcde';"));
    EXPECT_EQ(compiled.output,
              "test.st(2,25) : error: type STRING not supported for this target\n"
              "test.st(2,12) : warning, string too long (5 chars), string's length exceeds declared dimension (3 chars) \n"
              "test.st(3,25) : error: type STRING not supported for this target\n");
    const auto* pValue = static_cast<const CInitString*>(Global(compiled, "s")->m_InitValue.get());
    ASSERT_TRUE(pValue);
    EXPECT_EQ(pValue->m_Length, 3);
    EXPECT_EQ(pValue->m_Text, "abcde");
}

TEST(Declarations, AStringFromAVariable)
{
    const std::string type = "error: type STRING not supported for this target\n";
    const CompiledText compiled = CompileText(Globals("i : INT := 2;\ns : STRING[3] := 'abc';\nt : STRING[2] := s;\nx : STRING[2] := i;\n"
                                                      "y : STRING[-1] := i;"));
    EXPECT_EQ(compiled.output,
              "test.st(3,23) : " + type +
              "test.st(4,20) : " + type +
              "test.st(4,12) : warning, string too long (3 chars), string's length exceeds declared dimension (2 chars) \n"
              "test.st(5,20) : " + type +
              "test.st(5,1) : error: invalid string assignment \n"
              "test.st(6,12) : error: dimension must be a non-negative integer value \n"
              "test.st(6,21) : " + type);
    ASSERT_TRUE(Global(compiled, "t"));
    EXPECT_EQ(static_cast<const CInitString&>(*Global(compiled, "t")->m_InitValue).m_Text, "abc");
    EXPECT_EQ(Global(compiled, "x"), nullptr);
    EXPECT_TRUE(Global(compiled, "y"));
}

// ----

TEST(Declarations, TheCompilerItselfExists)
{
    EXPECT_EQ(g_Norvane.m_VarBlockFlags, 0);
    EXPECT_EQ(g_Norvane.m_Errors.GetErrorCount(), 0);
}

TEST(Declarations, LocatedStringsKeepAddressAndValue)
{
    const CompiledText compiled = CompileText(Globals("s AT %MB0 : STRING[5] := 'abc';\nt AT %MB8 : STRING[4] := s;"));
    for (const auto& [name, address] : {std::pair("s", "MB0"), std::pair("t", "MB8")}) {
        const CVariable* pVariable = Global(compiled, name);
        ASSERT_NE(pVariable, nullptr);
        EXPECT_EQ(pVariable->m_DirectAddress, address);
        ASSERT_NE(pVariable->m_InitValue, nullptr);
        EXPECT_EQ(pVariable->m_InitValue->GetText(true), "abc");
    }
}

TEST(Declarations, ASubRangeDeclaresNoType)
{
    const CompiledText compiled = CompileText("TYPE n : INT(1..5); END_TYPE\n");
    EXPECT_EQ(compiled.output, "");
    EXPECT_EQ(compiled.pNorvane->m_DataTypes.FindUserType("n"), nullptr);
}

TEST(Declarations, AFunctionOfATimeType)
{
    const CompiledText compiled = CompileText("FUNCTION f : TIME\nVAR_INPUT x : INT; END_VAR\n;\nEND_FUNCTION\n");
    EXPECT_EQ(compiled.output, "test.st(1,18) : error: type TIME not supported for this target\n");
}

}   // namespace
