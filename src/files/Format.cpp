#include "files/Format.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <limits>

static void AppendFormatList(std::string& text, const char* format, std::va_list arguments)
{
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    assert(length >= 0 && "our formats are valid");

    const std::size_t start = text.size();
    text.resize(start + static_cast<std::size_t>(length));
    // One more byte than the text has: the terminating zero falls on the string's own.
    std::vsnprintf(text.data() + start, static_cast<std::size_t>(length) + 1, format, arguments);
}

std::string FormatText(const char* format, ...)
{
    std::string text;
    std::va_list arguments;
    va_start(arguments, format);
    AppendFormatList(text, format, arguments);
    va_end(arguments);
    return text;
}

void AppendFormat(std::string& text, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    AppendFormatList(text, format, arguments);
    va_end(arguments);
}

std::string FormatReal(double value)
{
    if (std::isnan(value)) return "nan";
    constexpr int decimals = 6;
    // The largest has 309 digits in front of its point, and a sign.
    constexpr std::size_t most = std::numeric_limits<double>::max_exponent10 + decimals + 3;
    char text[most];
    const std::to_chars_result end = std::to_chars(text, text + most, value, std::chars_format::fixed, decimals);
    assert(end.ec == std::errc() && "the longest real has room");
    return std::string(text, end.ptr);
}

static bool IsControlCharacter(char c)
{
    const unsigned char byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}

std::string ShowControlCharacters(std::string_view text)
{
    std::string shown;
    shown.reserve(text.size());
    for (const char c : text) {
        if (IsControlCharacter(c)) AppendFormat(shown, "\\x%02X", static_cast<unsigned>(c));
        else shown += c;
    }
    return shown;
}

static char LowerCaseOf(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

static char UpperCaseOf(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string ToLowerCase(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), LowerCaseOf);
    return result;
}

std::string ToUpperCase(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), UpperCaseOf);
    return result;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return LowerCaseOf(x) == LowerCaseOf(y); });
}

static bool IsWhiteSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::int32_t ToInt(std::string_view text)
{
    std::size_t i = 0;
    while (i < text.size() && IsWhiteSpace(text[i])) ++i;
    const bool isNegative = i < text.size() && text[i] == '-';
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;

    // The bound stays far below 64 bits, so no length of text can wrap the sum.
    constexpr std::int64_t bound = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
    std::int64_t value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
        value = std::min(value * 10 + (text[i] - '0'), bound);
    if (isNegative) return static_cast<std::int32_t>(-value);
    return static_cast<std::int32_t>(std::min(value, bound - 1));
}
