// Operators on known values: what initial values of variables give in a declaration. The kind of the value
// decides the arithmetic, not the declared type: 64 bits signed, 32 bits unsigned, double, boolean.

#include "semantics/Norvane.h"

#include "semantics/Comparison.h"
#include "semantics/NumberRange.h"
#include "semantics/Wrapping.h"

#include <cmath>
#include <limits>
#include <optional>

using ValuePointer = std::unique_ptr<CInitValue>;

// Which kinds of value an operator knows. The order is that of a fall-through that is wanted: an operator that
// doesn't know the kind hands on to the next one below that does, so that "r MOD 2" on a REAL adds and AND
// of two REAL compares. Sources that declare such values rely on it, so don't repair it.
struct FoldRule
{
    int op;
    int kinds;   // CInitValue::Kind bits
};

constexpr int g_AllNumbers = CInitValue::Signed | CInitValue::Real | CInitValue::Unsigned;
constexpr int g_Integers = CInitValue::Signed | CInitValue::Unsigned;

constexpr FoldRule g_BinaryRules[] = {
    {POWER, g_AllNumbers},
    {MOD, g_Integers},
    {'+', g_AllNumbers},
    {'-', g_AllNumbers},
    {'*', g_AllNumbers},
    {'/', g_AllNumbers},
    {AND, g_Integers | CInitValue::Bool},
    {OR, g_Integers | CInitValue::Bool},
    {XOR, g_Integers | CInitValue::Bool},
    {EQUAL, g_AllNumbers},
    {NOT_EQUAL, g_AllNumbers},
    {LESS, g_AllNumbers},
    {GREATER, g_AllNumbers},
    {LESS_EQUAL, g_AllNumbers},
    {GREATER_EQUAL, g_AllNumbers},
};

constexpr bool HasEveryOperator()
{
    for (const int kind : {
#define OPERATOR(kind, mark, mnemonic) int{kind},
#include "frontend/Operators.def"
#undef OPERATOR
         }) {
        bool found = false;
        for (const FoldRule& rule : g_BinaryRules) found = found || rule.op == kind;
        if (!found) return false;
    }
    return true;
}
static_assert(HasEveryOperator(), "an operator of the list says here which kinds of value it knows");

constexpr FoldRule g_UnaryRules[] = {
    {UNARY_MINUS, g_AllNumbers},
    {NOT, g_Integers | CInitValue::Bool},
    {SQRT, g_AllNumbers},
    {ABS, g_AllNumbers},
};

// The operator that is computed for a value of that kind; 0 if none is left.
template <std::size_t count> static int GetOperator(const FoldRule (&rules)[count], int op, int kind)
{
    bool found = false;
    for (const FoldRule& rule : rules) {
        found = found || rule.op == op;
        if (found && (rule.kinds & kind)) return rule.op;
    }
    return 0;
}

static ValuePointer MakeBool(bool value)
{
    return std::make_unique<CInitValue>(value);
}

static ValuePointer MakeSigned(std::int64_t value)
{
    return std::make_unique<CInitValue>(value);
}

static ValuePointer MakeDouble(double value)
{
    return std::make_unique<CInitValue>(value);
}

static ValuePointer MakeUnsigned(std::uint32_t value)
{
    return std::make_unique<CInitValue>(value);
}

static double Power(std::int64_t base, std::int64_t exponent)
{
    return std::pow(static_cast<double>(base), static_cast<double>(exponent));
}

// ---- One function to a representation. A zero divisor gives no value; it was reported before.

