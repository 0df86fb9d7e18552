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

namespace
{

// The pieces of the table that messages are composed of; one that is a whole message by itself has its number alone.
// Some bring a blank at their front or end, as the table shows.
enum Piece
{
    // What a message begins with. Those with "At" hold the place, and a message of the run has none.
    Error = 1,
    MismatchAt = 2,
    WarningAt = 6,
    OperatorMismatchAt = 8,
    ErrorAt = 10,
    MismatchCommaAt = 16,
    Warning = 122,

    BetweenTwo = 3,
    NotAllowedOn = 12,
    CannotUse = 13,
    WithReal = 14,
    ValueTo = 18,
    CannotAssign = 19,
    DoesNotTake = 21,
    Parameters = 22,
    Parameter = 23,
    DoesNotMatch = 24,
    AtPlace = 25,
    SeeDefinitionOf = 26,
    Found = 29,
    Required = 30,
    InCastArgument = 31,
    StringTooLong = 34,
    ExceedsDeclared = 35,
    Chars = 36,
    IsNotMemberOf = 41,
    IsNotStruct = 42,
    Variable = 43,
    AlreadyDeclared = 44,
    NotDeclared = 45,
    Function = 46,
    StringNotClosed = 47,
    IsNotArray = 52,
    Member = 53,
    WrongDimension = 55,
    TooManyInitializers = 57,
    Elements = 58,
    ProgramWord = 62,
    FbWord = 63,
    PouWord = 64,
    CaseValue = 81,
    CaseRange = 82,
    AlreadyUsed = 83,
    NotSupportedHere = 86,
    Type = 87,
    IsNotFb = 89,
    InFbAssignment = 91,
    AlreadyAssigned = 94,
    Element = 95,
    AlreadyInitialized = 96,
    LocalVariable = 99,
    InFbInvocation = 100,
    DifferentArray = 103,
    Global = 113,
    Retain = 114,
    OutOfMemory = 115,
    Bytes = 116,
};

}   // namespace

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
    bool BeginsWarning() const { return m_Id == WarningAt || m_Id == Warning; }

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

static Piece GetKindPiece(const CPou& pou)
{
    if (pou.IsFunction()) return Function;
    if (pou.IsProgram()) return ProgramWord;
    if (pou.IsFunctionBlock()) return FbWord;
    return PouWord;
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
    std::unique_ptr<CError> pError = std::make_unique<CError>(Compose({Error, 15}));
    pError->bFatal = true;
    Record(std::move(pError));
    return true;
}

// ---- Declarations and types.

void CErrorHandler::ErrInitAny(const SourceLocation& where)
{
    Report(where, {ErrorAt, 61});
}

void CErrorHandler::ErrAnyNotAllowed(const SourceLocation& where)
{
    Report(where, {ErrorAt, 84});
}

void CErrorHandler::ErrTypeNotSupported(std::string_view name)
{
    ReportAt(yylineno, nColumn, {ErrorAt, Type, name, NotSupportedHere});
}

void CErrorHandler::ErrTwoUnderscores()
{
    ReportAt(yylineno, nColumn, {ErrorAt, 80});
}

void CErrorHandler::ErrVariableDeclared(const CVariable& variable, const SourceLocation& where)
{
    ErrVariableDeclared(variable.m_Name, where);
}

void CErrorHandler::ErrVariableDeclared(std::string_view name, const SourceLocation& where)
{
    Report(where, {ErrorAt, Variable, name, " ", AlreadyDeclared});
}

void CErrorHandler::ErrVariableNotDeclared(std::string_view name, const SourceLocation& where)
{
    Report(where, {ErrorAt, Variable, name, " ", NotDeclared});
}

void CErrorHandler::ErrMemberDeclared(std::string_view name, const SourceLocation& where)
{
    Report(where, {ErrorAt, Member, " ", name, " ", AlreadyDeclared});
}

// Kept (messages): the file is that of the new declaration although the numbers behind it are those of the old one,
// and the kind "function " brings a blank of its own.
void CErrorHandler::ErrPouDeclared(const CPou& declaredBefore, const SourceLocation& where)
{
    const std::string file = where.szFile ? where.szFile : "";
    const std::string line = Number(declaredBefore.m_Location.nFirstLine);
    const std::string column = Number(declaredBefore.m_Location.nFirstColumn);
    Report(where, {ErrorAt, GetKindPiece(declaredBefore), " ", declaredBefore.m_Name, " ", AlreadyDeclared, file,
                   " (", line, ",", column, ")"});
}

