// The catalogue's queries and text writes, in both families. They have no exception frame and leave the last error
// alone: an unknown key is no fault. Each holds the catalogue's lock for its whole run, apart from the counts of
// classes and actions, which only read the size of a map.
#include <string_view>

#include "OrvActions/OrvCatalogue.h"
#include "catalogue/queries.h"
#include "exports/export_twin.h"
#include "objects/message.h"

using namespace OrvPLC;

// Defines a function of both families whose first argument is a record of the own family; the body, a template over the
// record, follows. The last argument holds the further parameters, if any.
#define ORV_EXPORT_RECORD_TWIN(Result, Name, Record, Arguments, ...)                           \
    template <class T>                                                                         \
    static Result Name(T* record __VA_OPT__(, ) __VA_ARGS__);                                  \
    extern "C" Result OrvAct_##Name(TOrv##Record* record __VA_OPT__(, ) __VA_ARGS__)           \
    {                                                                                          \
        return Name Arguments;                                                                 \
    }                                                                                          \
    extern "C" Result Talvec_Action_##Name(TTalvec##Record* record __VA_OPT__(, ) __VA_ARGS__) \
    {                                                                                          \
        return Name Arguments;                                                                 \
    }                                                                                          \
    template <class T>                                                                         \
    static Result Name(T* record __VA_OPT__(, ) __VA_ARGS__)

