// What an action costs against many rules: rules over 400 names, which share the numbers of a thousand cameras equally.
#include <benchmark/benchmark.h>
#include <OrvActions.hpp>

#include <memory>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace OrvBench {
namespace {

constexpr std::size_t kNames = 400;
constexpr std::size_t kCameras = 1000;

std::vector<orv::ActionInfo> Names()
{
    std::vector<orv::ActionInfo> names = orv::AllActions();
    names.resize(kNames);
    return names;
}

std::size_t HeapBytes()
{
#if defined(__GLIBC__)
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    return 0;
#endif
}

orv::Action OfCamera(const orv::ActionInfo& name, std::size_t camera)
{
    orv::Action action = orv::Action::Named(name.name);
    action.Set(u"Camera", orv::Channel::Number(static_cast<std::uint32_t>(camera)));
    return action;
}

// The last set is kept for the benchmarks that follow.
const orv::RuleSet& SetOf(std::size_t count, double& bytesOfRule)
{
    static std::unique_ptr<orv::RuleSet> set;
    static double bytes = 0;
    if (!set || set->Size() != count) {
        const std::vector<orv::ActionInfo> names = Names();
        set.reset();
        const std::size_t before = HeapBytes();
        set = std::make_unique<orv::RuleSet>();
        for (std::size_t i = 0; i < count; ++i) {
            set->Add(OfCamera(names[i % kNames], 1 + i / kNames % kCameras).ToMatchAction());
        }
        bytes = static_cast<double>(HeapBytes() - before) / static_cast<double>(count);
    }
    bytesOfRule = bytes;
    return *set;
}

// Actions in no order, so that caches help as little as they do a server.
std::vector<orv::Action> Stream(std::size_t firstCamera)
{
    const std::vector<orv::ActionInfo> names = Names();
    std::vector<orv::Action> actions;
    for (std::size_t i = 0; i < 4096; ++i) {
        actions.push_back(OfCamera(names[i * 7919 % kNames], firstCamera + i * 104729 % kCameras));
    }
    return actions;
}

void RunRules(benchmark::State& state, std::size_t firstCamera)
{
    double bytes = 0;
    const orv::RuleSet& set = SetOf(static_cast<std::size_t>(state.range(0)), bytes);
    const std::vector<orv::Action> actions = Stream(firstCamera);
    std::size_t hits = 0;
    std::size_t next = 0;
    for (auto _ : state) {
        hits += set.Match(actions[next]).size();
        next = (next + 1) % actions.size();
    }
    state.counters["hits"] = static_cast<double>(hits) / static_cast<double>(state.iterations());
    state.counters["bytes_per_rule"] = bytes;
}

void RulesMatch(benchmark::State& state)
{
    RunRules(state, 1);
}
BENCHMARK(RulesMatch)->RangeMultiplier(10)->Range(100, 1'000'000);

// Cameras that no rule names.
void RulesMatchNothing(benchmark::State& state)
{
    RunRules(state, 1 + kCameras);
}
BENCHMARK(RulesMatchNothing)->RangeMultiplier(10)->Range(100, 1'000'000);

void RulesAddAndRemove(benchmark::State& state)
{
    orv::RuleSet set;
    const orv::Action rule = orv::Action::Parse(u"@ PanLeft (Camera: 7, Speed: 3)");
    for (auto _ : state) set.Remove(set.Add(rule));
}
BENCHMARK(RulesAddAndRemove);

}  // namespace
}  // namespace OrvBench
