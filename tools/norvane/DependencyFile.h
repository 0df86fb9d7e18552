#pragma once

#include <string>
#include <vector>

// The rule that make and ninja read: what is made, and of which files. Blanks, "#", "$" and ":" in names are
// escaped as both take them; "%" and line ends have no form there.
std::string FormatDependencies(const std::vector<std::string>& made, const std::vector<std::string>& read);
