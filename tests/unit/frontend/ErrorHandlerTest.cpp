#include "frontend/ErrorHandler.h"

#include "PrintedBy.h"
#include "frontend/Error.h"
#include "frontend/MessageTable.h"
#include "frontend/Node.h"
#include "frontend/Scanner.h"
#include "model/Pou.h"
#include "model/Type.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace
{

using Call = std::function<void()>;

// Every diagnostic is drawn at line 3, column 7 of a.st, or with the scanner at line 9, column 4 of now.st.
class ErrorHandlerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        g_CurrentFileName = "now.st";
        yylineno = 9;
        nColumn = 4;
    }
    void TearDown() override
    {
        g_CurrentFileName = nullptr;
        yylineno = 1;
        nColumn = 1;
    }

    void ExpectError(const std::string& line, const Call& call)
    {
        const int errors = m_Errors.GetErrorCount();
        const int warnings = m_Errors.GetWarningCount();
        EXPECT_EQ(PrintedBy(call), line);
        EXPECT_EQ(m_Errors.GetErrorCount(), errors + 1) << line;
        EXPECT_EQ(m_Errors.GetWarningCount(), warnings) << line;
        ASSERT_FALSE(m_Errors.m_ErrorList.empty());
        EXPECT_FALSE(m_Errors.m_ErrorList.back()->bWarning) << line;
    }
    void ExpectWarning(const std::string& line, const Call& call)
    {
        const int errors = m_Errors.GetErrorCount();
        const int warnings = m_Errors.GetWarningCount();
        EXPECT_EQ(PrintedBy(call), line);
        EXPECT_EQ(m_Errors.GetErrorCount(), errors) << line;
        EXPECT_EQ(m_Errors.GetWarningCount(), warnings + 1) << line;
        ASSERT_FALSE(m_Errors.m_WarningList.empty());
        EXPECT_TRUE(m_Errors.m_WarningList.back()->bWarning) << line;
    }

    CErrorHandler m_Errors;
    const SourceLocation m_Where{3, 7, 3, 9, "a.st"};
    CNamePool m_Names;
    CNodeArena m_Nodes;
    CType m_Int{"INT"};
    CType m_Real{"REAL"};
};

}   // namespace

TEST_F(ErrorHandlerTest, DeclarationsAndTypes)
{
    ExpectError("a.st(3,7) : error: cannot initialize an ANY variable\n", [&] { m_Errors.ErrInitAny(m_Where); });
    ExpectError("a.st(3,7) : error: type ANY are allowed only in function's formal parameters \n",
                [&] { m_Errors.ErrAnyNotAllowed(m_Where); });
    ExpectError("now.st(9,4) : error: type LINT not supported for this target\n",
                [&] { m_Errors.ErrTypeNotSupported("LINT"); });
    ExpectError("now.st(9,4) : error: two underscore in identifier's name\n", [&] { m_Errors.ErrTwoUnderscores(); });
    ExpectError("a.st(3,7) : error: variable x already declared\n",
                [&] { m_Errors.ErrVariableDeclared("x", m_Where); });
    CVariable variable;
    variable.m_Name = "Count";
    ExpectError("a.st(3,7) : error: variable Count already declared\n",
                [&] { m_Errors.ErrVariableDeclared(variable, m_Where); });
    ExpectError("a.st(3,7) : error: variable x not declared\n",
                [&] { m_Errors.ErrVariableNotDeclared("x", m_Where); });
    ExpectError("a.st(3,7) : error: member m already declared\n", [&] { m_Errors.ErrMemberDeclared("m", m_Where); });
    ExpectError("a.st(3,7) : error: program not supported\n", [&] { m_Errors.ErrProgramNotSupported(m_Where); });
    ExpectError("a.st(3,7) : error: not supported VAR_INPUT VAR_OUTPUT and VAR_IN_OUT for program; "
                "(cannot call a program)\n",
                [&] { m_Errors.ErrProgramParameters(m_Where); });
    ExpectError("now.st error: Program 'Main' required\n", [&] { m_Errors.ErrProgramRequired("Main"); });
    ExpectError("a.st(3,7) : error: function cannot return struct or array\n",
                [&] { m_Errors.ErrReturnsStruct(m_Where); });
    ExpectError("a.st(3,7) : error: direct variables cannot be used as formal parameters \n",
                [&] { m_Errors.ErrDirectAsFormal(m_Where); });
    ExpectError("a.st(3,7) : error: invalid address\n", [&] { m_Errors.ErrInvalidAddress(m_Where); });
    ExpectError("a.st(3,7) : error: address out of memory \n", [&] { m_Errors.ErrAddressOutOfMemory(m_Where); });
    ExpectError("a.st(3,7) : error: invalid alignment for the type\n", [&] { m_Errors.ErrAlignment(m_Where); });
    ExpectError("a.st(3,7) : error: invalid dimension for the type\n", [&] { m_Errors.ErrDimension(m_Where); });
    ExpectError("a.st(3,7) : error: dimension must be a non-negative integer value \n",
                [&] { m_Errors.ErrStringDimension(m_Where); });
    ExpectError("a.st(3,7) : error: cannot check string size\n", [&] { m_Errors.ErrStringSizeUnchecked(m_Where); });
    ExpectError("a.st(3,7) : error: invalid string assignment \n", [&] { m_Errors.ErrStringAssignment(m_Where); });
    ExpectWarning("a.st(3,7) : warning, string too long (5 chars), string's length exceeds declared dimension "
                  "(3 chars) \n",
                  [&] { m_Errors.WarnStringTooLong(5, 3, m_Where); });
    ExpectWarning("a.st(3,7) : warning, function actual parameter cannot be initialized\n",
                  [&] { m_Errors.WarnActualInitialized(m_Where); });
    ExpectWarning("a.st(3,7) : warning, useless assignment \n", [&] { m_Errors.WarnUselessAssignment(m_Where); });
}

