// Operators whose operands are all literal become literals themselves, in statements and declarations alike
// and before typing, which then meets the result like any literal of the source: without a type. Integers
// are 64 bits wide and wrap silently, whatever they will be assigned to.

#include "semantics/Norvane.h"

#include "semantics/Comparison.h"
#include "semantics/NumberRange.h"
#include "semantics/Wrapping.h"

#include <algorithm>
#include <cmath>
#include <optional>

// The node becomes a literal in place of its subtree. Its location follows the operands' starts.
void CNorvane::CollapseNode(CNode* pNode)
{
    const int count = pNode->GetChildCount();
    if (count == 2 || count == 3) {
        const SourceLocation first = pNode->Child(0)->location;
        const SourceLocation last = pNode->Child(count - 1)->location;
        pNode->location.nFirstLine = first.nFirstLine;
        pNode->location.nFirstColumn = first.nFirstColumn;
        pNode->location.nLastLine = last.nFirstLine;   // Wanted (messages): where the last operand starts
        pNode->location.nLastColumn = last.nFirstColumn;
    }
    pNode->m_Children.clear();
}

static void BecomeInteger(CNorvane& norvane, CNode* pNode, std::int64_t value)
{
    pNode->nKind = IMM_INTEGER;
    pNode->nValue = value;
    norvane.CollapseNode(pNode);
}

static void BecomeReal(CNorvane& norvane, CNode* pNode, double value)
{
    pNode->nKind = IMM_REAL;
    pNode->SetReal(value);
    norvane.CollapseNode(pNode);
}

// What two real numbers have come to. The note stands at the operator, so it comes before the node takes its operands' place.
static void BecomeRealResult(CNorvane& norvane, CNode* pNode, double a, double b, double value)
{
    NoteRealOverflow(norvane.m_Notes, a, b, value, pNode->location);
    BecomeReal(norvane, pNode, value);
}

static void BecomeBoolean(CNorvane& norvane, CNode* pNode, bool value)
{
    pNode->nKind = value ? TRUE : FALSE;
    norvane.CollapseNode(pNode);
}

// ---- What is refused turns into an error node that keeps its children.

static void RefuseMismatch(CNorvane& norvane, CNode* pNode)
{
    norvane.m_Errors.ErrOperator(pNode->nKind, pNode->location);
    pNode->nKind = ERROR_;
}

static void RefuseReal(CNorvane& norvane, CNode* pNode)
{
    norvane.m_Errors.ErrRealNotAllowed(pNode->nKind, pNode->location);
    pNode->nKind = ERROR_;
}

static void RefuseZeroDivisor(CNorvane& norvane, CNode* pNode)
{
    norvane.m_Errors.ErrDivisionByZero(pNode->location.nFirstLine, pNode->location.nFirstColumn);
    pNode->nKind = ERROR_;
}

// ---- Two numeric literals.

// The warning stands at the operator, so it comes before the node takes its operands' place.
static void DivideIntegers(CNorvane& norvane, CNode* pNode, std::int64_t a, std::int64_t b)
{
    if (b == 0) {
        RefuseZeroDivisor(norvane, pNode);
        return;
    }
    if (RemainderWrapping(a, b) != 0) norvane.m_Errors.WarnQuotient(pNode->location);
    BecomeInteger(norvane, pNode, DivideWrapping(a, b));
}

// A remainder by zero has no value either; the processor would trap on it.
static void TakeRemainder(CNorvane& norvane, CNode* pNode, std::int64_t a, std::int64_t b)
{
    if (b == 0) {
        RefuseZeroDivisor(norvane, pNode);
        return;
    }
    BecomeInteger(norvane, pNode, RemainderWrapping(a, b));
}

// A constant knows its type and a number folded beside it, as in "c = NOT c", doesn't: both count with 64 bits.
static void NoteComparedLiterals(CNotes& notes, const CNode* pLeft, const CNode* pRight)
{
    if (pLeft->pType && !pRight->pType) NoteComparedRange(notes, pLeft->pType, pRight);
    if (pRight->pType && !pLeft->pType) NoteComparedRange(notes, pRight->pType, pLeft);
}

