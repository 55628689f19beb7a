// Text of the sibling product, to our own and back; the goal is 25 us each way.
#include <OrvActions.h>
#include <benchmark/benchmark.h>

#include "allocations.h"

namespace OrvBench {
namespace {

void Convert(benchmark::State& state, OrvBool (*conversion)(const OrvWChar*, OrvBStr*), const char16_t* text)
{
    const AllocationCounter counter(state);
    for (auto _ : state) {
        OrvBStr converted = nullptr;
        if (!conversion(reinterpret_cast<const OrvWChar*>(text), &converted)) state.SkipWithError("does not convert");
        SysFreeString(converted);
    }
}

void FromSiblingText(benchmark::State& state)
{
    Convert(state, Talvec_Action_ConvertHeskActionTextToOrvActionText,
            u"SystemError (3, 12, WindowsError: 5, Description: \"disk\")");
}
BENCHMARK(FromSiblingText);

void ToSiblingText(benchmark::State& state)
{
    Convert(state, Talvec_Action_ConvertOrvActionTextToHeskActionText,
            u"SystemError (Source: 3, Message: 12, WindowsError: 5, Description: \"disk\")");
}
BENCHMARK(ToSiblingText);

}  // namespace
}  // namespace OrvBench
