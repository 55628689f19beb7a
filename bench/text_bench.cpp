// Action text in and out. "ExpressionsAlone" is the search for header and parameters with nothing around it: what the
// reader would cost if everything but the expressions were free.
#include <benchmark/benchmark.h>

#include "allocations.h"
#include "expressions_alone.h"
#include "workloads.h"

namespace OrvBench {
namespace {

void WriteText(benchmark::State& state, bool plain)
{
    const TOrvHandle handle = kWorkloads[state.range(0)].make();
    state.SetLabel(kWorkloads[state.range(0)].name);
    std::u16string buffer(70000, u'\0');
    std::uint32_t required = 0;
    {
        const AllocationCounter counter(state);
        for (auto _ : state) {
            OrvAct_StoreToTextBufferW(handle, buffer.data(), static_cast<std::uint32_t>(buffer.size()), plain, 0,
                                      &required);
        }
    }
    state.counters["units"] = required;
    OrvAct_CloseHandle(handle);
}

void TechnicalTextOut(benchmark::State& state)
{
    WriteText(state, false);
}
BENCHMARK(TechnicalTextOut)->DenseRange(0, 2);

void PlainTextOut(benchmark::State& state)
{
    WriteText(state, true);
}
BENCHMARK(PlainTextOut)->DenseRange(0, 2);

std::u16string TextOfWorkload(benchmark::State& state)
{
    const TOrvHandle handle = kWorkloads[state.range(0)].make();
    state.SetLabel(kWorkloads[state.range(0)].name);
    std::u16string text = TextOf(handle);
    OrvAct_CloseHandle(handle);
    return text;
}

void TextIn(benchmark::State& state)
{
    const std::u16string text = TextOfWorkload(state);
    const AllocationCounter counter(state);
    for (auto _ : state) {
        const TOrvHandle handle = OrvAct_CreateFromTextBufferW(text.data(), static_cast<std::uint32_t>(text.size()),
                                                               ORV_EXPECT_ANY, 0, nullptr);
        if (!handle) state.SkipWithError("the text does not read");
        OrvAct_CloseHandle(handle);
    }
}
BENCHMARK(TextIn)->DenseRange(0, 2);

void ExpressionsAlone(benchmark::State& state)
{
    const std::u16string text = TextOfWorkload(state);
    for (auto _ : state) benchmark::DoNotOptimize(CountMatches(text));
}
BENCHMARK(ExpressionsAlone)->DenseRange(0, 2);

}  // namespace
}  // namespace OrvBench
