#include "events/event_restore.h"

#include <iterator>

#include "events/columns.h"
#include "forms/binary_reader.h"
#include "forms/sibling.h"
#include "forms/text_reader.h"

namespace OrvPLC {

namespace {

std::uint32_t ImageSize(const TOrvEventData& record)
{
    // Only the low half of the size counts, as in the binary form.
    return record.image ? static_cast<std::uint32_t>(record.imageSize) : 0;
}

// Null without an image, and for one that holds no object of that kind.
TOrvAction* ReadOwnImage(const TOrvEventData& record, std::uint32_t expectedKind)
{
    const std::uint32_t size = ImageSize(record);
    return size != 0 ? ReadActionBinary(record.image, size, expectedKind).object : nullptr;
}

// The sibling's library makes text of it, which is read like any other. Null if there is no such library.
TOrvAction* ReadSiblingImage(const TOrvEventData& record, std::uint32_t expectedKind)
{
    std::u16string text;
    // Codes below the first of ours are the sibling's.
    if (record.code >= kFirstActionCode || ImageSize(record) == 0) return nullptr;
    if (!Sibling().ConvertEvent(record, text) || text.empty()) return nullptr;
    return ReadActionText(text, expectedKind, false).object;
}

std::u16string_view TextOf(const TOrvEventText& column)
{
    return {Units(column.text), static_cast<std::size_t>(column.length)};
}

void Set(TOrvParameter& value, const std::int32_t* field)
{
    value.SetInt32(*field);
}

void Set(TOrvParameter& value, const std::int64_t* field)
{
    value.SetInt64(*field);
}

void Set(TOrvParameter& value, const double* field)
{
    value.SetDouble(*field);
}

void Set(TOrvParameter& value, const TUlmoDateTime* field)
{
    value.SetDateTime(*field);
}

void Set(TOrvParameter& value, const TOrvEventText& field)
{
    value.SetString(TextOf(field));
}

// Each declared parameter whose columns are all filled.
void RestoreDeclared(TOrvAction& action, const TOrvEventData& record)
{
    const Columns filled = FilledColumns(record);
    const ParameterRange& declared = action.Entry()->Parameters;
    for (std::size_t position = 0; position < declared.size(); ++position) {
        const TOrvParameterInternalInfo& info = declared[position];
        if (info.DbField == 0 || (info.DbField & ~filled) != 0) continue;
        action.Parameters().StoreDeclared(position, [&](TOrvParameter& value) {
            // Of several columns of one sort the last one stays, deliberately.
            for (Columns left = info.DbField; left != 0; left &= left - 1) {
                VisitColumn(record, First(left), [&](const auto& field) { Set(value, field); });
            }
            // Without a conversion: the fields stay as the columns gave them.
            value.SetKindAndEnum(info.Type, info.EnumType);
        });
    }
}

// The four parameters that any action may carry; an empty text is none.
void RestoreUsers(TOrvAction& action, const TOrvEventData& record)
{
    for (std::size_t user = 0; user < std::size(kUserParameters); ++user) {
        const TOrvEventText& column = record.userField[user];
        if (!column.text || column.length == 0) continue;
        action.Parameters().Store(kUserParameters[user],
                                  [&](TOrvParameter& value) { value.SetString(TextOf(column)); });
    }
}

TOrvAction* RestoreWithoutOwnImage(const TOrvEventData& record)
{
    TOrvAction* sibling = ReadSiblingImage(record, ORV_MESSAGE_ACTION);
    return sibling ? sibling : RestoreFromColumns(record);
}

}  // namespace

TOrvAction* RestoreFromImage(const TOrvEventData& record)
{
    return ReadOwnImage(record, ORV_MESSAGE_ACTION);
}

TOrvAction* RestoreFromColumns(const TOrvEventData& record)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByCode(record.code);
    if (!entry) entry = Catalogue().EventEntry();
    if (!entry) return nullptr;
    ObjectPtr<TOrvAction> action(TOrvAction::Create(*entry));
    RestoreDeclared(*action, record);
    // The entry of event records declares the columns of users itself, under other names.
    if (entry != Catalogue().EventEntry()) RestoreUsers(*action, record);
    return action.release();
}

TOrvMatchAction* RestoreMatchAction(const TOrvEventData& record)
{
    TOrvAction* own = RestoreFromImage(record);
    // Only the copy goes out, with the match action's own class; this one ends here.
    const ObjectPtr<TOrvAction> action(own ? own : RestoreWithoutOwnImage(record));
    return action ? TOrvMatchAction::CreateFrom(*action, 1) : nullptr;
}

TOrvAction* RestoreAction(const TOrvEventData& record)
{
    if (TOrvAction* own = RestoreFromImage(record)) return own;
    ObjectPtr<TOrvAction> action(RestoreWithoutOwnImage(record));
    if (!action || action->Entry() != Catalogue().EventEntry()) return action.release();
    // Restored from the entry of all event records: callers get an action of that name without an entry. Deliberate.
    ObjectPtr<TOrvAction> named(TOrvAction::Create(action->Name()));
    named->Parameters().CopyFrom(action->Parameters());
    return named.release();
}

TOrvAction* RestoreForDescription(const TOrvEventData& record)
{
    TOrvAction* action = record.code >= kFirstActionCode ? ReadOwnImage(record, ORV_EXPECT_ANY)
                                                         : ReadSiblingImage(record, ORV_EXPECT_ANY);
    return action ? action : RestoreFromColumns(record);
}

}  // namespace OrvPLC