TEST_F(ErrorHandlerTest, DeclaredPouByKind)
{
    const SourceLocation before{2, 5, 2, 8, "old.st"};
    // The word for a function brings a blank, and one more follows; the file is that of the new declaration.
    const CFunction function("scale", before);
    ExpectError("a.st(3,7) : error: function  scale already declareda.st (2,5)\n",
                [&] { m_Errors.ErrPouDeclared(function, m_Where); });
    const CFunctionOverLoad overload("scale", before);
    ExpectError("a.st(3,7) : error: function  scale already declareda.st (2,5)\n",
                [&] { m_Errors.ErrPouDeclared(overload, m_Where); });
    const CProgram program("Main", before);
    ExpectError("a.st(3,7) : error: PROGRAM Main already declareda.st (2,5)\n",
                [&] { m_Errors.ErrPouDeclared(program, m_Where); });
    const CFunctionBlock block("Timer", before);
    ExpectError("a.st(3,7) : error: FUNCTION BLOCK Timer already declareda.st (2,5)\n",
                [&] { m_Errors.ErrPouDeclared(block, m_Where); });
    const CPou pou("thing", before);
    ExpectError("a.st(3,7) : error: POU thing already declareda.st (2,5)\n",
                [&] { m_Errors.ErrPouDeclared(pou, m_Where); });
}

// An automatic program has no position: there are no numbers to fill in, and none are made up.
TEST_F(ErrorHandlerTest, DeclaredPouWithoutPosition)
{
    const CProgram program("Main", SourceLocation{2, 5, 2, 8, "old.st"});
    const SourceLocation nowhere{-1, -1, -1, -1, nullptr};
    ExpectError(" (%d,%d) : error: PROGRAM Main already declared (2,5)\n",
                [&] { m_Errors.ErrPouDeclared(program, nowhere); });
}

