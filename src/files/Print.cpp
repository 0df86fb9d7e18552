#include "files/Print.h"

#include <cstdio>
#include <string>

void Print(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void PrintToStandardError(std::string_view lines)
{
    if (lines.empty()) return;
    std::fflush(stdout);
    std::fwrite(lines.data(), 1, lines.size(), stderr);
}

bool FinishPrinting()
{
    // Some file systems report only at the close that they had no room.
    const bool hasFailed = std::ferror(stdout) != 0;
    return std::fclose(stdout) == 0 && !hasFailed;
}

void PrintFailure(std::string_view text)
{
    PrintToStandardError(std::string(text) + "\n");
}
