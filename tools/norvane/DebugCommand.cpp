#include "norvane/DebugCommand.h"

#include "norvane/dap/Channel.h"
#include "norvane/dap/DebugSession.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <csignal>
#include <cstdio>

#include <unistd.h>

static int Debug()
{
    if (isatty(STDIN_FILENO))
        fmt::print(stderr, "norvane: debug: an editor speaks to this command by the Debug Adapter Protocol\n");
    std::signal(SIGPIPE, SIG_IGN);   // a client that is gone ends the session, not the process
    CChannel channel(STDIN_FILENO, STDOUT_FILENO);
    return CDebugSession(channel).Run();
}

void AddDebugCommand(CLI::App& app, std::function<int()>& run)
{
    CLI::App* pCommand = app.add_subcommand("debug", "let an editor debug a program, by the Debug Adapter Protocol");
    pCommand->callback([&run] { run = Debug; });
}
