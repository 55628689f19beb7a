// The catalogue's queries and text writes, in both families. They have no exception frame and leave the last error
// alone: an unknown key is no fault. Each holds the catalogue's lock for its whole run, apart from the counts of
// classes and actions, which only read the size of a map.
#include <string_view>

#include "OrvActions/OrvCatalogue.h"
#include "catalogue/queries.h"
#include "exports/export_alias.h"
#include "objects/message.h"

using namespace OrvPLC;

namespace {

// Each runs with the catalogue locked. `find` gives the entry, or null.
template <class Record, class Find>
OrvBool Get(Record* record, Find&& find)
{
    // Also for a read: no text changes while the record is filled.
    const Ulmo::CriticalSectionGuard guard(Catalogue().Lock());
    const auto* entry = find();
    if (!entry) return false;
    Queries::Fill(*record, *entry);
    return true;
}

// A text that there is no memory for stays unwritten.
template <class Record, class Find>
OrvBool SetTexts(const Record* record, const OrvWChar* description, Find&& find) noexcept
try {
    const Ulmo::CriticalSectionGuard guard(Catalogue().Lock());
    const TOrvBaseNameInfo* entry = find();
    if (!entry) return false;
    Queries::WriteTexts(*entry, TerminatedView(record->PlainNameW), TerminatedView(description));
    return true;
} catch (...) {
    return false;
}

template <class Record, class Find>
OrvBool Set(const Record* record, Find&& find) noexcept
{
    return SetTexts(record, record->DescriptionW, find);
}

// `entries` gives a list or a map of them.
template <class Record, class Entries>
std::uint32_t Enumerate(Record* records, std::uint32_t capacity, Entries&& entries)
{
    const Ulmo::CriticalSectionGuard guard(Catalogue().Lock());
    return Queries::FillAll(records, capacity, entries());
}

template <class Entries>
std::uint32_t Count(Entries&& entries)
{
    const Ulmo::CriticalSectionGuard guard(Catalogue().Lock());
    return entries().size();
}

// Code 0 means the general parameters in one family and is an unknown action in the other.
Queries::ParameterList ParametersFor(const TOrvParameterPlainInfo*, std::uint32_t code)
{
    return Queries::ParametersOfAction(code);
}

Queries::ParameterList ParametersFor(const TTalvecParameterPlainInfo*, std::uint32_t code)
{
    return Queries::ParametersOfActionOrGeneral(code);
}

const TOrvParameterInternalInfo* WrittenParameter(const TOrvParameterPlainInfo*, std::uint32_t code,
                                                  std::uint32_t index)
{
    return Queries::ParametersOfAction(code).Find(index);
}

// A name that cannot be looked up for want of memory is an unknown name.
const TOrvParameterInternalInfo* WrittenParameter(const TTalvecParameterPlainInfo* record, std::uint32_t code,
                                                  std::uint32_t index) noexcept
try {
    if (code == ORV_GENERAL_PARAMETERS) return Catalogue().FindGeneralParameter(TerminatedView(record->NameW));
    return Queries::ParametersOfAction(code).Find(index);
} catch (...) {
    return nullptr;
}

const TOrvEnumInternalInfo* WrittenValue(const TOrvEnumValuePlainInfo* record)
{
    return Catalogue().FindEnumValue(EnumIdFromPublicType(record->Type), record->Value);
}

const TOrvEnumInternalInfo* WrittenValue(const TTalvecEnumValuePlainInfo* record)
{
    return Catalogue().FindEnumValue(record->EnumId, record->Value);
}

}  // namespace

// Classes

std::uint32_t OrvAct_GetNumberOfActionClasses()
{
    return static_cast<std::uint32_t>(Catalogue().ClassesByName().size());
}
ORV_ALIAS(Talvec_Action_GetNumberOfActionClasses, OrvAct_GetNumberOfActionClasses);

std::uint32_t OrvAct_EnumerateActionClasses(TOrvActionClassPlainInfo* record, std::uint32_t capacity)
{
    return Enumerate(
        record, capacity, []() -> auto& { return Catalogue().ClassesByName(); });
}

std::uint32_t Talvec_Action_EnumerateActionClasses(TTalvecActionClassPlainInfo* record, std::uint32_t capacity)
{
    return Enumerate(
        record, capacity, []() -> auto& { return Catalogue().ClassesByName(); });
}

OrvBool OrvAct_GetActionClassInfo(TOrvActionClassPlainInfo* record, std::uint32_t classCode)
{
    return Get(record, [=] { return Catalogue().FindActionClassByCode(classCode); });
}

