#pragma once

#include "frontend/SourceLocation.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// The line as it is shown. Each "%d" takes the next of the numbers, as long as there is one, and each "%%" is one "%";
// all other text stays, a "%" in it too. That goes for the whole line, file name and texts from the source included: a
// "%d" in the name takes a number away from the position behind it. The text never reaches a printf.
std::string ExpandMarks(std::string_view line, std::span<const std::int32_t> numbers);

// One recorded diagnostic. A number of the position is -1 when it is absent. The text still holds the
// "%d" of its position piece, which is filled in when it is printed.
class CError
{
public:
    explicit CError(std::string text);                                   // in the current file, without position
    CError(std::string text, std::int32_t line, std::int32_t column);    // in the current file
    CError(std::string text, const SourceLocation& location);

    // The whole line with its line end, name and text expanded as one.
    std::string GetPrintedLine() const;

    std::int32_t nFirstLine = -1;
    std::int32_t nFirstColumn = -1;
    std::int32_t nLastLine = -1;
    std::int32_t nLastColumn = -1;
    std::string strText;
    std::string strFile;
    bool bWarning = false;
    bool bFatal = false;
    bool bRange = false;
};
