#pragma once

#include "GeneratedSources.h"

#include <string>
#include <vector>

// What is measured: a name, the size that must compile in reasonable time, and the sources of a given size. The check
// holds those to the limit whose time goes into the compile. The others allocate so much for so little work that
// their growth shows the caches of the machine; they are reported only.
struct Workload
{
    const char* name;
    int size;
    std::vector<std::string> (*make)(int size);
    bool isChecked;
};

// The workloads of a single source.
template <std::string (*make)(int size)>
std::vector<std::string> One(int size)
{
    return {make(size)};
}

inline constexpr Workload g_Workloads[] = {
    {"globals_and_pous", 10'000, [](int size) { return std::vector{MakeGlobalsAndPous(10 * size, size)}; }, true},
    {"array_initialiser", 490'000, One<MakeArrayInitialiser>, true},   // of twice that one variable is still initialised
    {"case_labels", 20'000, One<MakeCaseLabels>, true},
    {"statements", 200'000, One<MakeStatements>, true},
    {"sum", 100'000, One<MakeSum>, true},
    {"variables", 100'000, One<MakeVariables>, true},
    {"calls", 50'000, One<MakeCalls>, true},
    {"forms", 10'000, One<MakeForms>, true},
    {"files", 5'000, MakeFiles, true},
    {"nested_structures", 100'000, One<MakeNestedStructures>, false},
    {"fb_parameters", 50'000, One<MakeFbParameters>, false},
};
