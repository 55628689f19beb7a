// The flat interface: generated functions, roles and the catalogue.
#include <benchmark/benchmark.h>

#include <vector>

#include "allocations.h"
#include "workloads.h"

namespace OrvBench {
namespace {

void GeneratedCreateSmall(benchmark::State& state)
{
    const TOrvChannelValue camera = {7, u"front door", 5};
    const AllocationCounter counter(state);
    for (auto _ : state) OrvAct_CloseHandle(OrvAct_CreatePanLeft(&camera, 3));
}
BENCHMARK(GeneratedCreateSmall);

void GeneratedCreateLarge(benchmark::State& state)
{
    const TUlmoDateTime time = {0x00000C3A5B6C7D8E};
    const std::uint32_t subType = 20, type = 1;
    const std::int32_t number = 4;
    const std::int64_t card = 9007199254740993;
    const OrvBool truth = 1;
    const AllocationCounter counter(state);
    for (auto _ : state) {
        OrvAct_CloseHandle(OrvAct_CreateLenelAccessEvent(
            &subType, u"Panel North", u"Reader 17, main entrance", &number, &card, 2, &type,
            u"Access was granted to a person known to the system, by card", &number, &time, &number, &number,
            u"ASSET-0042", &truth, &truth, &number, &number, &truth, &number, u"access-server-1.example",
            u"Door opened after a valid card was presented"));
    }
}
BENCHMARK(GeneratedCreateLarge);

void GeneratedDecodeSmall(benchmark::State& state)
{
    const TOrvHandle handle = MakeSmall();
    TOrvChannelValue camera{};
    std::int32_t speed = 0;
    {
        const AllocationCounter counter(state);
        for (auto _ : state) OrvAct_DecodePanLeft(handle, &camera, &speed);
    }
    if (speed != 3) state.SkipWithError("the wrong answer");
    OrvAct_CloseHandle(handle);
}
BENCHMARK(GeneratedDecodeSmall);

void GeneratedDecodeLarge(benchmark::State& state)
{
    const TOrvHandle handle = MakeLarge();
    const std::uint32_t *subType = nullptr, *type = nullptr;
    const std::int32_t* n[10] = {};
    const std::int64_t* card = nullptr;
    const TUlmoDateTime* time = nullptr;
    const OrvWChar* text[6] = {};
    std::uint32_t result = 0;
    {
        const AllocationCounter counter(state);
        for (auto _ : state) {
            OrvAct_DecodeLenelAccessEvent(handle, &subType, &text[0], &text[1], &n[0], &card, &result, &type, &text[2],
                                          &n[1], &time, &n[2], &n[3], &text[3], &n[4], &n[5], &n[6], &n[7], &n[8],
                                          &n[9], &text[4], &text[5]);
        }
    }
    if (!card || *card != 9007199254740993) state.SkipWithError("the wrong answer");
    OrvAct_CloseHandle(handle);
}
BENCHMARK(GeneratedDecodeLarge);

void RoleRead(benchmark::State& state)
{
    const TOrvHandle handle = MakeSmall();
    const TOrvChannelValue* channel = nullptr;
    for (auto _ : state) OrvAct_GetVideoInput(handle, &channel);
    if (!channel || channel->id != 7) state.SkipWithError("the wrong answer");
    OrvAct_CloseHandle(handle);
}
BENCHMARK(RoleRead);

void EnumerateActions(benchmark::State& state)
{
    std::vector<TTalvecActionPlainInfo> records(Talvec_Action_GetNumberOfActions());
    const AllocationCounter counter(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            Talvec_Action_EnumerateActions(records.data(), static_cast<std::uint32_t>(records.size())));
    }
}
BENCHMARK(EnumerateActions);

}  // namespace
}  // namespace OrvBench