TEST_F(ErrorHandlerTest, InitialValuesAndBounds)
{
    ExpectError("a.st(3,7) : error: cannot assign a value to a function block instance \n",
                [&] { m_Errors.ErrAssignToFbInstance(m_Where); });
    ExpectError("a.st(3,7) : error: function call in variable declaration\n",
                [&] { m_Errors.ErrCallInDeclaration(m_Where); });
    ExpectError("a.st(3,7) : error: cannot use castfunction in any var block body \n",
                [&] { m_Errors.ErrCastInVarBlock(m_Where); });
    ExpectError("a.st(3,7) : error: cannot check array dimension\n",
                [&] { m_Errors.ErrArrayDimensionUnchecked(m_Where); });
    ExpectError("a.st(3,7) : error: array's index requires integer value\n",
                [&] { m_Errors.ErrArrayIndexType(m_Where); });
    ExpectWarning("a.st(3,7) : warning, too much initializers required 3 elements, found 5\n",
                  [&] { m_Errors.WarnTooManyInitializers(5, 3, m_Where); });
    ExpectWarning("a.st(3,7) : warning, element speed already initialized\n",
                  [&] { m_Errors.WarnElementInitialized("speed", m_Where); });
}

TEST_F(ErrorHandlerTest, Expressions)
{
    ExpectError("a.st(3,7) : error, mismatch, operator +\n", [&] { m_Errors.ErrOperator('+', m_Where); });
    ExpectError("a.st(3,7) : error, mismatch, operator MOD\n", [&] { m_Errors.ErrOperator(MOD, m_Where); });
    ExpectError("a.st(3,7) : error, mismatch, operator >= between INT and REAL \n",
                [&] { m_Errors.ErrOperatorMismatch(GREATER_EQUAL, &m_Int, &m_Real, m_Where); });
    ExpectError("a.st(3,7) : error, mismatch, operator := between INT and REAL \n",
                [&] { m_Errors.ErrOperatorMismatch(ASSIGN, &m_Int, &m_Real, m_Where); });
    ExpectError("a.st(3,7) : error, mismatch, operation NOT not allowed on REAL\n",
                [&] { m_Errors.ErrOperationNotAllowed(NOT, &m_Real, m_Where); });
    ExpectError("a.st(3,7) : error, mismatch, operation - not allowed on REAL\n",
                [&] { m_Errors.ErrOperationNotAllowed(UNARY_MINUS, &m_Real, m_Where); });
    ExpectError("a.st(3,7) : error, mismatch, cannot use MOD with REAL or LREAL value\n",
                [&] { m_Errors.ErrRealNotAllowed(MOD, m_Where); });
    ExpectError("a.st(3,7) : error: mismatch, BOOLEAN, WORD, DWORD, LWORD or BYTE expected\n",
                [&] { m_Errors.ErrBitTypeExpected(m_Where); });
    ExpectError("a.st(3,7) : error: cannot assign the value to an INT\n",
                [&] { m_Errors.ErrCannotAssign(&m_Int, m_Where); });
    ExpectError("a.st(3,7) : error, mismatch found in castfunction argument, found REAL required INT\n",
                [&] { m_Errors.ErrCastArgument(&m_Real, &m_Int, m_Where); });
    ExpectError("a.st(3,7) : error, mismatch found in castfunction argument, required INT\n",
                [&] { m_Errors.ErrCastArgument(nullptr, &m_Int, m_Where); });
    ExpectError("now.st(12,34) : error: division by zero\n", [&] { m_Errors.ErrDivisionByZero(12, 34); });
    ExpectError("a.st(3,7) : error, mismatch between INT and REAL \n",
                [&] { m_Errors.ErrTypeMismatch(&m_Int, &m_Real, m_Where); });
    ExpectError("a.st(3,7) : error, mismatch between t_in and t_out \n",
                [&] { m_Errors.ErrTypeMismatch("t_in", "t_out", m_Where); });
    ExpectWarning("a.st(3,7) : warning, non-integer quotient cast to int, possible precision's loss\n",
                  [&] { m_Errors.WarnQuotient(m_Where); });
}

TEST_F(ErrorHandlerTest, AbsentTypesGiveAnEmptyName)
{
    const CType* pNone = nullptr;
    ExpectError("a.st(3,7) : error, mismatch between  and  \n",
                [&] { m_Errors.ErrTypeMismatch(pNone, pNone, m_Where); });
    ExpectError("a.st(3,7) : error, mismatch, operator + between INT and  \n",
                [&] { m_Errors.ErrOperatorMismatch('+', &m_Int, nullptr, m_Where); });
    ExpectError("a.st(3,7) : error, mismatch, operation + not allowed on \n",
                [&] { m_Errors.ErrOperationNotAllowed('+', nullptr, m_Where); });
    ExpectError("a.st(3,7) : error: cannot assign the value to an \n",
                [&] { m_Errors.ErrCannotAssign(nullptr, m_Where); });
    ExpectError("a.st(3,7) : error: x is not a member of the struct \n",
                [&] { m_Errors.ErrNotMember("x", nullptr, m_Where); });
}

