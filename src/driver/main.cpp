#include "driver/CompileDriver.h"
#include "files/OutOfMemory.h"
#include "files/Platform.h"
#include "files/Print.h"
#include "files/TemporaryFiles.h"
#include "semantics/Norvane.h"

#include <cstdlib>

// The tables of g_Norvane are made before main, and this before them.
[[gnu::constructor(101)]] static void PrepareProcess()
{
    AnswerLackOfMemory();
}

int main(int argc, char** argv)
{
    ReserveStandardDescriptors();
    // The run goes on to its end, reports what it could not write, and leaves nothing behind.
    IgnoreWriteSignals();
    CatchEndSignals(RemoveTemporaryFiles);
    const int exitStatus = CCompileDriver(g_Norvane).Run(GetArguments(argc, argv));
    RemoveTemporaryFiles();   // also those of a run that stopped early
    const bool isPrinted = FinishPrinting();
    // Taking the tables apart entry by entry would cost a tenth of the run for nothing.
    std::_Exit(exitStatus == 0 && !isPrinted ? 1 : exitStatus);
}
