// What the sibling product's text and our actions have in common: the table that drives both directions.
//
// The rows are constants that the generator writes from src/catalogue/data/sibling_text.toml. All texts of the table
// end in a zero that they do not count.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace HeskPLC {

struct Field {
    std::u16string_view parameter;
    std::u16string_view key;  // empty for a positional field
    std::uint32_t kind;       // ORV_KIND_..., of the sibling's text; the catalogue's may differ
    std::uint32_t enumType;
};

struct Converter {
    std::u16string_view name;
    std::u16string_view lowerName;
    std::u16string_view action;  // what reading creates
    std::span<const Field> fields;
    bool written;  // else it is for reading only
};

std::span<const Converter> Converters();  // ascending by lowerName

// By the name in any case, null when there is none. Raises SystemException when the system refuses to compare.
const Converter* FindConverter(std::u16string_view name);

// Compares names and keys as the sibling product does: by the user's language, without regard to case. Raises as above.
bool SameName(std::u16string_view a, std::u16string_view b);

}  // namespace HeskPLC
