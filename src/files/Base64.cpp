#include "files/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace
{

constexpr std::string_view g_Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
static_assert(g_Alphabet.size() == 64);
constexpr char g_Padding = '=';
constexpr int g_Foreign = -1;            // a character of no meaning
constexpr int g_PaddingValue = 64;

using Bytes = std::array<unsigned, 3>;   // bytes that aren't there are 0
using Values = std::array<unsigned, 4>;  // six bits each

constexpr std::array<std::int8_t, 256> MakeDecodeTable()
{
    std::array<std::int8_t, 256> table{};
    for (std::int8_t& value : table) value = g_Foreign;
    for (std::size_t i = 0; i < g_Alphabet.size(); ++i)
        table[static_cast<unsigned char>(g_Alphabet[i])] = static_cast<std::int8_t>(i);
    table[static_cast<unsigned char>(g_Padding)] = g_PaddingValue;
    return table;
}

constexpr std::array<std::int8_t, 256> g_DecodeTable = MakeDecodeTable();

}   // namespace

static Values SplitLowFirst(const Bytes& b)
{
    return {b[0] & 0x3F, (b[0] >> 6 | b[1] << 2) & 0x3F, (b[1] >> 4 | b[2] << 4) & 0x3F, b[2] >> 2};
}

static Bytes JoinLowFirst(const Values& v)
{
    return {v[0] | v[1] << 6, v[1] >> 2 | v[2] << 4, v[2] >> 4 | v[3] << 2};
}

static Values SplitHighFirst(const Bytes& b)
{
    return {b[0] >> 2, (b[0] << 4 | b[1] >> 4) & 0x3F, (b[1] << 2 | b[2] >> 6) & 0x3F, b[2] & 0x3F};
}

static Bytes JoinHighFirst(const Values& v)
{
    return {v[0] << 2 | v[1] >> 4, v[1] << 4 | v[2] >> 2, v[2] << 6 | v[3]};
}

static void Encode(std::string_view data, std::string& text, Values (*split)(const Bytes&))
{
    text.clear();
    text.reserve((data.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < data.size(); i += 3) {
        const std::string_view group = data.substr(i, 3);
        Bytes bytes{};
        for (std::size_t k = 0; k < group.size(); ++k) bytes[k] = static_cast<unsigned char>(group[k]);
        const Values values = split(bytes);
        // One value more than there are bytes says something; the rest is padding.
        for (std::size_t k = 0; k < values.size(); ++k)
            text.push_back(k <= group.size() ? g_Alphabet[values[k]] : g_Padding);
    }
}

// Bytes that a group stands for: padding in place of a value ends the data. A group that begins with
// padding holds no whole byte.
static std::size_t CountBytes(const std::array<int, 4>& group)
{
    std::size_t values = 0;
    while (values < group.size() && group[values] != g_PaddingValue) ++values;
    return values < 2 ? 0 : values - 1;
}

static void Decode(std::string_view text, std::string& data, Bytes (*join)(const Values&))
{
    data.clear();
    data.reserve(text.size() / 4 * 3 + 2);
    std::array<int, 4> group{};
    std::size_t collected = 0;
    for (const char c : text) {
        const int value = g_DecodeTable[static_cast<unsigned char>(c)];
        if (value == g_Foreign) continue;
        group[collected++] = value;
        if (collected < group.size()) continue;

        collected = 0;
        const std::size_t count = CountBytes(group);
        Values values{};
        for (std::size_t k = 0; k < values.size() && k <= count; ++k)
            values[k] = static_cast<unsigned>(group[k]) & 0x3F;
        const Bytes bytes = join(values);
        for (std::size_t k = 0; k < count; ++k) data.push_back(static_cast<char>(bytes[k] & 0xFF));
        if (count < bytes.size()) return;
    }
}

void Base64Encode(std::string_view data, std::string& text)
{
    Encode(data, text, SplitLowFirst);
}

void Base64Decode(std::string_view text, std::string& data)
{
    Decode(text, data, JoinLowFirst);
}

void Base64EncodeStandard(std::string_view data, std::string& text)
{
    Encode(data, text, SplitHighFirst);
}

void Base64DecodeStandard(std::string_view text, std::string& data)
{
    Decode(text, data, JoinHighFirst);
}
