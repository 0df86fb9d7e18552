#pragma once

#include <algorithm>
#include <cstdint>

// Counts of what a source asks for in few words: none is negative, and sums and products stop at a number that is far
// above any limit.
inline constexpr std::int64_t g_FarCount = 1'000'000'000'000'000'000;

inline std::int64_t AddCounts(std::int64_t a, std::int64_t b)
{
    return std::min(a + b, g_FarCount);
}

inline std::int64_t MultiplyCounts(std::int64_t a, std::int64_t b)
{
    if (b > 0 && a > g_FarCount / b) return g_FarCount;
    return a * b;
}
