#include "semantics/StatementSource.h"

#include "model/Member.h"
#include "model/Pou.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"

#include <gtest/gtest.h>

namespace
{

// One line, so that the statements behind it begin in line 6.
const char g_Functions[] =
    "FUNCTION f : INT VAR_INPUT x : INT; END_VAR f := x; END_FUNCTION "
    "FUNCTION f2 : INT VAR_INPUT x : INT; y : BOOL; z : REAL; w : WORD; END_VAR f2 := x; END_FUNCTION "
    "FUNCTION f0 : INT f0 := 1; END_FUNCTION "
    "FUNCTION g VAR_OUTPUT o : INT; END_VAR o := 1; END_FUNCTION "
    "FUNCTION gi VAR_IN_OUT a : ARRAY [0..3] OF INT; END_VAR a[0] := 1; END_FUNCTION "
    "FUNCTION h VAR_INPUT a : ARRAY [0..3] OF INT; END_VAR ; END_FUNCTION\n";
const char g_Variables[] = "i : INT; d : DINT; u : UINT; r : REAL; b : BOOL; w : WORD; "
                           "a : ARRAY [0..3] OF INT; c : ARRAY [0..4] OF INT;";

std::string MessagesOfCall(const std::string& statements)
{
    return MessagesOf(g_Functions, g_Variables, statements);
}

const char g_Overloads[] = "FUNCTION f : INT VAR_INPUT x : INT; y : INT; END_VAR f := x; END_FUNCTION "
                           "FUNCTION f : REAL VAR_INPUT x : REAL; y : INT; END_VAR f := x; END_FUNCTION\n";

const char g_Block[] = "FUNCTION_BLOCK tb VAR_INPUT a : INT; b : BOOL; r : REAL; END_VAR VAR_OUTPUT o : INT; END_VAR "
                       "VAR p : INT; END_VAR o := a + p; END_FUNCTION_BLOCK\n";
const char g_InOutBlock[] = "FUNCTION_BLOCK tb VAR_IN_OUT io : INT; ob : BOOL; END_VAR VAR_INPUT a : INT; END_VAR "
                            "io := a; ob := TRUE; END_FUNCTION_BLOCK\n";
const char g_Instances[] = "k : tb; i : INT; d : DINT; r : REAL; x : BOOL;";

}   // namespace

// ---- Functions.

TEST(FunctionCalls, GoodCallsAreSilent)
{
    EXPECT_EQ(MessagesOfCall("i := f(i);\ni := f(5);\nf(i);\ni := f0();\nf0();\ni := F(i);"), "");
    EXPECT_EQ(MessagesOfCall("i := f2(1, TRUE, 2, 16#FF);\ni := f2(i, b, r, w);\ni := f2(1, 1, 2.5, 3);"), "");
    EXPECT_EQ(MessagesOfCall("g(i);\ng(a[2]);\ngi(a);\nh(a);\ni := f(f(f0()));"), "");
}

TEST(FunctionCalls, UnknownFunctions)
{
    EXPECT_EQ(MessagesOfCall("i := nope(1);"), "test.st(6,6) : error: function nope not declared\n");
    EXPECT_EQ(MessagesOfCall("nope();"), "test.st(6,1) : error: function nope not declared\n");
}

TEST(FunctionCalls, AFunctionBlockIsNoFunction)
{
    // Its name is a type's, so only as a variable's name can it stand in a call at all.
    EXPECT_EQ(MessagesOf(g_Block, "i : INT;", "i(1);"), "test.st(6,1) : error: function i not declared\n");
}

TEST(FunctionCalls, ParameterCount)
{
    EXPECT_EQ(MessagesOfCall("i := f();"), "test.st(6,6) : error: function does not take 0 parameter\n");
    EXPECT_EQ(MessagesOfCall("i := f0(1);"), "test.st(6,6) : error: function does not take 1 parameter\n");
    EXPECT_EQ(MessagesOfCall("i := f(1, 2);"), "test.st(6,6) : error: function does not take 2 parameters\n");
}