static ValuePointer FoldSigned(CNorvane& norvane, std::int64_t a, std::int64_t b, int op,
                               const SourceLocation& where)
{
    if ((op == '/' || op == MOD) && b == 0) return nullptr;
    if (op == '/' && RemainderWrapping(a, b) != 0) norvane.m_Errors.WarnQuotient(where);
    if (Wraps(op, a, b)) norvane.m_Notes.Add(Note::NumberBeyondWidth, where);
    switch (op) {
    case POWER: return MakeSigned(TruncateToInt64(Power(a, b)));
    case MOD: return MakeSigned(RemainderWrapping(a, b));
    case '+': return MakeSigned(WrapAdd(a, b));
    case '-': return MakeSigned(WrapSub(a, b));
    case '*': return MakeSigned(WrapMul(a, b));
    case '/': return MakeSigned(DivideWrapping(a, b));
    case AND: return MakeSigned(a & b);
    case OR: return MakeSigned(a | b);
    case XOR: return MakeSigned(a ^ b);
    default: break;
    }
    const std::optional<bool> truth = CompareNumbers(op, a, b);
    return truth ? MakeBool(*truth) : nullptr;
}

// Whether the result on 32 bits without sign isn't that of the numbers. A negative right operand has come from a unary
// minus: adding it gives the right sum all the same, dividing by it or comparing with it doesn't.
static bool IsCutTo32Bits(std::uint32_t a, std::int64_t b, int op)
{
    constexpr std::int64_t highest = std::numeric_limits<std::uint32_t>::max();
    std::int64_t exact = 0;
    switch (op) {
    case '+': exact = WrapAdd(a, b); break;
    case '-': exact = WrapSub(a, b); break;
    case '*':
        if (Wraps('*', a, b)) return true;
        exact = WrapMul(a, b);
        break;
    case '/':
    case MOD: return b < 0;
    default: return b < 0 && IsComparison(op);
    }
    return exact < 0 || exact > highest;
}

// What 32 bits without sign make of the operation; the right operand may know more of itself than they hold.
static ValuePointer FoldUnsigned(CNorvane& norvane, std::uint32_t a, const CInitValue& right, int op,
                                 const SourceLocation& where)
{
    const std::uint32_t b = right.GetUnsigned();
    if ((op == '/' || op == MOD) && b == 0) return nullptr;
    if (op == '/' && a % b != 0) norvane.m_Errors.WarnQuotient(where);
    if (IsCutTo32Bits(a, right.GetInt64(), op)) norvane.m_Notes.Add(Note::OtherFold, where);
    switch (op) {
    case POWER: return MakeUnsigned(TruncateToUInt32(Power(a, b)));
    case MOD: return MakeUnsigned(a % b);
    case '+': return MakeUnsigned(a + b);
    case '-': return MakeUnsigned(a - b);
    case '*': return MakeUnsigned(a * b);
    case '/': return MakeUnsigned(a / b);
    case AND: return MakeUnsigned(a & b);
    case OR: return MakeUnsigned(a | b);
    case XOR: return MakeUnsigned(a ^ b);
    default: break;
    }
    const std::optional<bool> truth = CompareNumbers(op, a, b);
    return truth ? MakeBool(*truth) : nullptr;
}

static ValuePointer ComputeReal(double a, double b, int op)
{
    if (op == '/' && b == 0.0) return nullptr;
    switch (op) {
    case POWER: return MakeDouble(std::pow(a, b));
    case '+': return MakeDouble(a + b);
    case '-': return MakeDouble(a - b);
    case '*': return MakeDouble(a * b);
    case '/': return MakeDouble(a / b);
    default: break;
    }
    const std::optional<bool> truth = CompareNumbers(op, a, b);
    return truth ? MakeBool(*truth) : nullptr;
}

static ValuePointer FoldReal(CNorvane& norvane, double a, double b, int op, const SourceLocation& where)
{
    ValuePointer pValue = ComputeReal(a, b, op);
    if (pValue && pValue->IsReal()) NoteRealOverflow(norvane.m_Notes, a, b, pValue->GetDouble(), where);
    return pValue;
}

static ValuePointer FoldBool(bool a, bool b, int op)
{
    switch (op) {
    case AND: return MakeBool(a && b);
    case OR: return MakeBool(a || b);
    case XOR: return MakeBool(a != b);
    default: return nullptr;
    }
}