static void FoldIntegers(CNorvane& norvane, CNode* pNode, std::int64_t a, std::int64_t b)
{
    if (Wraps(pNode->nKind, a, b)) norvane.m_Notes.Add(Note::NumberBeyondWidth, pNode->location);
    if (const std::optional<bool> truth = CompareNumbers(pNode->nKind, a, b)) {
        NoteComparedLiterals(norvane.m_Notes, pNode->Child(0), pNode->Child(1));
        BecomeBoolean(norvane, pNode, *truth);
        return;
    }
    switch (pNode->nKind) {
    case '+': BecomeInteger(norvane, pNode, WrapAdd(a, b)); break;
    case '-': BecomeInteger(norvane, pNode, WrapSub(a, b)); break;
    case '*': BecomeInteger(norvane, pNode, WrapMul(a, b)); break;
    case '/': DivideIntegers(norvane, pNode, a, b); break;
    case MOD: TakeRemainder(norvane, pNode, a, b); break;
    case AND: BecomeInteger(norvane, pNode, a & b); break;
    case OR: BecomeInteger(norvane, pNode, a | b); break;
    case XOR: BecomeInteger(norvane, pNode, a ^ b); break;
    }
}

static void DivideReals(CNorvane& norvane, CNode* pNode, double a, double b)
{
    if (b == 0.0) {
        RefuseZeroDivisor(norvane, pNode);
        return;
    }
    BecomeRealResult(norvane, pNode, a, b, a / b);
}

static void FoldReals(CNorvane& norvane, CNode* pNode, double a, double b)
{
    if (const std::optional<bool> truth = CompareNumbers(pNode->nKind, a, b)) {
        BecomeBoolean(norvane, pNode, *truth);
        return;
    }
    switch (pNode->nKind) {
    case '+': BecomeRealResult(norvane, pNode, a, b, a + b); break;
    case '-': BecomeRealResult(norvane, pNode, a, b, a - b); break;
    case '*': BecomeRealResult(norvane, pNode, a, b, a * b); break;
    case '/': DivideReals(norvane, pNode, a, b); break;
    default: RefuseReal(norvane, pNode); break;   // MOD, AND, OR, XOR
    }
}

static double ToDouble(const CNode* pLiteral)
{
    return pLiteral->nKind == IMM_REAL ? pLiteral->GetReal() : static_cast<double>(pLiteral->nValue);
}

// An integer literal for a real number. Whether its fraction is missed shows when the literal meets its type.
static void BecomeTruncated(CNorvane& norvane, CNode* pNode, double value)
{
    if (!std::isnan(value) && !FitsInt64(value)) norvane.m_Notes.Add(Note::NumberBeyondWidth, pNode->location);
    pNode->bFractionLost = value != std::trunc(value);
    BecomeInteger(norvane, pNode, TruncateToInt64(value));
}

// The power is of the base's kind, so that 2 ** 0.5 is 1: nobody writes a real exponent for that.
static void FoldPower(CNorvane& norvane, CNode* pNode)
{
    const CNode* pBase = pNode->Child(0);
    const CNode* pExponent = pNode->Child(1);
    const double power = std::pow(ToDouble(pBase), ToDouble(pExponent));
    if (pBase->nKind == IMM_REAL) {
        BecomeRealResult(norvane, pNode, ToDouble(pBase), ToDouble(pExponent), power);
        return;
    }
    const bool isRealExponent = pExponent->nKind == IMM_REAL;
    const SourceLocation where = pNode->location;
    BecomeTruncated(norvane, pNode, power);
    if (!isRealExponent || !pNode->bFractionLost) return;
    norvane.m_Notes.Add(Note::OtherFold, where);
    pNode->bFractionLost = false;   // the note is drawn, whatever its type will be
}

// Kept (sources): but for POWER, an integer and a real literal don't go together, and a comparison of such two stays.
static void FoldTwoNumbers(CNorvane& norvane, CNode* pNode)
{
    const CNode* pLeft = pNode->Child(0);
    const CNode* pRight = pNode->Child(1);
    if (pNode->nKind == POWER) {
        FoldPower(norvane, pNode);
        return;
    }
    if (pLeft->nKind != pRight->nKind) {
        if (!IsComparison(pNode->nKind)) RefuseMismatch(norvane, pNode);
        return;
    }
    if (pLeft->nKind == IMM_INTEGER) FoldIntegers(norvane, pNode, pLeft->nValue, pRight->nValue);
    else FoldReals(norvane, pNode, pLeft->GetReal(), pRight->GetReal());
}

// ---- One literal.

static void FoldInteger(CNorvane& norvane, CNode* pNode, std::int64_t value)
{
    const bool isNegated = pNode->nKind == UNARY_MINUS || (pNode->nKind == ABS && value < 0);
    if (isNegated && Wraps('-', 0, value)) norvane.m_Notes.Add(Note::NumberBeyondWidth, pNode->location);
    switch (pNode->nKind) {
    case UNARY_MINUS: BecomeInteger(norvane, pNode, WrapNeg(value)); break;
    case ABS: BecomeInteger(norvane, pNode, WrapAbs(value)); break;
    case SQRT: BecomeTruncated(norvane, pNode, std::sqrt(static_cast<double>(value))); break;
    case NOT: BecomeInteger(norvane, pNode, ~value); break;
    }
}

