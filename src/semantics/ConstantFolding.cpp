// In a declaration an expression on variables is worth what their initial values give, whether they are
// CONSTANT or not. The node then becomes a SIMPLIFIED node that carries the value; one without a value says
// that the expression has a type but nothing is known of it.

#include "semantics/Norvane.h"

#include "model/Type.h"
#include "semantics/Comparison.h"
#include "semantics/NumberRange.h"
#include "semantics/Wrapping.h"

#include <algorithm>
#include <utility>

using ValuePointer = std::unique_ptr<CInitValue>;

static bool IsVariableLike(const CNode* pNode)
{
    return pNode->IsVariableAccess() || pNode->nKind == SIMPLIFIED;
}

// Function calls, casts and operators that stayed have no value while the source is read.
static bool IsValueSource(const CNode* pNode)
{
    return IsVariableLike(pNode) || pNode->IsLiteral();
}

static bool IsSimplifiable(const CNodeList& operands)
{
    return std::all_of(operands.begin(), operands.end(), IsValueSource);
}

static void BecomeSimplified(CNorvane& norvane, CNode* pNode, ValuePointer pValue)
{
    pNode->pType = IsComparison(pNode->nKind) ? norvane.m_DataTypes.m_BoolType : pNode->Child(0)->pType;
    pNode->SetInit(norvane.m_Nodes.KeepValue(std::move(pValue)));
    pNode->nKind = SIMPLIFIED;
    norvane.CollapseNode(pNode);
}

static void RefuseZeroDivisor(CNorvane& norvane, CNode* pNode)
{
    norvane.m_Errors.ErrDivisionByZero(pNode->location.nFirstLine, pNode->location.nFirstColumn);
    norvane.Poison(pNode);
}

// ---- One representation for all operands of an operator that doesn't look at their values' kinds: that of
// a type. Any other type means that an assumption of ours failed. A beep was meant to sound there; nothing is
// heard on a console without a beeper, so the fold just goes on and gives no value.

enum class ValueClass
{
    Integer,
    Real,
    None
};

static ValueClass ClassOf(const CType* pType)
{
    if (!pType) return ValueClass::None;
    if (pType->IsInteger()) return ValueClass::Integer;
    return pType->IsReal() ? ValueClass::Real : ValueClass::None;
}

// False if a variable's value isn't known.
static bool ReadInteger(CNorvane& norvane, CNode* pOperand, std::int64_t& value)
{
    if (!IsVariableLike(pOperand)) {
        value = pOperand->nKind == IMM_REAL ? TruncateToInt64(pOperand->GetReal()) : pOperand->nValue;
        return true;
    }
    const ValuePointer pValue = norvane.ValueOf(pOperand, pOperand->pType);
    if (!pValue) return false;
    value = pValue->GetInt64();
    return true;
}

static bool ReadReal(CNorvane& norvane, CNode* pOperand, double& value)
{
    if (!IsVariableLike(pOperand)) {
        value = pOperand->nKind == IMM_REAL ? pOperand->GetReal() : static_cast<double>(pOperand->nValue);
        return true;
    }
    const ValuePointer pValue = norvane.ValueOf(pOperand, pOperand->pType);
    if (!pValue) return false;
    value = pValue->GetDouble();
    return true;
}

// ---- Three operands.

// That of the first variable; literals have no say.
static ValueClass FindThreeOperandClass(const CNode* pNode)
{
    for (const CNode* pOperand : pNode->m_Children) {
        if (IsVariableLike(pOperand)) return ClassOf(pOperand->pType);
    }
    return ValueClass::None;
}

// A literal divisor of another class isn't tested; it then just gives no value.
static bool IsTestedDivisor(const CNode* pDivisor, ValueClass valueClass)
{
    if (IsVariableLike(pDivisor)) return true;
    return pDivisor->nKind == (valueClass == ValueClass::Real ? IMM_REAL : IMM_INTEGER);
}

// Wanted (code): with exchanged bounds this LIMIT gives another result than that of three literals, and than the
// machine's.
template <typename Number>
static Number Limit(CNorvane& norvane, const CNode* pNode, Number low, Number value, Number high)
{
    if (low > high) norvane.m_Notes.Add(Note::OtherFold, pNode->location);
    return std::max(low, std::min(value, high));
}

static void FoldThreeIntegers(CNorvane& norvane, CNode* pNode)
{
    std::int64_t a = 0, b = 0, c = 0;
    const bool known = ReadInteger(norvane, pNode->Child(0), a) && ReadInteger(norvane, pNode->Child(1), b) &&
                       ReadInteger(norvane, pNode->Child(2), c);
    if (!known) {
        BecomeSimplified(norvane, pNode, nullptr);
        return;
    }
    if (pNode->nKind == LIMIT) {
        BecomeSimplified(norvane, pNode, std::make_unique<CInitValue>(Limit(norvane, pNode, a, b, c)));
        return;
    }
    if (c != 0) {
        if (Wraps('*', a, b)) norvane.m_Notes.Add(Note::NumberBeyondWidth, pNode->location);
        BecomeSimplified(norvane, pNode, std::make_unique<CInitValue>(DivideWrapping(WrapMul(b, a), c)));
        return;
    }
    if (IsTestedDivisor(pNode->Child(2), ValueClass::Integer)) RefuseZeroDivisor(norvane, pNode);
    else BecomeSimplified(norvane, pNode, nullptr);
}

