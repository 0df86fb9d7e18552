#include "frontend/ErrorHandler.h"

#include "files/Format.h"
#include "files/Print.h"
#include "frontend/Error.h"
#include "frontend/MessageTable.h"
#include "frontend/Node.h"
#include "frontend/Scanner.h"
#include "frontend/Tokens.h"
#include "model/Pou.h"
#include "model/Type.h"
#include "model/Variable.h"

#include <utility>

// What a message is composed of: a piece of the table by its number, or a text of this one message.
class MessagePart
{
public:
    MessagePart(int id) : m_Text(GetMessage(id)), m_Id(id) {}
    MessagePart(const char* text) : m_Text(text) {}
    MessagePart(std::string_view text) : m_Text(text) {}
    MessagePart(const std::string& text) : m_Text(text) {}

    std::string_view GetText() const { return m_Text; }
    // A message is a warning if it begins with the front piece of one; all other front pieces make errors.
    bool BeginsWarning() const { return m_Id == 6 || m_Id == 122; }

private:
    std::string_view m_Text;   // lives at least as long as the call that composes the message
    int m_Id = 0;              // 0: no piece of the table
};

using MessageParts = std::initializer_list<MessagePart>;

static std::string Compose(MessageParts parts)
{
    std::string text;
    for (const MessagePart& part : parts) text += part.GetText();
    return text;
}

static std::string Number(std::int64_t value)
{
    return FormatText("%lld", static_cast<long long>(value));
}

// The piece with its "%s" and "%d" replaced in order. What replaces them isn't looked at again.
static std::string Fill(int id, std::initializer_list<std::string> arguments)
{
    constexpr std::size_t markLength = 2;
    std::string_view rest = GetMessage(id);
    std::string text;
    for (const std::string& argument : arguments) {
        const std::size_t found = rest.find('%');
        text += rest.substr(0, found);
        text += argument;
        rest.remove_prefix(found + markLength);
    }
    text += rest;
    return text;
}

static std::string NameOf(const CType* pType)
{
    return pType ? pType->m_Name : std::string();
}

// The name of the variable that a path starts at. A list, which can stand in place of a path, has none.
static std::string_view RootNameOf(const CNode* pNode)
{
    if (!pNode) return {};
    const bool isPath = pNode->nKind == DOT || pNode->nKind == ARRAY_ELEMENT;
    if (!pNode->pName && isPath && pNode->GetChildCount() > 0) return pNode->Child(0)->GetName();
    return pNode->GetName();
}

static int GetKindPiece(const CPou& pou)
{
    if (pou.IsFunction()) return 46;
    if (pou.IsProgram()) return 62;
    if (pou.IsFunctionBlock()) return 63;
    return 64;
}

CErrorHandler::CErrorHandler() = default;
CErrorHandler::~CErrorHandler() = default;

void CErrorHandler::Record(std::unique_ptr<CError> pError)
{
    const std::string line = pError->GetPrintedLine();
    std::vector<std::unique_ptr<CError>>& list = pError->bWarning ? m_WarningList : m_ErrorList;
    list.push_back(std::move(pError));
    Print(line);
}

void CErrorHandler::Report(const SourceLocation& where, MessageParts parts)
{
    std::unique_ptr<CError> pError = std::make_unique<CError>(Compose(parts), where);
    pError->bWarning = parts.begin()->BeginsWarning();
    Record(std::move(pError));
}

void CErrorHandler::ReportAt(int line, int column, MessageParts parts)
{
    std::unique_ptr<CError> pError = std::make_unique<CError>(Compose(parts), line, column);
    pError->bWarning = parts.begin()->BeginsWarning();
    Record(std::move(pError));
}

void CErrorHandler::ReportWithoutPosition(MessageParts parts)
{
    std::unique_ptr<CError> pError = std::make_unique<CError>(Compose(parts));
    pError->bWarning = parts.begin()->BeginsWarning();
    Record(std::move(pError));
}

// From the 51st error on every question adds one more, so that each further file that gets to a statement
// says why it ends there.
bool CErrorHandler::FatalTooManyErrors()
{
    constexpr int limit = 51;
    if (GetErrorCount() < limit) return false;
    std::unique_ptr<CError> pError = std::make_unique<CError>(Compose({1, 15}));
    pError->bFatal = true;
    Record(std::move(pError));
    return true;
}

// ---- Declarations and types.

void CErrorHandler::ErrInitAny(const SourceLocation& where)
{
    Report(where, {10, 61});
}

void CErrorHandler::ErrAnyNotAllowed(const SourceLocation& where)
{
    Report(where, {10, 84});
}

void CErrorHandler::ErrTypeNotSupported(std::string_view name)
{
    ReportAt(yylineno, nColumn, {10, 87, name, 86});
}