TEST(FunctionCalls, ParameterMismatch)
{
    EXPECT_EQ(MessagesOfCall("i := f(d);"), "test.st(6,8) : error: parameter 1 does not match; found DINT required INT \n"
                                            "see definition of f at (1,10)test.st\n");
    EXPECT_EQ(MessagesOfCall("i := f2(1, TRUE, d, 1);"),
              "test.st(6,18) : error: parameter 3 does not match; found DINT required REAL \n"
              "see definition of f2 at (1,75)test.st\n");
    EXPECT_EQ(MessagesOfCall("g(d);"), "test.st(6,3) : error: parameter 1 does not match; found DINT required INT \n"
                                       "see definition of g at (1,212)test.st\n");
}

TEST(FunctionCalls, LiteralActuals)
{
    const auto mismatch = [](int column, int parameter, const std::string& required) {
        return "test.st(6," + std::to_string(column) + ") : error: parameter " + std::to_string(parameter) +
               " does not match; required " + required + " \nsee definition of f2 at (1,75)test.st\n";
    };
    EXPECT_EQ(MessagesOfCall("i := f2(1.5, TRUE, 1, 1);"), mismatch(9, 1, "INT"));
    EXPECT_EQ(MessagesOfCall("i := f2(1, 2, 1, 1);"), mismatch(12, 2, "BOOL"));
    EXPECT_EQ(MessagesOfCall("i := f2(1, 1, TRUE, 1);"), mismatch(15, 3, "REAL"));
    EXPECT_EQ(MessagesOfCall("i := f2(1, 1, 1, 1.5);"), mismatch(18, 4, "WORD"));
    EXPECT_EQ(MessagesOfCall("i := f2(1.5, 2, 1, 1.5);"),
              mismatch(9, 1, "INT") + mismatch(14, 2, "BOOL") + mismatch(20, 4, "WORD"));
}

TEST(FunctionCalls, ALiteralOfAnotherTypeDrawsTwoMessages)
{
    const std::string source = "FUNCTION f : INT VAR_INPUT x : INT; END_VAR f := x; END_FUNCTION\nPROGRAM main\n"
                               "VAR CONSTANT c : DINT := 5; k : INT := 6; END_VAR\nVAR i : INT; END_VAR\n";
    EXPECT_EQ(MessagesOfSource(source + "i := f(c);\nEND_PROGRAM\n"),
              "test.st(5,8) : error: cannot assign the value to an INT\n"
              "test.st(5,8) : error: parameter 1 does not match; found DINT required INT \n"
              "see definition of f at (1,10)test.st\n");
    EXPECT_EQ(MessagesOfSource(source + "i := f(k);\nEND_PROGRAM\n"), "");
}

TEST(FunctionCalls, OutputsNeedAPlace)
{
    EXPECT_EQ(MessagesOfCall("g(5);"), "test.st(6,3) : error: VAR_OUTPUT and VAR_IN_OUT cannot be immediate value\n");
    EXPECT_EQ(MessagesOfCall("g(2.5);"), "test.st(6,3) : error: parameter 1 does not match; required INT \n"
                                         "see definition of g at (1,212)test.st\n"
                                         "test.st(6,3) : error: VAR_OUTPUT and VAR_IN_OUT cannot be immediate value\n");
    EXPECT_EQ(MessagesOfCall("g(i + 1);"), "") << "only function blocks ask for a variable";
}

TEST(FunctionCalls, OutputsCannotBeConstant)
{
    const std::string source = std::string(g_Functions) + "PROGRAM main\n"
                               "VAR CONSTANT a : ARRAY [0..3] OF INT := [1, 2]; k : INT := 1; END_VAR\n";
    EXPECT_EQ(MessagesOfSource(source + "gi(a);\nEND_PROGRAM\n"),
              "test.st(4,4) : error: VAR_OUTPUT and VAR_IN_OUT cannot be CONSTANT\n");
    EXPECT_EQ(MessagesOfSource(source + "h(a);\nEND_PROGRAM\n"), "");
    EXPECT_EQ(MessagesOfSource(source + "g(k);\nEND_PROGRAM\n", /*isSubstituting=*/false),
              "test.st(4,3) : error: VAR_OUTPUT and VAR_IN_OUT cannot be CONSTANT\n");
}

