#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// How a value lies in memory and what arithmetic it takes. Types of the program (INT, WORD, an alias) lead to one
// of these by their class and their size on the target.
enum class ValueKind : std::uint8_t   // ORDER KIND
{
    Bool,   // one bit of a byte; in a cell 0 or 1
    S8,
    S16,
    S32,
    S64,
    U8,
    U16,
    U32,
    U64,
    F32,
    F64
};

// Bytes in memory; 1 for Bool, which is one bit of them.
constexpr int GetSizeBytes(ValueKind kind)
{
    constexpr int sizes[] = {1, 1, 2, 4, 8, 1, 2, 4, 8, 4, 8};   // ORDER KIND
    return sizes[static_cast<int>(kind)];
}

constexpr bool IsReal(ValueKind kind)
{
    return kind >= ValueKind::F32;
}

constexpr bool IsSigned(ValueKind kind)
{
    return kind >= ValueKind::S8 && kind <= ValueKind::S64;
}

// A value outside the machine, as variables are read and written by name.
struct MachineValue
{
    ValueKind kind = ValueKind::Bool;
    std::int64_t integer = 0;   // of all kinds but the reals; U64 as its bits
    double real = 0;            // of the reals

    bool operator==(const MachineValue&) const = default;
};

// "12", "TRUE", "1.5": the shortest text that reads back as the same value.
std::string ToText(const MachineValue& value);

// Reads a literal for a variable of that kind: decimal, 16#, 8# and 2# integers, reals, TRUE and FALSE. False,
// with the reason in `error`, if the text is no such value or the value doesn't fit the kind.
bool ParseValue(std::string_view text, ValueKind kind, MachineValue& value, std::string& error);

// The bits of a value as a cell of the evaluation stack holds them: integers extended to 64 bits, reals as they
// are, a REAL in the low half.
std::int64_t ToCell(const MachineValue& value);
MachineValue FromCell(std::int64_t cell, ValueKind kind);
