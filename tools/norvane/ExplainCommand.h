#pragma once

#include <functional>

namespace CLI
{
class App;
}

// norvane explain: shows what the pages say about messages and notes, by their identifiers. Exit status 2 for one that
// there is not.
void AddExplainCommand(CLI::App& app, std::function<int()>& run);
