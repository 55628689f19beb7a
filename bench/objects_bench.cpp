// Making, copying, comparing and finding.
#include <benchmark/benchmark.h>

#include "allocations.h"
#include "workloads.h"

namespace OrvBench {
namespace {

const Workload& WorkloadOf(benchmark::State& state)
{
    const Workload& workload = kWorkloads[state.range(0)];
    state.SetLabel(workload.name);
    return workload;
}

void CreateSetClose(benchmark::State& state)
{
    const Workload& workload = WorkloadOf(state);
    const AllocationCounter counter(state);
    for (auto _ : state) OrvAct_CloseHandle(workload.make());
}
BENCHMARK(CreateSetClose)->DenseRange(0, 2);

void CloneClose(benchmark::State& state)
{
    const TOrvHandle handle = WorkloadOf(state).make();
    {
        const AllocationCounter counter(state);
        for (auto _ : state) {
            TOrvHandle clone = nullptr;
            OrvAct_CloneHandle(handle, &clone);
            OrvAct_CloseHandle(clone);
        }
    }
    OrvAct_CloseHandle(handle);
}
BENCHMARK(CloneClose)->DenseRange(0, 2);

void Equal(benchmark::State& state)
{
    const Workload& workload = WorkloadOf(state);
    const TOrvHandle a = workload.make();
    const TOrvHandle b = workload.make();
    OrvBool equal = 0;
    for (auto _ : state) OrvAct_Equal(a, b, &equal);
    if (!equal) state.SkipWithError("equal actions compare as different");
    OrvAct_CloseHandle(a);
    OrvAct_CloseHandle(b);
}
BENCHMARK(Equal)->DenseRange(0, 2);

void LookUpByName(benchmark::State& state)
{
    const AllocationCounter counter(state);
    for (auto _ : state) benchmark::DoNotOptimize(OrvAct_GetActionCodeByNameW(u"lenelAccessEvent"));
}
BENCHMARK(LookUpByName);

void LookUpByCode(benchmark::State& state)
{
    for (auto _ : state) benchmark::DoNotOptimize(OrvAct_GetInternalIndexByCode(ORV_ACTION_LenelAccessEvent));
}
BENCHMARK(LookUpByCode);

}  // namespace
}  // namespace OrvBench
