#pragma once

#include <string_view>

// The message pieces by number, 1 to 124. All wording, misspellings and trailing blanks are wanted:
// environments parse what we print.
std::string_view GetMessage(int id);
