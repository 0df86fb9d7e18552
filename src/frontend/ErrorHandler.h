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
class CErrorHandler
{
public:
    CErrorHandler();
    ~CErrorHandler();

    int GetErrorCount() const { return static_cast<int>(m_ErrorList.size()); }
    int GetWarningCount() const { return static_cast<int>(m_WarningList.size()); }
    // False below 51 errors. From there on it reports the fatal message each time and answers true.
    bool FatalTooManyErrors();

    // Declarations and types.
    void ErrInitAny(const SourceLocation& where);
    void ErrAnyNotAllowed(const SourceLocation& where);
    void ErrTypeNotSupported(std::string_view name);                       // at the scanner's position
    void ErrTwoUnderscores();                                              // at the scanner's position
    void ErrVariableDeclared(const CVariable& variable, const SourceLocation& where);
    void ErrVariableDeclared(std::string_view name, const SourceLocation& where);
    void ErrVariableNotDeclared(std::string_view name, const SourceLocation& where);
    void ErrMemberDeclared(std::string_view name, const SourceLocation& where);
    void ErrPouDeclared(const CPou& declaredBefore, const SourceLocation& where);
    void ErrProgramNotSupported(const SourceLocation& where);
    void ErrProgramParameters(const SourceLocation& where);
    void ErrProgramRequired(std::string_view name);
    void ErrReturnsStruct(const SourceLocation& where);
    void ErrDirectAsFormal(const SourceLocation& where);
    void ErrInvalidAddress(const SourceLocation& where);
    void ErrAddressOutOfMemory(const SourceLocation& where);
    void ErrAlignment(const SourceLocation& where);
    void ErrDimension(const SourceLocation& where);
    void ErrStringDimension(const SourceLocation& where);
    void ErrStringSizeUnchecked(const SourceLocation& where);
    void ErrStringAssignment(const SourceLocation& where);
    void WarnStringTooLong(int have, int declared, const SourceLocation& where);
    void WarnActualInitialized(const SourceLocation& where);
    void WarnUselessAssignment(const SourceLocation& where);

    // Initial values and array bounds.
    void ErrAssignToFbInstance(const SourceLocation& where);
    void ErrCallInDeclaration(const SourceLocation& where);
    void ErrCastInVarBlock(const SourceLocation& where);
    void ErrArrayDimensionUnchecked(const SourceLocation& where);
    void ErrArrayIndexType(const SourceLocation& where);
    void WarnTooManyInitializers(std::int64_t have, std::int64_t required, const SourceLocation& where);
    void WarnElementInitialized(std::string_view name, const SourceLocation& where);

    // Expressions.
    void ErrOperator(int op, const SourceLocation& where);
    void ErrOperatorMismatch(int op, const CType* pLeft, const CType* pRight, const SourceLocation& where);
    void ErrOperationNotAllowed(int op, const CType* pType, const SourceLocation& where);
    void ErrRealNotAllowed(int op, const SourceLocation& where);
    void ErrBitTypeExpected(const SourceLocation& where);
    void ErrCannotAssign(const CType* pType, const SourceLocation& where);
    void ErrCastArgument(const CType* pFound, const CType* pRequired, const SourceLocation& where);
    void ErrDivisionByZero(int line, int column);
    void ErrTypeMismatch(const CType* pFirst, const CType* pSecond, const SourceLocation& where);
    void ErrTypeMismatch(std::string_view first, std::string_view second, const SourceLocation& where);
    void WarnQuotient(const SourceLocation& where);

    // Paths.
    void ErrNotArray(const CNode* pNode, const SourceLocation& where);     // names the path's root
    void ErrNotStruct(const CNode* pNode, const SourceLocation& where);
    void ErrNotMember(std::string_view member, const CType* pStruct, const SourceLocation& where);
    void ErrWrongDimension(int required, int found, const SourceLocation& where);
    void ErrIndexExceeds(const SourceLocation& where);
    void ErrInOutElement(const SourceLocation& where);
    void ErrPrivateElement(const SourceLocation& where);
    void ErrNeedsInteger(const SourceLocation& where);

    // Statements.
    void ErrAssignToConstant(const SourceLocation& where);
    // Both in bytes, or for a function block's parameter in elements, although the text says bytes.
    void ErrArrayDimension(std::int64_t found, std::int64_t required, const SourceLocation& where);
    void WarnArrayDimension(std::int64_t found, std::int64_t required, const SourceLocation& where);
    void ErrInOutLValue(const SourceLocation& where);
    void ErrNeedsBoolean(const SourceLocation& where);
    void ErrCaseType(const SourceLocation& where);
    void ErrCaseRangeUsed(std::int32_t from, std::int32_t to, const SourceLocation& where);
    void ErrCaseValueUsed(std::int32_t value, const SourceLocation& where);
    void ErrExitOutOfLoop(const SourceLocation& where);
    void WarnForNeverRuns(const SourceLocation& where);
    void WarnUnreachable(const SourceLocation& where);

    // Calls.
    void ErrFunctionNotDeclared(std::string_view name, const SourceLocation& where);
    void ErrOverloadType(const SourceLocation& where);
    void ErrNoReturnValue(const SourceLocation& where);
    void ErrParameterCount(int count, const SourceLocation& where);
    void ErrParameterMismatch(const CNode& actual, const CFunction& function, int index, const SourceLocation& where);
    void ErrOutputConstant(const SourceLocation& where);
    void ErrOutputImmediate(const SourceLocation& where);
    void ErrNotFb(std::string_view name, const SourceLocation& where);
    void ErrFbCallWithoutInOut(const SourceLocation& where);
    void ErrMemberAssigned(std::string_view name, const SourceLocation& where);
    void ErrRequiredArrow(const SourceLocation& where);
    void ErrRequiredAssign(const SourceLocation& where);
    void ErrLocalInFbCall(std::string_view name, const SourceLocation& where);

    // Scanner and parser.
    void ErrSyntax(std::string_view text, int line, int column);
    void ErrStringNotClosed(int line, int column, int firstLine, int firstColumn);
    void WarnEscapeSequence(int line, int column);

    // The whole run; without a position.
    void ErrGeneric(std::string_view text);
    void ErrGlobalOutOfMemory(std::int64_t bytes);
    void ErrRetainOutOfMemory(std::int64_t bytes);
    void ErrReturnStackSize(int maximum);
    void ErrParameterStackSize(int maximum);
    void ErrReturnStackOverflow(std::int64_t bytes, std::string_view pou);
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
