#pragma once

#include <cstdint>
#include <limits>

// The arithmetic of integer literals and values: 64-bit two's complement that wraps silently. C++ leaves
// signed overflow undefined, so it goes through unsigned numbers.

inline std::int64_t WrapAdd(std::int64_t a, std::int64_t b)
{
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

inline std::int64_t WrapSub(std::int64_t a, std::int64_t b)
{
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}

inline std::int64_t WrapMul(std::int64_t a, std::int64_t b)
{
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

// Whether one of the three above, told by its operator, wraps; no other operator does.
inline bool Wraps(int op, std::int64_t a, std::int64_t b)
{
    std::int64_t result = 0;
    switch (op) {
    case '+': return __builtin_add_overflow(a, b, &result);
    case '-': return __builtin_sub_overflow(a, b, &result);
    case '*': return __builtin_mul_overflow(a, b, &result);
    default: return false;
    }
}

// The low 32 bits as a signed number.
inline std::int32_t LowBits(std::int64_t value)
{
    return static_cast<std::int32_t>(static_cast<std::uint64_t>(value) & 0xFFFFFFFFu);
}

inline std::int64_t WrapNeg(std::int64_t a)
{
    return WrapSub(0, a);
}

inline std::int64_t WrapAbs(std::int64_t a)
{
    return a < 0 ? WrapNeg(a) : a;   // the lowest value stays itself
}

// Quotient truncated towards zero. The processor traps on the lowest value divided by -1, so that wraps
// here. A zero divisor is the caller's to report; here it gives 0 and must only not trap.
inline std::int64_t DivideWrapping(std::int64_t a, std::int64_t b)
{
    if (b == 0) return 0;
    if (b == -1) return WrapNeg(a);
    return a / b;
}

// Remainder with the sign of the dividend; -1 and 0 as above.
inline std::int64_t RemainderWrapping(std::int64_t a, std::int64_t b)
{
    if (b == 0 || b == -1) return 0;
    return a % b;
}

// Whether the number, cut to an integer, has its place in 64 bits; not-a-number hasn't.
inline bool FitsInt64(double value)
{
    constexpr double limit = 9223372036854775808.0;   // 2 to the 63rd
    return value >= -limit && value < limit;
}

// Towards zero. What doesn't fit, not-a-number among it, gives the lowest value on every machine.
inline std::int64_t TruncateToInt64(double value)
{
    if (!FitsInt64(value)) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

// The low 32 bits of that.
inline std::uint32_t TruncateToUInt32(double value)
{
    return static_cast<std::uint32_t>(TruncateToInt64(value));
}
