#pragma once

#include "frontend/SourceLocation.h"

#include <cstdint>
#include <string>

// One recorded diagnostic. A number of the position is -1 when it is absent. The text still holds the
// "%d" of its position piece, which is filled in when it is printed.
class CError
{
public:
    explicit CError(std::string text);                                   // in the current file, without position
    CError(std::string text, std::int32_t line, std::int32_t column);    // in the current file
    CError(std::string text, const SourceLocation& location);

    // The whole line with its line end. Only the position piece at the front is expanded: a "%" in a
    // name or text is a character like any other.
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
