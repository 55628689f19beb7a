// Why and where a text is not an action, for people.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "report.h"

// The reason, as far as it shows, when reading gave neither an action nor an error.
std::string ReasonFor(std::u16string_view text, std::size_t consumed);

// Fills line, column and context of a remark about a position of a text: the line of a text of several, the column in
// characters from 1, and two lines that show it, the text, or the part of a long one around the position, and a caret.
void Locate(std::u16string_view text, std::size_t position, Remark& remark);
