// Compiles the same program with this compiler, luac5.4 and tcc in turn and prints the medians: processor time, peak
// memory, and the ratios to luac. Then the start-up: a thousand small compiles each. Exit status 1 where the start-up
// takes more than 1.5 times luac's.
//
//   compare COMPILER TARGET_XML FIRST_ST [functions [rounds]]

#include "ThreeLanguages.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{

struct Cost
{
    double seconds = 0;         // user and system
    double megabytes = 0;       // peak
};

struct Contender
{
    const char* name;
    std::vector<std::string> command;
    std::vector<Cost> costs{};
};

}   // namespace

static double ToSeconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// In the scratch folder, with its output thrown away. Ends the comparison where the command fails.
static Cost RunOnce(const std::vector<std::string>& command)
{
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        std::vector<char*> arguments;
        for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
        arguments.push_back(nullptr);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "this command failed: %s ...\n", command[0].c_str());
        std::exit(2);
    }
    return {ToSeconds(usage.ru_utime) + ToSeconds(usage.ru_stime), static_cast<double>(usage.ru_maxrss) / 1024};
}

static double Median(std::vector<Cost> costs, double Cost::*pField)
{
    std::sort(costs.begin(), costs.end(), [pField](const Cost& a, const Cost& b) { return a.*pField < b.*pField; });
    return costs[costs.size() / 2].*pField;
}

// One run of each in turn, so that whatever else the machine does meets all of them.
static void Measure(std::vector<Contender>& contenders, int rounds, int runsInRound)
{
    for (int round = 0; round < rounds; ++round) {
        for (Contender& contender : contenders) {
            Cost sum;
            for (int run = 0; run < runsInRound; ++run) {
                const Cost cost = RunOnce(contender.command);
                sum.seconds += cost.seconds;
                sum.megabytes = std::max(sum.megabytes, cost.megabytes);
            }
            contender.costs.push_back(sum);
        }
    }
}

// The ratio of the first one's time to the base's.
static double PrintTable(const char* title, const std::vector<Contender>& contenders, const Contender& base)
{
    const double baseSeconds = Median(base.costs, &Cost::seconds);
    std::printf("%s\n%-10s %12s %10s %14s\n", title, "", "seconds", "MB", "of luac's time");
    for (const Contender& contender : contenders) {
        const double seconds = Median(contender.costs, &Cost::seconds);
        std::printf("%-10s %12.3f %10.1f %14.2f\n", contender.name, seconds,
                    Median(contender.costs, &Cost::megabytes), seconds / baseSeconds);
    }
    std::printf("\n");
    return Median(contenders[0].costs, &Cost::seconds) / baseSeconds;
}

static void WriteFile(const std::string& name, const std::string& text)
{
    std::ofstream(name, std::ios::binary) << text;
}

int main(int argc, char** argv)
{
    if (argc < 4) {
        std::fprintf(stderr, "usage: compare COMPILER TARGET_XML FIRST_ST [functions [rounds]]\n");
        return 2;
    }
    const std::string compiler = fs::absolute(argv[1]).string();
    const int functions = argc > 4 ? std::atoi(argv[4]) : 25000;
    const int rounds = argc > 5 ? std::max(1, std::atoi(argv[5])) : 7;

    std::string folder = (fs::temp_directory_path() / "norvane-compare-XXXXXX").string();
    if (!mkdtemp(folder.data())) {
        std::perror("scratch folder");
        return 2;
    }
    // The target of the examples with areas and a stack as large as they can be.
    fs::copy_file(argv[2], folder + "/target.xml");
    fs::copy_file(argv[3], folder + "/first.st");
    fs::current_path(folder);
    WriteFile("one.lua", "x = 1\n");
    WriteFile("one.c", "int x = 1;\n");
    WriteFile("many.st", MakeProgram(Language::StructuredText, functions));
    WriteFile("many.lua", MakeProgram(Language::Lua, functions));
    WriteFile("many.c", MakeProgram(Language::C, functions));

    std::vector<Contender> many = {{"compiler", {compiler, "many.st", "-i", "target.xml"}},
                                   {"luac", {"luac5.4", "-o", "many.luac", "many.lua"}},
                                   {"tcc", {"tcc", "-c", "-o", "many.o", "many.c"}}};
    Measure(many, rounds, 1);
    const std::string title = std::to_string(functions) + " functions of 40 lines, medians of " + std::to_string(rounds);
    PrintTable(title.c_str(), many, many[1]);

    constexpr int startRounds = 10;
    constexpr int starts = 100;
    constexpr double largestRatio = 1.5;
    std::vector<Contender> one = {{"compiler", {compiler, "first.st", "-i", "target.xml"}},
                                  {"luac", {"luac5.4", "-o", "one.luac", "one.lua"}},
                                  {"tcc", {"tcc", "-c", "-o", "one.o", "one.c"}}};
    Measure(one, startRounds, starts);
    const double ratio = PrintTable("100 compiles of one small file, medians of 10", one, one[1]);
    fs::current_path("/");
    fs::remove_all(folder);
    if (ratio <= largestRatio) return 0;
    std::fprintf(stderr, "the start-up takes %.2f times luac's, more than %.1f\n", ratio, largestRatio);
    return 1;
}
