// The shape of the built-in table: plain constants that the generator writes from the TOML files of data/ and that
// the builder turns into catalogue entries once, at load.
//
// All names and texts of the table are ASCII (the generator refuses others), so one narrow literal serves as the
// ANSI and as the UTF-8 form. Literals live as long as the library; entries point into them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace OrvPLC::Builtin {

// One text in both widths; every view ends in a terminating zero that it does not count.
struct Text {
    std::string_view narrow;
    std::u16string_view wide;
};

struct Name {
    Text text;
    std::u16string_view lower;
};

struct ParameterRow {
    Name name;
    std::uint32_t type;
    std::uint32_t view;
    std::uint32_t priority;
    std::uint32_t enumType;
    std::uint32_t dbField;
    Text plain;
    Text description;  // empty: the entry keeps its name as description
};

struct ClassRow {
    Name name;
    std::uint32_t code;
    std::uint32_t priority;
    Text plain;
    Text description;
};

struct ActionRow {
    Name name;
    std::uint32_t code;
    std::uint32_t priority;
    std::uint32_t classCode;
    Text plain;
    Text description;
    std::span<const ParameterRow> parameters;  // in declaration order, which is part of the contract
    // The declaration positions of the parameters, ordered by lower-cased name: the order of a walk by key.
    std::span<const std::uint8_t> keyOrder;
};

struct EnumRow {
    Name name;
    std::uint32_t id;
};

struct EnumValueRow {
    Name name;
    std::uint32_t enumId;
    std::uint32_t value;
    Text plain;        // empty for the two Boolean values, which read as their names
    Text description;  // empty: the entry keeps its name as description
};

std::span<const ClassRow> Classes();                // ascending by code
std::span<const ActionRow* const> Actions();        // ascending by lower-cased name
const ActionRow& EventDescription();                // GeneralEventInfo with the event fields
std::span<const ParameterRow> GeneralParameters();  // in registration order
std::span<const EnumRow> Enums();                   // ascending by id; the Boolean enum has no row
std::span<const EnumValueRow> EnumValues();         // the Boolean values first, then ascending by id and value

}  // namespace OrvPLC::Builtin
