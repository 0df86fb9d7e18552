#pragma once

#include "machine/Image.h"
#include "machine/Machine.h"
#include "machine/Names.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// What the subcommands share: a program made ready to run, from sources or from what the compiler left.

// Exit statuses of norvane.
constexpr int g_ExitFine = 0;
constexpr int g_ExitFailed = 1;      // a trap, a finding, an expectation that doesn't hold
constexpr int g_ExitUnable = 2;      // nothing could be run

namespace CLI
{
class App;
}

struct MachineArguments
{
    MachineOptions options;
    std::vector<std::string> tasks;      // "main=10ms"
    std::string scanTime = "10ms";
};

// Adds the switches of the model to a subcommand.
void AddMachineArguments(CLI::App& command, MachineArguments& arguments);

// "10ms", "1s", "500us" in microseconds; nothing if the text is no time above 0.
std::optional<std::int64_t> ParseTime(std::string_view text);

// "name=value" taken apart; false if there is no "=" behind a name.
bool SplitAssignment(const std::string& text, std::string& name, std::string& value);

// "a,m[1,2],b" taken apart at the commas outside of brackets.
std::vector<std::string> SplitNames(const std::vector<std::string>& texts);

struct ProgramArguments
{
    std::vector<std::string> files;              // one .asm, or sources
    std::string target;
    std::vector<std::string> compilerOptions;    // "-o1"
};

// Loads a program; sources are compiled first, in a folder of their own that is gone afterwards, and each of the
// compiler's notes is told to `note`. Null, with what to tell the user in `error`.
std::unique_ptr<CImage> LoadProgram(const ProgramArguments& arguments,
                                    const std::function<void(const std::string&)>& note, std::string& error);
void PrintNote(const std::string& note);         // to standard error

// Gives the machine its tasks and times. False, with the reason, if one is unknown or no time.
bool ConfigureMachine(CMachine& machine, const MachineArguments& arguments, std::string& error);