TEST_F(ErrorHandlerTest, Paths)
{
    CNode& name = *m_Nodes.MakeNode(IDENTIFIER, m_Where);
    name.pName = &m_Names.Intern("x");
    CNode& list = *m_Nodes.MakeNode(ARRAY_INIT_LIST, m_Where);
    // One has no blank between name and text, the other one too many in front.
    ExpectError("a.st(3,7) : error: xis not an array\n", [&] { m_Errors.ErrNotArray(&name, m_Where); });
    ExpectError("a.st(3,7) : error: is not an array\n", [&] { m_Errors.ErrNotArray(&list, m_Where); });
    ExpectError("a.st(3,7) : error: is not an array\n", [&] { m_Errors.ErrNotArray(nullptr, m_Where); });
    ExpectError("a.st(3,7) : error:  x is not a struct\n", [&] { m_Errors.ErrNotStruct(&name, m_Where); });
    ExpectError("a.st(3,7) : error:   is not a struct\n", [&] { m_Errors.ErrNotStruct(&list, m_Where); });
    CNode& path = *m_Nodes.MakeNode(ARRAY_ELEMENT, m_Where);
    path.AddChild(&name);
    ExpectError("a.st(3,7) : error: xis not an array\n", [&] { m_Errors.ErrNotArray(&path, m_Where); });
    CNode& members = *m_Nodes.MakeNode(DOT, m_Where);
    members.AddChild(&name);
    ExpectError("a.st(3,7) : error:  x is not a struct\n", [&] { m_Errors.ErrNotStruct(&members, m_Where); });
    CType structure("tank");
    ExpectError("a.st(3,7) : error: level is not a member of the struct tank\n",
                [&] { m_Errors.ErrNotMember("level", &structure, m_Where); });
    ExpectError("a.st(3,7) : error: wrong dimension required 2, found 1\n",
                [&] { m_Errors.ErrWrongDimension(2, 1, m_Where); });
    ExpectError("a.st(3,7) : error: index exceeds array dimension \n", [&] { m_Errors.ErrIndexExceeds(m_Where); });
    ExpectError("a.st(3,7) : error: cannot access to IN_OUT element of a FUNCTION_BLOCK\n",
                [&] { m_Errors.ErrInOutElement(m_Where); });
    ExpectError("a.st(3,7) : error: cannot access to private element of a FUNCTION_BLOCK\n",
                [&] { m_Errors.ErrPrivateElement(m_Where); });
    ExpectError("a.st(3,7) : error: expression requires integer value\n", [&] { m_Errors.ErrNeedsInteger(m_Where); });
}

TEST_F(ErrorHandlerTest, Statements)
{
    ExpectError("a.st(3,7) : error: attempt to assign a value to a constant variable \n",
                [&] { m_Errors.ErrAssignToConstant(m_Where); });
    ExpectError("a.st(3,7) : error: different array dimension: found 4 bytes required 8 bytes\n",
                [&] { m_Errors.ErrArrayDimension(4, 8, m_Where); });
    ExpectWarning("a.st(3,7) : warning, different array dimension: found 4 bytes required 8 bytes\n",
                  [&] { m_Errors.WarnArrayDimension(4, 8, m_Where); });
    ExpectError("a.st(3,7) : error: inout variable of function block requires a l-value\n",
                [&] { m_Errors.ErrInOutLValue(m_Where); });
    ExpectError("a.st(3,7) : error: the statement needs a boolean expression\n",
                [&] { m_Errors.ErrNeedsBoolean(m_Where); });
    ExpectError("a.st(3,7) : error: CASE statement needs a variable of integer type \n",
                [&] { m_Errors.ErrCaseType(m_Where); });
    ExpectError("a.st(3,7) : error: case range (-1,5) already used \n",
                [&] { m_Errors.ErrCaseRangeUsed(-1, 5, m_Where); });
    ExpectError("a.st(3,7) : error: case value 12 already used \n", [&] { m_Errors.ErrCaseValueUsed(12, m_Where); });
    ExpectError("a.st(3,7) : error: EXIT out of a cicle\n", [&] { m_Errors.ErrExitOutOfLoop(m_Where); });
    ExpectWarning("a.st(3,7) : warning, unreachable statement, FOR cicle already satisfy;\n"
                  "only assignment executed \n",
                  [&] { m_Errors.WarnForNeverRuns(m_Where); });
    ExpectWarning("a.st(3,7) : warning, unreachable statement\n", [&] { m_Errors.WarnUnreachable(m_Where); });
}

