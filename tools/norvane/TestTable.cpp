#include "norvane/TestTable.h"

#include "files/FileSystem.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <set>
#include <sstream>

static std::string Trim(const std::string& text)
{
    const std::size_t begin = text.find_first_not_of(" \t\r");
    if (begin == std::string::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t\r") - begin + 1);
}

static std::vector<std::string> SplitWords(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

std::optional<std::vector<std::string>> SplitCells(const std::string& line)
{
    std::vector<std::string> cells;
    std::size_t i = 0;
    for (;;) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t')) ++i;
        std::string cell;
        if (i < line.size() && line[i] == '"') {
            for (++i;; ++i) {
                if (i >= line.size()) return {};
                if (line[i] != '"') {
                    cell += line[i];
                    continue;
                }
                if (i + 1 < line.size() && line[i + 1] == '"') {
                    cell += line[++i];
                    continue;
                }
                break;
            }
            i = std::min(line.find(',', i), line.size());
        } else {
            const std::size_t end = std::min(line.find(',', i), line.size());
            cell = Trim(line.substr(i, end - i));
            i = end;
        }
        cells.push_back(std::move(cell));
        if (i >= line.size()) return cells;
        ++i;
    }
}

bool CTestTable::Load(const std::string& fileName, std::string& error)
{
    std::string text;
    if (ReadWholeFile(fileName, text)) return Read(text, fileName, error);
    error = fileName + ": cannot be read";
    return false;
}

bool CTestTable::Read(const std::string& text, const std::string& fileName, std::string& error)
{
    m_FileName = fileName;
    std::istringstream stream(text);
    std::string line;
    int number = 0;
    bool isFine = true;
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";   // as spreadsheets write it
    while (isFine && std::getline(stream, line)) {
        ++number;
        if (number == 1 && line.starts_with(byteOrderMark)) line.erase(0, byteOrderMark.size());
        line = Trim(line);
        if (line.empty()) continue;
        if (line.front() == '#') {
            isFine = !m_Columns.empty() || ReadSetting(line.substr(1));   // behind the header a remark
            continue;
        }
        std::optional<std::vector<std::string>> cells = SplitCells(line);
        if (!cells) isFine = Fail("a quote is not closed");
        else isFine = m_Columns.empty() ? ReadHeader(std::move(*cells)) : ReadRow(std::move(*cells), number);
    }
    if (isFine && m_Columns.empty()) isFine = Fail("there is no header");
    if (isFine && m_Programs.empty()) isFine = Fail("no line says \"# program:\"");
    if (!isFine) error = fileName + "(" + std::to_string(number) + "): " + m_Reason;
    return isFine;
}

std::string CTestTable::InFolder(const std::string& name) const
{
    // "tests/../a.st" and "a.st" are one source in the coverage.
    return (std::filesystem::path(m_FileName).parent_path() / name).lexically_normal().string();
}

// "program: a.st b.st". A line without a colon is a remark.
bool CTestTable::ReadSetting(const std::string& line)
{
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) return true;
    const std::string key = Trim(line.substr(0, colon));
    const std::string value = Trim(line.substr(colon + 1));
    if (key == "program") {
        for (const std::string& name : SplitWords(value)) m_Programs.push_back(InFolder(name));
    } else if (key == "target") {
        m_Target = InFolder(value);
    } else if (key == "scan") {
        m_ScanTime = value;
    } else if (key == "options") {
        m_Options = SplitWords(value);
    } else if (key == "task") {
        for (const std::string& task : SplitWords(value)) m_Tasks.push_back(task);
    } else if (key.find(' ') == std::string::npos) {
        return Fail("unknown setting \"" + key + "\"");
    }
    return true;
}

bool CTestTable::ReadHeader(std::vector<std::string> cells)
{
    std::set<std::string> names;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (cells[i].empty() || cells[i] == "?") return Fail("column " + std::to_string(i + 1) + " has no name");
        if (!names.insert(cells[i]).second) return Fail("column " + cells[i] + " stands twice");
        if (cells[i] == "scan") m_ScanColumn = static_cast<int>(i);
    }
    if (m_ScanColumn < 0) return Fail("there is no column scan");
    m_Columns = std::move(cells);
    return true;
}

bool CTestTable::ReadRow(std::vector<std::string> cells, int line)
{
    if (cells.size() > m_Columns.size())
        return Fail(std::to_string(cells.size()) + " cells for " + std::to_string(m_Columns.size()) + " columns");
    cells.resize(m_Columns.size());
    std::string& text = cells[static_cast<std::size_t>(m_ScanColumn)];
    const std::int64_t last = m_Rows.empty() ? 0 : m_Rows.back().scan;
    const bool isStep = text.starts_with('+');
    std::int64_t number = 0;
    const char* begin = text.data() + (isStep ? 1 : 0);
    const std::from_chars_result end = std::from_chars(begin, text.data() + text.size(), number);
    constexpr std::int64_t most = 1'000'000'000;
    if (end.ec != std::errc() || end.ptr != text.data() + text.size() || number < 1 || number > most)
        return Fail("\"" + text + "\" is no scan: expected a number from 1 on, or +n");
    if (isStep) number += last;
    if (number <= last) return Fail("scan " + text + " does not come behind scan " + std::to_string(last));
    text.clear();
    m_Rows.push_back({line, number, std::move(cells)});
    return true;
}
