#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

// norvane check: compiles and shows what there is to say, without outputs. norvane build: the same, and puts the
// outputs in place if nothing is wrong. Exit status 1 at any error, 2 if the compiler couldn't do its work. The
// response files of the command line are inputs of a build, too.
void AddCheckCommand(CLI::App& app, std::function<int()>& run);
void AddBuildCommand(CLI::App& app, std::function<int()>& run, const std::vector<std::string>& responseFiles);
