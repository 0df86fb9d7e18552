#pragma once

#include <string>

namespace CLI
{
class App;
}

// Completion of norvane's command line, made of the same description as its --help: subcommands, their options, and
// files for everything else.
std::string FormatBashCompletion(const CLI::App& program);
std::string FormatZshCompletion(const CLI::App& program);
