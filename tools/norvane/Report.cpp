#include "norvane/Report.h"

#include "norvane/Findings.h"
#include "norvane/TextWidth.h"

#include <fmt/format.h>

#include <algorithm>

namespace
{

// What a terminal is told to show text in a colour; nothing if it isn't to.
struct Paint
{
    bool isColoured;

    std::string Bold(std::string_view text) const { return Wrap("1", text); }
    std::string Caret(std::string_view text) const { return Wrap("1;32", text); }
    std::string Hint(std::string_view text) const { return Wrap("1;36", text); }
    std::string Word(Severity severity) const
    {
        constexpr const char* codes[] = {"1;31", "1;35", "1;34"};   // in the order of Severity
        return Wrap(codes[static_cast<int>(severity)], GetWord(severity));
    }

private:
    std::string Wrap(const char* code, std::string_view text) const
    {
        return isColoured ? fmt::format("\x1b[{}m{}\x1b[m", code, text) : std::string(text);
    }
};

}   // namespace

// "tank.st:12:5", as far as the place is known.
static std::string FormatPlace(const Diagnostic& diagnostic)
{
    std::string place = diagnostic.file.empty() ? "norvane" : MakePrintable(diagnostic.file);
    if (diagnostic.line > 0) place += fmt::format(":{}", diagnostic.line);
    if (diagnostic.line > 0 && diagnostic.column > 0) place += fmt::format(":{}", diagnostic.column);
    return place;
}

static std::string FormatHead(const Diagnostic& diagnostic, const Paint& paint)
{
    std::string line = paint.Bold(FormatPlace(diagnostic) + ":") + " " + paint.Word(diagnostic.severity) + ": ";
    line += MakePrintable(diagnostic.text);
    if (!diagnostic.id.empty()) line += " [" + diagnostic.id + "]";
    return line + "\n";
}

//	  12 | x := y + 1;
//	     |      ^
static std::string FormatSourceLine(const Diagnostic& diagnostic, const CFindings& findings, const Paint& paint)
{
    const CSourceText* pSource = findings.FindSource(diagnostic.file);
    if (!pSource || diagnostic.line < 1 || diagnostic.column < 1) return {};
    const std::string_view line = pSource->GetLine(diagnostic.line);
    const std::size_t front = static_cast<std::size_t>(diagnostic.column) - 1;
    const std::size_t end = std::max(static_cast<std::size_t>(std::max(diagnostic.endColumn, 1)) - 1, front);
    const int indent = GetWidth(line, front);
    const int length = std::max(GetWidth(line, end) - indent, 1);
    const std::string marks = "^" + std::string(static_cast<std::size_t>(length) - 1, '~');
    return fmt::format("{:>5} | {}\n      | {}{}\n", diagnostic.line, MakePrintable(line),
                       std::string(static_cast<std::size_t>(indent), ' '), paint.Caret(marks));
}

static int CountFollowers(const CFindings& findings, int index)
{
    return static_cast<int>(std::count_if(findings.m_Diagnostics.begin(), findings.m_Diagnostics.end(),
                                          [&](const Diagnostic& d) { return d.cause == index; }));
}

static std::string FormatFollowers(int count)
{
    if (count == 0) return {};
    return count == 1 ? "      and 1 more that follows from it\n"
                      : fmt::format("      and {} more that follow from it\n", count);
}

static std::string FormatForPeople(const CFindings& findings, const ReportStyle& style)
{
    const Paint paint{style.isColoured};
    std::string text;
    int index = 0;
    for (const Diagnostic& diagnostic : findings.m_Diagnostics) {
        const int own = index++;
        if (diagnostic.cause >= 0 && !style.showsAll) continue;
        text += FormatHead(diagnostic, paint) + FormatSourceLine(diagnostic, findings, paint);
        if (!diagnostic.continuation.empty()) text += "      " + MakePrintable(diagnostic.continuation) + "\n";
        if (!diagnostic.hint.empty()) text += "      " + paint.Hint("hint:") + " " + diagnostic.hint + "\n";
        if (!style.showsAll) text += FormatFollowers(CountFollowers(findings, own));
    }
    return text;
}

static std::string Plural(int count, const char* word)
{
    return fmt::format("{} {}{}", count, word, count == 1 ? "" : "s");
}

std::string FormatCounts(int errors, int warnings, int notes)
{
    return Plural(errors, "error") + ", " + Plural(warnings, "warning") + ", " + Plural(notes, "note");
}

static std::string FormatSummary(const CFindings& findings, bool showsAll)
{
    std::string line = FormatCounts(findings.Count(Severity::Error), findings.Count(Severity::Warning),
                                    findings.Count(Severity::Note));
    const bool hasFolded = std::any_of(findings.m_Diagnostics.begin(), findings.m_Diagnostics.end(),
                                       [](const Diagnostic& d) { return d.cause >= 0; });
    if (hasFolded && !showsAll) line += "; --all shows those that follow from others";
    return line + "\n";
}

// As GCC prints: what matches its messages, matches these. A hint is a note at the same place.
static std::string FormatGcc(const CFindings& findings, bool showsAll)
{
    const Paint plain{false};
    std::string text;
    for (const Diagnostic& diagnostic : findings.m_Diagnostics) {
        if (diagnostic.cause >= 0 && !showsAll) continue;
        text += FormatHead(diagnostic, plain);
        for (const std::string* pMore : {&diagnostic.continuation, &diagnostic.hint})
            if (!pMore->empty()) text += FormatPlace(diagnostic) + ": note: " + MakePrintable(*pMore) + "\n";
    }
    return text;
}

std::string FormatReport(const CFindings& findings, const ReportStyle& style)
{
    if (style.format == ReportFormat::Gcc) return FormatGcc(findings, style.showsAll);
    std::string text = FormatForPeople(findings, style);
    if (style.hasSummary) text += FormatSummary(findings, style.showsAll);
    return text;
}
