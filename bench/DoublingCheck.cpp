// Compiles each workload at its size and at twice its size and compares the processor times: twice the input
// may take at most 2.2 times the time. One round measures both sizes side by side. What else the machine does
// moves a ratio by a tenth or two, so a round that meets the limit is enough; a cost that grows with the square
// has a ratio near 4 in each of them.

#include "CompilerRun.h"
#include "Workloads.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

static constexpr double g_LargestRatio = 2.2;
static constexpr int g_RunsInRound = 2;
static constexpr int g_Rounds = 12;

static double MeasureBest(const CompilerRun& run)
{
    double best = run.MeasureSeconds();
    for (int i = 1; i < g_RunsInRound; ++i) best = std::min(best, run.MeasureSeconds());
    return best;
}

static bool GrowsLinearly(const Workload& workload)
{
    const CompilerRun small(workload.make(workload.size));
    const CompilerRun large(workload.make(2 * workload.size));
    for (int round = 0; round < g_Rounds; ++round) {
        const double once = MeasureBest(small);
        const double twice = MeasureBest(large);
        const double ratio = twice / once;
        std::printf("%-20s %9d: %7.3f s   %9d: %7.3f s   ratio %.2f\n", workload.name, workload.size, once,
                    2 * workload.size, twice, ratio);
        std::fflush(stdout);
        if (ratio <= g_LargestRatio) return true;
    }
    return false;
}

// With arguments the workloads of those names, checked or not.
int main(int argc, char** argv)
{
    bool allLinear = true;
    int checked = 0;
    for (const Workload& workload : g_Workloads) {
        bool isWanted = argc == 1 && workload.isChecked;
        for (int i = 1; i < argc; ++i) isWanted = isWanted || std::strcmp(argv[i], workload.name) == 0;
        if (!isWanted) continue;
        ++checked;
        allLinear = GrowsLinearly(workload) && allLinear;
    }
    return allLinear && checked > 0 ? 0 : 1;
}