TEST(FunctionCalls, ArraysMustHaveTheFormalsSize)
{
    EXPECT_EQ(MessagesOfCall("h(c);"),
              "test.st(6,3) : error: different array dimension: found 10 bytes required 8 bytes\n");
    EXPECT_EQ(MessagesOfCall("gi(c);"),
              "test.st(6,4) : error: different array dimension: found 10 bytes required 8 bytes\n");
}

TEST(FunctionCalls, AFunctionWithoutResultIsNoValue)
{
    EXPECT_EQ(MessagesOfCall("i := g(i);"),
              "test.st(6,6) : error: function without return value, not allowed in expression\n");
    EXPECT_EQ(MessagesOfCall("i := g(i) + 1;"),
              "test.st(6,6) : error: function without return value, not allowed in expression\n");
}

TEST(FunctionCalls, NoCallsInDeclarations)
{
    EXPECT_EQ(MessagesOf(g_Functions, "i : INT := f(1);", "i := 1;"),
              "test.st(4,12) : error: function call in variable declaration\n");
    EXPECT_EQ(MessagesOf(g_Functions, "i : INT := g(1);", "i := 1;"),
              "test.st(4,12) : error: function without return value, not allowed in expression\n"
              "test.st(4,12) : error: function call in variable declaration\n"
              "test.st(4,14) : error: VAR_OUTPUT and VAR_IN_OUT cannot be immediate value\n");
}

TEST(FunctionCalls, FailedActualsAreSilent)
{
    EXPECT_EQ(MessagesOfCall("i := f(nope);"), "test.st(6,8) : error: variable nope not declared\n");
    EXPECT_EQ(MessagesOfCall("i := f2(1, nope, 1, 1);"), "test.st(6,12) : error: variable nope not declared\n");
    EXPECT_EQ(MessagesOfCall("i := nope(nope2);"), "test.st(6,11) : error: variable nope2 not declared\n");
}

TEST(FunctionCalls, StatementCallsAreMarked)
{
    CNorvane norvane;
    LoadTarget(norvane);
    auto pFunction = std::make_unique<CFunction>("f", SourceLocation{1, 1, 1, 2, "test.st"});
    pFunction->m_ReturnType = norvane.m_DataTypes.FindType("INT");
    CFunction* pExpected = pFunction.get();
    ASSERT_EQ(norvane.m_Pous.AddPou(std::move(pFunction)), 1);

    const CName& name = norvane.m_Names.Intern("f");
    CNode* pStatement = norvane.MakeFunctionCall(name, {2, 3, 2, 4, "test.st"}, /*bInExpression=*/false, nullptr);
    EXPECT_EQ(pStatement->nKind, FUNCTION_CALL);
    EXPECT_EQ(pStatement->nValue, 1);
    EXPECT_EQ(pStatement->GetName(), "f");
    EXPECT_EQ(pStatement->GetPou(), pExpected);
    EXPECT_EQ(pStatement->pType, pExpected->m_ReturnType);
    EXPECT_EQ(pStatement->location.nFirstLine, 2);
    EXPECT_EQ(pStatement->location.nFirstColumn, 3);
    CNode* pValue = norvane.MakeFunctionCall(name, {2, 3, 2, 4, "test.st"}, /*bInExpression=*/true, nullptr);
    EXPECT_EQ(pValue->nKind, FUNCTION_CALL);
    EXPECT_EQ(pValue->nValue, 0);
}

TEST(FunctionCalls, AProgramCannotBeCalled)
{
    CNorvane norvane;
    LoadTarget(norvane);
    ASSERT_EQ(norvane.m_Pous.AddPou(std::make_unique<CProgram>("second", SourceLocation{1, 1, 1, 2, "test.st"})), 1);
    CNode* pCall = norvane.MakeFunctionCall(norvane.m_Names.Intern("second"), {2, 3, 2, 4, "test.st"},
                                            /*bInExpression=*/false, nullptr);
    EXPECT_EQ(pCall->nKind, ERROR_);
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 0) << "wanted: no message";
}

