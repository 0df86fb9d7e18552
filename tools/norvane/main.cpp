// norvane: runs, tests and debugs what the compiler made, without the controller.

#include "norvane/DebugCommand.h"
#include "norvane/DiffCommand.h"
#include "norvane/ReportCommand.h"
#include "norvane/RunCommand.h"
#include "norvane/Session.h"
#include "norvane/TestCommand.h"

#include <CLI/CLI.hpp>

int main(int argc, char** argv)
{
    CLI::App app("Runs, tests and debugs compiled Structured Text on the desk, without the controller.", "norvane");
    app.require_subcommand(1);
    std::function<int()> run;
    AddRunCommand(app, run);
    AddTestCommand(app, run);
    AddDebugCommand(app, run);
    AddReportCommand(app, run);
    AddDiffCommand(app, run);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        // Asking for help is no error; all else is one of the command line.
        return app.exit(error) == 0 ? g_ExitFine : g_ExitUnable;
    }
    return run();
}
