// The binary form out and in, the JSON form out.
#include <benchmark/benchmark.h>

#include <vector>

#include "allocations.h"
#include "workloads.h"

namespace OrvBench {
namespace {

constexpr std::size_t kRoom = 140000;

void BinaryOut(benchmark::State& state)
{
    const TOrvHandle handle = kWorkloads[state.range(0)].make();
    state.SetLabel(kWorkloads[state.range(0)].name);
    std::vector<std::byte> buffer(kRoom);
    std::uint32_t required = 0;
    {
        const AllocationCounter counter(state);
        for (auto _ : state) OrvAct_StoreToBinBuffer(handle, buffer.data(), kRoom, &required);
    }
    state.counters["bytes"] = required;
    OrvAct_CloseHandle(handle);
}
BENCHMARK(BinaryOut)->DenseRange(0, 2);

void BinaryIn(benchmark::State& state)
{
    const TOrvHandle handle = kWorkloads[state.range(0)].make();
    state.SetLabel(kWorkloads[state.range(0)].name);
    std::vector<std::byte> buffer(kRoom);
    std::uint32_t size = 0;
    OrvAct_StoreToBinBuffer(handle, buffer.data(), kRoom, &size);
    OrvAct_CloseHandle(handle);
    const AllocationCounter counter(state);
    for (auto _ : state) {
        const TOrvHandle read = OrvAct_CreateFromBinBuffer(buffer.data(), size, ORV_EXPECT_ANY, nullptr);
        if (!read) state.SkipWithError("the buffer does not read");
        OrvAct_CloseHandle(read);
    }
}
BENCHMARK(BinaryIn)->DenseRange(0, 2);

void JsonOut(benchmark::State& state)
{
    const TOrvHandle handle = kWorkloads[state.range(0)].make();
    state.SetLabel(kWorkloads[state.range(0)].name);
    std::u16string buffer(kRoom, u'\0');
    const std::uint32_t limit = 0xFFFFFFFF;
    std::uint32_t required = 0;
    {
        const AllocationCounter counter(state);
        for (auto _ : state) OrvAct_StoreToJson(handle, buffer.data(), kRoom, &required, 1, &limit);
    }
    state.counters["units"] = required;
    OrvAct_CloseHandle(handle);
}
BENCHMARK(JsonOut)->DenseRange(0, 2);

}  // namespace
}  // namespace OrvBench