void CErrorHandler::ErrProgramNotSupported(const SourceLocation& where)
{
    Report(where, {ErrorAt, 78});
}

void CErrorHandler::ErrProgramParameters(const SourceLocation& where)
{
    Report(where, {ErrorAt, 65});
}

void CErrorHandler::ErrProgramRequired(std::string_view name)
{
    ReportWithoutPosition({Error, Fill(106, {std::string(name)})});
}

void CErrorHandler::ErrReturnsStruct(const SourceLocation& where)
{
    Report(where, {ErrorAt, 118});
}

void CErrorHandler::ErrDirectAsFormal(const SourceLocation& where)
{
    Report(where, {ErrorAt, 73});
}

void CErrorHandler::ErrInvalidAddress(const SourceLocation& where)
{
    Report(where, {ErrorAt, 75});
}

void CErrorHandler::ErrAddressOutOfMemory(const SourceLocation& where)
{
    Report(where, {ErrorAt, 74});
}

void CErrorHandler::ErrAlignment(const SourceLocation& where)
{
    Report(where, {ErrorAt, 77});
}

void CErrorHandler::ErrDimension(const SourceLocation& where)
{
    Report(where, {ErrorAt, 76});
}

void CErrorHandler::ErrStringDimension(const SourceLocation& where)
{
    Report(where, {ErrorAt, 37});
}

void CErrorHandler::ErrStringSizeUnchecked(const SourceLocation& where)
{
    Report(where, {ErrorAt, 38});
}

void CErrorHandler::ErrStringAssignment(const SourceLocation& where)
{
    Report(where, {ErrorAt, 59});
}

void CErrorHandler::WarnStringTooLong(int have, int declared, const SourceLocation& where)
{
    Report(where, {WarningAt, StringTooLong, "(", Number(have), " ", Chars, "), ", ExceedsDeclared, " (",
                   Number(declared), " ", Chars, ") "});
}

void CErrorHandler::WarnActualInitialized(const SourceLocation& where)
{
    Report(where, {WarningAt, 85});
}

void CErrorHandler::WarnUselessAssignment(const SourceLocation& where)
{
    Report(where, {WarningAt, 105});
}

// ---- Initial values and array bounds.

void CErrorHandler::ErrAssignToFbInstance(const SourceLocation& where)
{
    Report(where, {ErrorAt, 88});
}

void CErrorHandler::ErrCallInDeclaration(const SourceLocation& where)
{
    Report(where, {ErrorAt, 79});
}

void CErrorHandler::ErrCastInVarBlock(const SourceLocation& where)
{
    Report(where, {ErrorAt, 32});
}

void CErrorHandler::ErrArrayDimensionUnchecked(const SourceLocation& where)
{
    Report(where, {ErrorAt, 54});
}

void CErrorHandler::ErrArrayIndexType(const SourceLocation& where)
{
    Report(where, {ErrorAt, 51});
}

void CErrorHandler::WarnTooManyInitializers(std::int64_t have, std::int64_t required, const SourceLocation& where)
{
    Report(where, {WarningAt, TooManyInitializers, " ", Required, Number(required), " ", Elements, ", ",
                   Found, Number(have)});
}

void CErrorHandler::WarnElementInitialized(std::string_view name, const SourceLocation& where)
{
    Report(where, {WarningAt, Element, name, " ", AlreadyInitialized});
}

// ---- Expressions.

void CErrorHandler::ErrOperator(int op, const SourceLocation& where)
{
    Report(where, {OperatorMismatchAt, GetOperatorText(op)});
}

void CErrorHandler::ErrOperatorMismatch(int op, const CType* pLeft, const CType* pRight, const SourceLocation& where)
{
    Report(where, {OperatorMismatchAt, GetOperatorText(op), " ", Fill(BetweenTwo, {NameOf(pLeft), NameOf(pRight)})});
}

void CErrorHandler::ErrOperationNotAllowed(int op, const CType* pType, const SourceLocation& where)
{
    Report(where, {MismatchCommaAt, Fill(NotAllowedOn, {GetOperatorText(op), NameOf(pType)})});
}

void CErrorHandler::ErrRealNotAllowed(int op, const SourceLocation& where)
{
    Report(where, {MismatchCommaAt, CannotUse, GetOperatorText(op), " ", WithReal});
}

void CErrorHandler::ErrBitTypeExpected(const SourceLocation& where)
{
    Report(where, {ErrorAt, 117});
}

void CErrorHandler::ErrCannotAssign(const CType* pType, const SourceLocation& where)
{
    Report(where, {ErrorAt, CannotAssign, ValueTo, NameOf(pType)});
}

