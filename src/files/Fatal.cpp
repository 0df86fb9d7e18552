#include "files/Fatal.h"

#include <cstdio>
#include <cstdlib>

void EndProgram(int exitStatus, std::string_view text)
{
    std::fflush(stdout);
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fputc('\n', stderr);
    std::exit(exitStatus);
}

void InternalFault(std::string_view text)
{
    constexpr int internalFaultStatus = 3;
    std::fflush(stdout);
    std::fputs("internal fault: ", stderr);
    EndProgram(internalFaultStatus, text);
}