TEST_F(ErrorHandlerTest, Calls)
{
    ExpectError("a.st(3,7) : error: function scale not declared\n",
                [&] { m_Errors.ErrFunctionNotDeclared("scale", m_Where); });
    ExpectError("a.st(3,7) : error: overload function, cannot determinate function's type\n",
                [&] { m_Errors.ErrOverloadType(m_Where); });
    ExpectError("a.st(3,7) : error: function without return value, not allowed in expression\n",
                [&] { m_Errors.ErrNoReturnValue(m_Where); });
    ExpectError("a.st(3,7) : error: function does not take 0 parameter\n",
                [&] { m_Errors.ErrParameterCount(0, m_Where); });
    ExpectError("a.st(3,7) : error: function does not take 1 parameter\n",
                [&] { m_Errors.ErrParameterCount(1, m_Where); });
    ExpectError("a.st(3,7) : error: function does not take 2 parameters\n",
                [&] { m_Errors.ErrParameterCount(2, m_Where); });
    ExpectError("a.st(3,7) : error: VAR_OUTPUT and VAR_IN_OUT cannot be CONSTANT\n",
                [&] { m_Errors.ErrOutputConstant(m_Where); });
    ExpectError("a.st(3,7) : error: VAR_OUTPUT and VAR_IN_OUT cannot be immediate value\n",
                [&] { m_Errors.ErrOutputImmediate(m_Where); });
    ExpectError("a.st(3,7) : error: variable x is not a FUNCTION_BLOCK \n", [&] { m_Errors.ErrNotFb("x", m_Where); });
    ExpectError("a.st(3,7) : error: Function Block call without InOut parameter(s)  \n",
                [&] { m_Errors.ErrFbCallWithoutInOut(m_Where); });
    ExpectError("a.st(3,7) : error: member m already assigned \n", [&] { m_Errors.ErrMemberAssigned("m", m_Where); });
    ExpectError("a.st(3,7) : error: required => in FB assignment of OUTPUT variable\n",
                [&] { m_Errors.ErrRequiredArrow(m_Where); });
    ExpectError("a.st(3,7) : error: required := in FB assignment of OUTPUT variable\n",
                [&] { m_Errors.ErrRequiredAssign(m_Where); });
    ExpectError("a.st(3,7) : error: local variable x in FUNCTION BLOCK invocation\n",
                [&] { m_Errors.ErrLocalInFbCall("x", m_Where); });
}

TEST_F(ErrorHandlerTest, ParameterMismatch)
{
    CFunction function("scale", SourceLocation{1, 10, 1, 15, "lib.st"});
    function.m_Parameters.push_back(std::make_unique<CVariable>());
    function.m_Parameters.push_back(std::make_unique<CVariable>());
    function.m_Parameters[1]->m_Type = &m_Real;
    CNode& actual = *m_Nodes.MakeNode(IDENTIFIER, m_Where);
    actual.pType = &m_Int;
    ExpectError("a.st(3,7) : error: parameter 2 does not match; found INT required REAL \n"
                "see definition of scale at (1,10)lib.st\n",
                [&] { m_Errors.ErrParameterMismatch(actual, function, 1, m_Where); });
    actual.pType = nullptr;
    ExpectError("a.st(3,7) : error: parameter 2 does not match; required REAL \n"
                "see definition of scale at (1,10)lib.st\n",
                [&] { m_Errors.ErrParameterMismatch(actual, function, 1, m_Where); });
    // A formal without a type, and none at all, have an empty name.
    ExpectError("a.st(3,7) : error: parameter 1 does not match; required  \n"
                "see definition of scale at (1,10)lib.st\n",
                [&] { m_Errors.ErrParameterMismatch(actual, function, 0, m_Where); });
    ExpectError("a.st(3,7) : error: parameter 3 does not match; required  \n"
                "see definition of scale at (1,10)lib.st\n",
                [&] { m_Errors.ErrParameterMismatch(actual, function, 2, m_Where); });
}

