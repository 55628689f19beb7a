// The typed reads and writes of an action's parameters.
//
// A read answers whether the parameter is present; a value that does not convert leaves the output as it was.
#include "objects/action.h"
#include "objects/parameter_record.h"

namespace OrvPLC {

// An OrvBool is a byte, to which no bool& can refer.
bool TOrvAction::GetBoolean(const OrvWChar* name, OrvBool* value)
{
    return IfPresent(name, [&](const TOrvParameter& found) {
        bool truth = false;
        if (found.ReadBoolean(truth)) *value = truth;
    });
}

bool TOrvAction::GetInt32(const OrvWChar* name, std::int32_t* value)
{
    return Get(name, *value, &TOrvParameter::ReadInt32);
}

bool TOrvAction::GetInt64(const OrvWChar* name, std::int64_t* value)
{
    return Get(name, *value, &TOrvParameter::ReadInt64);
}

bool TOrvAction::GetDouble(const OrvWChar* name, double* value)
{
    return Get(name, *value, &TOrvParameter::ReadDouble);
}

// The string is new and the caller's; one that was there before is not freed. The text is made inside the value, so
// this read counts as a write.
bool TOrvAction::GetString(const OrvWChar* name, OrvBStr* value)
{
    return IfPresent(name, [&](TOrvParameter& found) { *value = NewBStr(found.MakeWideText()); });
}

bool TOrvAction::GetDateTime(const OrvWChar* name, TUlmoDateTime* value)
{
    return Get(name, *value, &TOrvParameter::ReadDateTime);
}

bool TOrvAction::GetGuid(const OrvWChar* name, TOrvGuid* value)
{
    return Get(name, *value, &TOrvParameter::ReadGuid);
}

bool TOrvAction::GetEventType(const OrvWChar* name, TOrvEventTypeValue* value)
{
    return Get(name, *value, &TOrvParameter::ReadEventType);
}

bool TOrvAction::GetMediaChannel(const OrvWChar* name, TOrvChannelValue* value)
{
    return Get(name, *value, &TOrvParameter::ReadMediaChannel);
}

bool TOrvAction::GetResource(const OrvWChar* name, TOrvResourceValue* value)
{
    return Get(name, *value, &TOrvParameter::ReadResource);
}

bool TOrvAction::GetRect(const OrvWChar* name, std::int64_t* value)
{
    return Get(name, *value, &TOrvParameter::ReadRect);
}

// The items belong to the value and live until its next read.
bool TOrvAction::GetResultDataSet(const OrvWChar* name, const TOrvResultDataItem** items, std::uint64_t* count)
{
    return IfPresent(name, [&](TOrvParameter& found) {
        TOrvResultDataList list{};
        if (!found.ReadResultDataSet(list)) return;
        *items = list.items;
        *count = list.count;
    });
}

void TOrvAction::SetBoolean(const OrvWChar* name, OrvBool value)
{
    Put(name, [&](TOrvParameter& p) { p.SetBoolean(value != 0); });
}

void TOrvAction::SetInt32(const OrvWChar* name, std::int32_t value)
{
    Put(name, [&](TOrvParameter& p) { p.SetInt32(value); });
}

void TOrvAction::SetInt64(const OrvWChar* name, const std::int64_t* value)
{
    Put(name, [&](TOrvParameter& p) { p.SetInt64(*value); });
}

void TOrvAction::SetDouble(const OrvWChar* name, const double* value)
{
    Put(name, [&](TOrvParameter& p) { p.SetDouble(*value); });
}

void TOrvAction::SetString(const OrvWChar* name, const OrvWChar* value)
{
    // Null removes the parameter, while "" is a value.
    if (!value) return RemoveParameter(name);
    Put(name, [&](TOrvParameter& p) { p.SetString(TerminatedView(value)); });
}

void TOrvAction::SetDateTime(const OrvWChar* name, const TUlmoDateTime* value)
{
    Put(name, [&](TOrvParameter& p) { p.SetDateTime(*value); });
}

void TOrvAction::SetGuid(const OrvWChar* name, const TOrvGuid* value)
{
    Put(name, [&](TOrvParameter& p) { p.SetGuid(*value); });
}

void TOrvAction::SetEventType(const OrvWChar* name, const TOrvEventTypeValue* value)
{
    Put(name, [&](TOrvParameter& p) { SetFromRecord(p, *value); });
}

void TOrvAction::SetMediaChannel(const OrvWChar* name, const TOrvChannelValue* value)
{
    Put(name, [&](TOrvParameter& p) { SetFromRecord(p, *value); });
}

void TOrvAction::SetResource(const OrvWChar* name, const TOrvResourceValue* value)
{
    Put(name, [&](TOrvParameter& p) { SetFromRecord(p, *value); });
}

void TOrvAction::SetRect(const OrvWChar* name, const std::int64_t* value)
{
    Put(name, [&](TOrvParameter& p) { p.SetRect(*value); });
}

void TOrvAction::SetResultDataSet(const OrvWChar* name, const TOrvResultDataItem* items, std::uint64_t count)
{
    Put(name, [&](TOrvParameter& p) { p.SetResultDataSet(items, static_cast<std::size_t>(count)); });
}

void TOrvAction::SetEnum(const OrvWChar* name, std::int32_t value, std::uint32_t enumType)
{
    Put(name, [&](TOrvParameter& p) { p.SetInt32(value, enumType); });
}

}  // namespace OrvPLC
