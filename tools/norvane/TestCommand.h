#pragma once

#include <functional>

namespace CLI
{
class App;
}

// norvane test: runs test tables. Exit status 1 when one fails, 2 when one can't run.
void AddTestCommand(CLI::App& app, std::function<int()>& run);
