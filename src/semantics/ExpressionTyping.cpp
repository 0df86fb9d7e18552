// The type rules of all expression forms. There is no rank of types and no implicit conversion: two typed
// operands must have the same type, and only a literal adapts, by taking the type of its neighbour.
// Types are compared behind all aliases, but a result keeps the type as its operand has it: an alias name
// goes on into messages and instructions.

#include "semantics/Norvane.h"

#include "model/Type.h"
#include "semantics/NumberRange.h"

#include <algorithm>

static bool AreBothTyped(const CNode* pLeft, const CNode* pRight)
{
    return pLeft->pType && pRight->pType;
}

static bool AreTypesDifferent(const CNode* pLeft, const CNode* pRight)
{
    return AreBothTyped(pLeft, pRight) && !IsSameType(pLeft->pType, pRight->pType);
}

static bool IsBoolOrBitString(const CType* pType)
{
    return pType->IsBool() || pType->IsBitString();
}

bool CNorvane::IsPoison(const CNode* pNode) const
{
    if (!pNode) return false;
    if (pNode->nKind == ERROR_) return true;
    return pNode->pType && pNode->pType->IsError();
}

void CNorvane::Poison(CNode* pNode)
{
    pNode->pType = m_DataTypes.m_ErrorType;
}

// ---- The four ways in which an operator refuses its operands.

static void RefuseMismatch(CNorvane& norvane, CNode* pNode)
{
    norvane.m_Errors.ErrOperator(pNode->nKind, pNode->location);
    norvane.Poison(pNode);
}

static void RefuseBetween(CNorvane& norvane, CNode* pNode)
{
    norvane.m_Errors.ErrOperatorMismatch(pNode->nKind, pNode->Child(0)->pType, pNode->Child(1)->pType, pNode->location);
    norvane.Poison(pNode);
}

static void RefuseOperation(CNorvane& norvane, CNode* pNode, const CType* pType)
{
    norvane.m_Errors.ErrOperationNotAllowed(pNode->nKind, pType, pNode->location);
    norvane.Poison(pNode);
}

static void RefuseNoBits(CNorvane& norvane, CNode* pNode)
{
    norvane.m_Errors.ErrBitTypeExpected(pNode->location);
    norvane.Poison(pNode);
}

// ---- One operand.

// The first typed element decides; every element of another type draws its own message.
static CType* FindCommonType(CNorvane& norvane, CNode* pNode, const CNode* pList)
{
    CType* pCommon = nullptr;
    bool failed = false;
    for (const CNode* pElement : pList->m_Children) {
        if (!pElement->pType) continue;
        if (!pCommon) pCommon = pElement->pType;
        if (IsSameType(pCommon, pElement->pType)) continue;
        RefuseMismatch(norvane, pNode);
        failed = true;
    }
    return failed ? nullptr : pCommon;
}

// MIN and MAX. Kept (sources): an untyped literal takes the common type whatever the literal's kind.
static void TypeMinMax(CNorvane& norvane, CNode* pNode)
{
    CNode* pList = pNode->Child(0);
    const auto isPoison = [&norvane](const CNode* pElement) { return norvane.IsPoison(pElement); };
    if (std::any_of(pList->m_Children.begin(), pList->m_Children.end(), isPoison)) {
        norvane.Poison(pList);
        norvane.Poison(pNode);
        return;
    }
    CType* pCommon = FindCommonType(norvane, pNode, pList);
    if (norvane.IsPoison(pNode)) norvane.Poison(pList);
    if (!pCommon) return;

    for (CNode* pElement : pList->m_Children) {
        if (!pElement->pType) norvane.TypeLiteral(pElement, pCommon);
    }
    pList->pType = pCommon;
    pNode->pType = pCommon;
}

// A list is poisoned by its first element only: the others are appended when it exists already.
static void TypeOneChild(CNorvane& norvane, CNode* pNode)
{
    const CNode* pOperand = pNode->Child(0);
    if (norvane.IsPoison(pOperand)) {
        norvane.Poison(pNode);
        return;
    }
    CType* pType = pOperand->pType;
    if (!pType) return;   // an untyped operand leaves it to the neighbours

    bool allowed = false;
    switch (pNode->nKind) {
    case UNARY_MINUS:
    case ABS:
    case SQRT: allowed = pType->IsNumeric(); break;
    case NOT: allowed = IsBoolOrBitString(pType) || pType->IsInteger(); break;
    default: return;
    }
    if (!allowed) {
        RefuseOperation(norvane, pNode, pType);
        return;
    }
    pNode->pType = pType;
}

