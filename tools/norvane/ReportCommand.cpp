#include "norvane/ReportCommand.h"

#include "files/FileSystem.h"
#include "norvane/Session.h"
#include "report/BuildReader.h"
#include "report/HtmlReport.h"
#include "report/JsonReport.h"
#include "report/Limits.h"
#include "report/TextReport.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>
#include <fstream>

namespace
{

struct ReportArguments
{
    std::string build;
    std::string target;
    std::string format;
    std::string output;
    std::string messages;
    std::vector<std::string> limits;
    int cellBytes = 4;
};

}   // namespace

static int Fail(const std::string& text)
{
    fmt::print(stderr, "norvane: {}\n", text);
    return g_ExitUnable;
}

static std::string Render(const BuildFacts& facts, const std::string& format)
{
    if (format == "html") return CHtmlReport(facts).Render();
    if (format == "json") return RenderJsonReport(facts);
    return CTextReport(facts).Render();
}

static bool Write(const std::string& text, const std::string& fileName)
{
    if (fileName.empty() || fileName == "-")
        return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    std::ofstream file(fileName, std::ios::binary);
    file << text;
    file.close();
    return static_cast<bool>(file);
}

static int CheckLimits(const BuildFacts& facts, const std::vector<Limit>& limits)
{
    int status = g_ExitFine;
    std::string error;
    for (const Limit& limit : limits) {
        const std::optional<bool> isCrossed = IsCrossed(facts, limit, error);
        if (!isCrossed) return Fail(error);
        if (!*isCrossed) continue;
        const LimitedUse use = GetLimitedUse(facts, limit.what);
        const std::string size = use.size < 0 ? std::string() : fmt::format(" of {}", use.size);
        fmt::print(stderr, "norvane: {}: {}{} bytes are used\n", limit.text, use.used, size);
        status = g_ExitFailed;
    }
    return status;
}

static int Report(const ReportArguments& arguments)
{
    std::vector<Limit> limits;
    std::string error;
    for (const std::string& text : arguments.limits) {
        const std::optional<Limit> limit = ParseLimit(text, error);
        if (!limit) return Fail(error);
        limits.push_back(*limit);
    }
    BuildFacts facts;
    facts.stacks.cellBytes = arguments.cellBytes;
    if (!CBuildReader::Load(arguments.build, arguments.target, facts, error)) return Fail(error);
    if (!arguments.messages.empty()) {
        std::string text;
        if (!ReadWholeFile(arguments.messages, text)) return Fail(arguments.messages + ": cannot be read");
        ReadMessages(text, facts);
    }
    std::string format = arguments.format;
    if (format.empty())
        format = arguments.output.ends_with(".html") ? "html" : arguments.output.ends_with(".json") ? "json" : "text";
    if (!Write(Render(facts, format), arguments.output))
        return Fail((arguments.output.empty() ? "standard output" : arguments.output) + ": cannot be written");
    return CheckLimits(facts, limits);
}

void AddReportCommand(CLI::App& app, std::function<int()>& run)
{
    auto pArguments = std::make_shared<ReportArguments>();
    ReportArguments& arguments = *pArguments;
    CLI::App* pCommand = app.add_subcommand("report", "show what a build is made of: memory, stacks, POUs");
    pCommand->add_option("BUILD", arguments.build, "what the compiler wrote: NAME.asm, with NAME.dbi beside it")->required();
    pCommand->add_option("-i", arguments.target, "the target description, which tells the sizes of the areas");
    pCommand->add_option("-o", arguments.output, "write to this file; its ending (.html, .json) tells the format");
    pCommand->add_option("--format", arguments.format, "html|json|text (text)")
        ->check(CLI::IsMember({"html", "json", "text"}))
        ->type_name("");
    pCommand->add_option("--messages", arguments.messages, "what the compiler printed for this build");
    pCommand->add_option("--fail-if", arguments.limits,
                         "exit status 1 if more is used, such as \"retain>90%\": global, retain, input, output, memory, "
                         "stack (deepest program), nested (all programs), parameters");
    pCommand->add_option("--cell-bytes", arguments.cellBytes, "bytes of parameter stack that a value takes (4)")
        ->check(CLI::Range(1, 64));
    pCommand->callback([pArguments, &run] { run = [pArguments] { return Report(*pArguments); }; });
}