void CErrorHandler::ErrTwoUnderscores()
{
    ReportAt(yylineno, nColumn, {10, 80});
}

void CErrorHandler::ErrVariableDeclared(const CVariable& variable, const SourceLocation& where)
{
    ErrVariableDeclared(variable.m_Name, where);
}

void CErrorHandler::ErrVariableDeclared(std::string_view name, const SourceLocation& where)
{
    Report(where, {10, 43, name, " ", 44});
}

void CErrorHandler::ErrVariableNotDeclared(std::string_view name, const SourceLocation& where)
{
    Report(where, {10, 43, name, " ", 45});
}

void CErrorHandler::ErrMemberDeclared(std::string_view name, const SourceLocation& where)
{
    Report(where, {10, 53, " ", name, " ", 44});
}

// Kept: the file is that of the new declaration although the numbers behind it are those of the old one,
// and the kind "function " brings a blank of its own.
void CErrorHandler::ErrPouDeclared(const CPou& declaredBefore, const SourceLocation& where)
{
    const std::string file = where.szFile ? where.szFile : "";
    const std::string line = Number(declaredBefore.m_Location.nFirstLine);
    const std::string column = Number(declaredBefore.m_Location.nFirstColumn);
    Report(where, {10, GetKindPiece(declaredBefore), " ", declaredBefore.m_Name, " ", 44, file,
                   " (", line, ",", column, ")"});
}

void CErrorHandler::ErrProgramNotSupported(const SourceLocation& where)
{
    Report(where, {10, 78});
}

void CErrorHandler::ErrProgramParameters(const SourceLocation& where)
{
    Report(where, {10, 65});
}

void CErrorHandler::ErrProgramRequired(std::string_view name)
{
    ReportWithoutPosition({1, Fill(106, {std::string(name)})});
}

void CErrorHandler::ErrReturnsStruct(const SourceLocation& where)
{
    Report(where, {10, 118});
}

void CErrorHandler::ErrDirectAsFormal(const SourceLocation& where)
{
    Report(where, {10, 73});
}

void CErrorHandler::ErrInvalidAddress(const SourceLocation& where)
{
    Report(where, {10, 75});
}

void CErrorHandler::ErrAddressOutOfMemory(const SourceLocation& where)
{
    Report(where, {10, 74});
}

void CErrorHandler::ErrAlignment(const SourceLocation& where)
{
    Report(where, {10, 77});
}

void CErrorHandler::ErrDimension(const SourceLocation& where)
{
    Report(where, {10, 76});
}

void CErrorHandler::ErrStringDimension(const SourceLocation& where)
{
    Report(where, {10, 37});
}

void CErrorHandler::ErrStringSizeUnchecked(const SourceLocation& where)
{
    Report(where, {10, 38});
}

void CErrorHandler::ErrStringAssignment(const SourceLocation& where)
{
    Report(where, {10, 59});
}

void CErrorHandler::WarnStringTooLong(int have, int declared, const SourceLocation& where)
{
    Report(where, {6, 34, "(", Number(have), " ", 36, "), ", 35, " (", Number(declared), " ", 36, ") "});
}

void CErrorHandler::WarnActualInitialized(const SourceLocation& where)
{
    Report(where, {6, 85});
}

void CErrorHandler::WarnUselessAssignment(const SourceLocation& where)
{
    Report(where, {6, 105});
}

// ---- Initial values and array bounds.

void CErrorHandler::ErrAssignToFbInstance(const SourceLocation& where)
{
    Report(where, {10, 88});
}

void CErrorHandler::ErrCallInDeclaration(const SourceLocation& where)
{
    Report(where, {10, 79});
}

void CErrorHandler::ErrCastInVarBlock(const SourceLocation& where)
{
    Report(where, {10, 32});
}

void CErrorHandler::ErrArrayDimensionUnchecked(const SourceLocation& where)
{
    Report(where, {10, 54});
}

void CErrorHandler::ErrArrayIndexType(const SourceLocation& where)
{
    Report(where, {10, 51});
}

void CErrorHandler::WarnTooManyInitializers(std::int64_t have, std::int64_t required, const SourceLocation& where)
{
    Report(where, {6, 57, " ", 30, Number(required), " ", 58, ", ", 29, Number(have)});
}

void CErrorHandler::WarnElementInitialized(std::string_view name, const SourceLocation& where)
{
    Report(where, {6, 95, name, " ", 96});
}

// ---- Expressions.

void CErrorHandler::ErrOperator(int op, const SourceLocation& where)
{
    Report(where, {8, GetOperatorText(op)});
}