static void FoldThreeReals(CNorvane& norvane, CNode* pNode)
{
    double a = 0, b = 0, c = 0;
    const bool known = ReadReal(norvane, pNode->Child(0), a) && ReadReal(norvane, pNode->Child(1), b) &&
                       ReadReal(norvane, pNode->Child(2), c);
    if (!known) {
        BecomeSimplified(norvane, pNode, nullptr);
        return;
    }
    if (pNode->nKind == LIMIT) {
        BecomeSimplified(norvane, pNode, std::make_unique<CInitValue>(Limit(norvane, pNode, a, b, c)));
        return;
    }
    if (c != 0.0) {
        BecomeSimplified(norvane, pNode, std::make_unique<CInitValue>(b * a / c));
        return;
    }
    if (IsTestedDivisor(pNode->Child(2), ValueClass::Real)) RefuseZeroDivisor(norvane, pNode);
    else BecomeSimplified(norvane, pNode, nullptr);
}

// MULDIV, LIMIT.
static void FoldThreeOperands(CNorvane& norvane, CNode* pNode)
{
    if (!IsSimplifiable(pNode->m_Children)) return;
    switch (FindThreeOperandClass(pNode)) {
    case ValueClass::Integer: FoldThreeIntegers(norvane, pNode); break;
    case ValueClass::Real: FoldThreeReals(norvane, pNode); break;
    case ValueClass::None: BecomeSimplified(norvane, pNode, nullptr); break;
    }
}

// ---- Two operands.

static bool IsZeroLiteral(const CNode* pNode)
{
    if (pNode->nKind == IMM_INTEGER) return pNode->nValue == 0;
    return pNode->nKind == IMM_REAL && pNode->GetReal() == 0.0;
}

// A remainder by zero is a fault only of integers: reals know no MOD and add instead.
static bool IsDivision(int op, const CInitValue& deciding)
{
    return op == '/' || (op == MOD && deciding.IsInteger());
}

static void FoldBothValues(CNorvane& norvane, CNode* pNode, const CInitValue& left, const CInitValue& right)
{
    if (IsDivision(pNode->nKind, left) && right.IsZero()) {
        RefuseZeroDivisor(norvane, pNode);
        return;
    }
    BecomeSimplified(norvane, pNode, norvane.FoldValues(left, right, pNode->nKind, pNode->location));
}

static void FoldLeftValue(CNorvane& norvane, CNode* pNode, const CInitValue& left, const CNode& right)
{
    if (IsDivision(pNode->nKind, left) && IsZeroLiteral(&right)) {
        RefuseZeroDivisor(norvane, pNode);
        return;
    }
    BecomeSimplified(norvane, pNode, norvane.FoldValueImmediate(left, right, pNode->nKind, pNode->location));
}

// On reals the literal is what is divided by, since their operands are exchanged there; it mustn't be zero
// any more than the value.
static void FoldRightValue(CNorvane& norvane, CNode* pNode, const CNode& left, const CInitValue& right)
{
    const bool byLiteral = pNode->nKind == '/' && right.IsReal() && IsZeroLiteral(&left);
    if (byLiteral || (IsDivision(pNode->nKind, right) && right.IsZero())) {
        RefuseZeroDivisor(norvane, pNode);
        return;
    }
    BecomeSimplified(norvane, pNode, norvane.FoldImmediateValue(left, right, pNode->nKind, pNode->location));
}

static void FoldTwoOperands(CNorvane& norvane, CNode* pNode)
{
    CNode* pLeft = pNode->Child(0);
    CNode* pRight = pNode->Child(1);
    const bool leftVariable = IsVariableLike(pLeft);
    const bool rightVariable = IsVariableLike(pRight);
    if (!leftVariable && !rightVariable) return;   // two literals that stayed have no common arithmetic
    if (!IsSimplifiable(pNode->m_Children)) return;

    if (IsComparison(pNode->nKind)) {
        NoteComparedValueRange(norvane.m_Notes, pLeft);
        NoteComparedValueRange(norvane.m_Notes, pRight);
    }
    const ValuePointer pLeftValue = leftVariable ? norvane.ValueOf(pLeft, pLeft->pType) : nullptr;
    const ValuePointer pRightValue = rightVariable ? norvane.ValueOf(pRight, pRight->pType) : nullptr;
    if ((leftVariable && !pLeftValue) || (rightVariable && !pRightValue)) {
        BecomeSimplified(norvane, pNode, nullptr);
        return;
    }
    if (leftVariable && rightVariable) FoldBothValues(norvane, pNode, *pLeftValue, *pRightValue);
    else if (leftVariable) FoldLeftValue(norvane, pNode, *pLeftValue, *pRight);
    else FoldRightValue(norvane, pNode, *pLeft, *pRightValue);
}

