#pragma once

#include <cstdint>
#include <string_view>

// FNV-1a, for telling contents apart that are otherwise compared as a whole.
class CHash
{
public:
    void Add(std::string_view text)
    {
        for (const char c : text) AddByte(static_cast<unsigned char>(c));
        AddByte(0);   // so that "ab" and "c" differ from "a" and "bc"
    }
    void Add(std::int64_t number)
    {
        for (int shift = 0; shift < 64; shift += 8)
            AddByte(static_cast<unsigned char>((static_cast<std::uint64_t>(number) >> shift) & 0xFF));
    }
    std::uint64_t Get() const { return m_Value; }

private:
    void AddByte(unsigned char byte)
    {
        constexpr std::uint64_t prime = 1099511628211u;
        m_Value = (m_Value ^ byte) * prime;
    }

    std::uint64_t m_Value = 14695981039346656037u;
};
