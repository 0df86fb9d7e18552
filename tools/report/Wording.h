#pragma once

#include "report/BuildFacts.h"

#include <string>
#include <vector>

// The words that all forms of a report and a comparison share.

std::string GetFullName(const VariableFacts& variable);                      // "main.x"; a global as it is
// "global+4", "retain+0.3", "2000.3"; "nowhere" of what has no place.
std::string GetPlaceText(const BuildFacts& facts, const VariableFacts& variable);
std::string GetSizeText(const VariableFacts& variable);                      // "4 bytes", "1 bit", "at least 4 bytes"
std::string GetCountText(std::int64_t count, const std::string& one, const std::string& more);   // "1 byte", "2 bytes"
std::string GetShareText(std::int64_t part, std::int64_t whole);             // "12%", "0.3%"; empty if whole is 0
// "main (24) > Regulate (16) > Clamp (16)", each with its bytes of return stack.
std::string GetPathText(const BuildFacts& facts, const std::vector<int>& path);
std::string GetCellPathText(const BuildFacts& facts, const std::vector<int>& path);   // names alone
std::string GetSourceText(const PouFacts& pou);                              // "main.st(12)"; "the compiler"
