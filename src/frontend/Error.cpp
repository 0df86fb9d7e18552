#include "frontend/Error.h"

#include "files/Format.h"
#include "frontend/Scanner.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

static std::string FileNameText(const char* szFile)
{
    return szFile ? std::string(szFile) : std::string();
}

CError::CError(std::string text) : strText(std::move(text)), strFile(FileNameText(g_CurrentFileName)) {}

CError::CError(std::string text, std::int32_t line, std::int32_t column)
    : nFirstLine(line), nFirstColumn(column), strText(std::move(text)), strFile(FileNameText(g_CurrentFileName))
{
}

CError::CError(std::string text, const SourceLocation& location)
    : nFirstLine(location.nFirstLine), nFirstColumn(location.nFirstColumn), nLastLine(location.nLastLine),
      nLastColumn(location.nLastColumn), strText(std::move(text)), strFile(FileNameText(location.szFile))
{
}

// The forms in which a position can stand at the front of a text, longest first.
constexpr std::array<std::string_view, 3> g_PositionForms = {"(%d,%d) (%d,%d)", "(%d,%d)", "(%d)"};

static std::size_t GetPositionLength(std::string_view text)
{
    for (const std::string_view form : g_PositionForms)
        if (text.starts_with(form)) return form.size();
    return 0;
}

// Fills the numbers into the position at the front of the text, in order. Where the position has room for
// more numbers than are given, and everywhere behind the position, the text stays as it is.
static std::string ExpandPosition(std::string_view text, const std::int32_t* pNumbers, std::size_t count)
{
    constexpr std::string_view mark = "%d";
    std::string_view position = text.substr(0, GetPositionLength(text));
    const std::string_view rest = text.substr(position.size());
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t found = position.find(mark);
        if (found == std::string_view::npos) break;
        result += position.substr(0, found);
        AppendFormat(result, "%d", static_cast<int>(pNumbers[i]));
        position.remove_prefix(found + mark.size());
    }
    result += position;
    result += rest;
    return result;
}

std::string CError::GetPrintedLine() const
{
    constexpr std::int32_t absent = -1;
    // Kept: without a position a blank follows the file's name, which is empty before the first file.
    if (nFirstLine == absent) return strFile + " " + strText + "\n";

    const std::int32_t numbers[] = {nFirstLine, nFirstColumn, nLastLine, nLastColumn};
    std::size_t count = 2;
    if (bRange) count = 4;
    if (nFirstColumn == absent) count = 1;
    return strFile + ExpandPosition(strText, numbers, count) + "\n";
}