OrvBool Talvec_Action_GetActionClassInfo(TTalvecActionClassPlainInfo* record, std::uint32_t classCode)
{
    return Get(record, [=] { return Catalogue().FindActionClassByCode(classCode); });
}

OrvBool OrvAct_SetActionClassPlainInfo(const TOrvActionClassPlainInfo* record)
{
    return Set(record, [=] { return Catalogue().FindActionClassByCode(record->Code); });
}

OrvBool Talvec_Action_SetActionClassPlainInfo(const TTalvecActionClassPlainInfo* record)
{
    return Set(record, [=] { return Catalogue().FindActionClassByCode(record->Code); });
}

// Actions

std::uint32_t OrvAct_GetNumberOfActions()
{
    return static_cast<std::uint32_t>(Catalogue().ActionsByName().size());
}
ORV_ALIAS(Talvec_Action_GetNumberOfActions, OrvAct_GetNumberOfActions);

std::uint32_t OrvAct_EnumerateActions(TOrvActionPlainInfo* record, std::uint32_t capacity)
{
    return Enumerate(
        record, capacity, []() -> auto& { return Catalogue().ActionsByName(); });
}

std::uint32_t Talvec_Action_EnumerateActions(TTalvecActionPlainInfo* record, std::uint32_t capacity)
{
    return Enumerate(
        record, capacity, []() -> auto& { return Catalogue().ActionsByName(); });
}

OrvBool OrvAct_GetActionInfo(TOrvActionPlainInfo* record, std::uint32_t code)
{
    return Get(record, [=] { return Catalogue().FindActionByCode(code); });
}

OrvBool Talvec_Action_GetActionInfo(TTalvecActionPlainInfo* record, std::uint32_t code)
{
    return Get(record, [=] { return Catalogue().FindActionByCode(code); });
}

OrvBool OrvAct_SetActionPlainInfo(const TOrvActionPlainInfo* record)
{
    return Set(record, [=] { return Catalogue().FindActionByCode(record->Code); });
}

OrvBool Talvec_Action_SetActionPlainInfo(const TTalvecActionPlainInfo* record)
{
    return Set(record, [=] { return Catalogue().FindActionByCode(record->Code); });
}

// Parameters

std::uint32_t OrvAct_GetNumberOfActionParameters(std::uint32_t code)
{
    return Count([=] { return Queries::ParametersOfAction(code); });
}

std::uint32_t Talvec_Action_GetNumberOfActionParameters(std::uint32_t code)
{
    return Count([=] { return Queries::ParametersOfActionOrGeneral(code); });
}

std::uint32_t OrvAct_EnumerateActionParameters(TOrvParameterPlainInfo* record, std::uint32_t capacity,
                                               std::uint32_t code)
{
    return Enumerate(record, capacity, [=] { return ParametersFor(record, code); });
}

std::uint32_t Talvec_Action_EnumerateActionParameters(TTalvecParameterPlainInfo* record, std::uint32_t capacity,
                                                      std::uint32_t code)
{
    return Enumerate(record, capacity, [=] { return ParametersFor(record, code); });
}

OrvBool OrvAct_GetActionParameterInfo(TOrvParameterPlainInfo* record, std::uint32_t code, std::uint32_t index)
{
    return Get(record, [=] { return ParametersFor(record, code).Find(index); });
}

OrvBool Talvec_Action_GetActionParameterInfo(TTalvecParameterPlainInfo* record, std::uint32_t code, std::uint32_t index)
{
    return Get(record, [=] { return ParametersFor(record, code).Find(index); });
}

OrvBool OrvAct_SetActionParameterPlainInfo(const TOrvParameterPlainInfo* record, std::uint32_t code,
                                           std::uint32_t index)
{
    return Set(record, [=] { return WrittenParameter(record, code, index); });
}

OrvBool Talvec_Action_SetActionParameterPlainInfo(const TTalvecParameterPlainInfo* record, std::uint32_t code,
                                                  std::uint32_t index)
{
    return Set(record, [=] { return WrittenParameter(record, code, index); });
}

OrvBool OrvAct_GetMatchActionDescriptionInfo(TOrvParameterPlainInfo* record)
{
    return Get(record, Queries::MatchActionDescription);
}

OrvBool Talvec_Action_GetMatchActionDescriptionInfo(TTalvecParameterPlainInfo* record)
{
    return Get(record, Queries::MatchActionDescription);
}

OrvBool OrvAct_SetMatchActionDescriptionPlainInfo(const TOrvParameterPlainInfo* record)
{
    return Set(record, Queries::MatchActionDescription);
}

