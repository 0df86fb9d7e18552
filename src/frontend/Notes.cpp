#include "frontend/Notes.h"

#include "frontend/Error.h"
#include "model/Pou.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

std::string_view CNotes::GetText(Note note)
{
    switch (note) {
#define NOTE(number, name, text) \
    case Note::name: return text;
#include "frontend/Notes.def"
#undef NOTE
    }
    return {};
}

void CNotes::Add(Note note, const SourceLocation& where, std::string_view subject)
{
    // A string literal knows no file of its own, but never stands alone.
    const std::string file = where.szFile ? where.szFile : "";
    m_Notes.push_back({note, file, where.nFirstLine, where.nFirstColumn, std::string(subject), nullptr, true});
}

void CNotes::AddOutsidePou(Note note, const SourceLocation& where, std::string_view subject)
{
    Add(note, where, subject);
    m_Notes.back().isOutsidePou = true;
}

void CNotes::AddInFile(Note note, std::string_view file, int line, int column, std::string_view subject)
{
    m_Notes.push_back({note, std::string(file), line, column, std::string(subject), nullptr, false});
}

void CNotes::EndPou(const CPou* pPou)
{
    for (; m_FirstOfPou < m_Notes.size(); ++m_FirstOfPou) {
        Entry& entry = m_Notes[m_FirstOfPou];
        if (!entry.isOutsidePou) entry.pPou = pPou;
    }
}

// Functions and function blocks that nothing reaches are comments in the output.
static bool IsCommentedOut(const CPou* pPou)
{
    return pPou && !pPou->IsProgram() && !pPou->m_Used;
}

static std::string FillSubject(std::string_view text, std::string_view subject)
{
    constexpr std::string_view mark = "{}";
    std::string filled(text);
    const std::size_t found = filled.find(mark);
    if (found != std::string::npos) filled.replace(found, mark.size(), subject);
    return filled;
}

std::string CNotes::GetPrintedLines(const std::vector<std::string>& sourceFiles) const
{
    std::unordered_map<std::string_view, std::size_t> order;
    for (std::size_t i = 0; i < sourceFiles.size(); ++i) order.emplace(sourceFiles[i], i);

    struct Line
    {
        std::tuple<bool, std::size_t, int, int, int> key;   // kind of file, file, line, column, number
        const Entry* pEntry;
    };
    std::vector<Line> lines;
    for (const Entry& entry : m_Notes) {
        if (IsCommentedOut(entry.pPou)) continue;
        const auto found = order.find(entry.file);
        const std::size_t file = found == order.end() ? 0 : found->second;
        lines.push_back({{entry.isSource, file, entry.line, entry.column, static_cast<int>(entry.note)}, &entry});
    }
    std::stable_sort(lines.begin(), lines.end(), [](const Line& a, const Line& b) { return a.key < b.key; });

    std::string text;
    std::unordered_set<std::string> withoutPlace;   // those that are printed already
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Entry& entry = *lines[i].pEntry;
        const bool hasPlace = entry.line > 0;
        if (hasPlace && i > 0 && lines[i].key == lines[i - 1].key) continue;
        std::string line = entry.file + (hasPlace ? "(%d,%d)" : "");
        line += " : note N" + std::to_string(static_cast<int>(entry.note)) + ": ";
        line += FillSubject(GetText(entry.note), entry.subject) + "\n";
        if (!hasPlace && !withoutPlace.insert(line).second) continue;
        const std::int32_t place[] = {entry.line, entry.column};
        text += ExpandMarks(line, std::span(place, hasPlace ? 2 : 0));
    }
    return text;
}
