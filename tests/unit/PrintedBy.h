#pragma once

#include "files/Print.h"

#include <string>

// What a call prints to standard output, taken from memory.
template <typename Call>
std::string PrintedBy(const Call& call)
{
    struct Capture
    {
        std::string text;
        std::string* pBefore = PrintInto(&text);
        ~Capture() { PrintInto(pBefore); }
    } capture;
    call();
    return capture.text;
}
