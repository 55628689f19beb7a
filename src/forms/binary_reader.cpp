#include "forms/binary_reader.h"

#include <bit>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "forms/expected_kind.h"
#include "forms/sibling.h"
#include "forms/text_parser.h"
#include "objects/match_action.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

static_assert(std::endian::native == std::endian::little);

namespace {

using View = std::u16string_view;

struct Record {
    View name;
    std::uint32_t kind = 0;
    std::uint32_t enumType = 0;
    std::int32_t small = 0;
    std::int64_t large = 0;
    double real = 0;
    TOrvGuid guid{};
    View text;
};

void ReadPayload(TOrvBinaryReader& reader, Record& record)
{
    switch (record.kind) {
    case ORV_KIND_Boolean:
    case ORV_KIND_Numeric32Bit: reader.ReadField(record.small); break;
    case ORV_KIND_Numeric64Bit:
    case ORV_KIND_DateTime:
    case ORV_KIND_Rect: reader.ReadField(record.large); break;
    case ORV_KIND_NumericDouble: reader.ReadField(record.real); break;
    case ORV_KIND_String:
    case ORV_KIND_ResultDataSet: reader.ReadText(record.text); break;
    case ORV_KIND_Guid: reader.ReadField(record.guid); break;
    case ORV_KIND_EventType:
        reader.ReadText(record.text);
        reader.ReadField(record.large);
        break;
    case ORV_KIND_MediaChannel:
        reader.ReadText(record.text);
        reader.ReadField(record.large);
        reader.ReadField(record.small);
        break;
    case ORV_KIND_Resource:
        reader.ReadText(record.text);
        reader.ReadField(record.guid);
        break;
    default: break;
    }
}

// False when the record did not arrive in whole.
bool ReadRecord(TOrvBinaryReader& reader, Record& record)
{
    reader.ReadText(record.name);
    reader.ReadField(record.kind);
    reader.ReadField(record.enumType);
    ReadPayload(reader, record);
    return !reader.Failed();
}

void SetContent(TOrvParameter& value, const Record& record)
{
    switch (record.kind) {
    case ORV_KIND_Boolean:
    case ORV_KIND_Numeric32Bit: value.SetInt32(record.small); break;  // a Boolean keeps its number
    case ORV_KIND_Numeric64Bit:
    case ORV_KIND_DateTime:
    case ORV_KIND_Rect: value.SetInt64(record.large); break;
    case ORV_KIND_NumericDouble: value.SetDouble(record.real); break;
    case ORV_KIND_String:
    case ORV_KIND_ResultDataSet: value.SetString(record.text); break;
    case ORV_KIND_Guid: value.SetGuid(record.guid); break;
    case ORV_KIND_EventType: value.SetEventType(static_cast<std::uint64_t>(record.large), record.text); break;
    case ORV_KIND_MediaChannel:
        value.SetMediaChannel(static_cast<std::uint64_t>(record.large), static_cast<std::uint32_t>(record.small),
                              record.text);
        break;
    case ORV_KIND_Resource: value.SetResource(record.guid, record.text); break;
    default: break;
    }
    value.SetKindAndEnum(record.kind, record.enumType);
}

// Finds the position of a declared parameter in the spelling of the catalogue. The writer walks in key order, so the
// next name is mostly the one that follows in that order.
class DeclaredNames {
public:
    explicit DeclaredNames(const TOrvActionInternalInfo* entry) : entry_(entry) {}

