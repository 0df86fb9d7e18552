#include "norvane/Session.h"

#include "norvane/CompilerRun.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <charconv>
#include <cstdio>

// A switch with words for the values of an enumeration.
template <class T>
static void AddChoice(CLI::App& command, const std::string& name, T& value, const std::string& text,
                      const std::vector<std::pair<std::string, T>>& words)
{
    command.add_option(name, value, text)
        ->transform(CLI::CheckedTransformer(words).description("WORD"))
        ->type_name("")
        ->group("What the code format leaves open");
}

void AddMachineArguments(CLI::App& command, MachineArguments& arguments)
{
    MachineOptions& options = arguments.options;
    command.add_option("--scan-time", arguments.scanTime, "time from scan to scan (10ms)");
    command.add_option("--task", arguments.tasks, "PROGRAM=TIME: run the program each time this time has passed");
    command.add_option("--max-instructions", options.maxInstructions, "most instructions of one scan (10000000)")
        ->check(CLI::PositiveNumber);
    command.add_flag("--strict", options.strict, "report cells that are popped with another type than pushed");
    command.add_flag("--plain", options.plain, "run each instruction by itself, slowly");
    AddChoice<FrameContents>(command, "--frames", options.frames, "memory of a function at its call: zero|keep|noise",
                             {{"zero", FrameContents::Zero},
                              {"keep", FrameContents::Keep},
                              {"noise", FrameContents::Noise}});
    AddChoice<SystemCalls>(command, "--sys", options.systemCalls, "system calls: trap|ignore|print",
                           {{"trap", SystemCalls::Trap},
                            {"ignore", SystemCalls::Ignore},
                            {"print", SystemCalls::Print}});
    AddChoice<Remainder>(command, "--mod", options.remainder, "sign of MOD: of the dividend or the divisor: trunc|floor",
                         {{"trunc", Remainder::Truncated}, {"floor", Remainder::Floored}});
    AddChoice<RealDivision>(command, "--real-division", options.realDivision, "of a real by zero: trap|ieee",
                            {{"trap", RealDivision::Trap}, {"ieee", RealDivision::Ieee}});
    AddChoice<Rounding>(command, "--real-to-int", options.rounding, "conversion to an integer: trunc|nearest",
                        {{"trunc", Rounding::Truncate}, {"nearest", Rounding::Nearest}});
    AddChoice<WideShift>(command, "--wide-shift", options.wideShift, "shift beyond the width: zero|modulo",
                         {{"zero", WideShift::Zero}, {"modulo", WideShift::Modulo}});
    AddChoice<RightShift>(command, "--shr", options.rightShift, "SHR of signed types: arithmetic|logical",
                          {{"arithmetic", RightShift::Arithmetic}, {"logical", RightShift::Logical}});
    AddChoice<Underflow>(command, "--underflow", options.underflow, "taking from an empty stack: trap|zero",
                         {{"trap", Underflow::Trap}, {"zero", Underflow::Zero}});
    AddChoice<StartUp>(command, "--start-up", options.startUp, "programs that initialise globals run: once|every",
                       {{"once", StartUp::Once}, {"every", StartUp::Every}});
    command.add_option("--cell-bytes", options.cellBytes, "bytes of parameter stack that a value takes (4)")
        ->check(CLI::Range(1, 64))
        ->group("What the code format leaves open");
}

std::optional<std::int64_t> ParseTime(std::string_view text)
{
    std::int64_t number = 0;
    const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc() || number <= 0) return {};
    const std::string_view unit = text.substr(static_cast<std::size_t>(end.ptr - text.data()));
    std::int64_t factor = 0;
    if (unit == "us") factor = 1;
    if (unit == "ms") factor = 1000;
    if (unit == "s") factor = 1000000;
    constexpr std::int64_t longest = 86400LL * 365 * 1000000;   // a year
    if (factor == 0 || number > longest / factor) return {};
    return number * factor;
}

bool SplitAssignment(const std::string& text, std::string& name, std::string& value)
{
    const std::size_t position = text.find('=');
    if (position == std::string::npos || position == 0) return false;
    name = text.substr(0, position);
    value = text.substr(position + 1);
    return true;
}

std::vector<std::string> SplitNames(const std::vector<std::string>& texts)
{
    std::vector<std::string> names;
    for (const std::string& text : texts) {
        std::string name;
        int depth = 0;
        for (const char c : text) {
            if (c == '[') ++depth;
            if (c == ']') --depth;
            if (c != ',' || depth > 0) {
                name += c;
                continue;
            }
            if (!name.empty()) names.push_back(name);
            name.clear();
        }
        if (!name.empty()) names.push_back(name);
    }
    return names;
}

void PrintNote(const std::string& note)
{
    fmt::print(stderr, "{}\n", note);
}

std::unique_ptr<CImage> LoadProgram(const ProgramArguments& arguments,
                                    const std::function<void(const std::string&)>& note, std::string& error)
{
    const bool isListing = arguments.files.size() == 1 && arguments.files.front().ends_with(".asm");
    if (isListing) return CImage::Load(arguments.files.front(), arguments.target, error);
    for (const std::string& file : arguments.files) {
        if (!file.ends_with(".asm")) continue;
        error = file + ": a program is either one .asm file or sources";
        return nullptr;
    }
    if (arguments.target.empty()) {
        error = "sources need a target description (-i)";
        return nullptr;
    }
    CCompilerRun run;
    if (!run.Compile(arguments.files, arguments.target, arguments.compilerOptions, error)) return nullptr;
    for (const std::string& text : run.GetNotes()) note(text);
    std::unique_ptr<CImage> pImage = CImage::Load(run.GetListingName(), arguments.target, error);
    if (pImage) run.RestoreSourceNames(*pImage);
    return pImage;
}

bool ConfigureMachine(CMachine& machine, const MachineArguments& arguments, std::string& error)
{
    const std::optional<std::int64_t> scanTime = ParseTime(arguments.scanTime);
    if (!scanTime) {
        error = "--scan-time " + arguments.scanTime + ": is no time, such as 10ms";
        return false;
    }
    machine.SetScanTime(*scanTime);
    for (const std::string& task : arguments.tasks) {
        std::string name;
        std::string text;
        const bool isSplit = SplitAssignment(task, name, text);
        const std::optional<std::int64_t> period = isSplit ? ParseTime(text) : std::nullopt;
        if (!period) {
            error = "--task " + task + ": expected PROGRAM=TIME, such as main=10ms";
            return false;
        }
        if (machine.SetTask(name, *period)) continue;
        error = "--task " + task + ": there is no program " + name;
        return false;
    }
    return true;
}
