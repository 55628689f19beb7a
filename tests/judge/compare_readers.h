// Reads texts by the scanner and by the patterns and shows where they differ.
#pragma once

#include <string>
#include <string_view>

namespace OrvPLC::Judge {

enum class Verdict { Same, Undecided, Differs };

struct Comparison {
    Verdict verdict = Verdict::Same;  // Undecided: the engine gave up
    std::string difference;
};

// Every step of a reading, in both dialects: tags and guard, header, fields, items of lists, close, forms of strings.
Comparison CompareSteps(std::u16string_view text);

// Whole readings: the object with its values, what was consumed, or the failure.
Comparison CompareReadings(std::u16string_view text);

}  // namespace OrvPLC::Judge
