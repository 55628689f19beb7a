#include "forms/binary_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/value_kind.h"
#include "forms/message_kinds.h"
#include "forms/object_of_kind.h"
#include "forms/sibling.h"
#include "forms/text_parser.h"
#include "objects/match_action.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

static_assert(std::endian::native == std::endian::little);

namespace {

using View = std::u16string_view;

// What follows the kind in a record: a text for some kinds, then a number of bytes.
struct PayloadShape {
    bool hasText;
    std::uint8_t numberBytes;
};

// A number that is no kind has no payload: a newer kind cannot be skipped.
constexpr PayloadShape ShapeOfKind(std::uint32_t kind)
{
    switch (ValueKind{kind}) {
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit: return {false, 4};
    case ValueKind::Numeric64Bit:
    case ValueKind::DateTime:
    case ValueKind::Rect:
    case ValueKind::NumericDouble: return {false, 8};
    case ValueKind::String:
    case ValueKind::ResultDataSet: return {true, 0};
    case ValueKind::Guid: return {false, 16};
    case ValueKind::EventType: return {true, 8};
    case ValueKind::MediaChannel: return {true, 12};
    case ValueKind::Resource: return {true, 16};
    case ValueKind::None: break;
    }
    return {false, 0};
}

constexpr auto kShapes = [] {
    std::array<PayloadShape, ORV_KIND_ResultDataSet + 1> shapes{};
    for (std::uint32_t kind = 0; kind < shapes.size(); ++kind) shapes[kind] = ShapeOfKind(kind);
    return shapes;
}();

PayloadShape ShapeOf(std::uint32_t kind)
{
    return kind < kShapes.size() ? kShapes[kind] : PayloadShape{};
}

struct Record {
    View name;
    std::uint32_t kind = 0;
    std::uint32_t enumType = 0;
    View text;
    const std::byte* numbers = nullptr;  // as they stand in the buffer, in any alignment

    template <class Number>
    Number At(std::size_t offset = 0) const
    {
        Number number;
        std::memcpy(&number, numbers + offset, sizeof number);
        return number;
    }
};

// Reads a record that is complete, as all are but the last of a damaged buffer. Else false, and nothing is read.
bool ReadWholeRecord(TOrvBinaryReader& reader, Record& record)
{
    // The text of the record before may stay in this one: no kind without a text looks at it.
    TOrvBinaryReader::Ahead ahead(reader);
    std::uint32_t kindAndEnum[2];
    if (!ahead.TakeText(record.name) || !ahead.Take(kindAndEnum)) return false;
    record.kind = kindAndEnum[0];
    record.enumType = kindAndEnum[1];
    const PayloadShape shape = ShapeOf(record.kind);
    if (shape.hasText && !ahead.TakeText(record.text)) return false;
    record.numbers = ahead.TakeBytes(shape.numberBytes);
    if (!record.numbers) return false;
    ahead.Commit();
    return true;
}

// Reads the last record of a buffer that ends too early, field by field. Missing fields are 0. False once the reader
// has failed.
struct CutRecord : Record {
    alignas(std::uint64_t) std::byte room[16] = {};

    bool Read(TOrvBinaryReader& reader)
    {
        name = text = {};
        kind = enumType = 0;
        numbers = room;
        reader.ReadText(name);
        reader.ReadField(kind);
        reader.ReadField(enumType);
        const PayloadShape shape = ShapeOf(kind);
        if (shape.hasText) reader.ReadText(text);
        ReadNumbers(reader, shape.numberBytes);
        return !reader.Failed();
    }

private:
    // The number of a channel is a field of its own behind its id.
    void ReadNumbers(TOrvBinaryReader& reader, std::size_t bytes)
    {
        if (bytes == 16) {
            reader.ReadField(room);
        } else {
            if (bytes >= 8) reader.ReadField(reinterpret_cast<std::uint64_t&>(room[0]));
            if (bytes % 8 == 4) reader.ReadField(reinterpret_cast<std::uint32_t&>(room[bytes - 4]));
        }
    }
};

// Of a new value. The record's kind and enum are taken as they stand.
void SetContent(TOrvParameter& value, const Record& record)
{
    value.SetKindAndEnum(record.kind, record.enumType);
    switch (ValueKind{record.kind}) {
    case ValueKind::Boolean:  // keeps its number
    case ValueKind::Numeric32Bit: value.FillSmall(record.At<std::int32_t>()); return;
    case ValueKind::Numeric64Bit:
    case ValueKind::DateTime:
    case ValueKind::Rect: value.FillLarge(record.At<std::int64_t>()); return;
    case ValueKind::NumericDouble: value.FillReal(record.At<double>()); return;
    case ValueKind::String:
    case ValueKind::ResultDataSet: value.FillText(record.text); return;
    case ValueKind::Guid: value.FillGuid(record.At<TOrvGuid>()); return;
    case ValueKind::EventType:
        value.FillLarge(record.At<std::int64_t>());
        value.FillText(record.text);
        return;
    case ValueKind::MediaChannel:
        value.FillLarge(record.At<std::int64_t>());
        value.FillSmall(record.At<std::int32_t>(8));
        value.FillText(record.text);
        return;
    case ValueKind::Resource:
        value.FillGuid(record.At<TOrvGuid>());
        value.FillText(record.text);
        return;
    case ValueKind::None: return;
    }
}

// Finds the position of a declared parameter in the spelling of the catalogue. The writer walks in key order, so the
// next name is mostly the one that follows in that order; the cursor of the map goes by the declaration.
class DeclaredNames {
public:
    explicit DeclaredNames(const TOrvActionInternalInfo* entry) : entry_(entry) {}

