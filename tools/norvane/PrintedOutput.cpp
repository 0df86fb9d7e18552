#include "norvane/PrintedOutput.h"

#include "norvane/MessageCatalogue.h"

#include <algorithm>
#include <charconv>

const char* GetWord(Severity severity)
{
    switch (severity) {
    case Severity::Error: return "error";
    case Severity::Warning: return "warning";
    case Severity::Note: return "note";
    }
    return "";
}

// No directories in front of the last backslash.
static std::string GetShownName(const std::string& name)
{
    const std::size_t separator = name.rfind('\\');
    return separator == std::string::npos ? name : name.substr(separator + 1);
}

CPrintedOutput::CPrintedOutput(const std::vector<std::string>& sources, const std::string& target,
                               const std::string& outputName)
    : m_Files(sources), m_SummaryFront(outputName + " - "), m_Sources(sources)
{
    m_Files.push_back(target);
    std::stable_sort(m_Files.begin(), m_Files.end(), [](const std::string& a, const std::string& b) {
        return a.size() > b.size();
    });
    for (const std::string& source : sources) m_Shown.push_back(GetShownName(source));
}

static bool TakeNumber(std::string_view& text, int& number)
{
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc()) return false;
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return true;
}

static bool Take(std::string_view& text, std::string_view front)
{
    if (!text.starts_with(front)) return false;
    text.remove_prefix(front.size());
    return true;
}

// "(12,5) : "
static bool TakePlace(std::string_view& text, Diagnostic& diagnostic)
{
    std::string_view rest = text;
    if (!Take(rest, "(") || !TakeNumber(rest, diagnostic.line) || !Take(rest, ",")) return false;
    if (!TakeNumber(rest, diagnostic.printedColumn) || !Take(rest, ")") || !Take(rest, " : ")) return false;
    text = rest;
    return true;
}

// How a target's library stands in a line of its own, and in messages.
static constexpr std::string_view g_LibraryName = "FirmwareLibrary";
static constexpr std::string_view g_LibraryMark = "FirmwareLibrary.~";

// "FirmwareLibrary.~st0(3,1) : ", which no user has named.
static bool TakeLibraryName(std::string_view& text, Diagnostic& diagnostic)
{
    const std::size_t mark = text.find(g_LibraryMark);
    const std::size_t end = mark == std::string_view::npos ? mark : text.find('(', mark);
    if (end == std::string_view::npos || text.substr(0, mark).find("(") != std::string_view::npos) return false;
    diagnostic.file = text.substr(0, end);
    text.remove_prefix(end);
    return true;
}

bool CPrintedOutput::SplitPlace(std::string_view line, Diagnostic& diagnostic, std::string_view& text) const
{
    for (const std::string& file : m_Files) {
        text = line;
        if (!Take(text, file) || !TakePlace(text, diagnostic)) continue;
        diagnostic.file = file;
        return true;
    }
    text = line;
    if (TakeLibraryName(text, diagnostic) && TakePlace(text, diagnostic)) return true;
    text = line;
    diagnostic.file = m_CurrentFile;
    return TakePlace(text, diagnostic);   // at a text literal
}

bool CPrintedOutput::SplitFile(std::string_view line, Diagnostic& diagnostic, std::string_view& text) const
{
    for (const std::string& file : m_Files) {
        text = line;
        if (!Take(text, file) || !Take(text, " ")) continue;
        diagnostic.file = file;
        return true;
    }
    text = line;
    return Take(text, " ");
}

static bool SplitSeverity(std::string_view& text, Severity& severity)
{
    for (const std::string_view front : {"error: ", "error, "})
        if (Take(text, front)) return severity = Severity::Error, true;
    for (const std::string_view front : {"warning, ", "warning: "})
        if (Take(text, front)) return severity = Severity::Warning, true;
    return false;
}

static std::string TrimEnd(std::string_view text)
{
    while (text.ends_with(' ') || text.ends_with('\r')) text.remove_suffix(1);
    return std::string(text);
}