static void FoldReal(CNorvane& norvane, CNode* pNode, double value)
{
    switch (pNode->nKind) {
    case UNARY_MINUS: BecomeReal(norvane, pNode, -value); break;
    case ABS: BecomeReal(norvane, pNode, std::fabs(value)); break;
    case SQRT: BecomeReal(norvane, pNode, std::sqrt(value)); break;
    case NOT: RefuseReal(norvane, pNode); break;
    }
}

// NOT of a boolean literal is no valid fold and has no other meaning; a substituted constant is such a
// literal too.
static void RefuseNotOfBoolean(CNorvane& norvane, CNode* pNode)
{
    norvane.m_Errors.ErrOperationNotAllowed(NOT, norvane.m_DataTypes.m_BoolType, pNode->location);
    pNode->nKind = ERROR_;
}

static void FoldOneLiteral(CNorvane& norvane, CNode* pNode)
{
    const CNode* pOperand = pNode->Child(0);
    switch (pOperand->nKind) {
    case IMM_INTEGER: FoldInteger(norvane, pNode, pOperand->nValue); break;
    case IMM_REAL: FoldReal(norvane, pNode, pOperand->GetReal()); break;
    case TRUE:
    case FALSE:
        if (pNode->nKind == NOT) RefuseNotOfBoolean(norvane, pNode);
        break;
    default: break;
    }
}

// ---- AND, OR and XOR with a boolean literal.

static void MakeBooleanBeside(const CNode* pBoolean, CNode* pInteger)
{
    if (!pBoolean->IsBooleanLiteral() || pInteger->nKind != IMM_INTEGER) return;
    if (pInteger->nValue == 0) pInteger->nKind = FALSE;
    else if (pInteger->nValue == 1) pInteger->nKind = TRUE;
}

static bool IsLiteralTruth(const CNode* pNode, bool truth)
{
    if (pNode->nKind == IMM_INTEGER) return pNode->nValue == (truth ? 1 : 0);
    return pNode->nKind == (truth ? TRUE : FALSE);
}

static bool Combine(int op, bool a, bool b)
{
    if (op == AND) return a && b;
    return op == OR ? a || b : a != b;
}

static void FoldBooleans(CNorvane& norvane, CNode* pNode)
{
    CNode* pLeft = pNode->Child(0);
    CNode* pRight = pNode->Child(1);
    MakeBooleanBeside(pLeft, pRight);
    MakeBooleanBeside(pRight, pLeft);
    if (pLeft->IsBooleanLiteral() && pRight->IsBooleanLiteral()) {
        BecomeBoolean(norvane, pNode, Combine(pNode->nKind, pLeft->nKind == TRUE, pRight->nKind == TRUE));
        return;
    }
    // A left operand that settles the result drops the right one, calls included. Wanted (code): only the left one
    // is looked at, and nothing of the right one's type.
    const bool settles =
        (pNode->nKind == AND && IsLiteralTruth(pLeft, false)) || (pNode->nKind == OR && IsLiteralTruth(pLeft, true));
    if (!settles) return;
    BecomeBoolean(norvane, pNode, pNode->nKind == OR);
    pNode->pType = norvane.m_DataTypes.m_BoolType;
}

// ---- Three numeric literals.

static bool AreChildrenOfKind(const CNode* pNode, int kind)
{
    const auto hasKind = [kind](const CNode* pChild) { return pChild->nKind == kind; };
    return std::all_of(pNode->m_Children.begin(), pNode->m_Children.end(), hasKind);
}

static void FoldThreeIntegers(CNorvane& norvane, CNode* pNode)
{
    const std::int64_t a = pNode->Child(0)->nValue;
    const std::int64_t b = pNode->Child(1)->nValue;
    const std::int64_t c = pNode->Child(2)->nValue;
    if (pNode->nKind == LIMIT) {
        BecomeInteger(norvane, pNode, std::min(c, std::max(a, b)));
        return;
    }
    if (c == 0) {
        RefuseZeroDivisor(norvane, pNode);
        return;
    }
    if (Wraps('*', a, b)) norvane.m_Notes.Add(Note::NumberBeyondWidth, pNode->location);
    BecomeInteger(norvane, pNode, DivideWrapping(WrapMul(a, b), c));   // the product has wrapped by then
}

static void FoldThreeReals(CNorvane& norvane, CNode* pNode)
{
    const double a = pNode->Child(0)->GetReal();
    const double b = pNode->Child(1)->GetReal();
    const double c = pNode->Child(2)->GetReal();
    if (pNode->nKind == LIMIT) {
        BecomeReal(norvane, pNode, std::min(c, std::max(a, b)));
        return;
    }
    if (c != 0.0) NoteRealOverflow(norvane.m_Notes, a, b, a * b, pNode->location);
    DivideReals(norvane, pNode, a * b, c);
}

