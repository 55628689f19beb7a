// The catalogue in the C++ wrapper, for range-for. Part of OrvActions.hpp; include that.
//
//     for (const orv::ActionInfo& action : orv::AllActions()) { ... }
//
// Each function returns a snapshot. Its texts belong to the catalogue and stay valid for the life of the process.
// OrvCatalogue.h tells what a plain name or a description reads after somebody has written another.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "OrvActions/Cpp/Text.hpp"

namespace orv {

// The texts of every entry.
struct EntryTexts {
    std::u16string_view name;
    std::u16string_view plainName;  // native or neutral, see OrvAct_SetNativeTranslation
    std::u16string_view description;
};

struct ClassInfo : EntryTexts {
    std::uint32_t code;
    std::uint32_t priority;
};

struct ActionInfo : EntryTexts {
    std::uint32_t code;
    std::uint32_t classCode;
    std::uint32_t priority;
    std::uint32_t parameterCount;
};

struct ParameterInfo : EntryTexts {
    std::uint32_t kind;  // ORV_KIND_...
    std::uint32_t view;  // ORV_VIEW_...
    std::uint32_t priority;
    std::uint32_t enumId;   // ORV_ENUM_..., 1 for the Boolean enum, 0 for none
    std::uint32_t columns;  // ORV_COLUMN_... joined, those of the event record
};

struct EnumValueInfo : EntryTexts {
    std::uint32_t enumId;
    std::uint32_t value;
};

namespace detail {

template <class Record>
EntryTexts TextsOf(const Record& record)
{
    return {View(record.NameW), View(record.PlainNameW), View(record.DescriptionW)};
}

inline ClassInfo InfoOf(const TTalvecActionClassPlainInfo& record)
{
    return {TextsOf(record), record.Code, record.Priority};
}

inline ActionInfo InfoOf(const TTalvecActionPlainInfo& record)
{
    return {TextsOf(record), record.Code, record.ClassCode, record.Priority, record.ParameterCount};
}

inline ParameterInfo InfoOf(const TTalvecParameterPlainInfo& record)
{
    return {TextsOf(record), record.Type, record.View, record.Priority, record.EnumType,
            record.DbField};
}

inline EnumValueInfo InfoOf(const TTalvecEnumValuePlainInfo& record)
{
    return {TextsOf(record), record.EnumId, record.Value};
}

// Asks for the number of records, then for the records.
template <class Info, class Record, class Enumerate>
std::vector<Info> All(std::uint32_t count, Enumerate enumerate)
{
    std::vector<Record> records(count);
    records.resize(enumerate(records.data(), count));
    std::vector<Info> infos;
    infos.reserve(records.size());
    for (const Record& record : records) infos.push_back(InfoOf(record));
    return infos;
}

}  // namespace detail

inline std::optional<ClassInfo> FindClass(std::uint32_t code)
{
    TTalvecActionClassPlainInfo record{};
    if (!Talvec_Action_GetActionClassInfo(&record, code)) return std::nullopt;
    return detail::InfoOf(record);
}

inline std::optional<EnumValueInfo> FindEnumValue(std::uint32_t enumId, std::uint32_t value)
{
    TTalvecEnumValuePlainInfo record{};
    if (!Talvec_Action_GetEnumValueInfo(&record, ORV_ENUM_KIND_BY_ID, enumId, value)) return std::nullopt;
    return detail::InfoOf(record);
}

// Classes and actions come in order of their lower-cased names.
inline std::vector<ClassInfo> AllClasses()
{
    return detail::All<ClassInfo, TTalvecActionClassPlainInfo>(Talvec_Action_GetNumberOfActionClasses(),
                                                               Talvec_Action_EnumerateActionClasses);
}

inline std::vector<ActionInfo> AllActions()
{
    return detail::All<ActionInfo, TTalvecActionPlainInfo>(Talvec_Action_GetNumberOfActions(),
                                                           Talvec_Action_EnumerateActions);
}

// The parameters that an action declares, in that order; none for an unknown code.
inline std::vector<ParameterInfo> ParametersOf(std::uint32_t actionCode)
{
    return detail::All<ParameterInfo, TTalvecParameterPlainInfo>(
        Talvec_Action_GetNumberOfActionParameters(actionCode), [&](auto* records, std::uint32_t capacity) {
            return Talvec_Action_EnumerateActionParameters(records, capacity, actionCode);
        });
}

// The parameters that any action may carry.
inline std::vector<ParameterInfo> GeneralParameters()
{
    return ParametersOf(ORV_GENERAL_PARAMETERS);
}

// The values of one enum, ORV_ENUM_... or 1 for the Boolean enum; of all enums by default.
inline std::vector<EnumValueInfo> EnumValues(std::optional<std::uint32_t> enumId = std::nullopt)
{
    const std::uint32_t kind = enumId ? std::uint32_t{ORV_ENUM_KIND_BY_ID} : std::uint32_t{ORV_ENUM_KIND_ALL};
    const std::uint32_t id = enumId.value_or(0);
    return detail::All<EnumValueInfo, TTalvecEnumValuePlainInfo>(
        Talvec_Action_GetNumberOfEnumValues(kind, id), [&](auto* records, std::uint32_t capacity) {
            return Talvec_Action_EnumerateEnumValues(records, capacity, kind, id);
        });
}

inline std::optional<ActionInfo> FindAction(std::uint32_t code)
{
    TTalvecActionPlainInfo record{};
    if (!Talvec_Action_GetActionInfo(&record, code)) return std::nullopt;
    return detail::InfoOf(record);
}

inline std::optional<ActionInfo> FindAction(const TextArg& name)
{
    return FindAction(OrvAct_GetActionCodeByNameW(name.c_str()));
}

}  // namespace orv
