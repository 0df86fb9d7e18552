#pragma once

#include "frontend/SourceLocation.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>

class CError;
class CNode;
class CPou;
class CFunction;
class CType;
class CVariable;
class MessagePart;

// All that the compiler says of a source: one method for each diagnostic. Each composes its text from
// numbered pieces and its arguments, records it, and prints it at once to standard output. Nothing is
// sorted, merged or held back; only the error count decides the outcome of a run.
//
// Above each method stands what it prints behind the place, as Messages.def lists it, with the identifier (which is
// never printed): <name> is filled in, [...] stands there or doesn't. A line without an identifier goes on with the
// one above it.
class CErrorHandler
{
public:
    CErrorHandler();
    ~CErrorHandler();

    int GetErrorCount() const { return static_cast<int>(m_ErrorList.size()); }
    int GetWarningCount() const { return static_cast<int>(m_WarningList.size()); }
    // False below 51 errors. From there on it reports the fatal message each time and answers true.
    // E001 "error: fatal error, too much errors, process aborted"
    bool FatalTooManyErrors();

    // ---- Declarations and types.

    // E002 "error: cannot initialize an ANY variable"
    void ErrInitAny(const SourceLocation& where);
    // E003 "error: type ANY are allowed only in function's formal parameters "
    void ErrAnyNotAllowed(const SourceLocation& where);
    // At the scanner's position.
    // E004 "error: type <name> not supported for this target"
    void ErrTypeNotSupported(std::string_view name);
    // At the scanner's position.
    // E005 "error: two underscore in identifier's name"
    void ErrTwoUnderscores();
    // E006 "error: variable <name> already declared"
    void ErrVariableDeclared(const CVariable& variable, const SourceLocation& where);
    void ErrVariableDeclared(std::string_view name, const SourceLocation& where);
    // E007 "error: variable <name> not declared"
    void ErrVariableNotDeclared(std::string_view name, const SourceLocation& where);
    // E008 "error: member <name> already declared"
    void ErrMemberDeclared(std::string_view name, const SourceLocation& where);
    // E009 "error: function  <name> already declared<file> (<line>,<column>)"
    // E009 "error: PROGRAM <name> already declared<file> (<line>,<column>)"
    // E009 "error: FUNCTION BLOCK <name> already declared<file> (<line>,<column>)"
    // E009 "error: POU <name> already declared<file> (<line>,<column>)"
    void ErrPouDeclared(const CPou& declaredBefore, const SourceLocation& where);
    // E010 "error: program not supported"
    void ErrProgramNotSupported(const SourceLocation& where);
    // E011 "error: not supported VAR_INPUT VAR_OUTPUT and VAR_IN_OUT for program; (cannot call a program)"
    void ErrProgramParameters(const SourceLocation& where);
    // E012 "error: Program '<name>' required"
    void ErrProgramRequired(std::string_view name);
    // E013 "error: function cannot return struct or array"
    void ErrReturnsStruct(const SourceLocation& where);
    // E014 "error: direct variables cannot be used as formal parameters "
    void ErrDirectAsFormal(const SourceLocation& where);
    // E015 "error: invalid address"
    void ErrInvalidAddress(const SourceLocation& where);
    // E016 "error: address out of memory "
    void ErrAddressOutOfMemory(const SourceLocation& where);
    // E017 "error: invalid alignment for the type"
    void ErrAlignment(const SourceLocation& where);
    // E018 "error: invalid dimension for the type"
    void ErrDimension(const SourceLocation& where);
    // E019 "error: dimension must be a non-negative integer value "
    void ErrStringDimension(const SourceLocation& where);
    // E020 "error: cannot check string size"
    void ErrStringSizeUnchecked(const SourceLocation& where);
    // E021 "error: invalid string assignment "
    void ErrStringAssignment(const SourceLocation& where);
    // W001 "warning, string too long (<length> chars), string's length exceeds declared dimension (<declared> chars) "
    void WarnStringTooLong(int have, int declared, const SourceLocation& where);
    // W002 "warning, function actual parameter cannot be initialized"
    void WarnActualInitialized(const SourceLocation& where);
    // W003 "warning, useless assignment "
    void WarnUselessAssignment(const SourceLocation& where);

    // ---- Initial values and array bounds.

