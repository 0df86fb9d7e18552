#include "norvane/DiffCommand.h"

#include "norvane/Session.h"
#include "report/BuildReader.h"
#include "report/DiffRendering.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <charconv>
#include <cstdio>
#include <optional>

namespace
{

struct DiffArguments
{
    std::string before;
    std::string after;
    std::string target;
    std::string format = "text";
    std::vector<std::string> failures;   // "retain", "layout", "stack", "size:5%"
};

struct Failure
{
    std::string text;
    enum Kind { Retain, Layout, Stack, Size } kind = Retain;
    double percent = 0;                  // of Size
};

}   // namespace

static std::optional<Failure> ParseFailure(const std::string& text)
{
    if (text == "retain") return Failure{text, Failure::Retain, 0};
    if (text == "layout") return Failure{text, Failure::Layout, 0};
    if (text == "stack") return Failure{text, Failure::Stack, 0};
    if (text == "size") return Failure{text, Failure::Size, 0};
    constexpr std::string_view prefix = "size:";
    if (!text.starts_with(prefix) || !text.ends_with('%')) return {};
    Failure failure{text, Failure::Size, 0};
    const char* end = text.data() + text.size() - 1;
    const std::from_chars_result read = std::from_chars(text.data() + prefix.size(), end, failure.percent);
    if (read.ec != std::errc() || read.ptr != end || !(failure.percent >= 0)) return {};
    return failure;
}

static bool Happens(const CBuildDiff& diff, const Failure& failure)
{
    switch (failure.kind) {
    case Failure::Retain: return diff.HasLoss(DiffSection::Retained);
    case Failure::Layout:
        return diff.HasLoss(DiffSection::Retained) || diff.HasLoss(DiffSection::Located) ||
               diff.HasLoss(DiffSection::Globals) || diff.HasLoss(DiffSection::Types);
    case Failure::Stack: return diff.IsDeeper();
    case Failure::Size: break;
    }
    const double before = static_cast<double>(diff.CountInstructions(diff.GetBefore()));
    const double after = static_cast<double>(diff.CountInstructions(diff.GetAfter()));
    return after > before * (1 + failure.percent / 100);
}

static int Fail(const std::string& text)
{
    fmt::print(stderr, "norvane: {}\n", text);
    return g_ExitUnable;
}

static int Compare(const DiffArguments& arguments)
{
    std::vector<Failure> failures;
    for (const std::string& text : arguments.failures) {
        const std::optional<Failure> failure = ParseFailure(text);
        if (!failure) return Fail("--fail-on " + text + ": is none of retain, layout, stack, size, size:5%");
        failures.push_back(*failure);
    }
    BuildFacts before;
    BuildFacts after;
    std::string error;
    if (!CBuildReader::Load(arguments.before, arguments.target, before, error)) return Fail(error);
    if (!CBuildReader::Load(arguments.after, arguments.target, after, error)) return Fail(error);
    const CBuildDiff diff(before, after);
    const std::string text = arguments.format == "json"       ? RenderJsonDiff(diff)
                             : arguments.format == "markdown" ? RenderMarkdownDiff(diff)
                                                              : RenderTextDiff(diff);
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        return Fail("standard output: cannot be written");
    int status = g_ExitFine;
    for (const Failure& failure : failures) {
        if (!Happens(diff, failure)) continue;
        fmt::print(stderr, "norvane: --fail-on {}: it happens\n", failure.text);
        status = g_ExitFailed;
    }
    return status;
}

void AddDiffCommand(CLI::App& app, std::function<int()>& run)
{
    auto pArguments = std::make_shared<DiffArguments>();
    DiffArguments& arguments = *pArguments;
    CLI::App* pCommand = app.add_subcommand("diff", "show what a download would change");
    pCommand->add_option("OLD", arguments.before, "the build that runs: NAME.asm, with NAME.dbi beside it")->required();
    pCommand->add_option("NEW", arguments.after, "the build that is to replace it")->required();
    pCommand->add_option("-i", arguments.target, "the target description");
    pCommand->add_option("--format", arguments.format, "text|json|markdown (text)")
        ->check(CLI::IsMember({"text", "json", "markdown"}))
        ->type_name("");
    pCommand->add_option("--fail-on", arguments.failures,
                         "exit status 1 if it happens: retain, layout, stack, size, size:5% (grows by more than that)");
    pCommand->callback([pArguments, &run] { run = [pArguments] { return Compare(*pArguments); }; });
}
