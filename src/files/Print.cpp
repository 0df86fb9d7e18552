#include "files/Print.h"

#include <cstdio>
#include <utility>

static bool g_HasFailed = false;               // something of standard output is lost
static std::string* g_PrintedText = nullptr;   // takes what is printed; null: standard output

static void FlushOutput()
{
    if (std::fflush(stdout) != 0) g_HasFailed = true;
}

std::string* PrintInto(std::string* pText)
{
    FlushOutput();
    return std::exchange(g_PrintedText, pText);
}

void Print(std::string_view text)
{
    if (g_PrintedText) {
        g_PrintedText->append(text);
        return;
    }
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) g_HasFailed = true;
}

void PrintToStandardError(std::string_view lines)
{
    if (lines.empty()) return;
    FlushOutput();
    std::fwrite(lines.data(), 1, lines.size(), stderr);
}

bool FinishPrinting()
{
    FlushOutput();
    // Some file systems report only at the close that they had no room.
    if (std::fclose(stdout) != 0) g_HasFailed = true;
    return !g_HasFailed;
}

void PrintFailure(std::string_view text)
{
    FlushOutput();
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fputc('\n', stderr);
}