// An unsigned value beside a literal is widened first; only a power stays unsigned.
static ValuePointer FoldWidened(CNorvane& norvane, std::int64_t a, std::int64_t b, int op,
                                const SourceLocation& where)
{
    if (op == POWER) return MakeUnsigned(TruncateToUInt32(Power(a, b)));
    return FoldSigned(norvane, a, b, op, where);
}

// ---- A literal in the form that the value beside it asks for. Kept (code): a real literal beside an integer value
// is read as an integer, which it never got, so it counts as 0. Only POWER lets such a pair through.

static double GetReal(const CNode& literal)
{
    return literal.nKind == IMM_INTEGER ? static_cast<double>(literal.nValue) : literal.GetReal();
}

static bool GetTruth(const CNode& literal)
{
    if (literal.nKind == IMM_INTEGER) return literal.nValue != 0;
    return literal.nKind == TRUE;
}

// ---- What has been computed otherwise than it reads, by its operator or by the way the operands are taken.

static double ToNumber(const CInitValue& value)
{
    if (value.IsReal()) return value.GetDouble();
    return static_cast<double>(value.IsUnsigned() ? std::int64_t{value.GetUnsigned()} : value.GetInt64());
}

// The power belongs to its base's type: a whole number for integers, and then the exponent mustn't have been a real
// one that gives a fraction.
static bool IsPowerAsRead(bool isRealBase, double base, bool isRealExponent, double exponent, const CInitValue* pPower)
{
    if (!pPower || pPower->IsReal() != isRealBase) return false;
    const double exact = std::pow(base, exponent);
    if (std::isnan(exact)) return isRealBase;
    const bool losesFraction = !isRealBase && exact != std::trunc(exact);
    if (losesFraction && isRealExponent) return false;
    return ToNumber(*pPower) == (isRealBase ? exact : std::trunc(exact));
}

static void NotePower(CNotes& notes, const CInitValue& left, const CInitValue& right, const CInitValue* pPower,
                      const SourceLocation& where)
{
    if (!IsPowerAsRead(left.IsReal(), ToNumber(left), right.IsReal(), ToNumber(right), pPower))
        notes.Add(Note::OtherFold, where);
}

static CInitValue ValueOfLiteral(const CNode& literal)
{
    return literal.nKind == IMM_REAL ? CInitValue(literal.GetReal()) : CInitValue(literal.nValue);
}

// ---- The family.

ValuePointer CNorvane::FoldValues(const CInitValue& left, const CInitValue& right, int op, const SourceLocation& where)
{
    const int computed = GetOperator(g_BinaryRules, op, left.m_Kind);
    if (computed != op && computed != 0) m_Notes.Add(Note::OtherFold, where);
    ValuePointer pValue;
    switch (left.m_Kind) {
    case CInitValue::Signed: pValue = FoldSigned(*this, left.GetInt64(), right.GetInt64(), computed, where); break;
    case CInitValue::Unsigned: pValue = FoldUnsigned(*this, left.GetUnsigned(), right, computed, where); break;
    case CInitValue::Real: pValue = FoldReal(*this, left.GetDouble(), right.GetDouble(), computed, where); break;
    case CInitValue::Bool: pValue = FoldBool(left.GetBool(), right.GetBool(), computed); break;
    default: break;
    }
    if (op == POWER) NotePower(m_Notes, left, right, pValue.get(), where);
    return pValue;
}

ValuePointer CNorvane::FoldValueImmediate(const CInitValue& left, const CNode& right, int op,
                                          const SourceLocation& where)
{
    const int computed = GetOperator(g_BinaryRules, op, left.m_Kind);
    if (computed != op && computed != 0) m_Notes.Add(Note::OtherFold, where);
    ValuePointer pValue;
    switch (left.m_Kind) {
    case CInitValue::Signed: pValue = FoldSigned(*this, left.GetInt64(), right.nValue, computed, where); break;
    case CInitValue::Unsigned: pValue = FoldWidened(*this, left.GetUnsigned(), right.nValue, computed, where); break;
    case CInitValue::Real: pValue = FoldReal(*this, left.GetDouble(), GetReal(right), computed, where); break;
    case CInitValue::Bool: pValue = FoldBool(left.GetBool(), GetTruth(right), computed); break;
    default: break;
    }
    if (op == POWER) NotePower(m_Notes, left, ValueOfLiteral(right), pValue.get(), where);
    return pValue;
}

