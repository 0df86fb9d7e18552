#pragma once

#include "GeneratedSources.h"

#include <string>

// What is measured: a name, the size that must compile in reasonable time, and the source of a given size. The check
// holds those to the limit whose time goes into the compile. The others allocate so much for so little work that
// their growth shows the caches of the machine; they are reported only.
struct Workload
{
    const char* name;
    int size;
    std::string (*make)(int size);
    bool isChecked;
};

inline constexpr Workload g_Workloads[] = {
    {"globals_and_pous", 10'000, [](int size) { return MakeGlobalsAndPous(10 * size, size); }, true},
    {"array_initialiser", 490'000, MakeArrayInitialiser, true},   // of twice that one variable is still initialised
    {"case_labels", 20'000, MakeCaseLabels, true},
    {"statements", 200'000, MakeStatements, true},
    {"sum", 100'000, MakeSum, true},
    {"calls", 50'000, MakeCalls, false},
    {"nested_structures", 100'000, MakeNestedStructures, false},
    {"fb_parameters", 50'000, MakeFbParameters, false},
};
