#include "files/Fatal.h"

#include "files/Print.h"
#include "files/TemporaryFiles.h"

#include <cstdlib>
#include <string>

void EndProgram(int exitStatus, std::string_view text)
{
    PrintFailure(text);
    RemoveTemporaryFiles();
    std::exit(exitStatus);
}

void InternalFault(std::string_view text)
{
    constexpr int internalFaultStatus = 3;
    EndProgram(internalFaultStatus, "internal fault: " + std::string(text));
}