TEST_F(ErrorHandlerTest, ScannerAndParser)
{
    ExpectError("now.st(12,34) : error: syntax error, unexpected ';'\n",
                [&] { m_Errors.ErrSyntax("syntax error, unexpected ';'", 12, 34); });
    ExpectError("now.st(6,1) : error: string not closed or wrong use of apices; first apex at (5,11)\n",
                [&] { m_Errors.ErrStringNotClosed(6, 1, 5, 11); });
    ExpectWarning("now.st(12,34) : warning, incorrect use of escape sequence\n"
                  "correct escape sequence are: $n, $N, $l, $L, $t, $T, $p, $P, $$, $', $r, $R or $ followed by two "
                  "hexadecimal digits\n",
                  [&] { m_Errors.WarnEscapeSequence(12, 34); });
}

TEST_F(ErrorHandlerTest, WholeRun)
{
    ExpectError("now.st error: something\n", [&] { m_Errors.ErrGeneric("something"); });
    ExpectError("now.st error: global out of memory ,120 bytes\n", [&] { m_Errors.ErrGlobalOutOfMemory(120); });
    ExpectError("now.st error: retain out of memory ,8 bytes\n", [&] { m_Errors.ErrRetainOutOfMemory(8); });
    ExpectError("now.st error: Return stack invalid size (max size is 2048)\n",
                [&] { m_Errors.ErrReturnStackSize(2048); });
    ExpectError("now.st error: Parameter stack invalid size (max size is 512)\n",
                [&] { m_Errors.ErrParameterStackSize(512); });
    ExpectError("now.st error: Return stack overflow (-24 byte in POU Main)\n",
                [&] { m_Errors.ErrReturnStackOverflow(-24, "Main"); });
    ExpectWarning("now.st warning: Return stack overflow in nested PROGRAM (300 byte)\n",
                  [&] { m_Errors.WarnNestedProgramStack(300); });
}

TEST_F(ErrorHandlerTest, NoFileYet)
{
    g_CurrentFileName = nullptr;
    ExpectError(" error: early\n", [&] { m_Errors.ErrGeneric("early"); });
}

// A string literal's node has numbers but no file.
TEST_F(ErrorHandlerTest, LocationWithoutFile)
{
    ExpectError("(5,2) : error: invalid string assignment \n",
                [&] { m_Errors.ErrStringAssignment(SourceLocation{5, 2, 5, 9, nullptr}); });
}

TEST_F(ErrorHandlerTest, ColumnZeroIsAPosition)
{
    ExpectError("a.st(1,0) : error: invalid address\n",
                [&] { m_Errors.ErrInvalidAddress(SourceLocation{1, 0, 1, 3, "a.st"}); });
}

TEST_F(ErrorHandlerTest, NamesAndTextsTakeNumbersAndNothingElse)
{
    ExpectError("1003%s%n.st(7,%d) : error: variable %s%n not declared\n",
                [&] { m_Errors.ErrVariableNotDeclared("%s%n", SourceLocation{3, 7, 3, 9, "100%d%s%n.st"}); });
    ExpectError("now.st(1,2) : error: (%d,%d) %d\n", [&] { m_Errors.ErrSyntax("(%d,%d) %d", 1, 2); });
    ExpectError("a.st(3,7) : error, mismatch between %s and %d \n",
                [&] { m_Errors.ErrTypeMismatch("%s", "%d", m_Where); });
    ExpectError("now.st error: Program '%d%s' required\n", [&] { m_Errors.ErrProgramRequired("%d%s"); });
    ExpectError("a%b%d.st(3,7) : error: variable 50%d% not declared\n",
                [&] { m_Errors.ErrVariableNotDeclared("50%%d%", SourceLocation{3, 7, 3, 9, "a%%b%%d.st"}); });
    g_CurrentFileName = "%s.st";
    ExpectError("%s.st error: %n\n", [&] { m_Errors.ErrGeneric("%n"); });
    g_CurrentFileName = "%%%d.st";
    ExpectError("%%d.st error: %d%\n", [&] { m_Errors.ErrGeneric("%d%%"); });
}