void CErrorHandler::ErrOperatorMismatch(int op, const CType* pLeft, const CType* pRight, const SourceLocation& where)
{
    Report(where, {8, GetOperatorText(op), " ", Fill(3, {NameOf(pLeft), NameOf(pRight)})});
}

void CErrorHandler::ErrOperationNotAllowed(int op, const CType* pType, const SourceLocation& where)
{
    Report(where, {16, Fill(12, {GetOperatorText(op), NameOf(pType)})});
}

void CErrorHandler::ErrRealNotAllowed(int op, const SourceLocation& where)
{
    Report(where, {16, 13, GetOperatorText(op), " ", 14});
}

void CErrorHandler::ErrBitTypeExpected(const SourceLocation& where)
{
    Report(where, {10, 117});
}

void CErrorHandler::ErrCannotAssign(const CType* pType, const SourceLocation& where)
{
    Report(where, {10, 19, 18, NameOf(pType)});
}

// Kept: "found" stands twice when there is a found type.
void CErrorHandler::ErrCastArgument(const CType* pFound, const CType* pRequired, const SourceLocation& where)
{
    const std::string found = pFound ? Compose({29, pFound->m_Name, " "}) : std::string();
    Report(where, {2, 29, 31, found, 30, NameOf(pRequired)});
}

void CErrorHandler::ErrDivisionByZero(int line, int column)
{
    ReportAt(line, column, {10, 27});
}

void CErrorHandler::ErrTypeMismatch(const CType* pFirst, const CType* pSecond, const SourceLocation& where)
{
    ErrTypeMismatch(NameOf(pFirst), NameOf(pSecond), where);
}

void CErrorHandler::ErrTypeMismatch(std::string_view first, std::string_view second, const SourceLocation& where)
{
    Report(where, {2, Fill(3, {std::string(first), std::string(second)})});
}

void CErrorHandler::WarnQuotient(const SourceLocation& where)
{
    Report(where, {6, 39});
}

// ---- Paths.

// Kept: no blank between the name and the text, but two blanks and one around it in the message below.
void CErrorHandler::ErrNotArray(const CNode* pNode, const SourceLocation& where)
{
    Report(where, {10, RootNameOf(pNode), 52});
}

void CErrorHandler::ErrNotStruct(const CNode* pNode, const SourceLocation& where)
{
    Report(where, {10, " ", RootNameOf(pNode), " ", 42});
}

void CErrorHandler::ErrNotMember(std::string_view member, const CType* pStruct, const SourceLocation& where)
{
    Report(where, {10, member, " ", 41, NameOf(pStruct)});
}

void CErrorHandler::ErrWrongDimension(int required, int found, const SourceLocation& where)
{
    Report(where, {10, 55, " ", 30, Number(required), ", ", 29, Number(found)});
}

void CErrorHandler::ErrIndexExceeds(const SourceLocation& where)
{
    Report(where, {10, 50});
}

void CErrorHandler::ErrInOutElement(const SourceLocation& where)
{
    Report(where, {10, 101});
}

void CErrorHandler::ErrPrivateElement(const SourceLocation& where)
{
    Report(where, {10, 124});
}

void CErrorHandler::ErrNeedsInteger(const SourceLocation& where)
{
    Report(where, {10, 70});
}

// ---- Statements.

void CErrorHandler::ErrAssignToConstant(const SourceLocation& where)
{
    Report(where, {10, 33});
}

void CErrorHandler::ErrArrayDimension(std::int64_t found, std::int64_t required, const SourceLocation& where)
{
    Report(where, {10, 103, 29, Number(found), " ", 116, " ", 30, Number(required), " ", 116});
}

void CErrorHandler::WarnArrayDimension(std::int64_t found, std::int64_t required, const SourceLocation& where)
{
    Report(where, {6, 103, 29, Number(found), " ", 116, " ", 30, Number(required), " ", 116});
}

void CErrorHandler::ErrInOutLValue(const SourceLocation& where)
{
    Report(where, {10, 102});
}

void CErrorHandler::ErrNeedsBoolean(const SourceLocation& where)
{
    Report(where, {10, 40});
}

void CErrorHandler::ErrCaseType(const SourceLocation& where)
{
    Report(where, {10, 72});
}

void CErrorHandler::ErrCaseRangeUsed(std::int32_t from, std::int32_t to, const SourceLocation& where)
{
    Report(where, {10, 82, "(", Number(from), ",", Number(to), ")", 83});
}

void CErrorHandler::ErrCaseValueUsed(std::int32_t value, const SourceLocation& where)
{
    Report(where, {10, 81, Number(value), 83});
}

void CErrorHandler::ErrExitOutOfLoop(const SourceLocation& where)
{
    Report(where, {10, 69});
}

