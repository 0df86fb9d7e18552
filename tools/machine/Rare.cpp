#include "machine/Rare.h"

#include <bit>
#include <cmath>
#include <limits>

static double GetReal(std::int64_t cell, ValueKind kind)
{
    return FromCell(cell, kind).real;
}

static std::int64_t MakeReal(double value, ValueKind kind)
{
    return ToCell({kind, 0, value});
}

// The cell of an integer cut to the width of its kind.
static std::int64_t Cut(std::int64_t value, ValueKind kind)
{
    return FromCell(value, kind).integer;
}

static int WidthBits(ValueKind kind)
{
    return kind == ValueKind::Bool ? 1 : GetSizeBytes(kind) * 8;
}

static std::uint64_t LowMask(int bits)
{
    return bits == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << bits) - 1;
}

static std::int64_t WrapMultiply(std::int64_t a, std::int64_t b)
{
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

static std::int64_t Negate(std::int64_t a)
{
    return static_cast<std::int64_t>(0 - static_cast<std::uint64_t>(a));
}

// Towards zero; what doesn't fit gives the lowest value, not-a-number too.
static std::int64_t Truncate(double value)
{
    constexpr double limit = 9223372036854775808.0;
    if (!(value >= -limit && value < limit)) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

// ---- Conversions

static std::int64_t RealToInteger(double value, ValueKind to, Rounding rounding)
{
    if (std::isnan(value)) return 0;
    value = rounding == Rounding::Nearest ? std::round(value) : std::trunc(value);
    const int bits = WidthBits(to);
    const double high = std::ldexp(1.0, IsSigned(to) ? bits - 1 : bits);   // one above the largest
    const double low = IsSigned(to) ? -high : 0.0;
    if (value < low) return IsSigned(to) ? Cut(static_cast<std::int64_t>(std::uint64_t{1} << (bits - 1)), to) : 0;
    if (value >= high) return Cut(static_cast<std::int64_t>(LowMask(IsSigned(to) ? bits - 1 : bits)), to);
    if (to == ValueKind::U64) return static_cast<std::int64_t>(static_cast<std::uint64_t>(value));
    return static_cast<std::int64_t>(value);
}

static double IntegerToReal(std::int64_t value, ValueKind from)
{
    return from == ValueKind::U64 ? static_cast<double>(static_cast<std::uint64_t>(value)) : static_cast<double>(value);
}

std::int64_t ConvertCell(std::int64_t cell, ValueKind from, ValueKind to, Rounding rounding)
{
    const MachineValue value = FromCell(cell, from);
    if (IsReal(from)) {
        if (IsReal(to)) return MakeReal(value.real, to);
        if (to == ValueKind::Bool) return value.real != 0.0;
        return RealToInteger(value.real, to, rounding);
    }
    if (to == ValueKind::Bool) return value.integer != 0;
    if (to == ValueKind::F32 && from == ValueKind::U64)   // one rounding, not two
        return MakeReal(static_cast<float>(static_cast<std::uint64_t>(value.integer)), to);
    if (to == ValueKind::F32) return MakeReal(static_cast<float>(value.integer), to);
    if (IsReal(to)) return MakeReal(IntegerToReal(value.integer, from), to);
    return Cut(value.integer, to);
}

// ---- Powers

static std::optional<TrapKind> IntegerPower(std::int64_t base, std::int64_t exponent, std::int64_t& result)
{
    if (exponent < 0) {   // a fraction, cut to 0, but for 1 and -1
        if (base == 0) return TrapKind::DivisionByZero;
        if (base == 1) result = 1;
        else if (base == -1) result = exponent % 2 == 0 ? 1 : -1;
        else result = 0;
        return {};
    }
    result = 1;
    for (std::uint64_t left = static_cast<std::uint64_t>(exponent); left != 0; left /= 2) {
        if (left % 2 == 1) result = WrapMultiply(result, base);
        base = WrapMultiply(base, base);
    }
    return {};
}

static std::optional<TrapKind> Power(const RareOperation& operation, std::int64_t& result)
{
    const ValueKind kind = operation.kind;
    const bool isRealExponent = operation.mnemonic == Mnemonic::Powr;
    const double exponent = isRealExponent
                                ? GetReal(operation.operands[1], ValueKind::F32)
                                : static_cast<double>(Cut(operation.operands[1], ValueKind::S16));
    if (IsReal(kind)) {
        result = MakeReal(std::pow(GetReal(operation.operands[0], kind), exponent), kind);
        return {};
    }
    const ValueKind number = kind == ValueKind::Bool ? ValueKind::S64 : kind;
    const std::int64_t base = Cut(operation.operands[0], number);
    if (isRealExponent) {
        result = Cut(Truncate(std::pow(IntegerToReal(base, number), exponent)), number);
        return {};
    }
    const std::optional<TrapKind> trap = IntegerPower(base, static_cast<std::int64_t>(exponent), result);
    if (!trap) result = Cut(result, number);
    return trap;
}

// ---- Shifts

static std::int64_t ShiftBits(const RareOperation& operation, const MachineOptions& options)
{
    const ValueKind kind = operation.kind;
    const int width = WidthBits(kind);
    const std::uint64_t mask = LowMask(width);
    const std::uint64_t bits = static_cast<std::uint64_t>(operation.operands[0]) & mask;
    std::int64_t count = Cut(operation.operands[1], ValueKind::S16);
    const bool isRotation = operation.mnemonic == Mnemonic::Rol || operation.mnemonic == Mnemonic::Ror;
    const bool isWide = count < 0 || count >= width;
    if (isRotation || options.wideShift == WideShift::Modulo) count = ((count % width) + width) % width;
    if (isRotation) {
        if (operation.mnemonic == Mnemonic::Ror) count = (width - count) % width;
        if (count == 0) return Cut(static_cast<std::int64_t>(bits), kind);
        return Cut(static_cast<std::int64_t>(((bits << count) | (bits >> (width - count))) & mask), kind);
    }
    const bool isArithmetic = operation.mnemonic == Mnemonic::Shr && IsSigned(kind) &&
                              options.rightShift == RightShift::Arithmetic;
    const std::int64_t value = Cut(operation.operands[0], kind);
    if (isWide && options.wideShift == WideShift::Zero) return isArithmetic && value < 0 ? -1 : 0;
    if (operation.mnemonic == Mnemonic::Shl) return Cut(static_cast<std::int64_t>((bits << count) & mask), kind);
    if (isArithmetic) return value >> count;
    return Cut(static_cast<std::int64_t>(bits >> count), kind);
}

// ---- Division

// Of types without sign both count as 64 bits without sign: a product of two of them may need the highest.
static std::int64_t DivideIntegers(std::int64_t a, std::int64_t b, ValueKind kind)
{
    if (!IsSigned(kind))
        return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) / static_cast<std::uint64_t>(b));
    return b == -1 ? Negate(a) : a / b;   // the lowest value by -1 wraps
}

