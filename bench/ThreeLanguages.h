#pragma once

#include <string>

enum class Language
{
    StructuredText,
    Lua,
    C
};

// The same program in one of three languages: that many functions, each of 40 lines, and a main program that calls
// each of them once. Line for line it says the same in all three, so compilers of one pass can be measured side by side.
std::string MakeProgram(Language language, int functions);
