#pragma once

#include "norvane/Compilation.h"
#include "norvane/Report.h"

#include <string>
#include <vector>

namespace CLI
{
class App;
}

enum class NotePolicy { Show, Hide, Error };
enum class ColourPolicy { Auto, Always, Never };

// The switches that check, build and check-target have in common.
struct BuildSettings
{
    ReportFormat format = ReportFormat::Text;
    ColourPolicy colour = ColourPolicy::Auto;
    NotePolicy notes = NotePolicy::Show;
    bool showsAll = false;
    bool warningsAreErrors = false;

    ReportStyle GetStyle() const;
    // Whether what was found lets the run pass.
    bool IsAccepted(const CFindings& findings) const;
};

void AddBuildSettings(CLI::App& command, BuildSettings& settings);
void AddReportSettings(CLI::App& command, BuildSettings& settings);

// Takes away the notes that the user doesn't want to see.
void ApplyNotePolicy(CFindings& findings, NotePolicy policy);

// Prints what was found in any of the formats.
void PrintFindings(const CFindings& findings, const BuildSettings& settings, bool hasSummary);