static std::optional<TrapKind> FlooredRemainder(const RareOperation& operation, std::int64_t& result)
{
    const std::int64_t a = Cut(operation.operands[0], operation.kind);
    const std::int64_t b = Cut(operation.operands[1], operation.kind);
    if (b == 0) return TrapKind::DivisionByZero;
    if (operation.kind == ValueKind::U64) {
        result = static_cast<std::int64_t>(static_cast<std::uint64_t>(a) % static_cast<std::uint64_t>(b));
        return {};
    }
    result = b == -1 ? 0 : a % b;
    if (result != 0 && (result < 0) != (b < 0)) result += b;
    return {};
}

static std::optional<TrapKind> MulDiv(const RareOperation& operation, const MachineOptions& options,
                                      std::int64_t& result)
{
    const ValueKind kind = operation.kind == ValueKind::Bool ? ValueKind::S64 : operation.kind;
    if (kind == ValueKind::F32) {
        const float a = static_cast<float>(GetReal(operation.operands[0], kind));
        const float b = static_cast<float>(GetReal(operation.operands[1], kind));
        const float c = static_cast<float>(GetReal(operation.operands[2], kind));
        if (c == 0 && options.realDivision == RealDivision::Trap) return TrapKind::DivisionByZero;
        const float product = a * b;
        result = MakeReal(static_cast<double>(product) / static_cast<double>(c), kind);
        return {};
    }
    if (kind == ValueKind::F64) {
        const double divisor = GetReal(operation.operands[2], kind);
        if (divisor == 0 && options.realDivision == RealDivision::Trap) return TrapKind::DivisionByZero;
        result = MakeReal(GetReal(operation.operands[0], kind) * GetReal(operation.operands[1], kind) / divisor, kind);
        return {};
    }
    const std::int64_t divisor = Cut(operation.operands[2], kind);
    if (divisor == 0) return TrapKind::DivisionByZero;
    const std::int64_t product = WrapMultiply(Cut(operation.operands[0], kind), Cut(operation.operands[1], kind));
    result = Cut(DivideIntegers(product, divisor, kind), kind);
    return {};
}

