// norvane: checks, builds, runs, tests and debugs Structured Text, and reports on what was built.

#include "norvane/Commands.h"
#include "norvane/ResponseFile.h"
#include "norvane/Session.h"

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
    CLI::App app;
    std::function<int()> run;
    DescribeProgram(app, run, responses.m_Files);
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