// ---- Two operands.

static void TypeFreeLiteral(CNorvane& norvane, CNode* pOperand)
{
    if (pOperand->pType) return;
    if (pOperand->nKind == IMM_INTEGER) norvane.TypeLiteral(pOperand, norvane.m_DataTypes.m_IntType);
    if (pOperand->nKind == IMM_REAL) norvane.TypeLiteral(pOperand, norvane.m_DataTypes.m_RealType);
}

// An exponent or a count without type is converted as the BOOL or whatever its literals make of it. A declaration
// computes nothing of it.
static void NoteUntypedOperand(CNorvane& norvane, const CNode* pOperand)
{
    if (pOperand->pType || pOperand->IsLiteral() || pOperand->ComparesTruths() || norvane.m_VarBlockFlags != 0) return;
    norvane.m_Notes.Add(Note::ValueWithoutType, pOperand->location);
}

// The base decides. Kept (sources): a typed exponent isn't looked at, whatever it is.
static void TypePower(CNorvane& norvane, CNode* pNode)
{
    CNode* pLeft = pNode->Child(0);
    TypeFreeLiteral(norvane, pLeft);
    TypeFreeLiteral(norvane, pNode->Child(1));
    CType* pType = pLeft->pType;
    if (!pType) return;
    if (!pType->IsNumeric()) {
        RefuseOperation(norvane, pNode, pType);
        return;
    }
    NoteUntypedOperand(norvane, pNode->Child(1));
    pNode->pType = pType;
}

static bool IsUnsignedLiteral(const CNode* pNode)
{
    return pNode->nKind == IMM_INTEGER && pNode->nValue >= 0;
}

// Whether a literal on the right of an operand of that type takes the type.
static bool AcceptsLiteralRight(const CType* pType, const CNode* pLiteral)
{
    if (!pType) return false;
    if (pType->IsSigned()) return pLiteral->nKind == IMM_INTEGER;
    if (pType->IsReal()) return pLiteral->IsNumericLiteral();
    return pType->IsUnsigned() && IsUnsignedLiteral(pLiteral);
}

// The same on the left. Wanted (sources): beside a REAL it is the right operand that is asked whether it is a literal,
// so that "x * 2.5" is accepted and "2.5 * x" is not.
static bool AcceptsLiteralLeft(const CType* pType, const CNode* pLiteral, const CNode* pRight)
{
    if (!pType) return false;
    if (pType->IsSigned()) return pLiteral->nKind == IMM_INTEGER;
    if (pType->IsReal()) return pRight->IsNumericLiteral();
    return pType->IsUnsigned() && IsUnsignedLiteral(pLiteral);
}

static void TypeArithmetic(CNorvane& norvane, CNode* pNode)
{
    CNode* pLeft = pNode->Child(0);
    CNode* pRight = pNode->Child(1);
    if (AreTypesDifferent(pLeft, pRight)) {
        RefuseMismatch(norvane, pNode);
        return;
    }
    if (AreBothTyped(pLeft, pRight)) {
        if (!pLeft->pType->IsNumeric()) {
            RefuseBetween(norvane, pNode);
            return;
        }
        pNode->pType = pLeft->pType;
        return;
    }
    if (pLeft->IsTimeLiteral() || pRight->IsTimeLiteral()) {   // there is no arithmetic on times, REAL constant or not
        RefuseMismatch(norvane, pNode);
        return;
    }
    if (AcceptsLiteralRight(pLeft->pType, pRight)) {
        pNode->pType = pLeft->pType;
        norvane.TypeLiteral(pRight, pLeft->pType);
        return;
    }
    if (AcceptsLiteralLeft(pRight->pType, pLeft, pRight)) {
        pNode->pType = pRight->pType;
        norvane.TypeLiteral(pLeft, pRight->pType);
        // Beside a REAL constant anything without a type passes. A declaration computes nothing of it.
        if (!pLeft->IsNumericLiteral() && norvane.m_VarBlockFlags == 0)
            norvane.m_Notes.Add(Note::ValueWithoutType, pLeft->location);
        return;
    }
    RefuseMismatch(norvane, pNode);
}

