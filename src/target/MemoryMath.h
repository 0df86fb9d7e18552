#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

// Arithmetic on places and sizes in bytes, none of them negative. Array bounds come from the source and
// can make any product; results stop at a bound far above the memory of any target, so that an impossible
// size is reported as out of memory and never wraps into one that seems to fit.
inline constexpr std::int64_t g_FarBytes = std::int64_t{1} << 46;

inline std::int64_t AddBytes(std::int64_t a, std::int64_t b)
{
    return std::min(a + b, g_FarBytes);
}

inline std::int64_t MultiplyBytes(std::int64_t count, std::int64_t bytes)
{
    if (count > 0 && bytes > g_FarBytes / count) return g_FarBytes;
    return count * bytes;
}

// The next multiple of the alignment, which is 1 or more.
inline std::int64_t AlignUp(std::int64_t byte, std::int64_t align)
{
    const std::int64_t excess = byte % align;
    return excess == 0 ? byte : AddBytes(byte, align - excess);
}

// As fields keep it: 32 bits, the nearest number for all beyond.
inline std::int32_t ToStoredBytes(std::int64_t bytes)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(bytes, Limits::min(), Limits::max()));
}
