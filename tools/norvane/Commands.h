#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

// Everything that norvane's command line knows: its subcommands with their options, and examples below each --help.
// What the parser chooses stands in `run` then, and gives the exit status. --help, the manual pages and the completions
// are all made of this.
// `responseFiles` are those that stood on the command line; they outlive the run.
void DescribeProgram(CLI::App& app, std::function<int()>& run, const std::vector<std::string>& responseFiles);