static void FoldThreeNumbers(CNorvane& norvane, CNode* pNode)
{
    const auto isNumber = [](const CNode* pChild) { return pChild->IsNumericLiteral(); };
    if (!std::all_of(pNode->m_Children.begin(), pNode->m_Children.end(), isNumber)) return;
    if (AreChildrenOfKind(pNode, IMM_INTEGER)) FoldThreeIntegers(norvane, pNode);
    else if (AreChildrenOfKind(pNode, IMM_REAL)) FoldThreeReals(norvane, pNode);
    else RefuseMismatch(norvane, pNode);
}

// ---- MIN and MAX.

// Kept (sources): a time of day is not among them.
static bool IsNoNumber(const CNode* pNode)
{
    switch (pNode->nKind) {
    case TRUE:
    case FALSE:
    case STR_DIR:
    case DATE_AND_TIME_DIR:
    case DATE_DIR:
    case TIME_DIR: return true;
    default: return false;
    }
}

// No element that can't be compared, and no two literals of different kinds.
static bool AreElementsComparable(const CNode* pList)
{
    const CNode* pFirst = nullptr;
    for (const CNode* pElement : pList->m_Children) {
        if (IsNoNumber(pElement)) return false;
        if (!pElement->IsNumericLiteral()) continue;
        if (!pFirst) pFirst = pElement;
        if (pElement->nKind != pFirst->nKind) return false;
    }
    return true;
}

static void MergeLiteral(int op, CNode* pFirst, const CNode* pOther)
{
    if (pFirst->nKind == IMM_REAL) {
        const double a = pFirst->GetReal();
        const double b = pOther->GetReal();
        pFirst->SetReal(op == MIN ? std::min(a, b) : std::max(a, b));
        return;
    }
    const std::int64_t a = pFirst->nValue;
    const std::int64_t b = pOther->nValue;
    pFirst->nValue = op == MIN ? std::min(a, b) : std::max(a, b);
}

// The first literal takes in all others. What stays moves up in one pass: lists can be long.
static void MergeLiterals(int op, CNode* pList)
{
    CNode* pFirst = nullptr;
    std::size_t kept = 0;
    for (CNode* pElement : pList->m_Children) {
        if (pFirst && pElement->IsNumericLiteral()) {
            MergeLiteral(op, pFirst, pElement);
            continue;
        }
        if (pElement->IsNumericLiteral()) pFirst = pElement;
        pList->m_Children[kept] = pElement;
        ++kept;
    }
    pList->m_Children.truncate(kept);
}

void CNorvane::FoldMinMax(CNode* pNode)
{
    CNode* pList = pNode->Child(0);
    if (pList->GetChildCount() < 2) {
        m_Errors.ErrParameterCount(pList->GetChildCount(), pNode->location);
        pNode->nKind = ERROR_;
        return;
    }
    if (!AreElementsComparable(pList)) {
        RefuseMismatch(*this, pNode);
        return;
    }
    MergeLiterals(pNode->nKind, pList);
    if (pList->GetChildCount() > 1) return;

    const CNode* pResult = pList->Child(0);
    pNode->nKind = pResult->nKind;
    pNode->nValue = pResult->nValue;
    if (pResult->nKind == IMM_REAL) pNode->SetReal(pResult->GetReal());
    CollapseNode(pNode);
}

// ----

static bool IsUnaryOperator(int kind)
{
    return kind == UNARY_MINUS || kind == ABS || kind == SQRT || kind == NOT;
}

static void FoldTwoOperands(CNorvane& norvane, CNode* pNode)
{
    if (!IsInfixOperator(pNode->nKind)) return;
    if (pNode->Child(0)->IsNumericLiteral() && pNode->Child(1)->IsNumericLiteral()) {
        FoldTwoNumbers(norvane, pNode);
        return;
    }
    if (IsBitOperator(pNode->nKind)) FoldBooleans(norvane, pNode);
}

void CNorvane::FoldImmediates(CNode* pNode)
{
    if (pNode->nKind == MIN || pNode->nKind == MAX) {
        FoldMinMax(pNode);
        return;
    }
    switch (pNode->GetChildCount()) {
    case 1:
        if (IsUnaryOperator(pNode->nKind)) FoldOneLiteral(*this, pNode);
        break;
    case 2: FoldTwoOperands(*this, pNode); break;
    case 3:
        if (pNode->nKind == MULDIV || pNode->nKind == LIMIT) FoldThreeNumbers(*this, pNode);
        break;
    default: break;
    }
}