    // E022 "error: cannot assign a value to a function block instance "
    void ErrAssignToFbInstance(const SourceLocation& where);
    // E023 "error: function call in variable declaration"
    void ErrCallInDeclaration(const SourceLocation& where);
    // E024 "error: cannot use castfunction in any var block body "
    void ErrCastInVarBlock(const SourceLocation& where);
    // E025 "error: cannot check array dimension"
    void ErrArrayDimensionUnchecked(const SourceLocation& where);
    // E026 "error: array's index requires integer value"
    void ErrArrayIndexType(const SourceLocation& where);
    // W004 "warning, too much initializers required <required> elements, found <found>"
    void WarnTooManyInitializers(std::int64_t have, std::int64_t required, const SourceLocation& where);
    // W005 "warning, element <name> already initialized"
    void WarnElementInitialized(std::string_view name, const SourceLocation& where);

    // ---- Expressions.

    // E027 "error, mismatch, operator <operator>"
    void ErrOperator(int op, const SourceLocation& where);
    // E028 "error, mismatch, operator <operator> between <left> and <right> "
    void ErrOperatorMismatch(int op, const CType* pLeft, const CType* pRight, const SourceLocation& where);
    // E029 "error, mismatch, operation <operator> not allowed on <type>"
    void ErrOperationNotAllowed(int op, const CType* pType, const SourceLocation& where);
    // E030 "error, mismatch, cannot use <operator> with REAL or LREAL value"
    void ErrRealNotAllowed(int op, const SourceLocation& where);
    // E031 "error: mismatch, BOOLEAN, WORD, DWORD, LWORD or BYTE expected"
    void ErrBitTypeExpected(const SourceLocation& where);
    // E032 "error: cannot assign the value to an <type>"
    void ErrCannotAssign(const CType* pType, const SourceLocation& where);
    // E033 "error, mismatch found in castfunction argument, [found <found> ]required <required>"
    void ErrCastArgument(const CType* pFound, const CType* pRequired, const SourceLocation& where);
    // E034 "error: division by zero"
    void ErrDivisionByZero(int line, int column);
    // E035 "error, mismatch between <first> and <second> "
    void ErrTypeMismatch(const CType* pFirst, const CType* pSecond, const SourceLocation& where);
    void ErrTypeMismatch(std::string_view first, std::string_view second, const SourceLocation& where);
    // W006 "warning, non-integer quotient cast to int, possible precision's loss"
    void WarnQuotient(const SourceLocation& where);

    // ---- Paths.

    // Names the path's root, as the next one does.
    // E036 "error: <name>is not an array"
    void ErrNotArray(const CNode* pNode, const SourceLocation& where);
    // E037 "error:  <name> is not a struct"
    void ErrNotStruct(const CNode* pNode, const SourceLocation& where);
    // E038 "error: <member> is not a member of the struct <struct>"
    void ErrNotMember(std::string_view member, const CType* pStruct, const SourceLocation& where);
    // E039 "error: wrong dimension required <required>, found <found>"
    void ErrWrongDimension(int required, int found, const SourceLocation& where);
    // E040 "error: index exceeds array dimension "
    void ErrIndexExceeds(const SourceLocation& where);
    // E041 "error: cannot access to IN_OUT element of a FUNCTION_BLOCK"
    void ErrInOutElement(const SourceLocation& where);
    // E042 "error: cannot access to private element of a FUNCTION_BLOCK"
    void ErrPrivateElement(const SourceLocation& where);
    // E043 "error: expression requires integer value"
    void ErrNeedsInteger(const SourceLocation& where);

    // ---- Statements.

    // E044 "error: attempt to assign a value to a constant variable "
    void ErrAssignToConstant(const SourceLocation& where);
    // Both in bytes, or for a function block's parameter in elements, although the text says bytes.
    // E045 "error: different array dimension: found <found> bytes required <required> bytes"
    void ErrArrayDimension(std::int64_t found, std::int64_t required, const SourceLocation& where);
    // W007 "warning, different array dimension: found <found> bytes required <required> bytes"
    void WarnArrayDimension(std::int64_t found, std::int64_t required, const SourceLocation& where);
    // E046 "error: inout variable of function block requires a l-value"
    void ErrInOutLValue(const SourceLocation& where);
    // E047 "error: the statement needs a boolean expression"
    void ErrNeedsBoolean(const SourceLocation& where);
    // E048 "error: CASE statement needs a variable of integer type "
    void ErrCaseType(const SourceLocation& where);
    // E049 "error: case range (<from>,<to>) already used "
    void ErrCaseRangeUsed(std::int32_t from, std::int32_t to, const SourceLocation& where);
    // E050 "error: case value <value> already used "
    void ErrCaseValueUsed(std::int32_t value, const SourceLocation& where);
    // E051 "error: EXIT out of a cicle"
    void ErrExitOutOfLoop(const SourceLocation& where);
    // W008 "warning, unreachable statement, FOR cicle already satisfy;\n"
    //      "only assignment executed "
    void WarnForNeverRuns(const SourceLocation& where);
    // W009 "warning, unreachable statement"
    void WarnUnreachable(const SourceLocation& where);

