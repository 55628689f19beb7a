// Compares the scanner with the patterns on COUNT texts: orv_compare_readers [COUNT [SEED]]
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "judge/compare_readers.h"
#include "judge/expression.h"
#include "judge/text_maker.h"
#include "ulmo/string_conversion.h"

using namespace OrvPLC::Judge;

namespace {

constexpr unsigned long long kUsualCount = 100'000;
constexpr std::ptrdiff_t kStates = 100'000;  // of the engine for a text; more states decide few more texts

// False when the readers differ.
bool Tell(const char* what, const std::u16string& text, const Comparison& comparison, unsigned long long& undecided)
{
    undecided += comparison.verdict == Verdict::Undecided;
    if (comparison.verdict != Verdict::Differs) return true;
    std::printf("%s differ on '%s'\n%s\n", what, Ulmo::Utf8FromWide(text).c_str(), comparison.difference.c_str());
    return false;
}

}  // namespace

int main(int count, char** arguments)
{
    const unsigned long long texts = count > 1 ? std::strtoull(arguments[1], nullptr, 10) : kUsualCount;
    const unsigned long long seed = count > 2 ? std::strtoull(arguments[2], nullptr, 10) : 1;
    SetFixedSearchBudget(kStates);
    TextMaker maker(seed);
    unsigned long long differences = 0, undecidedSteps = 0, undecidedReadings = 0, read = 0;
    for (; read < texts && differences < 10; ++read) {
        const std::u16string text = maker.Make();
        differences += !Tell("steps", text, CompareSteps(text), undecidedSteps) ||
                       !Tell("readings", text, CompareReadings(text), undecidedReadings);
        if ((read + 1) % 1'000'000 == 0) std::fprintf(stderr, "%llu texts\n", read + 1);
    }
    std::printf("%llu texts from seed %llu: %llu differences; the engine gave up on %llu (steps) and %llu (readings)\n",
                read, seed, differences, undecidedSteps, undecidedReadings);
    return differences == 0 ? 0 : 1;
}
