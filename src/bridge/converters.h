// What the sibling product's text and our actions have in common: the table that drives both directions.
//
// The rows are constants that the generator writes from src/catalogue/data/sibling_text.toml. Like the catalogue's they
// hold no pointers.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "catalogue/builtin_texts.h"

namespace HeskPLC {

struct TableText {
    OrvPLC::Builtin::Text place;

    std::u16string_view view() const { return {OrvPLC::Builtin::kWideTexts + place.offset, place.length}; }
    operator std::u16string_view() const { return view(); }
    bool empty() const { return place.length == 0; }
};

struct Field {
    std::u16string_view parameter;
    std::u16string_view key;  // empty for a positional field
    std::uint32_t kind;       // ORV_KIND_..., of the sibling's text; the catalogue's may differ
    std::uint32_t enumType;
};

struct FieldRow {
    TableText parameter;
    TableText key;
    std::uint32_t kind;
    std::uint32_t enumType;

    operator Field() const { return {parameter, key, kind, enumType}; }
};

struct Converter {
    TableText name;
    TableText lowerName;
    TableText action;  // what reading creates
    std::uint32_t firstField;
    std::uint32_t fieldCount;
    bool written;  // else it is for reading only

    std::span<const FieldRow> Fields() const noexcept;
};

std::span<const Converter> Converters();  // ascending by lowerName

// By the name in any case, null if there is none. Raises SystemException if the system refuses to compare.
const Converter* FindConverter(std::u16string_view name);

// Compares names and keys as the sibling product does: by the user's language, without regard to case. Raises as above.
bool SameName(std::u16string_view a, std::u16string_view b);

}  // namespace HeskPLC
