#pragma once

#include <string_view>

// The style and the script of the page, from share/report/; both live as long as the program.
extern const std::string_view g_PageStyle;
extern const std::string_view g_PageScript;
