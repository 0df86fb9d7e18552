#pragma once

#include <functional>

namespace CLI
{
class App;
}

// norvane debug: a debugger's back end, spoken to on standard input and output.
void AddDebugCommand(CLI::App& app, std::function<int()>& run);
