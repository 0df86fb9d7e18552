#pragma once

#include <functional>

namespace CLI
{
class App;
}

// norvane report: what a build is made of. Exit status 1 when a limit of --fail-if is crossed, 2 when it can't be read.
void AddReportCommand(CLI::App& app, std::function<int()>& run);
