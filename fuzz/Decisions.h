#pragma once

#include <cstddef>
#include <cstdint>

// A stream of decisions: from the bytes that a fuzzer gives, or from a seed. Where the bytes run out every answer is 0,
// so whoever puts the simplest choice first comes to an end.
class CDecisions
{
public:
    CDecisions(const std::uint8_t* pBytes, std::size_t size) : m_pBytes(pBytes), m_Left(size) {}
    explicit CDecisions(std::uint64_t seed) : m_State(seed * 0x9E3779B97F4A7C15u + 1) {}

    // A number from 0 to count - 1.
    int Below(int count) { return count <= 1 ? 0 : static_cast<int>(Next() % static_cast<std::uint32_t>(count)); }
    bool OneIn(int count) { return Below(count) == count - 1; }

private:
    std::uint32_t Next()
    {
        if (m_State == 0) {
            std::uint32_t value = 0;
            for (int i = 0; i < 2 && m_Left > 0; ++i, --m_Left) value = value << 8 | *m_pBytes++;
            return value;
        }
        m_State ^= m_State << 13;   // xorshift
        m_State ^= m_State >> 7;
        m_State ^= m_State << 17;
        return static_cast<std::uint32_t>(m_State >> 20);
    }

    const std::uint8_t* m_pBytes = nullptr;   // not owned
    std::size_t m_Left = 0;
    std::uint64_t m_State = 0;                // 0: the bytes decide
};