namespace {

using Guard = Ulmo::CriticalSectionGuard;

template <class Record, class Entry>
OrvBool Get(Record* record, const Entry* entry)
{
    if (!entry) return false;
    Queries::Fill(*record, *entry);
    return true;
}

// A text that there is no memory for stays unwritten.
template <class Record>
OrvBool Set(const Record* record, const TOrvBaseNameInfo* entry, const OrvWChar* description) noexcept
try {
    if (!entry) return false;
    Queries::WriteTexts(*entry, TerminatedView(record->PlainNameW), TerminatedView(description));
    return true;
} catch (...) {
    return false;
}

template <class Record>
OrvBool Set(const Record* record, const TOrvBaseNameInfo* entry)
{
    return Set(record, entry, record->DescriptionW);
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

ORV_EXPORT_TWIN(std::uint32_t, GetNumberOfActionClasses, (), ())
{
    return static_cast<std::uint32_t>(Catalogue().ClassesByName().size());
}

ORV_EXPORT_RECORD_TWIN(std::uint32_t, EnumerateActionClasses, ActionClassPlainInfo, (record, capacity),
                       std::uint32_t capacity)
{
    const Guard guard(Catalogue().Lock());
    return Queries::FillAll(record, capacity, Catalogue().ClassesByName());
}

ORV_EXPORT_RECORD_TWIN(OrvBool, GetActionClassInfo, ActionClassPlainInfo, (record, classCode), std::uint32_t classCode)
{
    const Guard guard(Catalogue().Lock());
    return Get(record, Catalogue().FindActionClassByCode(classCode));
}

ORV_EXPORT_RECORD_TWIN(OrvBool, SetActionClassPlainInfo, ActionClassPlainInfo const, (record))
{
    const Guard guard(Catalogue().Lock());
    return Set(record, Catalogue().FindActionClassByCode(record->Code));
}

// Actions

ORV_EXPORT_TWIN(std::uint32_t, GetNumberOfActions, (), ())
{
    return static_cast<std::uint32_t>(Catalogue().ActionsByName().size());
}

ORV_EXPORT_RECORD_TWIN(std::uint32_t, EnumerateActions, ActionPlainInfo, (record, capacity), std::uint32_t capacity)
{
    const Guard guard(Catalogue().Lock());
    return Queries::FillAll(record, capacity, Catalogue().ActionsByName());
}

ORV_EXPORT_RECORD_TWIN(OrvBool, GetActionInfo, ActionPlainInfo, (record, code), std::uint32_t code)
{
    const Guard guard(Catalogue().Lock());
    return Get(record, Catalogue().FindActionByCode(code));
}

ORV_EXPORT_RECORD_TWIN(OrvBool, SetActionPlainInfo, ActionPlainInfo const, (record))
{
    const Guard guard(Catalogue().Lock());
    return Set(record, Catalogue().FindActionByCode(record->Code));
}

// Parameters

std::uint32_t OrvAct_GetNumberOfActionParameters(std::uint32_t code)
{
    const Guard guard(Catalogue().Lock());
    return Queries::ParametersOfAction(code).size();
}

std::uint32_t Talvec_Action_GetNumberOfActionParameters(std::uint32_t code)
{
    const Guard guard(Catalogue().Lock());
    return Queries::ParametersOfActionOrGeneral(code).size();
}

ORV_EXPORT_RECORD_TWIN(std::uint32_t, EnumerateActionParameters, ParameterPlainInfo, (record, capacity, code),
                       std::uint32_t capacity, std::uint32_t code)
{
    const Guard guard(Catalogue().Lock());
    return Queries::FillAll(record, capacity, ParametersFor(record, code));
}

ORV_EXPORT_RECORD_TWIN(OrvBool, GetActionParameterInfo, ParameterPlainInfo, (record, code, index), std::uint32_t code,
                       std::uint32_t index)
{
    const Guard guard(Catalogue().Lock());
    return Get(record, ParametersFor(record, code).Find(index));
}

ORV_EXPORT_RECORD_TWIN(OrvBool, SetActionParameterPlainInfo, ParameterPlainInfo const, (record, code, index),
                       std::uint32_t code, std::uint32_t index)
{
    const Guard guard(Catalogue().Lock());
    return Set(record, WrittenParameter(record, code, index));
}

ORV_EXPORT_RECORD_TWIN(OrvBool, GetMatchActionDescriptionInfo, ParameterPlainInfo, (record))
{
    const Guard guard(Catalogue().Lock());
    return Get(record, Queries::MatchActionDescription());
}

ORV_EXPORT_RECORD_TWIN(OrvBool, SetMatchActionDescriptionPlainInfo, ParameterPlainInfo const, (record))
{
    const Guard guard(Catalogue().Lock());
    return Set(record, Queries::MatchActionDescription());
}

// Event records

ORV_EXPORT_RECORD_TWIN(OrvBool, GetEventDescriptionInfo, ActionPlainInfo, (record))
{
    const Guard guard(Catalogue().Lock());
    return Get(record, Catalogue().EventInfo());
}

ORV_EXPORT_RECORD_TWIN(OrvBool, SetEventDescriptionPlainInfo, ActionPlainInfo const, (record))
{
    const Guard guard(Catalogue().Lock());
    return Set(record, Catalogue().EventInfo());
}

ORV_EXPORT_RECORD_TWIN(std::uint32_t, EnumerateEventFields, ParameterPlainInfo, (record, capacity),
                       std::uint32_t capacity)
{
    const Guard guard(Catalogue().Lock());
    return Queries::FillAll(record, capacity, Queries::EventFields());
}

ORV_EXPORT_RECORD_TWIN(OrvBool, GetEventFieldInfo, ParameterPlainInfo, (record, index), std::uint32_t index)
{
    const Guard guard(Catalogue().Lock());
    return Get(record, Queries::EventFields().Find(index));
}

ORV_EXPORT_RECORD_TWIN(OrvBool, SetEventFieldPlainInfo, ParameterPlainInfo const, (record, index), std::uint32_t index)
{
    const Guard guard(Catalogue().Lock());
    return Set(record, Queries::EventFields().Find(index));
}

// Enum values

std::uint32_t OrvAct_GetNumberOfEnumValues(std::uint32_t publicType)
{
    const Guard guard(Catalogue().Lock());
    return Queries::EnumValues(Queries::EnumFilter::FromPublicType(publicType)).size();
}

std::uint32_t Talvec_Action_GetNumberOfEnumValues(std::uint32_t kind, std::uint32_t id)
{
    const Guard guard(Catalogue().Lock());
    return Queries::EnumValues(Queries::EnumFilter::FromKind(kind, id)).size();
}

std::uint32_t OrvAct_EnumerateEnumValues(TOrvEnumValuePlainInfo* records, std::uint32_t capacity,
                                         std::uint32_t publicType)
{
    const Guard guard(Catalogue().Lock());
    return Queries::FillAll(records, capacity, Queries::EnumValues(Queries::EnumFilter::FromPublicType(publicType)));
}

std::uint32_t Talvec_Action_EnumerateEnumValues(TTalvecEnumValuePlainInfo* records, std::uint32_t capacity,
                                                std::uint32_t kind, std::uint32_t id)
{
    const Guard guard(Catalogue().Lock());
    return Queries::FillAll(records, capacity, Queries::EnumValues(Queries::EnumFilter::FromKind(kind, id)));
}

OrvBool OrvAct_GetEnumValueInfo(TOrvEnumValuePlainInfo* record, std::uint32_t publicType, std::uint32_t value)
{
    const Guard guard(Catalogue().Lock());
    return Get(record, Catalogue().FindEnumValue(EnumIdFromPublicType(publicType), value));
}

OrvBool Talvec_Action_GetEnumValueInfo(TTalvecEnumValuePlainInfo* record, std::uint32_t kind, std::uint32_t id,
                                       std::uint32_t value)
{
    const Guard guard(Catalogue().Lock());
    return Get(record, Catalogue().FindEnumValue(Queries::EnumIdFromKind(kind, id), value));
}

// The description comes from the pointer that holds the value's name in a record that was read. Deliberate: it is where
// callers put it, and it stays so.
ORV_EXPORT_RECORD_TWIN(OrvBool, SetEnumValuePlainInfo, EnumValuePlainInfo const, (record))
{
    const Guard guard(Catalogue().Lock());
    return Set(record, WrittenValue(record), record->NameW);
}