// ---- MIN and MAX over a list.

static const CType* FindFirstType(const CNode* pList)
{
    for (const CNode* pElement : pList->m_Children) {
        if (pElement->pType) return pElement->pType;
    }
    return nullptr;
}

// A literal of the other class has been typed with the rest, but has no value in this one.
static bool RefuseForeignLiteral(CNorvane& norvane, CNode* pNode, const CType* pType, int foreignKind)
{
    const CNode* pList = pNode->Child(0);
    const auto isForeign = [foreignKind](const CNode* pElement) { return pElement->nKind == foreignKind; };
    if (std::none_of(pList->m_Children.begin(), pList->m_Children.end(), isForeign)) return false;
    norvane.m_Errors.ErrTypeMismatch(pType->m_Name, foreignKind == IMM_INTEGER ? "INT" : "REAL", pNode->location);
    norvane.Poison(pNode);
    return true;
}

static ValuePointer FoldIntegerList(CNorvane& norvane, const CNode* pNode)
{
    constexpr std::int64_t highestStart = 2147483647;
    constexpr std::int64_t lowestStart = -2147483648;
    std::int64_t result = pNode->nKind == MIN ? highestStart : lowestStart;
    bool isReached = false;   // by a value: the start is one of 32 bits, the values have 64
    for (CNode* pElement : pNode->Child(0)->m_Children) {
        std::int64_t value = 0;
        if (!ReadInteger(norvane, pElement, value)) return nullptr;
        isReached = isReached || (pNode->nKind == MIN ? value <= highestStart : value >= lowestStart);
        result = pNode->nKind == MIN ? std::min(result, value) : std::max(result, value);
    }
    if (!isReached) norvane.m_Notes.Add(Note::OtherFold, pNode->location);
    return std::make_unique<CInitValue>(result);
}

// Kept (code): MAX starts at the smallest positive number, so that one of negative reals gives that.
static ValuePointer FoldRealList(CNorvane& norvane, const CNode* pNode)
{
    constexpr double highestStart = 1.7976931348623157E308;
    constexpr double lowestStart = 2.2250738585072014E-308;
    double result = pNode->nKind == MIN ? highestStart : lowestStart;
    bool isReached = pNode->nKind == MIN;   // a zero is as good as the smallest positive number
    for (CNode* pElement : pNode->Child(0)->m_Children) {
        double value = 0;
        if (!ReadReal(norvane, pElement, value)) return nullptr;
        isReached = isReached || value >= 0;
        result = pNode->nKind == MIN ? std::min(result, value) : std::max(result, value);
    }
    if (!isReached) norvane.m_Notes.Add(Note::OtherFold, pNode->location);
    return std::make_unique<CInitValue>(result);
}

static void FoldList(CNorvane& norvane, CNode* pNode)
{
    const CNode* pList = pNode->Child(0);
    if (!IsSimplifiable(pList->m_Children)) return;
    const CType* pType = FindFirstType(pList);
    switch (ClassOf(pType)) {
    case ValueClass::Integer:
        if (!RefuseForeignLiteral(norvane, pNode, pType, IMM_REAL))
            BecomeSimplified(norvane, pNode, FoldIntegerList(norvane, pNode));
        break;
    case ValueClass::Real:
        if (!RefuseForeignLiteral(norvane, pNode, pType, IMM_INTEGER))
            BecomeSimplified(norvane, pNode, FoldRealList(norvane, pNode));
        break;
    case ValueClass::None: BecomeSimplified(norvane, pNode, nullptr); break;
    }
}

// ---- One operand.

// Kept (code): an element of an array isn't folded here, a member is.
static void FoldOneOperand(CNorvane& norvane, CNode* pNode)
{
    CNode* pOperand = pNode->Child(0);
    if (pOperand->nKind != IDENTIFIER && pOperand->nKind != SIMPLIFIED && pOperand->nKind != DOT) return;
    const ValuePointer pValue = norvane.ValueOf(pOperand, pOperand->pType);
    BecomeSimplified(norvane, pNode, pValue ? norvane.FoldUnaryValue(*pValue, pNode->nKind) : nullptr);
}

static bool HasPoisonedOperand(const CNorvane& norvane, const CNode* pNode)
{
    const auto isPoison = [&norvane](const CNode* pOperand) { return norvane.IsPoison(pOperand); };
    return std::any_of(pNode->m_Children.begin(), pNode->m_Children.end(), isPoison);
}

void CNorvane::FoldConstants(CNode* pNode)
{
    if (IsPoison(pNode) || HasPoisonedOperand(*this, pNode)) return;
    switch (pNode->nKind) {
    case MIN:
    case MAX: FoldList(*this, pNode); break;
    case UNARY_MINUS:
    case NOT:
    case SQRT:
    case ABS: FoldOneOperand(*this, pNode); break;
    case MULDIV:
    case LIMIT: FoldThreeOperands(*this, pNode); break;
    default:
        if (IsInfixOperator(pNode->nKind) && pNode->GetChildCount() == 2) FoldTwoOperands(*this, pNode);
        break;
    }
}
