#pragma once

#include <string_view>

// Ends the program with one line on standard error: for what no source or target may lead to, and for
// the scanner's own faults. What was printed before is flushed first; files that only the run needs
// are removed.
[[noreturn]] void EndProgram(int exitStatus, std::string_view text);

// A broken assumption of ours (an index behind the last child, a path that doesn't fit its type).
// Prints "internal fault: " and the text, exit status 3.
[[noreturn]] void InternalFault(std::string_view text);
