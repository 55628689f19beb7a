// What a rule engine pays for a condition, and a server for a record of its event database.
#include <benchmark/benchmark.h>

#include <vector>

#include "allocations.h"
#include "workloads.h"

namespace OrvBench {
namespace {

TOrvHandle MatchActionOf(TOrvHandle action)
{
    TOrvHandle match = nullptr;
    OrvAct_CreateMatchActionFromTemplate(action, &match);
    return match;
}

void RunMatch(benchmark::State& state, TOrvHandle match, TOrvHandle action, OrvBool expected)
{
    OrvBool matches = 0;
    {
        const AllocationCounter counter(state);
        for (auto _ : state) OrvMatchAct_Matches(match, action, &matches);
    }
    if (matches != expected) state.SkipWithError("the wrong answer");
    OrvAct_CloseHandle(match);
    OrvAct_CloseHandle(action);
}

void MatchHit(benchmark::State& state)
{
    const Workload& workload = kWorkloads[state.range(0)];
    state.SetLabel(workload.name);
    const TOrvHandle action = workload.make();
    RunMatch(state, MatchActionOf(action), action, 1);
}
BENCHMARK(MatchHit)->DenseRange(0, 2);

// The text differs from the pattern's in the case of its letters.
void MatchHitInAnotherCase(benchmark::State& state)
{
    const TOrvHandle match = TalvecMatchAct_CreateActionByName(u"CustomAction");
    const TOrvHandle action = Talvec_Action_CreateActionByName(u"CustomAction");
    OrvInterfaceOf(match)->SetString(u"String", u"Reader 17, Main Entrance");
    OrvInterfaceOf(action)->SetString(u"String", u"READER 17, main entrance");
    RunMatch(state, match, action, 1);
}
BENCHMARK(MatchHitInAnotherCase);

void MatchMissByName(benchmark::State& state)
{
    const TOrvHandle other = Talvec_Action_CreateActionByName(state.range(0) ? u"TiltUp" : u"PanStop");
    state.SetLabel(state.range(0) ? "another length" : "the same length");
    RunMatch(state, TalvecMatchAct_CreateActionByName(u"PanLeft"), other, 0);
}
BENCHMARK(MatchMissByName)->DenseRange(0, 1);

void MatchMissByValue(benchmark::State& state)
{
    const TOrvHandle action = MakeSmall();
    const TOrvHandle match = MatchActionOf(action);
    OrvInterfaceOf(action)->SetInt32(u"Speed", 4);
    RunMatch(state, match, action, 0);
}
BENCHMARK(MatchMissByValue);

void EventFill(benchmark::State& state)
{
    const TOrvHandle action = kWorkloads[state.range(0)].make();
    state.SetLabel(kWorkloads[state.range(0)].name);
    TOrvEventData record = {};
    record.size = sizeof record;
    std::uint8_t field = 0;
    {
        const AllocationCounter counter(state);
        for (auto _ : state) {
            OrvAct_GetActionEventData(action, &record, &field);
            benchmark::ClobberMemory();
        }
    }
    OrvAct_CloseHandle(action);
}
BENCHMARK(EventFill)->DenseRange(0, 2);

void EventRestore(benchmark::State& state, bool fromImage)
{
    const TOrvHandle action = kWorkloads[state.range(0)].make();
    state.SetLabel(kWorkloads[state.range(0)].name);
    TOrvEventData record = {};
    record.size = sizeof record;
    std::uint8_t field = 0;
    OrvAct_GetActionEventData(action, &record, &field);
    std::uint32_t size = 0;
    OrvAct_StoreToBinBuffer(action, nullptr, 0, &size);
    std::vector<char> image(size);
    OrvAct_StoreToBinBuffer(action, image.data(), size, nullptr);
    record.image = fromImage ? image.data() : nullptr;
    record.imageSize = size;
    {
        const AllocationCounter counter(state);
        for (auto _ : state) OrvAct_CloseHandle(OrvAct_RestoreActionFromEventData(&record));
    }
    OrvAct_CloseHandle(action);
}

void EventRestoreFromImage(benchmark::State& state)
{
    EventRestore(state, true);
}
BENCHMARK(EventRestoreFromImage)->DenseRange(0, 2);

void EventRestoreFromColumns(benchmark::State& state)
{
    EventRestore(state, false);
}
BENCHMARK(EventRestoreFromColumns)->DenseRange(0, 2);

}  // namespace
}  // namespace OrvBench
