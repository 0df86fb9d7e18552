#pragma once

#include <string>
#include <string_view>

// How text stands on a terminal: letters outside ASCII take one place or two, marks on letters none, tabs go on to the
// next multiple of four. What could move the cursor is shown as a question mark.

// The text as it is to be printed: tabs made blanks, bytes that are no UTF-8 made the sign for that.
std::string MakePrintable(std::string_view text);

// Places that the first bytes of the text take, at most all of them.
int GetWidth(std::string_view text, std::size_t byteCount);

// Characters in the first bytes of the text; each byte that belongs to none counts as one.
int CountCharacters(std::string_view text, std::size_t byteCount);
