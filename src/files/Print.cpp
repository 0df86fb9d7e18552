#include "files/Print.h"

#include <cstdio>

void Print(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void PrintFailure(std::string_view text)
{
    std::fflush(stdout);
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fputc('\n', stderr);
}