TEST_F(ErrorHandlerTest, RepeatedErrorsAreCountedEach)
{
    const std::string line = "a.st(3,7) : error: invalid address\n";
    const std::string printed = PrintedBy([&] {
        m_Errors.ErrInvalidAddress(m_Where);
        m_Errors.ErrInvalidAddress(m_Where);
    });
    EXPECT_EQ(printed, line + line);
    EXPECT_EQ(m_Errors.GetErrorCount(), 2);
}

TEST_F(ErrorHandlerTest, FiftyErrorsGoOn)
{
    bool isFatal = true;
    PrintedBy([&] {
        for (int i = 0; i < 50; ++i) m_Errors.ErrInvalidAddress(m_Where);
        for (int i = 0; i < 60; ++i) m_Errors.WarnUnreachable(m_Where);
    });
    EXPECT_EQ(PrintedBy([&] { isFatal = m_Errors.FatalTooManyErrors(); }), "");
    EXPECT_FALSE(isFatal);
    EXPECT_EQ(m_Errors.GetErrorCount(), 50);
    EXPECT_EQ(m_Errors.GetWarningCount(), 60);
}

TEST_F(ErrorHandlerTest, FiftyOneErrorsAreTooMany)
{
    PrintedBy([&] {
        for (int i = 0; i < 50; ++i) m_Errors.ErrInvalidAddress(m_Where);
    });
    ExpectError("a.st(3,7) : error: invalid address\n", [&] { m_Errors.ErrInvalidAddress(m_Where); });
    bool isFatal = false;
    const std::string line = "now.st error: fatal error, too much errors, process aborted\n";
    ExpectError(line, [&] { isFatal = m_Errors.FatalTooManyErrors(); });
    EXPECT_TRUE(isFatal);
    EXPECT_TRUE(m_Errors.m_ErrorList.back()->bFatal);
    // Each further question adds the message again, and other diagnostics are still taken in between.
    ExpectError("a.st(3,7) : error: invalid address\n", [&] { m_Errors.ErrInvalidAddress(m_Where); });
    ExpectError(line, [&] { isFatal = m_Errors.FatalTooManyErrors(); });
    EXPECT_EQ(m_Errors.GetErrorCount(), 54);
}

TEST(ErrorTest, FieldsByFormOfConstruction)
{
    g_CurrentFileName = "now.st";
    const CError byText("text");
    const CError byColumn("text", 4, 5);
    g_CurrentFileName = nullptr;
    const CError byLocation("text", SourceLocation{1, 2, 3, 4, "a.st"});

    EXPECT_EQ(byText.nFirstLine, -1);
    EXPECT_EQ(byText.nFirstColumn, -1);
    EXPECT_EQ(byText.strFile, "now.st");
    EXPECT_EQ(byColumn.nFirstLine, 4);
    EXPECT_EQ(byColumn.nFirstColumn, 5);
    EXPECT_EQ(byColumn.nLastLine, -1);
    EXPECT_EQ(byColumn.nLastColumn, -1);
    EXPECT_EQ(byColumn.strFile, "now.st");
    EXPECT_EQ(byLocation.nFirstLine, 1);
    EXPECT_EQ(byLocation.nFirstColumn, 2);
    EXPECT_EQ(byLocation.nLastLine, 3);
    EXPECT_EQ(byLocation.nLastColumn, 4);
    EXPECT_EQ(byLocation.strFile, "a.st");
    EXPECT_FALSE(byLocation.bWarning || byLocation.bFatal || byLocation.bRange);
}

