#pragma once

#include <functional>

namespace CLI
{
class App;
}

// norvane diff: what a download would change. Exit status 1 when something of --fail-on happens, 2 when a build can't
// be read.
void AddDiffCommand(CLI::App& app, std::function<int()>& run);