    // ---- Calls.

    // E052 "error: function <name> not declared"
    void ErrFunctionNotDeclared(std::string_view name, const SourceLocation& where);
    // E053 "error: overload function, cannot determinate function's type"
    void ErrOverloadType(const SourceLocation& where);
    // E054 "error: function without return value, not allowed in expression"
    void ErrNoReturnValue(const SourceLocation& where);
    // E055 "error: function does not take <count> parameter[s]"
    void ErrParameterCount(int count, const SourceLocation& where);
    // E056 "error: parameter <number> does not match; [found <found> ]required <required> \n"
    //      "see definition of <function> at (<line>,<column>)<file>"
    void ErrParameterMismatch(const CNode& actual, const CFunction& function, int index, const SourceLocation& where);
    // E057 "error: VAR_OUTPUT and VAR_IN_OUT cannot be CONSTANT"
    void ErrOutputConstant(const SourceLocation& where);
    // E058 "error: VAR_OUTPUT and VAR_IN_OUT cannot be immediate value"
    void ErrOutputImmediate(const SourceLocation& where);
    // E059 "error: variable <name> is not a FUNCTION_BLOCK "
    void ErrNotFb(std::string_view name, const SourceLocation& where);
    // E060 "error: Function Block call without InOut parameter(s)  "
    void ErrFbCallWithoutInOut(const SourceLocation& where);
    // E061 "error: member <name> already assigned "
    void ErrMemberAssigned(std::string_view name, const SourceLocation& where);
    // E062 "error: required => in FB assignment of OUTPUT variable"
    void ErrRequiredArrow(const SourceLocation& where);
    // E063 "error: required := in FB assignment of OUTPUT variable"
    void ErrRequiredAssign(const SourceLocation& where);
    // E064 "error: local variable <name> in FUNCTION BLOCK invocation"
    void ErrLocalInFbCall(std::string_view name, const SourceLocation& where);

    // ---- Scanner and parser.

    // E065 "error: syntax error, unexpected <token>[, expecting <tokens>]"
    // E066 "error: memory exhausted"
    // E067 "error: Unknown character"
    // E068 "error: forgotten \";\" ?"
    // E069 "error: The attribute CONSTANT cannot be used with external variables"
    // E070 "error: cannot initialize struct here"
    // E071 "error: cannot initialize array here"
    // E072 "error: SORRY, WILL BE SUPPORTED SOON"
    void ErrSyntax(std::string_view text, int line, int column);
    // E073 "error: string not closed or wrong use of apices; first apex at (<line>,<column>)"
    void ErrStringNotClosed(int line, int column, int firstLine, int firstColumn);
    // W010 "warning, incorrect use of escape sequence\n"
    //      "correct escape sequence are: $n, $N, $l, $L, $t, $T, $p, $P, $$, $', $r, $R or $ "
    //      "followed by two hexadecimal digits"
    void WarnEscapeSequence(int line, int column);

    // ---- The whole run; without a position.

    // E074 "error: Error in opening library file"
    // E075 "error: COMPILER\\TARGET node not found in library file"
    void ErrGeneric(std::string_view text);
    // E076 "error: global out of memory ,<bytes> bytes"
    void ErrGlobalOutOfMemory(std::int64_t bytes);
    // E077 "error: retain out of memory ,<bytes> bytes"
    void ErrRetainOutOfMemory(std::int64_t bytes);
    // E078 "error: Return stack invalid size (max size is <maximum>)"
    void ErrReturnStackSize(int maximum);
    // E079 "error: Parameter stack invalid size (max size is <maximum>)"
    void ErrParameterStackSize(int maximum);
    // E080 "error: Return stack overflow (<bytes> byte in POU <name>)"
    void ErrReturnStackOverflow(std::int64_t bytes, std::string_view pou);
    // W011 "warning: Return stack overflow in nested PROGRAM (<bytes> byte)"
    void WarnNestedProgramStack(std::int64_t bytes);

    std::vector<std::unique_ptr<CError>> m_ErrorList;
    std::vector<std::unique_ptr<CError>> m_WarningList;

private:
    // Each composes the parts, whose first one decides between error and warning, records and prints.
    void Report(const SourceLocation& where, std::initializer_list<MessagePart> parts);
    void ReportAt(int line, int column, std::initializer_list<MessagePart> parts);   // in the current file
    void ReportWithoutPosition(std::initializer_list<MessagePart> parts);
    void Record(std::unique_ptr<CError> pError);
};
