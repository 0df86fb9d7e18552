#include "machine/ValueKind.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

static std::string ShortestText(double value, bool isSingle)
{
    char buffer[64];
    const std::to_chars_result end = isSingle ? std::to_chars(buffer, buffer + sizeof buffer, static_cast<float>(value))
                                              : std::to_chars(buffer, buffer + sizeof buffer, value);
    std::string text(buffer, end.ptr);
    // A real shows as one: 2.0, not 2.
    if (text.find_first_not_of("-0123456789") == std::string::npos) text += ".0";
    return text;
}

std::string ToText(const MachineValue& value)
{
    switch (value.kind) {
    case ValueKind::Bool: return value.integer & 1 ? "TRUE" : "FALSE";
    case ValueKind::F32: return ShortestText(value.real, true);
    case ValueKind::F64: return ShortestText(value.real, false);
    case ValueKind::U64: return std::to_string(static_cast<std::uint64_t>(value.integer));
    default: return std::to_string(value.integer);
    }
}

static bool ParseReal(std::string_view text, double& value)
{
    if (text.starts_with('+')) text.remove_prefix(1);
    const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), value);
    return !text.empty() && end.ec == std::errc() && end.ptr == text.data() + text.size();
}

// Sign and digits of an integer literal; the magnitude has 64 bits.
static bool ParseInteger(std::string_view text, bool& negative, std::uint64_t& magnitude)
{
    negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    int base = 10;
    for (const auto& [prefix, prefixBase] : {std::pair{"16#", 16}, std::pair{"8#", 8}, std::pair{"2#", 2}}) {
        if (!text.starts_with(prefix)) continue;
        text.remove_prefix(std::string_view(prefix).size());
        base = prefixBase;
    }
    const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
    return !text.empty() && end.ec == std::errc() && end.ptr == text.data() + text.size();
}

static bool Fits(bool negative, std::uint64_t magnitude, ValueKind kind)
{
    const int bits = GetSizeBytes(kind) * 8;
    if (IsSigned(kind)) return magnitude <= (std::uint64_t{1} << (bits - 1)) - (negative ? 0 : 1);
    if (negative && magnitude != 0) return false;
    return bits == 64 || magnitude < (std::uint64_t{1} << bits);
}

bool ParseValue(std::string_view text, ValueKind kind, MachineValue& value, std::string& error)
{
    const std::string shown(text);
    value = {kind, 0, 0};
    if (IsReal(kind)) {
        if (ParseReal(text, value.real)) {
            if (kind == ValueKind::F32) value.real = static_cast<float>(value.real);
            return true;
        }
        error = "\"" + shown + "\" is no number";
        return false;
    }
    if (kind == ValueKind::Bool) {
        const bool isTrue = text == "1" || text == "TRUE" || text == "true";
        if (isTrue || text == "0" || text == "FALSE" || text == "false") {
            value.integer = isTrue;
            return true;
        }
        error = "\"" + shown + "\" is neither TRUE nor FALSE, 1 nor 0";
        return false;
    }
    bool negative = false;
    std::uint64_t magnitude = 0;
    if (!ParseInteger(text, negative, magnitude)) {
        error = "\"" + shown + "\" is no integer";
        return false;
    }
    if (!Fits(negative, magnitude, kind)) {
        error = shown + " does not fit into " + std::to_string(GetSizeBytes(kind) * 8) +
                (IsSigned(kind) ? " bits with sign" : " bits without sign");
        return false;
    }
    value.integer = static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
    return true;
}

std::int64_t ToCell(const MachineValue& value)
{
    if (value.kind == ValueKind::F32) return std::bit_cast<std::uint32_t>(static_cast<float>(value.real));
    if (value.kind == ValueKind::F64) return std::bit_cast<std::int64_t>(value.real);
    return value.integer;
}

MachineValue FromCell(std::int64_t cell, ValueKind kind)
{
    switch (kind) {
    case ValueKind::Bool: return {kind, cell & 1, 0};
    case ValueKind::S8: return {kind, static_cast<std::int8_t>(cell), 0};
    case ValueKind::S16: return {kind, static_cast<std::int16_t>(cell), 0};
    case ValueKind::S32: return {kind, static_cast<std::int32_t>(cell), 0};
    case ValueKind::U8: return {kind, static_cast<std::uint8_t>(cell), 0};
    case ValueKind::U16: return {kind, static_cast<std::uint16_t>(cell), 0};
    case ValueKind::U32: return {kind, static_cast<std::uint32_t>(cell), 0};
    case ValueKind::S64:
    case ValueKind::U64: return {kind, cell, 0};
    case ValueKind::F32: return {kind, 0, std::bit_cast<float>(static_cast<std::uint32_t>(cell))};
    case ValueKind::F64: return {kind, 0, std::bit_cast<double>(cell)};
    }
    return {};
}
