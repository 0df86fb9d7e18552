#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// printf into a string, for formats that stand in our own code; a text from the user is never a format.
[[gnu::format(printf, 1, 2)]] std::string FormatText(const char* format, ...);

// The same, appended to `text`, which spares a temporary where much is written.
[[gnu::format(printf, 2, 3)]] void AppendFormat(std::string& text, const char* format, ...);

// "%f". What is no number is "nan" without a sign: whether it has one depends on the machine.
std::string FormatReal(double value);

// For a place that must stay one line: "a\nb" as "a\x0Ab". Everything but control characters is as it was.
std::string ShowControlCharacters(std::string_view text);

// ASCII letters only, whatever the locale: names are the same on every machine.
std::string ToLowerCase(std::string_view text);
std::string ToUpperCase(std::string_view text);
bool EqualIgnoringCase(std::string_view a, std::string_view b);

// Decimal number at the start of the text, behind white space and a sign; 0 if there is none, the
// nearest 32-bit value if it is too large.
std::int32_t ToInt(std::string_view text);