// ---- Overloads.

TEST(Overloads, TheTypesOfTheActualsChoose)
{
    const char variables[] = "i : INT; r : REAL; d : DINT;";
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(i, i);\nr := f(r, i);"), "");
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(r, i);"),
              "test.st(6,3) : error, mismatch, operator := between INT and REAL \n");
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(d, i);"), "test.st(6,6) : error: function f not declared\n");
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(i);"), "test.st(6,6) : error: function f not declared\n");
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f();"), "test.st(6,6) : error: function f not declared\n");
}

TEST(Overloads, ALiteralStopsTheSearch)
{
    const char variables[] = "i : INT; r : REAL; d : DINT;";
    const std::string text = " : error: overload function, cannot determinate function's type\n";
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(1, i);"), "test.st(6,8)" + text);
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(i, 1);"), "test.st(6,11)" + text);
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(r, 1);"), "test.st(6,11)" + text);
    // All candidates have been rejected before the literal is reached.
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(d, 1);"), "test.st(6,6) : error: function f not declared\n");
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(1);"), "test.st(6,6) : error: function f not declared\n");
}

TEST(Overloads, FailedActualsAreSilent)
{
    const char variables[] = "i : INT; r : REAL;";
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(nope, i);"), "test.st(6,8) : error: variable nope not declared\n");
    EXPECT_EQ(MessagesOf(g_Overloads, variables, "i := f(i, nope);"), "test.st(6,11) : error: variable nope not declared\n");
}

// ---- Function blocks.

TEST(FbCalls, GoodCallsAreSilent)
{
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k();\nk(a := 1);\nk(a := i, b := x, r := 2, o => i);\nK(A := 1, O => i);"), "");
    EXPECT_EQ(MessagesOf(g_InOutBlock, g_Instances, "k(io := i, ob := x);\nk(a := 5, ob := x, io := i);"), "");
}

TEST(FbCalls, TheInstanceMustBeDeclared)
{
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "nope(a := 1);"), "test.st(6,1) : error: variable nope not declared\n");
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "i(a := 1);"), "test.st(6,1) : error: variable i is not a FUNCTION_BLOCK \n");
}

TEST(FbCalls, MembersMustExist)
{
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(z := 1, a := 2);"),
              "test.st(6,3) : error: z is not a member of the struct tb\n");
}

TEST(FbCalls, MembersAreAssignedOnce)
{
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(a := 1, a := 2);"),
              "test.st(6,11) : error: member a already assigned \n");
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(a := 1, A := d);"),
              "test.st(6,11) : error: member A already assigned \n")
        << "the second value isn't looked at";
}

TEST(FbCalls, ValuesMustHaveTheMembersType)
{
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(a := 1.5);"), "test.st(6,8) : error: cannot assign the value to an INT\n");
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(a := d);"), "test.st(6,8) : error, mismatch between INT and DINT \n");
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(o => d);"), "test.st(6,8) : error, mismatch between INT and DINT \n");
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(a := nope);"), "test.st(6,8) : error: variable nope not declared\n");
    EXPECT_EQ(MessagesOf(g_InOutBlock, g_Instances, "k(io := nope, ob := x);"),
              "test.st(6,9) : error: variable nope not declared\n");
}

// The first parameter stands at its sign, the others behind a comma do too.
TEST(FbCalls, OutputsAndTheOthersHaveTheirSign)
{
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(o := i);"),
              "test.st(6,5) : error: required => in FB assignment of OUTPUT variable\n");
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(a => i);"),
              "test.st(6,5) : error: required := in FB assignment of OUTPUT variable\n");
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(a := 1, o := i);"),
              "test.st(6,13) : error: required => in FB assignment of OUTPUT variable\n");
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(o := 5);"),
              "test.st(6,5) : error: required => in FB assignment of OUTPUT variable\n"
              "test.st(6,8) : error: VAR_OUTPUT and VAR_IN_OUT cannot be immediate value\n");
    EXPECT_EQ(MessagesOf(g_InOutBlock, g_Instances, "k(io => i, ob := x);"),
              "test.st(6,6) : error: required := in FB assignment of OUTPUT variable\n");
}