TEST(ErrorTest, PrintedLineByWhatIsPresent)
{
    CError range("(%d,%d) (%d,%d) : error %d", SourceLocation{1, 2, 3, 4, "a.st"});
    EXPECT_EQ(range.GetPrintedLine(), "a.st(1,2) (%d,%d) : error %d\n");
    range.bRange = true;
    EXPECT_EQ(range.GetPrintedLine(), "a.st(1,2) (3,4) : error %d\n");
    const CError lineOnly("(%d) : error: %d", SourceLocation{7, -1, 7, -1, "a.st"});
    EXPECT_EQ(lineOnly.GetPrintedLine(), "a.st(7) : error: %d\n");
    const CError columnMissing("(%d,%d) : error: ", SourceLocation{7, -1, 7, -1, "a.st"});
    EXPECT_EQ(columnMissing.GetPrintedLine(), "a.st(7,%d) : error: \n");
    const CError noLine("(%d,%d) : error: ", SourceLocation{-1, 3, -1, -1, "a.st"});
    EXPECT_EQ(noLine.GetPrintedLine(), "a.st (%d,%d) : error: \n");
    const CError noPiece("plain %d", SourceLocation{7, 8, 7, 9, "a.st"});
    EXPECT_EQ(noPiece.GetPrintedLine(), "a.stplain 7\n");
}

// The pieces that no method above shows whole.
TEST(MessageTableTest, PiecesOfTheDriver)
{
    EXPECT_EQ(GetMessage(1), "error: ");
    EXPECT_EQ(GetMessage(66), "****************HELP******************************\n"
                              "usage: compiler [fileListName] [-option(s)]\n"
                              "\n"
                              "-o [fileNameOutput] \t set a output file name;\n"
                              "-o1 \t\t\t optimize memory;\n"
                              "-b  \t\t\t guarantee compatibility with older version;\n"
                              "-n  \t\t\t program's name;\n"
                              "-v  \t\t\t program's version;\n"
                              "-i  \t\t\t xml input file.\n"
                              "-bs0\t\t\t Disable boolean shortcut.\n"
                              "-rs size\t\t Return stack size.\n"
                              "-ps size\t\t Parameter stack size.\n"
                              "-k\t\t\t Keep temporary file");
    EXPECT_EQ(GetMessage(107), "************Compiler for IEC61131-3 ST************\nversion: 2\n\n\n");
    EXPECT_EQ(GetMessage(108), " option needs one and only one file name\n");
    EXPECT_EQ(GetMessage(109), "invalid option\n");
    EXPECT_EQ(GetMessage(110), " successfully parsed\n");
    EXPECT_EQ(GetMessage(111), "XML file not specified ");
    EXPECT_EQ(GetMessage(112), "XML file not found");
    EXPECT_EQ(GetMessage(124), "cannot access to private element of a FUNCTION_BLOCK");
}

TEST(MessageTableTest, PiecesThatNothingUses)
{
    EXPECT_EQ(GetMessage(4), "(%d,%d) : syntax error: ");
    EXPECT_EQ(GetMessage(5), "(%d,%d) : string not closed or wrong use of apices ");
    EXPECT_EQ(GetMessage(7), "(%d,%d) : ");
    EXPECT_EQ(GetMessage(9), "operation %s not allowed between %s");
    EXPECT_EQ(GetMessage(11), "(%d,%d) (%d,%d) : error");
    EXPECT_EQ(GetMessage(17), "(%d,%d) : error, mismatch on immediate value");
    EXPECT_EQ(GetMessage(48), "(%d) : error: ");
    EXPECT_EQ(GetMessage(56), "element already declared");
    EXPECT_EQ(GetMessage(67), "RETURN inside a ");
    EXPECT_EQ(GetMessage(92), "element already initialized ");
    EXPECT_EQ(GetMessage(93), "element already assigned");
    EXPECT_EQ(GetMessage(97), "cannot assign array or struct to another one ");
    EXPECT_EQ(GetMessage(98), "cannot modify INPUT struct or array variable");
}

TEST(MessageTableDeathTest, NumberOutsideTheTable)
{
    EXPECT_EXIT(GetMessage(0), testing::ExitedWithCode(3), "internal fault: ");
    EXPECT_EXIT(GetMessage(125), testing::ExitedWithCode(3), "internal fault: ");
}
