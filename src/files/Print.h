#pragma once

#include <string>
#include <string_view>

// To standard output, as it is.
void Print(std::string_view text);

// From now on Print appends to the text, which is not owned, and what was printed before has left. Null: to standard
// output again. Answers the text that it went to until now.
std::string* PrintInto(std::string* pText);

// At the end of the run. False if anything that was printed could not be written.
bool FinishPrinting();

// One line to standard error, where failures of the machine go (a full disk, a directory that can't be
// written). What was printed before is flushed first, so that the two come in their order.
void PrintFailure(std::string_view text);

// Whole lines to standard error, with their line ends; what was printed before comes first here, too.
void PrintToStandardError(std::string_view lines);
