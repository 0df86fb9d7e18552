#pragma once

#include <cstdint>

// The stretch of a source file that a token, a tree node, a POU or a diagnostic stands for.
// Lines and columns are as the scanner counts them; -1 in a number means that there is none.
struct SourceLocation
{
    std::int32_t nFirstLine = 0;
    std::int32_t nFirstColumn = 0;
    std::int32_t nLastLine = 0;
    std::int32_t nLastColumn = 0;       // one past the end
    const char* szFile = nullptr;       // not owned; null for a node without a file, such as a string literal
};