// Wanted (sources): two variables must be signed, but beside a literal any type passes that the literal can take.
// A literal that can't has had its message, and nothing more is said of the node.
static void TypeModulo(CNorvane& norvane, CNode* pNode)
{
    CNode* pLeft = pNode->Child(0);
    CNode* pRight = pNode->Child(1);
    if (AreTypesDifferent(pLeft, pRight)) {
        RefuseMismatch(norvane, pNode);
        return;
    }
    if (AreBothTyped(pLeft, pRight) && pLeft->pType->IsSigned()) {
        pNode->pType = pLeft->pType;
        return;
    }
    if (pLeft->pType && pRight->IsLiteral()) {
        if (norvane.CheckImmediate(pLeft->pType, pRight, /*bReport=*/true)) pNode->pType = pLeft->pType;
        return;
    }
    if (pRight->pType && pLeft->IsLiteral()) {
        if (norvane.CheckImmediate(pRight->pType, pLeft, /*bReport=*/true)) pNode->pType = pRight->pType;
        return;
    }
    if (IsSameType(pLeft->pType, pRight->pType)) {
        RefuseOperation(norvane, pNode, pLeft->pType);
        return;
    }
    RefuseBetween(norvane, pNode);
}

static bool CheckComparedLiteral(CNorvane& norvane, CType* pType, CNode* pLiteral)
{
    const bool isTyped = pLiteral->pType != nullptr;
    if (!norvane.CheckImmediate(pType, pLiteral, /*bReport=*/true)) return false;
    if (!isTyped) NoteComparedRange(norvane.m_Notes, pType, pLiteral);
    return true;
}

// Any type at all compares with itself. A literal that can't take its neighbour's type has had its message,
// and the comparison stays untyped.
static void TypeComparison(CNorvane& norvane, CNode* pNode)
{
    CNode* pLeft = pNode->Child(0);
    CNode* pRight = pNode->Child(1);
    CType* pBool = norvane.m_DataTypes.m_BoolType;
    if (AreTypesDifferent(pLeft, pRight)) {
        RefuseMismatch(norvane, pNode);
        return;
    }
    if (AreBothTyped(pLeft, pRight)) {
        pNode->pType = pBool;
        return;
    }
    if (pLeft->pType && pRight->IsLiteral()) {
        if (CheckComparedLiteral(norvane, pLeft->pType, pRight)) pNode->pType = pBool;
        return;
    }
    if (pRight->pType && pLeft->IsLiteral()) {
        if (CheckComparedLiteral(norvane, pRight->pType, pLeft)) pNode->pType = pBool;
        return;
    }
    if (pLeft->pType) RefuseOperation(norvane, pNode, pLeft->pType);
}

// Kept (messages): beside a type without bits the literal is checked all the same, and where it suits, the node takes
// that type after the message.
static void TypeBitsWithLiteral(CNorvane& norvane, CNode* pNode, CType* pType, CNode* pLiteral)
{
    if (!IsBoolOrBitString(pType)) RefuseNoBits(norvane, pNode);
    if (norvane.CheckImmediate(pType, pLiteral, /*bReport=*/true)) pNode->pType = pType;
}

// AND, OR, XOR.
static void TypeBits(CNorvane& norvane, CNode* pNode)
{
    CNode* pLeft = pNode->Child(0);
    CNode* pRight = pNode->Child(1);
    if (AreTypesDifferent(pLeft, pRight)) {
        RefuseMismatch(norvane, pNode);
        return;
    }
    if (AreBothTyped(pLeft, pRight) && pLeft->pType->IsInteger()) {
        RefuseNoBits(norvane, pNode);
        return;
    }
    if (AreBothTyped(pLeft, pRight) && IsBoolOrBitString(pLeft->pType)) {
        pNode->pType = pLeft->pType;
        return;
    }
    if (pLeft->pType && pRight->IsLiteral()) {
        TypeBitsWithLiteral(norvane, pNode, pLeft->pType, pRight);
        return;
    }
    if (pRight->pType && pLeft->IsLiteral()) {
        TypeBitsWithLiteral(norvane, pNode, pRight->pType, pLeft);
        return;
    }
    if (pLeft->pType) {
        RefuseOperation(norvane, pNode, pLeft->pType);
        return;
    }
    RefuseMismatch(norvane, pNode);
}

