// The two text forms of a result data list.
//
// Internal: 1 2 3 4 5 'a', 6 7 8 9 0 'b'                  what a parameter value holds
// Literal:  { { 1, 2, 3, 4, 5, "a" }, { 6, 7, 8, 9, 0, "b" } }   what technical text shows
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "OrvActions/OrvTypes.h"

namespace OrvPLC {

// An item with its fields as both forms write them: unsigned, whatever the sign of the record's field.
struct ResultDataFields {
    std::array<std::uint16_t, 4> words{};
    std::uint32_t number = 0;
    std::u16string_view name;
};

// Appends an item to a list in internal form, which has no brackets around it.
void AppendInternalItem(std::u16string& list, const ResultDataFields& item);

// Appends the whole list, which is given in internal form.
void AppendLiteralList(std::u16string& output, std::u16string_view internalForm);

// The items up to the first that cannot be read; the names refer to the text. A name ends at the next single quote, so
// one that holds a quote is cut there. A number above 2^31 - 1 in the last field is one that cannot be read, although
// the form is written with such numbers for negative values. Deliberate on both sides.
std::vector<ResultDataFields> ParseInternalForm(std::u16string_view text);

}  // namespace OrvPLC
