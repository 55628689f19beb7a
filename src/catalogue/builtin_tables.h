// The built-in content, as the generator writes it from the TOML files of data/: entries that are ready when the
// library is mapped, and indexes over them. A place is a position in the table of the entries.
#pragma once

#include <cstdint>
#include <span>

#include "catalogue/entries.h"

namespace OrvPLC::Builtin {

// Never destroyed: entries of the built-in content may be in use when the process ends.
#define ORV_ENTRY_TABLE(Table, Entry, count) \
    union Table {                            \
        Entry items[count];                  \
        ~Table() {}                          \
    }

// One slot of a hash table over lower-cased names, see name_index.h; a name of length 0 means that it is free.
struct NameSlot {
    std::uint32_t hash;
    std::uint32_t lower;
    std::uint16_t length;
    std::uint16_t place;
};

inline constexpr std::uint16_t kNoPlace = 0xFFFF;

// The places by code, one after the other from the least code on.
struct CodeTable {
    std::uint32_t least;
    std::span<const std::uint16_t> places;
};

struct EnumType {
    Text lower;
    std::uint32_t id;
};

std::span<TOrvActionClassInternalInfo> Classes();  // ascending by lower-cased name
std::span<const NameSlot> ClassNames();
CodeTable ClassCodes();

std::span<TOrvActionInternalInfo> Actions();  // ascending by lower-cased name; a place is the internal index
std::span<const NameSlot> ActionNames();
CodeTable ActionCodes();
TOrvActionInternalInfo& EventDescription();  // GeneralEventInfo with the event fields

std::span<TOrvParameterInternalInfo> Parameters();  // all there are
std::span<const TOrvParameterInternalInfo> GeneralParameters();

std::span<const EnumType> EnumTypes();         // ascending by lower-cased name; the Boolean enum has none
std::span<TOrvEnumInternalInfo> EnumValues();  // ascending by key
std::span<const std::uint64_t> EnumKeys();     // parallel to the values, see EnumKey

}  // namespace OrvPLC::Builtin