// A literal count is always an INT. Shifts clamp it, rotations take its remainder.
static void TypeShiftCount(CNorvane& norvane, int kind, CNode* pCount)
{
    constexpr std::int64_t lowest = -32768;
    constexpr std::int64_t highest = 32767;
    constexpr std::int64_t period = 32768;
    if (pCount->nKind != IMM_INTEGER) return;
    const bool isShift = kind == SHL || kind == SHR;
    pCount->nValue = isShift ? std::clamp(pCount->nValue, lowest, highest) : pCount->nValue % period;
    pCount->pType = norvane.m_DataTypes.m_IntType;
}

// SHL, SHR, ROL, ROR. Wanted (sources): a literal value becomes an INT, which has no bits, so it always fails.
static void TypeShift(CNorvane& norvane, CNode* pNode)
{
    CNode* pValue = pNode->Child(0);
    TypeShiftCount(norvane, pNode->nKind, pNode->Child(1));
    if (pValue->nKind == IMM_INTEGER) pValue->pType = norvane.m_DataTypes.m_IntType;
    if (!pValue->pType || !pValue->pType->IsBitString()) {
        RefuseOperation(norvane, pNode, pValue->pType);
        return;
    }
    NoteUntypedOperand(norvane, pNode->Child(1));
    pNode->pType = pValue->pType;
}

// Every kind is poisoned by its operands, a path or a parameter as well as an operator.
static void TypeTwoChildren(CNorvane& norvane, CNode* pNode)
{
    if (norvane.IsPoison(pNode->Child(0)) || norvane.IsPoison(pNode->Child(1))) {
        norvane.Poison(pNode);
        return;
    }
    switch (pNode->nKind) {
    case POWER: TypePower(norvane, pNode); break;
    case '+':
    case '-':
    case '*':
    case '/': TypeArithmetic(norvane, pNode); break;
    case MOD: TypeModulo(norvane, pNode); break;
#define OPERATOR(kind, mark, mnemonic)
#define COMPARISON(kind, mark, mnemonic) case kind:
#include "frontend/Operators.def"
#undef OPERATOR
        TypeComparison(norvane, pNode);
        break;
#define OPERATOR(kind, mark, mnemonic)
#define BIT_OPERATOR(kind, mark, mnemonic) case kind:
#include "frontend/Operators.def"
#undef OPERATOR
        TypeBits(norvane, pNode);
        break;
    case SHL:
    case SHR:
    case ROL:
    case ROR: TypeShift(norvane, pNode); break;
    default: break;
    }
}

// ---- Three operands.

static bool IsUniform(const CNode* pNode)
{
    const CType* pFirst = pNode->Child(0)->pType;
    return pFirst && IsSameType(pFirst, pNode->Child(1)->pType) && IsSameType(pFirst, pNode->Child(2)->pType);
}

// The first operand that can lend the others its type. MULDIV looks for an integer, LIMIT takes any type.
static CType* FindAnchor(const CNode* pNode)
{
    for (const CNode* pOperand : pNode->m_Children) {
        if (!pOperand->pType) continue;
        if (pNode->nKind == LIMIT || pOperand->pType->IsInteger()) return pOperand->pType;
    }
    return nullptr;
}

static bool CanTakeAnchor(int kind, const CNode* pOperand)
{
    if (pOperand->pType) return false;
    return pOperand->nKind == IMM_INTEGER || (kind == LIMIT && pOperand->nKind == IMM_REAL);
}

static void TypeByAnchor(CNorvane& norvane, CNode* pNode)
{
    CType* pAnchor = FindAnchor(pNode);
    if (!pAnchor) {
        RefuseMismatch(norvane, pNode);
        return;
    }
    pNode->pType = pAnchor;
    for (CNode* pOperand : pNode->m_Children) {
        if (IsSameType(pAnchor, pOperand->pType)) continue;
        if (CanTakeAnchor(pNode->nKind, pOperand)) {
            norvane.TypeLiteral(pOperand, pAnchor);
            continue;
        }
        norvane.m_Errors.ErrOperator(pNode->nKind, pOperand->location);
        norvane.Poison(pNode);
    }
}

static void TypeThreeChildren(CNorvane& norvane, CNode* pNode)
{
    for (int i = 0; i < 3; ++i) {
        if (!norvane.IsPoison(pNode->Child(i))) continue;
        norvane.Poison(pNode);
        return;
    }
    if (pNode->nKind != MULDIV && pNode->nKind != LIMIT) return;

    CType* pFirst = pNode->Child(0)->pType;
    if (IsUniform(pNode) && (pNode->nKind == MULDIV ? pFirst->IsSigned() : pFirst->IsNumeric())) {
        pNode->pType = pFirst;
        return;
    }
    TypeByAnchor(norvane, pNode);
}