TEST(FbCalls, InOutsNeedAVariable)
{
    EXPECT_EQ(MessagesOf(g_InOutBlock, g_Instances, "k(io := i + 1, ob := x);"),
              "test.st(6,11) : error: inout variable of function block requires a l-value\n");
    EXPECT_EQ(MessagesOf(g_InOutBlock, g_Instances, "k(io := 5, ob := x);"),
              "test.st(6,9) : error: VAR_OUTPUT and VAR_IN_OUT cannot be immediate value\n"
              "test.st(6,9) : error: inout variable of function block requires a l-value\n");
}

TEST(FbCalls, ConstantsAreNotWritten)
{
    const auto sourceOf = [](const std::string& block, const std::string& statement) {
        return block + "PROGRAM main\nVAR CONSTANT c : INT := 1; a : ARRAY [0..1] OF INT := [1, 2]; END_VAR\n"
                       "VAR k : tb; x : BOOL; END_VAR\n" + statement + "\nEND_PROGRAM\n";
    };
    EXPECT_EQ(MessagesOfSource(sourceOf(g_InOutBlock, "k(io := a[1], ob := x);")),
              "test.st(5,9) : error: attempt to assign a value to a constant variable \n");
    EXPECT_EQ(MessagesOfSource(sourceOf(g_Block, "k(o => a[0]);")),
              "test.st(5,8) : error: attempt to assign a value to a constant variable \n");
    EXPECT_EQ(MessagesOfSource(sourceOf(g_Block, "k(o => c);"), /*isSubstituting=*/false),
              "test.st(5,8) : error: attempt to assign a value to a constant variable \n");
    EXPECT_EQ(MessagesOfSource(sourceOf(g_Block, "k(a := a[1]);")), "");
}

TEST(FbCalls, LocalsOfTheBlockAreNotForTheCaller)
{
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(p := 1);"),
              "test.st(6,3) : error: local variable p in FUNCTION BLOCK invocation\n");
    EXPECT_EQ(MessagesOf(g_Block, g_Instances, "k(P => i);"),
              "test.st(6,5) : error: required := in FB assignment of OUTPUT variable\n"
              "test.st(6,3) : error: local variable P in FUNCTION BLOCK invocation\n");
}

TEST(FbCalls, ArraysMustHaveTheMembersElements)
{
    const std::string block = "FUNCTION_BLOCK tb VAR_INPUT a : ARRAY [0..3] OF INT; END_VAR VAR_IN_OUT io : ARRAY [1..2] OF INT; "
                              "END_VAR io[1] := a[0]; END_FUNCTION_BLOCK\n";
    const std::string variables = "k : tb; q : ARRAY [0..3] OF INT; w : ARRAY [5..6] OF INT; v : ARRAY [0..4] OF INT;";
    EXPECT_EQ(MessagesOf(block, variables, "k(a := q, io := w);"), "");
    EXPECT_EQ(MessagesOf(block, variables, "k(a := v, io := w);"),
              "test.st(6,5) : warning, different array dimension: found 5 bytes required 4 bytes\n");
    EXPECT_EQ(MessagesOf(block, variables, "k(a := q, io := v);"),
              "test.st(6,14) : error: different array dimension: found 5 bytes required 2 bytes\n");
}

TEST(FbCalls, ArraysAtTheEndOfAPathCountTheirOwnElements)
{
    const std::string blocks = "TYPE row : ARRAY [0..2] OF INT; t : STRUCT x : INT; v : ARRAY [0..3] OF INT; END_STRUCT; END_TYPE "
                               "FUNCTION_BLOCK tb VAR_INPUT a : ARRAY [0..3] OF INT; END_VAR ; END_FUNCTION_BLOCK\n";
    const std::string variables = "k : tb; s : t; m : ARRAY [0..9] OF row;";
    EXPECT_EQ(MessagesOf(blocks, variables, "k(a := s.v);"), "");
    EXPECT_EQ(MessagesOf(blocks, variables, "k(a := m[1]);"),
              "test.st(6,5) : warning, different array dimension: found 3 bytes required 4 bytes\n");
}

