// Operators on known values: what initial values of variables give in a declaration. The kind of the value
// decides the arithmetic, not the declared type: 64 bits signed, 32 bits unsigned, double, boolean.

#include "semantics/Norvane.h"

#include "semantics/Comparison.h"
#include "semantics/Wrapping.h"

#include <cmath>
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

static ValuePointer FoldSigned(CErrorHandler& errors, std::int64_t a, std::int64_t b, int op,
                               const SourceLocation& where)
{
    if ((op == '/' || op == MOD) && b == 0) return nullptr;
    if (op == '/' && RemainderWrapping(a, b) != 0) errors.WarnQuotient(where);
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

static ValuePointer FoldUnsigned(CErrorHandler& errors, std::uint32_t a, std::uint32_t b, int op,
                                 const SourceLocation& where)
{
    if ((op == '/' || op == MOD) && b == 0) return nullptr;
    if (op == '/' && a % b != 0) errors.WarnQuotient(where);
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

static ValuePointer FoldReal(double a, double b, int op)
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
static ValuePointer FoldWidened(CErrorHandler& errors, std::int64_t a, std::int64_t b, int op,
                                const SourceLocation& where)
{
    if (op == POWER) return MakeUnsigned(TruncateToUInt32(Power(a, b)));
    return FoldSigned(errors, a, b, op, where);
}

// ---- A literal in the form that the value beside it asks for. Kept: a real literal beside an integer value
// is read as an integer, which it never got, so it counts as 0. Only POWER lets such a pair through.

static double GetReal(const CNode& literal)
{
    return literal.nKind == IMM_INTEGER ? static_cast<double>(literal.nValue) : literal.dValue;
}

static bool GetTruth(const CNode& literal)
{
    if (literal.nKind == IMM_INTEGER) return literal.nValue != 0;
    return literal.nKind == TRUE;
}

// ---- The family.

ValuePointer CNorvane::FoldValues(const CInitValue& left, const CInitValue& right, int op, const SourceLocation& where)
{
    op = GetOperator(g_BinaryRules, op, left.m_Kind);
    switch (left.m_Kind) {
    case CInitValue::Signed: return FoldSigned(m_Errors, left.GetInt64(), right.GetInt64(), op, where);
    case CInitValue::Unsigned: return FoldUnsigned(m_Errors, left.GetUnsigned(), right.GetUnsigned(), op, where);
    case CInitValue::Real: return FoldReal(left.GetDouble(), right.GetDouble(), op);
    case CInitValue::Bool: return FoldBool(left.GetBool(), right.GetBool(), op);
    default: return nullptr;
    }
}

ValuePointer CNorvane::FoldValueImmediate(const CInitValue& left, const CNode& right, int op,
                                          const SourceLocation& where)
{
    op = GetOperator(g_BinaryRules, op, left.m_Kind);
    switch (left.m_Kind) {
    case CInitValue::Signed: return FoldSigned(m_Errors, left.GetInt64(), right.nValue, op, where);
    case CInitValue::Unsigned: return FoldWidened(m_Errors, left.GetUnsigned(), right.nValue, op, where);
    case CInitValue::Real: return FoldReal(left.GetDouble(), GetReal(right), op);
    case CInitValue::Bool: return FoldBool(left.GetBool(), GetTruth(right), op);
    default: return nullptr;
    }
}

// Kept: on reals '-' and '/' exchange their operands, so that with a constant c "c - y" is y - c.
ValuePointer CNorvane::FoldImmediateValue(const CNode& left, const CInitValue& right, int op,
                                          const SourceLocation& where)
{
    op = GetOperator(g_BinaryRules, op, right.m_Kind);
    const bool exchanged = op == '-' || op == '/';
    switch (right.m_Kind) {
    case CInitValue::Signed: return FoldSigned(m_Errors, left.nValue, right.GetInt64(), op, where);
    case CInitValue::Unsigned: return FoldWidened(m_Errors, left.nValue, right.GetUnsigned(), op, where);
    case CInitValue::Real:
        if (exchanged) return FoldReal(right.GetDouble(), GetReal(left), op);
        return FoldReal(GetReal(left), right.GetDouble(), op);
    case CInitValue::Bool: return FoldBool(GetTruth(left), right.GetBool(), op);
    default: return nullptr;
    }
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
