#pragma once

#include "GeneratedSources.h"

#include <string>

// What is measured: a name, the size that must compile in reasonable time, and the source of a given size.
struct Workload
{
    const char* name;
    int size;
    std::string (*make)(int size);
};

inline constexpr Workload g_Workloads[] = {
    {"globals_and_pous", 10'000, [](int size) { return MakeGlobalsAndPous(10 * size, size); }},
    {"array_initialiser", 1'000'000, MakeArrayInitialiser},
    {"case_labels", 20'000, MakeCaseLabels},
    {"statements", 200'000, MakeStatements},
    {"sum", 100'000, MakeSum},
    {"calls", 50'000, MakeCalls},
    {"nested_structures", 100'000, MakeNestedStructures},
    {"fb_parameters", 50'000, MakeFbParameters},
};