TEST(FbCalls, EveryInOutMustBeNamed)
{
    const std::string message = "test.st(6,1) : error: Function Block call without InOut parameter(s)  \n";
    EXPECT_EQ(MessagesOf(g_InOutBlock, g_Instances, "k();"), message);
    EXPECT_EQ(MessagesOf(g_InOutBlock, g_Instances, "k(a := 1);"), message);
    EXPECT_EQ(MessagesOf(g_InOutBlock, g_Instances, "k(io := i);"), message);
    EXPECT_EQ(MessagesOf(g_InOutBlock, g_Instances, "k(IO := i, ob := x);"), message)
        << "the name is found in any case, and still counts as missing";
}

TEST(FbCalls, AnInstanceCalledWithoutParametersMayBeMeantAsFunction)
{
    const std::string blocks = std::string("FUNCTION k : INT k := 1; END_FUNCTION ") + g_Block;
    EXPECT_EQ(MessagesOf(blocks, g_Instances, "k();"),
              "test.st(6,1) : error: overload function, cannot determinate function's type\n");
    EXPECT_EQ(MessagesOf(blocks, g_Instances, "K();"), "") << "functions are asked for by the name as written";
    EXPECT_EQ(MessagesOf(blocks, g_Instances, "k(a := 1);"), "");
}

TEST(FbCalls, TheNodeKnowsInstanceAndMembers)
{
    CNorvane norvane;
    LoadTarget(norvane);
    const SourceLocation place{2, 3, 2, 4, "test.st"};
    CType* pInt = norvane.m_DataTypes.FindType("INT");
    auto pStruct = std::make_unique<CTypeStructFB>("tb");
    auto pMember = std::make_unique<CMemberFB>("a", pInt);
    pMember->m_IsInput = true;
    const CMember* pExpectedMember = pMember.get();
    pStruct->AddMember(std::move(pMember));
    auto pInstance = std::make_unique<CVariable>();
    pInstance->m_Name = "k";
    pInstance->m_Type = pStruct.get();
    CVariable* pExpected = pInstance.get();
    norvane.m_LocalSymbols.Add(std::move(pInstance));

    CNode* pName = norvane.MakeIdentifier(norvane.m_Names.Intern("a"), place);
    CNode* pParameter = norvane.MakeNode(ASSIGN_FB, place, {pName, norvane.MakeInteger(1, place)});
    CNode* pList = norvane.MakeNode(PARAMETER_LIST, place, {pParameter});
    CNode* pCall = norvane.MakeFbCall(norvane.m_Names.Intern("k"), place, pList);
    EXPECT_EQ(pCall->nKind, FUNCTION_BLOCK);
    EXPECT_EQ(pCall->GetName(), "k");
    EXPECT_EQ(pCall->pVariable, pExpected);
    EXPECT_TRUE(pExpected->m_IsUsed);
    ASSERT_EQ(pCall->GetChildCount(), 1);
    EXPECT_EQ(pCall->Child(0), pList);
    EXPECT_EQ(pName->GetMember(), pExpectedMember);
    EXPECT_EQ(pParameter->Child(1)->pType, pInt);
}

TEST(FbCalls, ManyParametersTakeNoTime)
{
    constexpr int count = 20000;
    std::string block = "FUNCTION_BLOCK tb VAR_IN_OUT\n";
    std::string call = "k(";
    for (int i = 0; i < count; ++i) {
        const std::string name = "m" + std::to_string(i);
        block += name + " : INT;\n";
        call += (i == 0 ? "" : ",\n") + name + " := i";
    }
    block += "END_VAR ; END_FUNCTION_BLOCK\n";
    EXPECT_EQ(MessagesOf(block, "k : tb; i : INT;", call + ");"), "");
}
