// Reads arbitrary UTF-16 by the scanner and by the patterns that define the language; every step and the whole reading
// must agree.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "judge/compare_readers.h"
#include "judge/expression.h"

using namespace OrvPLC::Judge;

namespace {

void Expect(const Comparison& comparison)
{
    if (comparison.verdict != Verdict::Differs) return;
    std::fputs(comparison.difference.c_str(), stderr);
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::u16string text(size / sizeof(char16_t), u'\0');
    if (!text.empty()) std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
    SetFixedSearchBudget(50'000);
    Expect(CompareSteps(text));
    Expect(CompareReadings(text));
    return 0;
}
