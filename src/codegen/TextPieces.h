#pragma once

#include "files/TextBuffer.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>

// The parts that instructions are made of, as pieces of a TextBuffer. They hold views of names that the tables own,
// and live only until they are appended.

// (INT)
struct TypeSuffix
{
    std::string_view name;

    auto Parts() const { return std::make_tuple('(', name, ')'); }
};

// .3
struct BitNumber
{
    std::optional<int> bit;   // none: nothing is written

    std::size_t GetMostBytes() const { return 1 + ::GetMostBytes(0); }
    char* Write(char* p) const
    {
        if (!bit) return p;
        *p = '.';
        return WritePart(p + 1, *bit);
    }
};

// [local+4].3
struct MemoryPlace
{
    std::string_view area;
    std::int64_t offsetBytes;
    std::optional<int> bit{};

    auto Parts() const { return std::make_tuple('[', area, offsetBytes, ']', BitNumber{bit}); }
};

// (BOOL) [local+4].3 ; ready
struct VariableOperand
{
    TypeSuffix suffix;
    MemoryPlace place;
    std::string_view name;

    auto Parts() const { return std::make_tuple(suffix, ' ', place, " ; ", name); }
};

// 0300000F
struct HexadecimalNumber
{
    std::uint32_t value;

    static constexpr int digits = 8;
    std::size_t GetMostBytes() const { return digits; }
    char* Write(char* p) const
    {
        constexpr int bitsOfDigit = 4;
        for (int i = digits - 1; i >= 0; --i) *p++ = "0123456789ABCDEF"[value >> (i * bitsOfDigit) & 0xF];
        return p;
    }
};

// The decimal offset with the bit in its top eight bits: 50331653	;0x03000005
struct CommentedOffset
{
    std::uint32_t packed;

    CommentedOffset(std::int64_t offsetBytes, int bit)
        : packed(static_cast<std::uint32_t>(offsetBytes) | static_cast<std::uint32_t>(bit) << 24)
    {
    }
    auto Parts() const
    {
        return std::make_tuple(static_cast<std::int32_t>(packed), "\t;0x", HexadecimalNumber{packed});
    }
};

// The same where there is a bit above 0, else the plain offset.
struct PackedOffset
{
    std::int64_t offsetBytes;
    int bit;

    std::size_t GetMostBytes() const { return ::GetMostBytes(CommentedOffset(offsetBytes, bit)); }
    char* Write(char* p) const
    {
        if (bit > 0) return WritePart(p, CommentedOffset(offsetBytes, bit));
        return WritePart(p, static_cast<std::int32_t>(offsetBytes));
    }
};

// name, or name__2 for a further form of an overloaded function
struct FunctionLabel
{
    std::string_view name;
    int form;   // 0: the first or only one

    std::size_t GetMostBytes() const { return name.size() + 2 + ::GetMostBytes(form); }
    char* Write(char* p) const
    {
        p = WritePart(p, name);
        return form > 0 ? WritePart(WritePart(p, "__"), form) : p;
    }
};

// The name in capitals; of its letters only a to z have any.
struct CapitalName
{
    std::string_view name;

    std::size_t GetMostBytes() const { return name.size(); }
    char* Write(char* p) const
    {
        for (const char c : name) *p++ = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        return p;
    }
};
