// Enum values by name, as --names takes and writes them. The library knows numbers only.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "report.h"
#include "text_walk.h"

struct Numbered {
    std::u16string text;  // with numbers in place of the names
    std::vector<std::pair<std::size_t, std::size_t>> places;  // begins of the pieces: there, and in the original

    std::size_t Original(std::size_t position) const;
};

// Names become numbers; the walk takes them for numbers from then on. False, with a problem, for a word that is no
// value of its enum.
bool NumberNames(std::u16string_view text, TextWalk& walk, Numbered& numbered, Remark& problem);

// Numbers of enums become names.
std::u16string NameNumbers(std::u16string_view text);