void CErrorHandler::WarnForNeverRuns(const SourceLocation& where)
{
    Report(where, {6, 71});
}

void CErrorHandler::WarnUnreachable(const SourceLocation& where)
{
    Report(where, {6, 28});
}

// ---- Calls.

void CErrorHandler::ErrFunctionNotDeclared(std::string_view name, const SourceLocation& where)
{
    Report(where, {10, 46, name, " ", 45});
}

void CErrorHandler::ErrOverloadType(const SourceLocation& where)
{
    Report(where, {10, 60});
}

void CErrorHandler::ErrNoReturnValue(const SourceLocation& where)
{
    Report(where, {10, 20});
}

// Kept: "0 parameter".
void CErrorHandler::ErrParameterCount(int count, const SourceLocation& where)
{
    Report(where, {10, 21, " ", Number(count), " ", count < 2 ? 23 : 22});
}

static const CType* GetFormalType(const CFunction& function, int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= function.m_Parameters.size()) return nullptr;
    return function.m_Parameters[static_cast<std::size_t>(index)]->m_Type;
}

// The one message of two lines that names two places: the second is the function's.
void CErrorHandler::ErrParameterMismatch(const CNode& actual, const CFunction& function, int index,
                                         const SourceLocation& where)
{
    const std::string found = actual.pType ? Compose({29, actual.pType->m_Name, " "}) : std::string();
    const SourceLocation& place = function.m_Location;
    const std::string definedAt = Fill(25, {Number(place.nFirstLine), Number(place.nFirstColumn)});
    const std::string file = place.szFile ? place.szFile : "";
    Report(where, {10, 23, " ", Number(index + 1), " ", 24, found, 30, NameOf(GetFormalType(function, index)), " \n",
                   26, function.m_Name, " ", definedAt, file});
}

void CErrorHandler::ErrOutputConstant(const SourceLocation& where)
{
    Report(where, {10, 90});
}

void CErrorHandler::ErrOutputImmediate(const SourceLocation& where)
{
    Report(where, {10, 68});
}

void CErrorHandler::ErrNotFb(std::string_view name, const SourceLocation& where)
{
    Report(where, {10, 43, name, " ", 89});
}

void CErrorHandler::ErrFbCallWithoutInOut(const SourceLocation& where)
{
    Report(where, {10, 104});
}

void CErrorHandler::ErrMemberAssigned(std::string_view name, const SourceLocation& where)
{
    Report(where, {10, 53, " ", name, " ", 94});
}

void CErrorHandler::ErrRequiredArrow(const SourceLocation& where)
{
    Report(where, {10, 30, "=> ", 91});
}

void CErrorHandler::ErrRequiredAssign(const SourceLocation& where)
{
    Report(where, {10, 30, ":= ", 91});
}

void CErrorHandler::ErrLocalInFbCall(std::string_view name, const SourceLocation& where)
{
    Report(where, {10, 99, name, " ", 100});
}

// ---- Scanner and parser.

void CErrorHandler::ErrSyntax(std::string_view text, int line, int column)
{
    ReportAt(line, column, {10, text});
}

void CErrorHandler::ErrStringNotClosed(int line, int column, int firstLine, int firstColumn)
{
    ReportAt(line, column, {10, 47, Fill(25, {Number(firstLine), Number(firstColumn)})});
}

void CErrorHandler::WarnEscapeSequence(int line, int column)
{
    ReportAt(line, column, {6, 49});
}

// ---- The whole run.

void CErrorHandler::ErrGeneric(std::string_view text)
{
    ReportWithoutPosition({1, text});
}

// Kept: the blank stands in front of the comma.
void CErrorHandler::ErrGlobalOutOfMemory(std::int64_t bytes)
{
    ReportWithoutPosition({1, 113, 115, ",", Number(bytes), " ", 116});
}

void CErrorHandler::ErrRetainOutOfMemory(std::int64_t bytes)
{
    ReportWithoutPosition({1, 114, 115, ",", Number(bytes), " ", 116});
}

void CErrorHandler::ErrReturnStackSize(int maximum)
{
    ReportWithoutPosition({1, Fill(120, {Number(maximum)})});
}

void CErrorHandler::ErrParameterStackSize(int maximum)
{
    ReportWithoutPosition({1, Fill(123, {Number(maximum)})});
}

void CErrorHandler::ErrReturnStackOverflow(std::int64_t bytes, std::string_view pou)
{
    ReportWithoutPosition({1, Fill(119, {Number(bytes), std::string(pou)})});
}

void CErrorHandler::WarnNestedProgramStack(std::int64_t bytes)
{
    ReportWithoutPosition({122, Fill(121, {Number(bytes)})});
}
