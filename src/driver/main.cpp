#include "driver/CompileDriver.h"
#include "files/Platform.h"
#include "files/Print.h"
#include "files/TemporaryFiles.h"
#include "semantics/Norvane.h"

#include <cstdlib>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    ReserveStandardDescriptors();
    // The run goes on to its end, reports what it could not write, and leaves nothing behind.
    IgnoreWriteSignals();
    CatchEndSignals(RemoveTemporaryFiles);
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.emplace_back(argv[i]);
    const int exitStatus = CCompileDriver(g_Norvane).Run(arguments);
    const bool isPrinted = FinishPrinting();
    // Taking the tables apart entry by entry would cost a tenth of the run for nothing.
    std::_Exit(exitStatus == 0 && !isPrinted ? 1 : exitStatus);
}