// Kept (code): on reals '-' and '/' exchange their operands, so that with a constant c "c - y" is y - c. The user
// hears of it where that isn't the same.
static ValuePointer FoldExchanged(CNorvane& norvane, double literal, double value, int op, const SourceLocation& where)
{
    const bool isSame = op == '-' ? literal == value : std::fabs(literal) == std::fabs(value);
    if (!isSame) norvane.m_Notes.Add(Note::OtherFold, where);
    return FoldReal(norvane, value, literal, op, where);
}

ValuePointer CNorvane::FoldImmediateValue(const CNode& left, const CInitValue& right, int op,
                                          const SourceLocation& where)
{
    const int computed = GetOperator(g_BinaryRules, op, right.m_Kind);
    if (computed != op && computed != 0) m_Notes.Add(Note::OtherFold, where);
    const bool exchanged = computed == '-' || computed == '/';
    ValuePointer pValue;
    switch (right.m_Kind) {
    case CInitValue::Signed: pValue = FoldSigned(*this, left.nValue, right.GetInt64(), computed, where); break;
    case CInitValue::Unsigned: pValue = FoldWidened(*this, left.nValue, right.GetUnsigned(), computed, where); break;
    case CInitValue::Real:
        pValue = exchanged ? FoldExchanged(*this, GetReal(left), right.GetDouble(), computed, where)
                           : FoldReal(*this, GetReal(left), right.GetDouble(), computed, where);
        break;
    case CInitValue::Bool: pValue = FoldBool(GetTruth(left), right.GetBool(), computed); break;
    default: break;
    }
    if (op == POWER) NotePower(m_Notes, ValueOfLiteral(left), right, pValue.get(), where);
    return pValue;
}

static ValuePointer FoldUnarySigned(std::int64_t value, int op)
{
    switch (op) {
    case UNARY_MINUS: return MakeSigned(WrapNeg(value));
    case NOT: return MakeSigned(~value);
    case SQRT: return MakeSigned(TruncateToInt64(std::sqrt(static_cast<double>(value))));
    case ABS: return MakeSigned(WrapAbs(value));
    default: return nullptr;
    }
}

static ValuePointer FoldUnaryUnsigned(std::uint32_t value, int op)
{
    switch (op) {
    case UNARY_MINUS: return MakeSigned(WrapNeg(value));
    case NOT: return MakeUnsigned(~value);
    case SQRT: return MakeUnsigned(TruncateToUInt32(std::sqrt(static_cast<double>(value))));
    case ABS: return MakeUnsigned(value);
    default: return nullptr;
    }
}

static ValuePointer FoldUnaryReal(double value, int op)
{
    switch (op) {
    case UNARY_MINUS: return MakeDouble(-value);
    case SQRT: return MakeDouble(std::sqrt(value));
    case ABS: return MakeDouble(std::fabs(value));
    default: return nullptr;
    }
}

ValuePointer CNorvane::FoldUnaryValue(const CInitValue& value, int op)
{
    op = GetOperator(g_UnaryRules, op, value.m_Kind);
    switch (value.m_Kind) {
    case CInitValue::Signed: return FoldUnarySigned(value.GetInt64(), op);
    case CInitValue::Unsigned: return FoldUnaryUnsigned(value.GetUnsigned(), op);
    case CInitValue::Real: return FoldUnaryReal(value.GetDouble(), op);
    case CInitValue::Bool: return op == NOT ? MakeBool(!value.GetBool()) : nullptr;
    default: return nullptr;
    }
}
