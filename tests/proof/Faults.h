#pragma once

#include <cstdint>

// Puts single faults into compiled programs, one program for each, runs them and counts those that the comparison sees.
// Prints a table. The result is an exit status: 0 unless fewer than `atLeastPercent` of the faults are seen.
int RunFaults(std::uint64_t count, std::uint64_t firstSeed, std::uint64_t atLeastPercent);