    std::size_t Find(View name)
    {
        if (!entry_) return ParameterMap::kNotFound;
        const std::span<const std::uint32_t> order = entry_->KeyOrder();
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
    // The slot is taken if the name comes twice, and then the later value wins.
    if (!action.Parameters().CanAdd(position)) return action.Parameters().StoreDeclared(position, fill);
    TOrvParameter& value = action.Parameters().Add(position);
    SetContent(value, record);
    value.LeaveRoom();
}

// The comment of a match action is its description, whatever kind of value it is.
bool TakeDescription(TOrvAction& action, const Record& record)
{
    if (!Ulmo::EqualsLower(record.name, kDescriptionKey)) return false;
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
    const bool matches = action.Kind() == ORV_MESSAGE_MATCH_ACTION;
    const auto store = [&](const Record& record) {
        if (!matches || !TakeDescription(action, record)) StoreRecord(action, names, record);
    };
    // The count is not trusted: the end of the buffer ends both walks.
    for (Record record; count > 0 && ReadWholeRecord(reader, record); --count) store(record);
    for (CutRecord record; count > 0 && record.Read(reader); --count) store(record);
}

// The room that the texts of a usual buffer take. A guess, as counting costs more than a chunk for what did not fit.
std::size_t LikelyTextBytes(std::uint32_t size)
{
    constexpr std::uint32_t kMost = 512;
    return std::min(size / 16 * 5, kMost) & ~std::uint32_t{3};
}

// Whatever the caller expects, only an action is taken from there: deliberate.
[[gnu::noinline]] BinaryReadResult ReadSibling(std::span<const std::byte> buffer, std::uint32_t kind,
                                               std::uint32_t consumed)
{
    std::u16string text;
    if (!Sibling().ConvertBinary(buffer, kind, text)) return {nullptr, consumed};
    ParsedText parsed = ParseActionText(text, ORV_MESSAGE_ACTION);
    return {parsed.object.release(), parsed.consumed};
}

// From an even address. Flattened, since a call for each step of a record costs a third of the reading.
[[gnu::flatten]] BinaryReadResult ReadEven(const void* bytes, std::uint32_t size, std::uint32_t expectedKind)
{
    TOrvBinaryReader reader(bytes, size);
    std::uint32_t kind = 0;
    View name;
    reader.ReadField(kind);
    reader.ReadText(name);
    if (kind == ORV_MESSAGE_SIBLING_ACTION || kind == ORV_MESSAGE_SIBLING_MATCH_ACTION) {
        return ReadSibling({static_cast<const std::byte*>(bytes), size}, kind, reader.Consumed());
    }
    // A buffer that ends before the kind leaves 0, which nothing admits. One that ends within the name leaves it empty.
    if (!Admits(expectedKind, kind)) return {nullptr, reader.Consumed()};
    ObjectPtr<TOrvAction> object = MakeObjectOfKind(kind, name, LikelyTextBytes(size));
    ReadRecords(reader, *object);
    return {object.release(), reader.Consumed()};
}

// Every field has an even size, so texts are aligned if the buffer is; a rare odd buffer is copied. A size that a
// signed number does not hold counts as 0, so nothing is copied then: the bytes may not exist.
[[gnu::noinline]] BinaryReadResult ReadOdd(const void* bytes, std::uint32_t size, std::uint32_t expectedKind)
{
    const auto* first = static_cast<const std::byte*>(bytes);
    const std::vector<std::byte> copy(first, first + (std::in_range<std::int32_t>(size) ? size : 0));
    return ReadEven(copy.data(), size, expectedKind);
}

}  // namespace

const std::byte* TOrvBinaryReader::Fail()
{
    if (error_ == 0) error_ = std::exchange(room_, -1);
    return nullptr;
}

void TOrvBinaryReader::ReadText(View& text)
{
    std::uint32_t count = 0;
    if (!ReadField(count)) return;
    if (count == 0) {
        text = {};
        return;
    }
    const std::byte* units = Take(std::int64_t{count} * static_cast<std::int64_t>(sizeof(char16_t)));
    if (units) text = {reinterpret_cast<const char16_t*>(units), count - 1};
}

std::uint32_t TOrvBinaryReader::Consumed() const
{
    return error_ != 0 ? static_cast<std::uint32_t>(error_)
                       : static_cast<std::uint32_t>(size_) - static_cast<std::uint32_t>(room_);
}

BinaryReadResult ReadActionBinary(const void* bytes, std::uint32_t size, std::uint32_t expectedKind)
{
    if (!bytes) size = 0;
    if (reinterpret_cast<std::uintptr_t>(bytes) % alignof(char16_t) != 0) return ReadOdd(bytes, size, expectedKind);
    return ReadEven(bytes, size, expectedKind);
}

}  // namespace OrvPLC