// Kept (messages): "found" stands twice when there is a found type.
void CErrorHandler::ErrCastArgument(const CType* pFound, const CType* pRequired, const SourceLocation& where)
{
    const std::string found = pFound ? Compose({Found, pFound->m_Name, " "}) : std::string();
    Report(where, {MismatchAt, Found, InCastArgument, found, Required, NameOf(pRequired)});
}

void CErrorHandler::ErrDivisionByZero(int line, int column)
{
    ReportAt(line, column, {ErrorAt, 27});
}

void CErrorHandler::ErrTypeMismatch(const CType* pFirst, const CType* pSecond, const SourceLocation& where)
{
    ErrTypeMismatch(NameOf(pFirst), NameOf(pSecond), where);
}

void CErrorHandler::ErrTypeMismatch(std::string_view first, std::string_view second, const SourceLocation& where)
{
    Report(where, {MismatchAt, Fill(BetweenTwo, {std::string(first), std::string(second)})});
}

void CErrorHandler::WarnQuotient(const SourceLocation& where)
{
    Report(where, {WarningAt, 39});
}

// ---- Paths.

// Kept (messages): no blank between the name and the text, but two blanks and one around it in the message below.
void CErrorHandler::ErrNotArray(const CNode* pNode, const SourceLocation& where)
{
    Report(where, {ErrorAt, RootNameOf(pNode), IsNotArray});
}

void CErrorHandler::ErrNotStruct(const CNode* pNode, const SourceLocation& where)
{
    Report(where, {ErrorAt, " ", RootNameOf(pNode), " ", IsNotStruct});
}

void CErrorHandler::ErrNotMember(std::string_view member, const CType* pStruct, const SourceLocation& where)
{
    Report(where, {ErrorAt, member, " ", IsNotMemberOf, NameOf(pStruct)});
}

void CErrorHandler::ErrWrongDimension(int required, int found, const SourceLocation& where)
{
    Report(where, {ErrorAt, WrongDimension, " ", Required, Number(required), ", ", Found, Number(found)});
}

void CErrorHandler::ErrIndexExceeds(const SourceLocation& where)
{
    Report(where, {ErrorAt, 50});
}

void CErrorHandler::ErrInOutElement(const SourceLocation& where)
{
    Report(where, {ErrorAt, 101});
}

void CErrorHandler::ErrPrivateElement(const SourceLocation& where)
{
    Report(where, {ErrorAt, 124});
}

void CErrorHandler::ErrNeedsInteger(const SourceLocation& where)
{
    Report(where, {ErrorAt, 70});
}

// ---- Statements.

void CErrorHandler::ErrAssignToConstant(const SourceLocation& where)
{
    Report(where, {ErrorAt, 33});
}

void CErrorHandler::ErrArrayDimension(std::int64_t found, std::int64_t required, const SourceLocation& where)
{
    Report(where, {ErrorAt, DifferentArray, Found, Number(found), " ", Bytes, " ", Required,
                   Number(required), " ", Bytes});
}

void CErrorHandler::WarnArrayDimension(std::int64_t found, std::int64_t required, const SourceLocation& where)
{
    Report(where, {WarningAt, DifferentArray, Found, Number(found), " ", Bytes, " ", Required,
                   Number(required), " ", Bytes});
}

void CErrorHandler::ErrInOutLValue(const SourceLocation& where)
{
    Report(where, {ErrorAt, 102});
}

void CErrorHandler::ErrNeedsBoolean(const SourceLocation& where)
{
    Report(where, {ErrorAt, 40});
}

void CErrorHandler::ErrCaseType(const SourceLocation& where)
{
    Report(where, {ErrorAt, 72});
}

void CErrorHandler::ErrCaseRangeUsed(std::int32_t from, std::int32_t to, const SourceLocation& where)
{
    Report(where, {ErrorAt, CaseRange, "(", Number(from), ",", Number(to), ")", AlreadyUsed});
}

void CErrorHandler::ErrCaseValueUsed(std::int32_t value, const SourceLocation& where)
{
    Report(where, {ErrorAt, CaseValue, Number(value), AlreadyUsed});
}

void CErrorHandler::ErrExitOutOfLoop(const SourceLocation& where)
{
    Report(where, {ErrorAt, 69});
}

void CErrorHandler::WarnForNeverRuns(const SourceLocation& where)
{
    Report(where, {WarningAt, 71});
}

void CErrorHandler::WarnUnreachable(const SourceLocation& where)
{
    Report(where, {WarningAt, 28});
}