OrvBool Talvec_Action_SetMatchActionDescriptionPlainInfo(const TTalvecParameterPlainInfo* record)
{
    return Set(record, Queries::MatchActionDescription);
}

// Event records

OrvBool OrvAct_GetEventDescriptionInfo(TOrvActionPlainInfo* record)
{
    return Get(record, [] { return Catalogue().EventEntry(); });
}

OrvBool Talvec_Action_GetEventDescriptionInfo(TTalvecActionPlainInfo* record)
{
    return Get(record, [] { return Catalogue().EventEntry(); });
}

OrvBool OrvAct_SetEventDescriptionPlainInfo(const TOrvActionPlainInfo* record)
{
    return Set(record, [] { return Catalogue().EventEntry(); });
}

OrvBool Talvec_Action_SetEventDescriptionPlainInfo(const TTalvecActionPlainInfo* record)
{
    return Set(record, [] { return Catalogue().EventEntry(); });
}

std::uint32_t OrvAct_EnumerateEventFields(TOrvParameterPlainInfo* record, std::uint32_t capacity)
{
    return Enumerate(record, capacity, Queries::EventFields);
}

std::uint32_t Talvec_Action_EnumerateEventFields(TTalvecParameterPlainInfo* record, std::uint32_t capacity)
{
    return Enumerate(record, capacity, Queries::EventFields);
}

OrvBool OrvAct_GetEventFieldInfo(TOrvParameterPlainInfo* record, std::uint32_t index)
{
    return Get(record, [=] { return Queries::EventFields().Find(index); });
}

OrvBool Talvec_Action_GetEventFieldInfo(TTalvecParameterPlainInfo* record, std::uint32_t index)
{
    return Get(record, [=] { return Queries::EventFields().Find(index); });
}

OrvBool OrvAct_SetEventFieldPlainInfo(const TOrvParameterPlainInfo* record, std::uint32_t index)
{
    return Set(record, [=] { return Queries::EventFields().Find(index); });
}

OrvBool Talvec_Action_SetEventFieldPlainInfo(const TTalvecParameterPlainInfo* record, std::uint32_t index)
{
    return Set(record, [=] { return Queries::EventFields().Find(index); });
}

// Enum values

std::uint32_t OrvAct_GetNumberOfEnumValues(std::uint32_t publicType)
{
    return Count([=] { return Queries::EnumValues(Queries::EnumFilter::FromPublicType(publicType)); });
}

std::uint32_t Talvec_Action_GetNumberOfEnumValues(std::uint32_t kind, std::uint32_t id)
{
    return Count([=] { return Queries::EnumValues(Queries::EnumFilter::FromKind(kind, id)); });
}

std::uint32_t OrvAct_EnumerateEnumValues(TOrvEnumValuePlainInfo* record, std::uint32_t capacity,
                                         std::uint32_t publicType)
{
    return Enumerate(record, capacity,
                     [=] { return Queries::EnumValues(Queries::EnumFilter::FromPublicType(publicType)); });
}

std::uint32_t Talvec_Action_EnumerateEnumValues(TTalvecEnumValuePlainInfo* record, std::uint32_t capacity,
                                                std::uint32_t kind, std::uint32_t id)
{
    return Enumerate(record, capacity, [=] { return Queries::EnumValues(Queries::EnumFilter::FromKind(kind, id)); });
}

OrvBool OrvAct_GetEnumValueInfo(TOrvEnumValuePlainInfo* record, std::uint32_t publicType, std::uint32_t value)
{
    return Get(record, [=] { return Catalogue().FindEnumValue(EnumIdFromPublicType(publicType), value); });
}

OrvBool Talvec_Action_GetEnumValueInfo(TTalvecEnumValuePlainInfo* record, std::uint32_t kind, std::uint32_t id,
                                       std::uint32_t value)
{
    return Get(record, [=] { return Catalogue().FindEnumValue(Queries::EnumIdFromKind(kind, id), value); });
}

// The description comes from the pointer that holds the value's name in a record that was read. Deliberate: it is where
// callers put it, and it stays so.
OrvBool OrvAct_SetEnumValuePlainInfo(const TOrvEnumValuePlainInfo* record)
{
    return SetTexts(record, record->NameW, [=] { return WrittenValue(record); });
}

OrvBool Talvec_Action_SetEnumValuePlainInfo(const TTalvecEnumValuePlainInfo* record)
{
    return SetTexts(record, record->NameW, [=] { return WrittenValue(record); });
}
