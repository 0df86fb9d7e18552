// Whole compiles of large sources, reported by Google Benchmark as processor time and its growth.

#include "CompilerRun.h"
#include "Workloads.h"

#include <benchmark/benchmark.h>

static void MeasureCompile(benchmark::State& state, const Workload& workload)
{
    const int size = static_cast<int>(state.range(0));
    const CompilerRun run(workload.make(size));
    for (auto _ : state) state.SetIterationTime(run.Measure().seconds);
    state.SetComplexityN(size);
}

int main(int argc, char** argv)
{
    for (const Workload& workload : g_Workloads)
        benchmark::RegisterBenchmark(workload.name, MeasureCompile, workload)
            ->Arg(workload.size / 4)->Arg(workload.size / 2)->Arg(workload.size)
            ->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3)->Complexity(benchmark::oN);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
