#include "frontend/Error.h"

#include "frontend/Scanner.h"

#include <cstddef>
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

std::string ExpandMarks(std::string_view line, std::span<const std::int32_t> numbers)
{
    std::string result;
    result.reserve(line.size());
    std::size_t nextNumber = 0;
    while (!line.empty()) {
        const std::string_view mark = line.substr(0, 2);
        if (mark == "%%") {
            result += '%';
            line.remove_prefix(mark.size());
        } else if (mark == "%d" && nextNumber < numbers.size()) {
            result += std::to_string(numbers[nextNumber++]);
            line.remove_prefix(mark.size());
        } else {
            result += line.front();
            line.remove_prefix(1);
        }
    }
    return result;
}

std::string CError::GetPrintedLine() const
{
    constexpr std::int32_t absent = -1;
    // Kept (messages): without a position a blank follows the file's name, which is empty before the first file.
    if (nFirstLine == absent) return ExpandMarks(strFile + " " + strText + "\n", {});

    const std::int32_t numbers[] = {nFirstLine, nFirstColumn, nLastLine, nLastColumn};
    std::size_t count = 2;
    if (bRange) count = 4;
    if (nFirstColumn == absent) count = 1;
    return ExpandMarks(strFile + strText + "\n", std::span(numbers, count));
}
