#pragma once

#include <string>

namespace CLI
{
class App;
}

// The manual page of a command, in the language of man(7), made of what its --help shows: "norvane" for the program
// with a list of its subcommands, "norvane-run" for a subcommand with its options and examples.
std::string FormatManPage(const CLI::App& command, const std::string& version);

// The name of a command's page: the words of its command line with dashes between them.
std::string GetPageName(const CLI::App& command);
