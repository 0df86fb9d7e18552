#pragma once

#include <string_view>
#include <vector>

// The pages about messages and notes as they lie in docs/, in pieces that belong one behind the other. They are made
// part of the program when it is built.
const std::vector<std::string_view>& GetMessagePages();
