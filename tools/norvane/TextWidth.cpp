#include "norvane/TextWidth.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

static constexpr int g_TabWidth = 4;

namespace
{

struct Range
{
    std::uint32_t first;
    std::uint32_t last;
};

// Characters that take no place: marks that join the one before, and invisible ones.
constexpr Range g_NoWidth[] = {{0x300, 0x36F},   {0x483, 0x489},   {0x591, 0x5BD},   {0x610, 0x61A},
                               {0x64B, 0x65F},   {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x200B, 0x200F},
                               {0x202A, 0x202E}, {0x2060, 0x2064}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F},
                               {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}};
// Characters of double width: those of East Asia, and pictures.
constexpr Range g_DoubleWidth[] = {{0x1100, 0x115F}, {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xA960, 0xA97F},
                                   {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
                                   {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

struct Character
{
    std::uint32_t code = 0;
    std::size_t size = 1;    // bytes
    bool isValid = true;     // false: a byte that begins no character
};

}   // namespace

template <std::size_t N>
static bool IsWithin(const Range (&ranges)[N], std::uint32_t code)
{
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [code](const Range& range) { return code >= range.first && code <= range.last; });
}

// Too short forms and halves of pairs are no characters.
static bool IsProper(std::uint32_t code, std::size_t size)
{
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return code >= smallest[size] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

static Character DecodeFirst(std::string_view text)
{
    const std::uint32_t lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80) return {lead, 1, true};
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC0 || lead > 0xF4 || text.size() < size) return {lead, 1, false};
    std::uint32_t code = lead & (0x7Fu >> size);
    for (std::size_t i = 1; i < size; ++i) {
        const std::uint32_t next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) return {lead, 1, false};
        code = (code << 6) | (next & 0x3F);
    }
    if (!IsProper(code, size)) return {lead, 1, false};
    return {code, size, true};
}

static bool IsControl(std::uint32_t code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

static int GetPlaces(const Character& character, int width)
{
    if (character.code == '\t') return g_TabWidth - width % g_TabWidth;
    if (!character.isValid || IsControl(character.code)) return 1;
    if (IsWithin(g_NoWidth, character.code)) return 0;
    return IsWithin(g_DoubleWidth, character.code) ? 2 : 1;
}

std::string MakePrintable(std::string_view text)
{
    std::string printable;
    int width = 0;
    while (!text.empty()) {
        const Character character = DecodeFirst(text);
        const int places = GetPlaces(character, width);
        if (character.code == '\t') printable.append(static_cast<std::size_t>(places), ' ');
        else if (!character.isValid) printable += "\xEF\xBF\xBD";
        else if (IsControl(character.code)) printable += '?';
        else if (places > 0 || width > 0) printable += text.substr(0, character.size);
        width += places;
        text.remove_prefix(character.size);
    }
    return printable;
}

int GetWidth(std::string_view text, std::size_t byteCount)
{
    int width = 0;
    for (std::size_t i = 0; i < std::min(byteCount, text.size());) {
        const Character character = DecodeFirst(text.substr(i));
        width += GetPlaces(character, width);
        i += character.size;
    }
    return width;
}

int CountCharacters(std::string_view text, std::size_t byteCount)
{
    int count = 0;
    for (std::size_t i = 0; i < std::min(byteCount, text.size()); ++count) i += DecodeFirst(text.substr(i)).size;
    return count;
}