// ---- Calls.

void CErrorHandler::ErrFunctionNotDeclared(std::string_view name, const SourceLocation& where)
{
    Report(where, {ErrorAt, Function, name, " ", NotDeclared});
}

void CErrorHandler::ErrOverloadType(const SourceLocation& where)
{
    Report(where, {ErrorAt, 60});
}

void CErrorHandler::ErrNoReturnValue(const SourceLocation& where)
{
    Report(where, {ErrorAt, 20});
}

// Kept (messages): "0 parameter".
void CErrorHandler::ErrParameterCount(int count, const SourceLocation& where)
{
    Report(where, {ErrorAt, DoesNotTake, " ", Number(count), " ", count < 2 ? Parameter : Parameters});
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
    const std::string found = actual.pType ? Compose({Found, actual.pType->m_Name, " "}) : std::string();
    const SourceLocation& place = function.m_Location;
    const std::string definedAt = Fill(AtPlace, {Number(place.nFirstLine), Number(place.nFirstColumn)});
    const std::string file = place.szFile ? place.szFile : "";
    Report(where, {ErrorAt, Parameter, " ", Number(index + 1), " ", DoesNotMatch, found, Required,
                   NameOf(GetFormalType(function, index)), " \n",
                   SeeDefinitionOf, function.m_Name, " ", definedAt, file});
}

void CErrorHandler::ErrOutputConstant(const SourceLocation& where)
{
    Report(where, {ErrorAt, 90});
}

void CErrorHandler::ErrOutputImmediate(const SourceLocation& where)
{
    Report(where, {ErrorAt, 68});
}

void CErrorHandler::ErrNotFb(std::string_view name, const SourceLocation& where)
{
    Report(where, {ErrorAt, Variable, name, " ", IsNotFb});
}

void CErrorHandler::ErrFbCallWithoutInOut(const SourceLocation& where)
{
    Report(where, {ErrorAt, 104});
}

void CErrorHandler::ErrMemberAssigned(std::string_view name, const SourceLocation& where)
{
    Report(where, {ErrorAt, Member, " ", name, " ", AlreadyAssigned});
}

void CErrorHandler::ErrRequiredArrow(const SourceLocation& where)
{
    Report(where, {ErrorAt, Required, "=> ", InFbAssignment});
}

void CErrorHandler::ErrRequiredAssign(const SourceLocation& where)
{
    Report(where, {ErrorAt, Required, ":= ", InFbAssignment});
}

void CErrorHandler::ErrLocalInFbCall(std::string_view name, const SourceLocation& where)
{
    Report(where, {ErrorAt, LocalVariable, name, " ", InFbInvocation});
}

// ---- Scanner and parser.

void CErrorHandler::ErrSyntax(std::string_view text, int line, int column)
{
    ReportAt(line, column, {ErrorAt, text});
}

void CErrorHandler::ErrStringNotClosed(int line, int column, int firstLine, int firstColumn)
{
    ReportAt(line, column, {ErrorAt, StringNotClosed, Fill(AtPlace, {Number(firstLine), Number(firstColumn)})});
}

void CErrorHandler::WarnEscapeSequence(int line, int column)
{
    ReportAt(line, column, {WarningAt, 49});
}

// ---- The whole run.

void CErrorHandler::ErrGeneric(std::string_view text)
{
    ReportWithoutPosition({Error, text});
}

// Kept (messages): the blank stands in front of the comma.
void CErrorHandler::ErrGlobalOutOfMemory(std::int64_t bytes)
{
    ReportWithoutPosition({Error, Global, OutOfMemory, ",", Number(bytes), " ", Bytes});
}

void CErrorHandler::ErrRetainOutOfMemory(std::int64_t bytes)
{
    ReportWithoutPosition({Error, Retain, OutOfMemory, ",", Number(bytes), " ", Bytes});
}

void CErrorHandler::ErrReturnStackSize(int maximum)
{
    ReportWithoutPosition({Error, Fill(120, {Number(maximum)})});
}

void CErrorHandler::ErrParameterStackSize(int maximum)
{
    ReportWithoutPosition({Error, Fill(123, {Number(maximum)})});
}

void CErrorHandler::ErrReturnStackOverflow(std::int64_t bytes, std::string_view pou)
{
    ReportWithoutPosition({Error, Fill(119, {Number(bytes), std::string(pou)})});
}

void CErrorHandler::WarnNestedProgramStack(std::int64_t bytes)
{
    ReportWithoutPosition({Warning, Fill(121, {Number(bytes)})});
}
