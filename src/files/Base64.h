#pragma once

#include <string>
#include <string_view>

// Base64 in the system's own bit order: the low bits of the bytes go first, the mirror of the standard
// form. The firmware library is stored so. No line breaks; decoding skips foreign characters.
void Base64Encode(std::string_view data, std::string& text);
void Base64Decode(std::string_view text, std::string& data);

// RFC 4648 with padding and without line breaks.
void Base64EncodeStandard(std::string_view data, std::string& text);
void Base64DecodeStandard(std::string_view text, std::string& data);
