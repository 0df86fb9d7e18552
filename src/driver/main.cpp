#include "driver/CompileDriver.h"
#include "semantics/Norvane.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    // A write beyond the limit for a file's size, or to a pipe that nobody reads, fails like one to a full disk
    // and is reported as such; the run goes on to its end and leaves nothing behind.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.emplace_back(argv[i]);
    const int exitStatus = CCompileDriver(g_Norvane).Run(arguments);
    std::fflush(stdout);
    // Taking the tables apart entry by entry would cost a tenth of the run for nothing.
    std::_Exit(exitStatus);
}
