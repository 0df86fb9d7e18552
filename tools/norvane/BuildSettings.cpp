#include "norvane/BuildSettings.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

template <class T>
static void AddWords(CLI::App& command, const std::string& name, T& value, const std::string& text,
                     const std::vector<std::pair<std::string, T>>& words)
{
    command.add_option(name, value, text)
        ->transform(CLI::CheckedTransformer(words).description("WORD"))
        ->type_name("");
}

void AddReportSettings(CLI::App& command, BuildSettings& settings)
{
    AddWords<ReportFormat>(command, "--format", settings.format, "text|gcc|json|sarif: how messages are printed",
                           {{"text", ReportFormat::Text},
                            {"gcc", ReportFormat::Gcc},
                            {"json", ReportFormat::Json},
                            {"sarif", ReportFormat::Sarif}});
    AddWords<ColourPolicy>(command, "--color", settings.colour, "auto|always|never: auto is on a terminal",
                           {{"auto", ColourPolicy::Auto},
                            {"always", ColourPolicy::Always},
                            {"never", ColourPolicy::Never}});
    command.add_flag("--werror", settings.warningsAreErrors, "warnings give exit status 1, too");
}

void AddBuildSettings(CLI::App& command, BuildSettings& settings)
{
    AddReportSettings(command, settings);
    AddWords<NotePolicy>(command, "--notes", settings.notes, "show|hide|error: with error they give exit status 1",
                         {{"show", NotePolicy::Show}, {"hide", NotePolicy::Hide}, {"error", NotePolicy::Error}});
    command.add_flag("--all", settings.showsAll, "show the messages that follow from others, too");
}

// NO_COLOR counts for what nobody has asked for.
static bool IsColoured(ColourPolicy policy)
{
    if (policy != ColourPolicy::Auto) return policy == ColourPolicy::Always;
    const char* szNoColour = std::getenv("NO_COLOR");
    const char* szTerminal = std::getenv("TERM");
    const bool isDumb = szTerminal && std::string_view(szTerminal) == "dumb";
    return isatty(STDOUT_FILENO) == 1 && (!szNoColour || *szNoColour == '\0') && !isDumb;
}

ReportStyle BuildSettings::GetStyle() const
{
    return {format, IsColoured(colour), showsAll, false};
}

bool BuildSettings::IsAccepted(const CFindings& findings) const
{
    if (findings.Count(Severity::Error) > 0) return false;
    if (warningsAreErrors && findings.Count(Severity::Warning) > 0) return false;
    return notes != NotePolicy::Error || findings.Count(Severity::Note) == 0;
}

void ApplyNotePolicy(CFindings& findings, NotePolicy policy)
{
    if (policy != NotePolicy::Hide) return;
    std::erase_if(findings.m_Diagnostics, [](const Diagnostic& d) { return d.severity == Severity::Note; });
}

void PrintFindings(const CFindings& findings, const BuildSettings& settings, bool hasSummary)
{
    ReportStyle style = settings.GetStyle();
    style.hasSummary = hasSummary;
    std::string text;
    if (settings.format == ReportFormat::Json) text = FormatJson(findings, {});
    else if (settings.format == ReportFormat::Sarif) text = FormatSarif({&findings}, settings.showsAll);
    else text = FormatReport(findings, style);
    std::fwrite(text.data(), 1, text.size(), stdout);
}
