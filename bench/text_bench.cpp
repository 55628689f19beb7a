// Action text in and out. "HostileText" reads what is made to be slow, from a thousand to a million units: the time of
// a unit must not grow.
#include <benchmark/benchmark.h>

#include "allocations.h"
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

struct Family {
    const char* name;
    std::u16string_view before, piece, after;
};

constexpr Family kFamilies[] = {
    {"backslashes, in a string", u"CameraOn (x: \"", u"\\", u"\")"},
    {"backslashes, open", u"CameraOn (x: \"", u"\\", u""},
    {"protected quotes, in a string", u"CameraOn (x: \"", u"\\\"", u"\")"},
    {"protected quotes, between parameters", u"CameraOn (x: 1, ", u"\\\"", u", y: 2)"},
    {"blanks, between parameters", u"CameraOn (x: 1, ", u" ", u"y: 2)"},
    {"blanks, after the bracket", u"CameraOn (x: 1)", u" ", u""},
    {"quotes, between parameters", u"CameraOn (x: 1, ", u"\"", u", y: 2)"},
    {"braces, between parameters", u"CameraOn (x: 1, ", u"{", u", y: 2)"},
    {"open lists, between parameters", u"CameraOn (x: 1, ", u"{{1,1,1,1,1,\"\\\"}", u", y: 2)"},
    {"open tags, in a string", u"CameraOn (x: \"", u"<a b=\"", u">\")"},
    {"tags, in a string", u"CameraOn (x: \"", u"<p x=\"0\" y=\"0\"><q/></p>", u"\")"},
    {"attributes, in a string", u"CameraOn (x: \"<a ", u"b=c=", u"\">\")"},
    {"digits, after the bracket", u"CameraOn (x: 1)", u"1", u""},
    {"letters, after the bracket", u"CameraOn (x: 1)", u"x", u""},
    {"colons, after the bracket", u"CameraOn (x: 1)", u"x:", u""},
    {"commas, after the bracket", u"CameraOn (x: 1)", u",", u""},
};

// Arguments: family, units.
void HostileText(benchmark::State& state)
{
    const Family& family = kFamilies[state.range(0)];
    std::u16string text(family.before);
    while (text.size() < static_cast<std::size_t>(state.range(1))) text += family.piece;
    text += family.after;
    for (auto _ : state) {
        OrvAct_CloseHandle(OrvAct_CreateFromTextBufferW(text.data(), static_cast<std::uint32_t>(text.size()),
                                                        ORV_EXPECT_ANY, 0, nullptr));
    }
    state.SetLabel(family.name);
    state.counters["per unit"] = benchmark::Counter(
        static_cast<double>(text.size()), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(HostileText)
    ->ArgsProduct({benchmark::CreateDenseRange(0, std::size(kFamilies) - 1, 1), {1'000, 30'000, 1'000'000}});

}  // namespace
}  // namespace OrvBench