// ---- One operand

static std::optional<TrapKind> Unary(const RareOperation& operation, std::int64_t& result)
{
    const ValueKind kind = operation.kind;
    if (IsReal(kind)) {
        const double value = GetReal(operation.operands[0], kind);
        switch (operation.mnemonic) {
        case Mnemonic::Neg: result = MakeReal(-value, kind); return {};
        case Mnemonic::Abs: result = MakeReal(std::fabs(value), kind); return {};
        case Mnemonic::Sqrt: result = MakeReal(std::sqrt(value), kind); return {};
        default: return TrapKind::NoSuchOperation;
        }
    }
    if (kind == ValueKind::Bool && operation.mnemonic == Mnemonic::Not) {
        result = ~operation.operands[0] & 1;
        return {};
    }
    const ValueKind number = kind == ValueKind::Bool ? ValueKind::S64 : kind;
    const std::int64_t value = Cut(operation.operands[0], number);
    switch (operation.mnemonic) {
    case Mnemonic::Neg: result = Cut(Negate(value), number); return {};
    case Mnemonic::Abs: result = Cut(IsSigned(number) && value < 0 ? Negate(value) : value, number); return {};
    case Mnemonic::Sqrt: result = Cut(Truncate(std::sqrt(IntegerToReal(value, number))), number); return {};
    default: result = Cut(~value, number); return {};
    }
}

std::optional<TrapKind> RunRare(const RareOperation& operation, const MachineOptions& options, std::int64_t& result)
{
    switch (operation.mnemonic) {
    case Mnemonic::Neg:
    case Mnemonic::Abs:
    case Mnemonic::Sqrt:
    case Mnemonic::Not: return Unary(operation, result);
    case Mnemonic::Convert:
        result = ConvertCell(operation.operands[0], operation.kind, operation.toKind, options.rounding);
        return {};
    case Mnemonic::Pow:
    case Mnemonic::Powr: return Power(operation, result);
    case Mnemonic::MulDiv: return MulDiv(operation, options, result);
    case Mnemonic::Shl:
    case Mnemonic::Shr:
    case Mnemonic::Rol:
    case Mnemonic::Ror:
        if (IsReal(operation.kind)) return TrapKind::NoSuchOperation;
        result = ShiftBits(operation, options);
        return {};
    case Mnemonic::Mod:
        if (IsReal(operation.kind)) return TrapKind::NoSuchOperation;
        return FlooredRemainder(operation, result);
    case Mnemonic::Div:   // of reals: integers never come here
        if (operation.kind == ValueKind::F32) {
            const float quotient = static_cast<float>(GetReal(operation.operands[0], operation.kind)) /
                                   static_cast<float>(GetReal(operation.operands[1], operation.kind));
            result = MakeReal(quotient, operation.kind);
            return {};
        }
        result = MakeReal(GetReal(operation.operands[0], operation.kind) / GetReal(operation.operands[1], operation.kind),
                          operation.kind);
        return {};
    default: return TrapKind::NoSuchOperation;
    }
}
