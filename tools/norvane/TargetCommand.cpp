#include "norvane/TargetCommand.h"

#include "files/FileSystem.h"
#include "norvane/BuildSettings.h"
#include "norvane/Session.h"
#include "norvane/TextWidth.h"
#include "target/TargetReview.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>
#include <memory>

namespace
{

struct TargetArguments
{
    std::vector<std::string> files;
    BuildSettings settings;
};

}   // namespace

// What is read as it stands there, and may be meant so, is a warning.
static Severity GetSeverity(TargetFindingKind kind)
{
    switch (kind) {
    case TargetFindingKind::Untidy:
    case TargetFindingKind::UnknownNode:
    case TargetFindingKind::UnknownAttribute:
    case TargetFindingKind::StrayText:
    case TargetFindingKind::RepeatedDataType:
    case TargetFindingKind::RepeatedCode: return Severity::Warning;
    default: return Severity::Error;
    }
}

// The byte at which so many characters have passed; both from 1.
static int GetByteColumn(std::string_view line, int characterColumn)
{
    for (std::size_t bytes = 0; bytes < line.size(); ++bytes)
        if (CountCharacters(line, bytes) >= characterColumn - 1) return static_cast<int>(bytes) + 1;
    return static_cast<int>(line.size()) + 1;
}

static Diagnostic MakeDiagnostic(const TargetFinding& finding, const std::string& file, const CSourceText& text)
{
    Diagnostic diagnostic;
    diagnostic.severity = GetSeverity(finding.kind);
    diagnostic.id = GetName(finding.kind);
    diagnostic.file = file;
    diagnostic.text = finding.text;
    if (finding.line < 1) return diagnostic;
    diagnostic.line = finding.line;
    if (finding.column >= 1) diagnostic.column = GetByteColumn(text.GetLine(finding.line), finding.column);
    diagnostic.endColumn = diagnostic.column + 1;
    const std::size_t index = text.FindTokenAt(diagnostic.line, diagnostic.column);
    if (index < text.GetTokens().size() && text.GetTokens()[index].kind == SourceToken::Kind::Word)
        diagnostic.endColumn = diagnostic.column + static_cast<int>(text.GetTokens()[index].text.size());
    return diagnostic;
}

static bool CheckTarget(const std::string& file, CFindings& findings)
{
    std::vector<TargetFinding> found;
    auto pText = std::make_unique<CSourceText>();
    if (IsDirectory(file) || !pText->Load(file, true, false)) return false;
    if (!ReviewTargetFile(file, TargetReviewScope::All, found)) return false;
    for (const TargetFinding& finding : found)
        findings.m_Diagnostics.push_back(MakeDiagnostic(finding, file, *pText));
    findings.AddSource(file, std::move(pText));
    return true;
}

static int CheckTargets(const TargetArguments& arguments)
{
    CFindings findings;
    int status = g_ExitFine;
    for (const std::string& file : arguments.files) {
        if (CheckTarget(file, findings)) continue;
        fmt::print(stderr, "norvane: {}: cannot be read\n", file);
        status = g_ExitUnable;
    }
    PrintFindings(findings, arguments.settings, true);
    return status == g_ExitFine && !arguments.settings.IsAccepted(findings) ? g_ExitFailed : status;
}

void AddTargetCommand(CLI::App& app, std::function<int()>& run)
{
    auto pArguments = std::make_shared<TargetArguments>();
    CLI::App* pCommand = app.add_subcommand("check-target", "show what a target description says and can't mean");
    pCommand->add_option("FILE", pArguments->files, "target descriptions")->required();
    AddReportSettings(*pCommand, pArguments->settings);
    pCommand->callback([pArguments, &run] { run = [pArguments] { return CheckTargets(*pArguments); }; });
}