// x.asm - 2 error(s), 0 warning(s)
bool CPrintedOutput::ReadSummary(std::string_view line)
{
    int errors = 0;
    if (!Take(line, m_SummaryFront) || !TakeNumber(line, errors) || !Take(line, " error(s), ")) return false;
    m_HasSummary = true;
    m_CountedErrors = errors;
    return true;
}

bool CPrintedOutput::ReadFileName(std::string_view line)
{
    if (line == g_LibraryName) return m_HasLibrary = true;
    for (std::size_t i = 0; i < m_Shown.size(); ++i)
        if (line == m_Shown[i]) return m_CurrentFile = m_Sources[i], true;
    return false;
}

bool CPrintedOutput::ReadMessage(std::string_view line, std::string_view nextLine, bool& usesNext)
{
    Diagnostic diagnostic;
    std::string_view text;
    if (!SplitPlace(line, diagnostic, text)) {
        diagnostic = {};
        if (!SplitFile(line, diagnostic, text)) return false;
    }
    const std::string_view printed = text;
    if (!SplitSeverity(text, diagnostic.severity)) return false;
    diagnostic.text = TrimEnd(text);
    usesNext = MessageCatalogue::GoesOn(printed);
    MessageCatalogue::Match match;
    if (usesNext) {
        match = MessageCatalogue::Identify(std::string(printed) + "\n" + std::string(nextLine));
        diagnostic.continuation = TrimEnd(nextLine);
    } else {
        match = MessageCatalogue::Identify(printed);
    }
    diagnostic.id = match.id;
    diagnostic.arguments = match.arguments;
    m_Diagnostics.push_back(std::move(diagnostic));
    return true;
}

// A line that the compiler prints without counting it.
static constexpr std::string_view g_NoInteger = "error required an integer value";

void CPrintedOutput::ReadMessages(std::string_view printed)
{
    while (!printed.empty()) {
        const std::size_t end = std::min(printed.find('\n'), printed.size());
        std::string_view line = printed.substr(0, end);
        printed.remove_prefix(std::min(end + 1, printed.size()));
        const std::string_view next = printed.substr(0, printed.find('\n'));
        bool usesNext = false;
        while (!ReadMessage(line, next, usesNext) && !ReadSummary(line) && !ReadFileName(line)) {
            if (line == g_NoInteger)
                m_Diagnostics.push_back({Severity::Warning, "", m_CurrentFile, 0, 0, 0, 0, std::string(g_NoInteger),
                                         "", {}, "", -1});
            constexpr std::string_view echoed = "()|\"";
            if (line.empty() || echoed.find(line.front()) == std::string_view::npos) break;
            line.remove_prefix(1);
        }
        if (usesNext) printed.remove_prefix(std::min(next.size() + 1, printed.size()));
    }
}

// tank.st(12,5) : note N5: a literal FALSE in front of ELSIF: ...
// target.xml : note N25: the alignment of ...
bool CPrintedOutput::ReadNote(std::string_view line)
{
    Diagnostic diagnostic;
    std::string_view text;
    const bool hasPlace = SplitPlace(line, diagnostic, text);
    if (!hasPlace) {
        diagnostic = {};
        if (!SplitFile(line, diagnostic, text) || !Take(text, ": ")) return false;
    }
    // A source that begins inside a comment has no place for it, and is shown with line 0.
    if (Take(text, "note ")) {
        const std::size_t end = text.find(": ");
        if (end == std::string_view::npos) return false;
        diagnostic.severity = Severity::Note;
        diagnostic.id = text.substr(0, end);
        text.remove_prefix(end + 2);
    } else if (!hasPlace || !SplitSeverity(text, diagnostic.severity)) {
        return false;
    }
    diagnostic.text = TrimEnd(text);
    m_Diagnostics.push_back(std::move(diagnostic));
    return true;
}

void CPrintedOutput::ReadNotes(std::string_view printed)
{
    while (!printed.empty()) {
        const std::size_t end = std::min(printed.find('\n'), printed.size());
        const std::string_view line = printed.substr(0, end);
        printed.remove_prefix(std::min(end + 1, printed.size()));
        if (!line.empty() && !ReadNote(line)) m_Complaints.emplace_back(line);
    }
}
