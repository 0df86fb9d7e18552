// norvane: checks, builds, runs, tests and debugs Structured Text, and reports on what was built.

#include "norvane/CompileCommands.h"
#include "norvane/DebugCommand.h"
#include "norvane/DiffCommand.h"
#include "norvane/ExplainCommand.h"
#include "norvane/ReportCommand.h"
#include "norvane/ResponseFile.h"
#include "norvane/RunCommand.h"
#include "norvane/Session.h"
#include "norvane/TargetCommand.h"
#include "norvane/TestCommand.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>

int main(int argc, char** argv)
{
    CResponseFiles responses;
    if (!responses.Expand({argv + 1, argv + argc})) {
        std::fprintf(stderr, "norvane: %s\n", responses.m_Failure.c_str());
        return g_ExitUnable;
    }
    CLI::App app("Checks, builds, runs, tests and debugs Structured Text, and reports on what was built.", "norvane");
    app.require_subcommand(1);
    std::function<int()> run;
    AddCheckCommand(app, run);
    AddBuildCommand(app, run, responses.m_Files);
    AddTargetCommand(app, run);
    AddExplainCommand(app, run);
    AddRunCommand(app, run);
    AddTestCommand(app, run);
    AddDebugCommand(app, run);
    AddReportCommand(app, run);
    AddDiffCommand(app, run);
    try {
        // The parser takes arguments from the back.
        std::reverse(responses.m_Arguments.begin(), responses.m_Arguments.end());
        app.parse(responses.m_Arguments);
    } catch (const CLI::ParseError& error) {
        // Asking for help is no error; all else is one of the command line.
        return app.exit(error) == 0 ? g_ExitFine : g_ExitUnable;
    }
    return run();
}
