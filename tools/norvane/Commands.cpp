#include "norvane/Commands.h"

#include "norvane/CompileCommands.h"
#include "norvane/DebugCommand.h"
#include "norvane/DiffCommand.h"
#include "norvane/ExplainCommand.h"
#include "norvane/ReportCommand.h"
#include "norvane/RunCommand.h"
#include "norvane/TargetCommand.h"
#include "norvane/TestCommand.h"

#include <CLI/CLI.hpp>

#include <string>

namespace
{

struct Examples
{
    const char* szCommand;
    const char* szLines;
};

// In the folder of the examples, where they can be typed as they stand.
constexpr Examples g_Examples[] = {
    {"check", "  norvane check first.st -i target.xml\n"
              "  norvane check motor/*.st -i motor/target.xml --format json"},
    {"build", "  norvane build first.st -i target.xml -o first.asm\n"
              "  norvane build --project norvane.json"},
    {"check-target", "  norvane check-target target.xml"},
    {"explain", "  norvane explain E007\n"
                "  norvane explain N5"},
    {"debug", "  norvane debug          (an editor starts it, and talks to it by the Debug Adapter Protocol)"},
    {"diff", "  norvane diff old/plant.asm new/plant.asm -i target.xml\n"
             "  norvane diff old/plant.asm new/plant.asm --fail-on retain --fail-on size:5%"},
    {"run", "  norvane run first.st -i target.xml --scans 3 --watch main.x\n"
            "  norvane run motor/motor.asm --scans 100 --trace motor.vcd --watch running"},
    {"test", "  norvane test motor\n"
             "  norvane test . --junit results.xml --coverage lines.info"},
    {"report", "  norvane report motor/motor.asm -i motor/target.xml -o report.html\n"
               "  norvane report motor/motor.asm -i motor/target.xml --fail-if \"retain>90%\""},
};

}   // namespace

static void AddExamples(CLI::App& app)
{
    for (const Examples& examples : g_Examples)
        app.get_subcommand(examples.szCommand)->footer(std::string("Examples:\n") + examples.szLines);
    app.footer("Each command has a --help with examples of its own.");
}

void DescribeProgram(CLI::App& app, std::function<int()>& run, const std::vector<std::string>& responseFiles)
{
    app.name("norvane");
    app.description("Checks, builds, runs, tests and debugs Structured Text, and reports on what was built.");
    app.set_version_flag("--version", "norvane " NORVANE_VERSION, "print the version and end");
    app.require_subcommand(1);
    AddCheckCommand(app, run);
    AddBuildCommand(app, run, responseFiles);
    AddTargetCommand(app, run);
    AddExplainCommand(app, run);
    AddRunCommand(app, run);
    AddTestCommand(app, run);
    AddDebugCommand(app, run);
    AddReportCommand(app, run);
    AddDiffCommand(app, run);
    AddExamples(app);
}
