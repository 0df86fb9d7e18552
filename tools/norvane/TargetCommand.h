#pragma once

#include <functional>

namespace CLI
{
class App;
}

// norvane check-target: shows what a target description says and can't mean. Exit status 1 at what is read otherwise
// than it is meant, 2 if a file can't be read.
void AddTargetCommand(CLI::App& app, std::function<int()>& run);
