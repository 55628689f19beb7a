#include "objects/roles.h"

#include "objects/action.h"
#include "objects/parameter_record.h"

namespace OrvPLC::Roles {

namespace {

// Null if the action has no such role, or none of them is set.
const TOrvParameter* FindSet(const TOrvAction& action, Views views)
{
    const TOrvActionInternalInfo* entry = action.Entry();
    if (!entry) return nullptr;
    for (std::size_t position = entry->FindView(views); position != TOrvActionInternalInfo::kNotFound;
         position = entry->FindView(views, position + 1)) {
        // One that is declared but not set lets the next of the same role answer.
        if (const TOrvParameter* value = action.Parameters().FindDeclared(position)) return value;
    }
    return nullptr;
}

}  // namespace

const TOrvChannelValue* ReadChannel(TOrvAction& action, Views views)
{
    const TOrvParameter* value = FindSet(action, views);
    if (!value) return nullptr;
    value->ReadMediaChannel(action.Scratch());
    return &action.Scratch();
}

// The key lies in the first word of the scratch record.
const std::int64_t* ReadForeignKey(TOrvAction& action)
{
    const TOrvParameter* value = FindSet(action, kForeignKey);
    if (!value) return nullptr;
    auto& key = reinterpret_cast<std::int64_t&>(action.Scratch().id);
    value->ReadInt64(key);
    return &key;
}

bool WriteChannel(TOrvAction& action, Views views, const TOrvChannelValue& channel)
{
    const TOrvActionInternalInfo* entry = action.Entry();
    const std::size_t position = entry ? entry->FindView(views) : TOrvActionInternalInfo::kNotFound;
    if (position == TOrvActionInternalInfo::kNotFound) return false;
    action.Parameters().StoreDeclared(position, [&](TOrvParameter& value) { SetFromRecord(value, channel); });
    return true;
}

std::int32_t ReadGenericInt32(const TOrvAction& action)
{
    std::int32_t number = 0;
    const TOrvActionInternalInfo* entry = action.Entry();
    if (!entry) return number;
    for (std::size_t position = 0; position < entry->Parameters.size(); ++position) {
        if (entry->Parameters[position].Type != ORV_KIND_Numeric32Bit) continue;
        // Only the first declared one counts, set or not.
        if (const TOrvParameter* value = action.Parameters().FindDeclared(position)) value->ReadInt32(number);
        break;
    }
    return number;
}

}  // namespace OrvPLC::Roles
