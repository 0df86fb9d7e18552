#pragma once

#include <string>
#include <string_view>
#include <vector>

// How many letters must be changed, added, taken away or exchanged with their neighbour; at most `limit` + 1.
int GetDistance(std::string_view a, std::string_view b, int limit);

// The candidate that is probably meant: one that differs in case only, else the nearest one; empty if all are too far
// for the length of the word.
std::string FindNearest(std::string_view word, const std::vector<std::string_view>& candidates);

std::string ToUpper(std::string_view word);

// Names are the same in whatever case they are written.
bool IsSameName(std::string_view a, std::string_view b);
