// Compiles each workload at four sizes, each twice the one before, and compares what they cost: twice the input may cost
// at most 2.2 times as much, at each of the three doublings. Where the system counts instructions, once is enough.
// Else it is processor time: one round measures both sizes of a doubling side by side, what else the machine does moves
// a ratio by a tenth or two, so a round that meets the limit is enough. A cost that grows with the square has a ratio
// near 4 at the last doubling, however often it is measured.

#include "CompilerRun.h"
#include "Workloads.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

static constexpr double g_LargestRatio = 2.2;
static constexpr int g_Doublings = 3;           // the last one goes to twice the workload's size
static constexpr int g_RunsInRound = 2;
static constexpr int g_Rounds = 12;

static CompileCost MeasureBest(const CompilerRun& run)
{
    CompileCost best = run.Measure();
    if (best.instructions > 0) return best;
    for (int i = 1; i < g_RunsInRound; ++i) best.seconds = std::min(best.seconds, run.Measure().seconds);
    return best;
}

static void Print(const char* name, int size, const CompileCost& cost)
{
    if (cost.instructions > 0) std::printf("%-20s %9d: %9.1f million instructions", name, size, cost.instructions / 1e6);
    else std::printf("%-20s %9d: %7.3f s", name, size, cost.seconds);
}

static bool DoublesWithin(const Workload& workload, int size, const CompilerRun& small, const CompilerRun& large)
{
    for (int round = 0; round < g_Rounds; ++round) {
        const CompileCost once = MeasureBest(small);
        const CompileCost twice = MeasureBest(large);
        const double ratio = twice.Get() / once.Get();
        Print(workload.name, size, once);
        Print("   twice that,", 2 * size, twice);
        std::printf("   ratio %.2f\n", ratio);
        std::fflush(stdout);
        if (ratio <= g_LargestRatio) return true;
        if (once.instructions > 0) return false;
    }
    return false;
}

static bool GrowsLinearly(const Workload& workload)
{
    int size = 2 * workload.size >> g_Doublings;
    bool isLinear = true;
    for (int i = 0; i < g_Doublings; ++i, size *= 2) {
        const CompilerRun small(workload.make(size));
        const CompilerRun large(workload.make(2 * size));
        isLinear = DoublesWithin(workload, size, small, large) && isLinear;
    }
    return isLinear;
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
