#pragma once

#include <string>
#include <string_view>

// All text in memory is single-byte text in one code page, Windows-1252: a Western one in which 0x80 is
// the euro sign. Its five bytes without a character of their own (81, 8D, 8F, 90, 9D) stand for the control
// character of the same number, so every byte survives the way to UTF-16 and back.
std::u16string ToUtf16(std::string_view text);

// A unit that the code page lacks becomes the default characters, "?" if none are given; a surrogate pair
// counts as two such units.
std::string FromUtf16(std::u16string_view units, std::string_view defaultChar = {});
