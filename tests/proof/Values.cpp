#include "Values.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

struct KindRow
{
    std::string_view name;
    int bits;
};

static constexpr KindRow g_Kinds[] = {   // ORDER SCALAR
    {"BOOL", 1},  {"SINT", 8},  {"INT", 16},  {"DINT", 32},  {"USINT", 8}, {"UINT", 16},
    {"UDINT", 32}, {"BYTE", 8}, {"WORD", 16}, {"DWORD", 32}, {"REAL", 32}, {"LREAL", 64},
};
static_assert(std::size(g_Kinds) == g_ScalarKinds);

std::string_view GetName(ScalarKind kind)
{
    return g_Kinds[static_cast<int>(kind)].name;
}

int GetBits(ScalarKind kind)
{
    return g_Kinds[static_cast<int>(kind)].bits;
}

static std::int64_t GetMask(ScalarKind kind)
{
    return (std::int64_t{1} << GetBits(kind)) - 1;
}

Value MakeInteger(std::int64_t integer, ScalarKind kind)
{
    const std::int64_t low = integer & GetMask(kind);
    const std::int64_t sign = std::int64_t{1} << (GetBits(kind) - 1);
    return {IsSigned(kind) && (low & sign) ? low - 2 * sign : low, 0};
}

Value MakeReal(double real, ScalarKind kind)
{
    return {0, kind == ScalarKind::Real ? static_cast<double>(static_cast<float>(real)) : real};
}

Value ParseReal(std::string_view text, ScalarKind kind)
{
    const std::string copy(text);
    if (kind == ScalarKind::Real) return {0, static_cast<double>(std::strtof(copy.c_str(), nullptr))};
    return {0, std::strtod(copy.c_str(), nullptr)};
}

// Towards zero; what lies beyond the bounds becomes the nearest bound.
static Value Truncate(double real, ScalarKind to)
{
    const double high = std::ldexp(1.0, IsSigned(to) ? GetBits(to) - 1 : GetBits(to));
    const double low = IsSigned(to) ? -high : 0.0;
    const double whole = std::trunc(real);
    if (whole >= high) return MakeInteger(static_cast<std::int64_t>(high) - 1, to);
    if (whole < low) return MakeInteger(static_cast<std::int64_t>(low), to);
    return MakeInteger(static_cast<std::int64_t>(whole), to);
}

Value Convert(Value value, ScalarKind from, ScalarKind to)
{
    if (IsReal(from)) {
        if (IsReal(to)) return MakeReal(value.real, to);
        if (IsBool(to)) return {value.real != 0.0, 0};
        return Truncate(value.real, to);
    }
    if (IsBool(to)) return {value.integer != 0, 0};
    if (IsReal(to)) return MakeReal(static_cast<double>(value.integer), to);   // 32 bits fit into a double exactly
    return MakeInteger(value.integer, to);
}

Value ComputeUnary(Operator op, Value a, ScalarKind kind)
{
    if (IsReal(kind)) {
        switch (op) {
        case Operator::Negate: return {0, -a.real};
        case Operator::Abs: return {0, std::fabs(a.real)};
        case Operator::Sqrt:
            if (kind == ScalarKind::Real) return {0, static_cast<double>(std::sqrt(static_cast<float>(a.real)))};
            return {0, std::sqrt(a.real)};
        default: return a;
        }
    }
    switch (op) {
    case Operator::Negate: return MakeInteger(-a.integer, kind);
    case Operator::Abs: return MakeInteger(a.integer < 0 ? -a.integer : a.integer, kind);
    case Operator::Sqrt:
        if (a.integer < 0) return {};
        return MakeInteger(static_cast<std::int64_t>(std::sqrt(static_cast<double>(a.integer))), kind);
    case Operator::Not: return MakeInteger(~a.integer, kind);
    default: return a;
    }
}

template <class Number>
static Value Compare(Operator op, Number a, Number b)
{
    switch (op) {
    case Operator::Equal: return {a == b, 0};
    case Operator::NotEqual: return {a != b, 0};
    case Operator::Less: return {a < b, 0};
    case Operator::LessEqual: return {a <= b, 0};
    case Operator::Greater: return {a > b, 0};
    default: return {a >= b, 0};
    }
}

// In the width of the type, each step by itself.
template <class Real>
static Value ComputeReal(Operator op, Real a, Real b)
{
    Real result{};
    switch (op) {
    case Operator::Add: result = a + b; break;
    case Operator::Subtract: result = a - b; break;
    case Operator::Multiply: result = a * b; break;
    case Operator::Divide: result = a / b; break;
    case Operator::Min: result = b < a ? b : a; break;
    case Operator::Max: result = a < b ? b : a; break;
    default: return Compare(op, a, b);
    }
    return {0, static_cast<double>(result)};
}

static std::int64_t MultiplyWrapping(std::int64_t a, std::int64_t b)
{
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

static Value ComputeInteger(Operator op, std::int64_t a, std::int64_t b, ScalarKind kind)
{
    switch (op) {
    case Operator::Add: return MakeInteger(a + b, kind);
    case Operator::Subtract: return MakeInteger(a - b, kind);
    case Operator::Multiply: return MakeInteger(MultiplyWrapping(a, b), kind);
    case Operator::Divide: return MakeInteger(a / b, kind);
    case Operator::Modulo: return MakeInteger(a % b, kind);
    case Operator::And: return MakeInteger(a & b, kind);
    case Operator::Or: return MakeInteger(a | b, kind);
    case Operator::Xor: return MakeInteger(a ^ b, kind);
    case Operator::Min: return {b < a ? b : a, 0};
    case Operator::Max: return {a < b ? b : a, 0};
    default: return Compare(op, a, b);
    }
}

Value ComputeBinary(Operator op, Value a, Value b, ScalarKind kind)
{
    if (kind == ScalarKind::Real) return ComputeReal(op, static_cast<float>(a.real), static_cast<float>(b.real));
    if (kind == ScalarKind::Lreal) return ComputeReal(op, a.real, b.real);
    return ComputeInteger(op, a.integer, b.integer, kind);
}

Value ComputePower(Value base, ScalarKind kind, Value exponent, ScalarKind exponentKind)
{
    if (IsReal(kind)) {
        const double power = IsReal(exponentKind) ? MakeReal(exponent.real, ScalarKind::Real).real
                                                  : static_cast<double>(exponent.integer);
        return MakeReal(std::pow(base.real, power), kind);
    }
    std::int64_t result = 1;
    for (std::int64_t i = 0; i < exponent.integer; ++i) result = MultiplyWrapping(result, base.integer);
    return MakeInteger(result, kind);
}

Value ComputeShift(Operator op, Value a, std::int64_t count, ScalarKind kind)
{
    const int width = GetBits(kind);
    if (op == Operator::ShiftLeft) return count >= width ? Value() : MakeInteger(a.integer << count, kind);
    if (op == Operator::ShiftRight) return count >= width ? Value() : Value{a.integer >> count, 0};
    std::int64_t left = count % width;
    if (op == Operator::RotateRight) left = (width - left) % width;
    return MakeInteger(a.integer << left | a.integer >> (width - left), kind);
}

Value ComputeMulDiv(Value a, Value b, Value c, ScalarKind kind)
{
    if (!IsSigned(kind)) {
        const std::uint64_t product = static_cast<std::uint64_t>(a.integer) * static_cast<std::uint64_t>(b.integer);
        return MakeInteger(static_cast<std::int64_t>(product / static_cast<std::uint64_t>(c.integer)), kind);
    }
    return MakeInteger(a.integer * b.integer / c.integer, kind);
}
