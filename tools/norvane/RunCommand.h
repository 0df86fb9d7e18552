#pragma once

#include <functional>

namespace CLI
{
class App;
}

// norvane run: runs a program scan by scan. Adds the subcommand; what the parser chooses stands in `run` then, and
// gives the exit status.
void AddRunCommand(CLI::App& app, std::function<int()>& run);