// ----

void CNorvane::TypeExpression(CNode* pNode)
{
    if (pNode->nKind == MIN || pNode->nKind == MAX) {
        TypeMinMax(*this, pNode);
        return;
    }
    switch (pNode->GetChildCount()) {
    case 1: TypeOneChild(*this, pNode); break;
    case 2: TypeTwoChildren(*this, pNode); break;
    case 3: TypeThreeChildren(*this, pNode); break;
    default: break;
    }
}

// By the kind of literal alone: ranges aren't looked at, so 100000 can go into an INT.
static bool IsLiteralOfClass(const CType* pType, const CNode* pNode)
{
    if (pType->IsInteger() || pType->IsBitString()) return pNode->nKind == IMM_INTEGER;
    if (pType->IsReal()) return pNode->IsNumericLiteral();
    if (pType->IsBool()) return pNode->IsBooleanLiteral() || pNode->IsBooleanInteger();
    return false;
}

// A BOOL's initial value is known as such whatever number says it; in a statement the number itself is handed on.
void CNorvane::TypeLiteral(CNode* pLiteral, CType* pType)
{
    pLiteral->pType = pType;
    const bool isKnownBool = m_VarBlockFlags != 0 && pType && pType->IsBool();
    if (!isKnownBool) NoteLiteralRange(m_Notes, pType, pLiteral);
    if (pLiteral->bFractionLost && pType && pType->IsReal()) m_Notes.Add(Note::OtherFold, pLiteral->location);
}

bool CNorvane::CheckImmediate(CType* pType, CNode* pNode, bool bReport)
{
    if (!pType || pType->IsError()) return false;
    if (!IsLiteralOfClass(pType, pNode)) {
        if (bReport && pNode->nKind != ERROR_) m_Errors.ErrCannotAssign(pType, pNode->location);
        return false;
    }
    if (pType->IsBool() && pNode->IsBooleanLiteral()) {
        pNode->pType = pType;
        return true;
    }
    if (!pNode->pType) {
        TypeLiteral(pNode, pType);
        return true;
    }
    if (IsSameType(pNode->pType, pType)) return true;
    m_Errors.ErrCannotAssign(pType, pNode->location);   // a typed constant is wrong here, reported in any case
    return false;
}

// ---- Casts.

static void CheckCastLiteral(CNorvane& norvane, CType* pFrom, CNode* pArgument)
{
    if (!pFrom || !IsLiteralOfClass(pFrom, pArgument)) {
        norvane.m_Errors.ErrCastArgument(pArgument->pType, pFrom, pArgument->location);
        return;
    }
    if (!pArgument->pType) {
        norvane.TypeLiteral(pArgument, pFrom);
        return;
    }
    if (IsSameType(pArgument->pType, pFrom)) return;
    // Wanted (messages): two messages for a constant of another type.
    norvane.m_Errors.ErrCannotAssign(pFrom, pArgument->location);
    norvane.m_Errors.ErrCastArgument(pArgument->pType, pFrom, pArgument->location);
}

// A cast is the one conversion there is, and it is never folded. Its type is known whatever becomes of the argument:
// one that has failed draws nothing more here, and the checks go on with the cast's own type.
CNode* CNorvane::MakeCast(CCastFunction* pFunction, const SourceLocation& location, CNode* pArgument)
{
    CNode* pNode = m_Nodes.MakeNode(CAST_FUNCTION_CALL, location);
    pNode->SetCast(pFunction);
    pNode->pType = pFunction->m_To;
    pNode->AddChild(pArgument);
    if (m_VarBlockFlags & InAnyVarBlock) {
        m_Errors.ErrCastInVarBlock(location);
        Poison(pNode);
        return pNode;
    }
    if (IsPoison(pArgument)) return pNode;

    CType* pFrom = pFunction->m_From;
    const bool fromError = pFrom && pFrom->IsError();
    if (pArgument->IsLiteral()) {
        if (fromError) m_Errors.ErrCastArgument(nullptr, pFrom, pArgument->location);
        else CheckCastLiteral(*this, pFrom, pArgument);
        return pNode;
    }
    if (!fromError && !IsSameType(pArgument->pType, pFrom))
        m_Errors.ErrCastArgument(pArgument->pType, pFrom, pArgument->location);
    return pNode;
}