    std::size_t Find(View name)
    {
        if (!entry_) return ParameterMap::kNotFound;
        const auto& order = entry_->KeyOrder();
        if (next_ < order.size() && entry_->IsSpelt(order[next_], name)) return order[next_++];
        const std::size_t position = entry_->FindParameter(name);
        if (position == ParameterMap::kNotFound || !entry_->IsSpelt(position, name)) return ParameterMap::kNotFound;
        if (order.size() > ParameterMap::kMaximumSlots) return position;  // the walk would cost more than it saves
        next_ = 0;
        while (order[next_++] != position) continue;
        return position;
    }

private:
    const TOrvActionInternalInfo* entry_;
    std::size_t next_ = 0;
};

void StoreRecord(TOrvAction& action, DeclaredNames& names, const Record& record)
{
    const auto fill = [&record](TOrvParameter& value) { SetContent(value, record); };
    const std::size_t position = names.Find(record.name);
    if (position == ParameterMap::kNotFound) return action.Parameters().Store(record.name, fill);
    action.Parameters().StoreDeclared(position, fill);
}

// The comment of a match action is its description, whatever kind of value it is.
bool TakeDescription(TOrvAction& action, const Record& record)
{
    if (action.Kind() != ORV_MESSAGE_MATCH_ACTION || !Ulmo::EqualsLower(record.name, kDescriptionKey)) return false;
    TOrvParameter value;
    SetContent(value, record);
    static_cast<TOrvMatchAction&>(action).TakeDescription(SharedName::Copy(record.name), std::move(value));
    return true;
}

void ReadRecords(TOrvBinaryReader& reader, TOrvAction& action)
{
    std::uint32_t count = 0;
    if (!reader.ReadField(count)) return;
    DeclaredNames names(action.Entry());
    for (; count > 0; --count) {
        Record record;
        if (!ReadRecord(reader, record)) return;
        if (!TakeDescription(action, record)) StoreRecord(action, names, record);
    }
}

ObjectPtr<TOrvAction> MakeObject(std::uint32_t kind, View name)
{
    if (kind == ORV_MESSAGE_MATCH_ACTION) return ObjectPtr<TOrvAction>(TOrvMatchAction::Create(name));
    return ObjectPtr<TOrvAction>(TOrvAction::Create(name));
}

// Whatever the caller expects, only an action is taken from there: deliberate.
BinaryReadResult ReadSibling(std::span<const std::byte> buffer, std::uint32_t kind, std::uint32_t consumed)
{
    std::u16string text;
    if (!Sibling().ConvertBinary(buffer, kind, text)) return {nullptr, consumed};
    ParsedText parsed = ParseActionText(text, ORV_MESSAGE_ACTION);
    return {parsed.object.release(), parsed.consumed};
}

BinaryReadResult ReadEven(const void* bytes, std::uint32_t size, std::uint32_t expectedKind)
{
    TOrvBinaryReader reader(bytes, size);
    std::uint32_t kind = 0;
    View name;
    reader.ReadField(kind);
    reader.ReadText(name);
    if (kind == ORV_MESSAGE_SIBLING_ACTION || kind == ORV_MESSAGE_SIBLING_MATCH_ACTION) {
        return ReadSibling({static_cast<const std::byte*>(bytes), size}, kind, reader.Consumed());
    }
    if (!Admits(expectedKind, kind)) return {nullptr, reader.Consumed()};
    ObjectPtr<TOrvAction> object = MakeObject(kind, name);
    ReadRecords(reader, *object);
    return {object.release(), reader.Consumed()};
}

}  // namespace

const std::byte* TOrvBinaryReader::Fail()
{
    if (error_ == 0) error_ = std::exchange(room_, -1);
    return nullptr;
}

bool TOrvBinaryReader::ReadText(View& text)
{
    std::uint32_t count = 0;
    if (!ReadField(count)) return false;
    if (count == 0) {
        text = {};
        return true;
    }
    const std::byte* units = Take(std::int64_t{count} * static_cast<std::int64_t>(sizeof(char16_t)));
    if (units) text = {reinterpret_cast<const char16_t*>(units), count - 1};
    return units != nullptr;
}

std::uint32_t TOrvBinaryReader::Consumed() const
{
    return error_ != 0 ? static_cast<std::uint32_t>(error_)
                       : static_cast<std::uint32_t>(size_) - static_cast<std::uint32_t>(room_);
}

// Every field has an even size, so texts are as aligned as the buffer is; a copy serves the rare odd one. Of a size
// that is no room nothing is copied: so many bytes need not be there.
BinaryReadResult ReadActionBinary(const void* bytes, std::uint32_t size, std::uint32_t expectedKind)
{
    if (!bytes) size = 0;
    if (reinterpret_cast<std::uintptr_t>(bytes) % alignof(char16_t) == 0) return ReadEven(bytes, size, expectedKind);
    const auto* first = static_cast<const std::byte*>(bytes);
    const std::vector<std::byte> copy(first, first + (std::in_range<std::int32_t>(size) ? size : 0));
    return ReadEven(copy.data(), size, expectedKind);
}

}  // namespace OrvPLC
