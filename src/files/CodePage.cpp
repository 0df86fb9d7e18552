#include "files/CodePage.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace
{

constexpr int g_FirstSpecial = 0x80;   // below it and from 0xA0 up, byte and unit are the same number

// The units of the bytes 0x80 to 0x9F.
constexpr std::array<char16_t, 32> g_SpecialUnits = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

}   // namespace

static bool IsSpecialByte(unsigned char byte)
{
    return byte >= g_FirstSpecial && byte < g_FirstSpecial + static_cast<int>(g_SpecialUnits.size());
}

std::u16string ToUtf16(std::string_view text)
{
    std::u16string units;
    units.reserve(text.size());
    for (const char c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        units.push_back(IsSpecialByte(byte) ? g_SpecialUnits[byte - std::size_t{g_FirstSpecial}] : char16_t{byte});
    }
    return units;
}

static bool IsSameNumber(char16_t unit)
{
    return unit < g_FirstSpecial || (unit >= g_FirstSpecial + g_SpecialUnits.size() && unit <= 0xFF);
}

std::string FromUtf16(std::u16string_view units, std::string_view defaultChar)
{
    if (defaultChar.empty()) defaultChar = "?";
    std::string text;
    text.reserve(units.size());
    for (const char16_t unit : units) {
        if (IsSameNumber(unit)) {
            text.push_back(static_cast<char>(unit));
            continue;
        }
        const auto found = std::find(g_SpecialUnits.begin(), g_SpecialUnits.end(), unit);
        if (found == g_SpecialUnits.end()) text += defaultChar;
        else text.push_back(static_cast<char>(g_FirstSpecial + (found - g_SpecialUnits.begin())));
    }
    return text;
}
