// The value of one parameter: a tagged record of twelve kinds, copied by value, with plain functions that switch on
// the kind.
//
// A value keeps its address until it is changed or removed, because callers hold pointers into it. It is small, since
// an object has one for each parameter: it does not hold its own name, kinds that exclude each other share room, and
// what is rarely needed (a narrow text, result data items) lives behind the pointer to the text.
//
// Threads: an action is for one thread at a time. Only the lazily built narrow text and the result data items have a
// lock, one of a fixed pool, chosen by the value's address.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OrvActions/OrvTypes.h"
#include "objects/text_room.h"
#include "ulmo/copy_units.h"
#include "ulmo/critical_section.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

class TOrvParameter {
public:
    TOrvParameter() noexcept = default;
    // A Numeric32Bit, what most parameters are.
    TOrvParameter(std::int32_t value, std::uint32_t enumType) noexcept
        : kind_(ORV_KIND_Numeric32Bit), small_(value), enumType_(enumType)
    {}
    // The first text is taken from the room, which outlives the value. Call LeaveRoom() afterwards.
    explicit TOrvParameter(TextRoom& room) noexcept : text_(reinterpret_cast<std::uintptr_t>(&room) | kToRoom) {}
    TOrvParameter(const TOrvParameter& other, TextRoom& room) : TOrvParameter(room)
    {
        CopyFields(other);
        SetText(other.Wide());
        LeaveRoom();
        if (other.GetSide()) CopySide(other);
    }
    TOrvParameter(const TOrvParameter& other);
    TOrvParameter(TOrvParameter&& other);  // a text in a room is copied, all else changes hands
    // The text stays where this value has room for it. A failure leaves both as they were.
    TOrvParameter& operator=(const TOrvParameter& other);
    TOrvParameter& operator=(TOrvParameter&& other);
    ~TOrvParameter()
    {
        if (OwnsMemory()) FreeMemory();
    }

    // From here on texts are not taken from the room.
    void LeaveRoom() noexcept
    {
        if (Leads(kToRoom)) text_ = NoText();
    }

    std::uint32_t Kind() const noexcept { return kind_; }
    std::uint32_t EnumType() const noexcept { return enumType_; }

    // Setting: the kind and the fields that it uses; the enum becomes 0 unless given. Meant for a new value. A null
    // name pointer reads as "".
    void SetBoolean(bool value)
    {
        SetKindAndEnum(ORV_KIND_Boolean, 0);
        small_ = value;
    }
    void SetInt32(std::int32_t value, std::uint32_t enumType = 0)
    {
        SetKindAndEnum(ORV_KIND_Numeric32Bit, enumType);
        small_ = value;
    }
    void SetInt64(std::int64_t value) { SetLarge(ORV_KIND_Numeric64Bit, value); }
    void SetDouble(double value)
    {
        SetKindAndEnum(ORV_KIND_NumericDouble, 0);
        numbers_.real = value;
    }
    void SetString(std::u16string_view value)
    {
        SetKindAndEnum(ORV_KIND_String, 0);
        SetText(value);
    }
    void SetDateTime(TUlmoDateTime value) { SetLarge(ORV_KIND_DateTime, static_cast<std::int64_t>(value.value)); }
    void SetGuid(const TOrvGuid& value)
    {
        SetKindAndEnum(ORV_KIND_Guid, 0);
        guid_ = value;
    }
    void SetEventType(std::uint64_t id, std::u16string_view name)
    {
        SetLarge(ORV_KIND_EventType, static_cast<std::int64_t>(id));
        SetText(name);
    }
    void SetMediaChannel(std::uint64_t id, std::uint32_t number, std::u16string_view name)
    {
        SetLarge(ORV_KIND_MediaChannel, static_cast<std::int64_t>(id));
        small_ = static_cast<std::int32_t>(number);
        SetText(name);
    }
    void SetResource(const TOrvGuid& guid, std::u16string_view name)
    {
        SetKindAndEnum(ORV_KIND_Resource, 0);
        guid_ = guid;
        SetText(name);
    }
    void SetRect(std::int64_t packed) { SetLarge(ORV_KIND_Rect, packed); }
    void SetResultDataText(std::u16string_view internalForm)
    {
        SetKindAndEnum(ORV_KIND_ResultDataSet, 0);
        SetText(internalForm);
    }
    void SetResultDataSet(const TOrvResultDataItem* items, std::size_t count);  // defined with the result data forms
    void SetKindAndEnum(std::uint32_t kind, std::uint32_t enumType)             // unchecked, for values from outside
    {
        if (HoldsGuid(kind) != HoldsGuid(kind_)) ChangeLayout();
        kind_ = kind;
        enumType_ = enumType;
    }
    void SetEnumType(std::uint32_t enumType) noexcept { enumType_ = enumType; }  // after a setter has cleared it

    // The fields one by one, for a value whose kind is set already and uses them.
    void FillSmall(std::int32_t value) noexcept { small_ = value; }
    void FillLarge(std::int64_t value) noexcept { numbers_.large = value; }
    void FillReal(double value) noexcept { numbers_.real = value; }
    void FillGuid(const TOrvGuid& value) noexcept { guid_ = value; }
    void FillText(std::u16string_view text) { SetText(text); }

    // Reading as a kind. False where the value's kind has no conversion; the output then stays as it was.
    bool ReadBoolean(bool& value) const;
    bool ReadInt32(std::int32_t& value) const;
    bool ReadInt64(std::int64_t& value) const;
    bool ReadDouble(double& value) const;
    bool ReadDateTime(TUlmoDateTime& value) const;  // also false for a String that is no date
    bool ReadGuid(TOrvGuid& value) const;
    bool ReadRect(std::int64_t& packed) const;
    // The names in these records point into the value.
    bool ReadEventType(TOrvEventTypeValue& value) const;  // leaves the reserved word alone
    bool ReadMediaChannel(TOrvChannelValue& value) const;
    bool ReadResource(TOrvResourceValue& value) const;
    // Parses the text into the value's items, which the list then refers to until the next read. A text that cannot be
    // read at all keeps the items of the last read. Defined with the result data forms.
    bool ReadResultDataSet(TOrvResultDataList& list);

    // The text of the value: no quotes, no name. False for a kind outside 1 to 12. Defined with the text forms.
    bool AppendText(std::u16string& output) const;
    // Writes that text into the wide value of this very value, whose kind does not change, and gives it back. A kind
    // that refuses leaves the wide value as it was. The text ends in a zero unit.
    std::u16string_view MakeWideText();
    // The same text in UTF-8, kept in the value until it is made again.
    const char* MakeNarrowText();

    // Converts the value into the field of the kind asked for and returns that field's address; null if there is no
    // conversion. The kind of the value does not change, with one exception: a date asked for as Int64 becomes one.
    const std::int32_t* Int32InPlace();
    const std::int64_t* Int64InPlace();
    const double* DoubleInPlace();
    const TUlmoDateTime* DateTimeInPlace() const;  // converts nothing: null unless the value is a DateTime

    // Converts the value to another kind and sets its enum. False if there is no such conversion; the value, with its
    // enum, then stays as it was.
    bool Retype(std::uint32_t kind, std::uint32_t enumType);

    // Memory of two objects in which texts stand and of which every byte is the same.
    struct AlikeTexts {
        std::uintptr_t mine;
        std::uintptr_t others;
        std::size_t size;
    };
    // Same kind and same content; names and enums take no part. What most values are is compared without a call, and
    // the kind together with the small number beside it.
    bool SameValue(const TOrvParameter& other, const AlikeTexts& alike = {}) const
    {
        if (HeadBits() == other.HeadBits()) [[likely]] {
            if (kind_ == ORV_KIND_Numeric32Bit || kind_ == ORV_KIND_Boolean) [[likely]]
                return true;
            if (kind_ == ORV_KIND_String) return SameText(other, alike);
            if (kind_ == ORV_KIND_Numeric64Bit || kind_ == ORV_KIND_DateTime) return Large() == other.Large();
            if (kind_ == ORV_KIND_MediaChannel) return Large() == other.Large() && SameText(other, alike);
        }
        return SameOtherValue(other);
    }

    // The raw fields, for writers and matching. The kind says which of them count.
    const std::int32_t& Small() const noexcept { return small_; }  // Boolean, Numeric32Bit, number of a MediaChannel
    const std::int64_t& Large() const noexcept { return numbers_.large; }  // Numeric64Bit, DateTime, Rect, ids
    const double& Real() const noexcept { return numbers_.real; }
    const TOrvGuid& Guid() const noexcept { return guid_; }  // Guid and Resource only
    TUlmoDateTime DateTime() const noexcept { return {static_cast<std::uint64_t>(numbers_.large)}; }
    // String, names, internal text of a ResultDataSet. Ends in a zero unit.
    std::u16string_view Wide() const noexcept { return {Units(), length_}; }
    // What Large() was before the value became a Guid or a Resource, where the guid takes its place.
    std::int64_t LargeBesideGuid() const noexcept { return GetSide() ? GetSide()->large : 0; }

private:
    // What few values ever need.
    struct Side {
        char16_t* units;  // the text of the value, whose pointer led here before
        std::int64_t large = 0;
        std::string narrow;
        std::vector<TOrvResultDataItem> items;  // names are system strings, owned

        explicit Side(char16_t* text) : units(text) {}
        Side(const Side& other);  // without the text
        Side& operator=(const Side&) = delete;
        ~Side();
        void FreeItems();
    };
    struct Numbers {
        std::int64_t large;
        double real;
    };
    // The pointer to the text tells by its low bits what it leads to. An odd one leads to memory of the value's own,
    // so that the end of a value takes one look.
    static constexpr std::uintptr_t kToText = 0;  // in a room, or the shared empty one
    static constexpr std::uintptr_t kToSide = 1;
    static constexpr std::uintptr_t kToRoom = 2;
    static constexpr std::uintptr_t kToHeapText = 3;
    static constexpr std::uintptr_t kOwned = 1;
    static constexpr std::uintptr_t kTag = 3;
    bool Leads(std::uintptr_t tag) const noexcept { return (text_ & kTag) == tag; }
    static std::uintptr_t LeadingTo(char16_t* units) noexcept
    {
        return reinterpret_cast<std::uintptr_t>(units) | (IsOnHeap(units) ? kToHeapText : kToText);
    }

    static bool HoldsGuid(std::uint32_t kind) { return kind == ORV_KIND_Guid || kind == ORV_KIND_Resource; }
    void ChangeLayout();  // from numbers to a guid, or back

    static std::uintptr_t NoText() noexcept { return reinterpret_cast<std::uintptr_t>(&kNoText.unit); }
    char16_t* Units() const noexcept
    {
        if (!Leads(kToText)) return UnitsElsewhere();
        return reinterpret_cast<char16_t*>(text_);
    }
    char16_t* UnitsElsewhere() const noexcept;
    static TextHeader& HeaderOf(char16_t* units) noexcept { return *(reinterpret_cast<TextHeader*>(units) - 1); }
    static std::uint32_t RoomOf(char16_t* units) noexcept { return HeaderOf(units).room & ~TextHeader::kOnHeap; }
    static bool IsOnHeap(char16_t* units) noexcept { return (HeaderOf(units).room & TextHeader::kOnHeap) != 0; }
    Side* GetSide() const noexcept { return Leads(kToSide) ? reinterpret_cast<Side*>(text_ - kToSide) : nullptr; }
    static bool Suits(char16_t* units, std::size_t length) noexcept;  // whether a text of that length goes there
    bool OwnsMemory() const noexcept { return (text_ & kOwned) != 0; }
    void FreeMemory() noexcept;
    void SetLarge(std::uint32_t kind, std::int64_t value)
    {
        SetKindAndEnum(kind, 0);
        numbers_.large = value;
    }
    // The text may be part of the present one. That of a new value mostly goes into its object's room. Inline, since a
    // call costs as much as a short text.
    [[gnu::always_inline]] void SetText(std::u16string_view text)
    {
        if (text.empty() && length_ == 0) return;
        char16_t* units = nullptr;
        if (Leads(kToRoom)) units = reinterpret_cast<TextRoom*>(text_ - kToRoom)->Take(text.size());
        if (!units) return ReplaceText(text);
        Ulmo::CopyUnits(units, text.data(), text.size());
        units[text.size()] = 0;
        text_ = reinterpret_cast<std::uintptr_t>(units);
        length_ = static_cast<std::uint32_t>(text.size());
    }
    void ReplaceText(std::u16string_view text);
    static char16_t* NewText(std::size_t units);  // on the heap
    void ReplaceUnits(char16_t* units) noexcept;
    void LeaveTextOfRoom();  // a text in a room is copied to the heap
    void CopyFields(const TOrvParameter& other) noexcept
    {
        kind_ = other.kind_;
        enumType_ = other.enumType_;
        small_ = other.small_;
        std::memcpy(static_cast<void*>(&guid_), &other.guid_, sizeof guid_);  // or the numbers, which lie there
    }
    void CopySide(const TOrvParameter& other);

    Side& MakeSide();
    bool SameOtherValue(const TOrvParameter& other) const;  // what SameValue does not decide itself
    bool SameText(const TOrvParameter& other, const AlikeTexts& alike) const noexcept
    {
        if (length_ != other.length_) return false;
        // Of the same length at the same place of what is alike.
        const std::uintptr_t place = text_ - alike.mine;
        return (place < alike.size && other.text_ - alike.others == place) || SameUnits(other);
    }
    bool SameUnits(const TOrvParameter& other) const noexcept  // of texts of the same length
    {
        const bool bothPlain = ((text_ | other.text_) & kTag) == kToText;
        const auto* const units = bothPlain ? reinterpret_cast<const char16_t*>(text_) : Units();
        const auto* const others = bothPlain ? reinterpret_cast<const char16_t*>(other.text_) : other.Units();
        return Ulmo::SameUnits(units, others, length_);
    }
    std::uint64_t HeadBits() const noexcept
    {
        return std::uint64_t{kind_} | std::uint64_t{static_cast<std::uint32_t>(small_)} << 32;
    }
    Ulmo::CriticalSection& Lock() const;

    bool ConvertTo(std::uint32_t kind);  // the fields of the other kind; the kind itself stays
    bool ConvertInPlace(std::uint32_t kind);
    bool ConvertToDateTime();
    bool ConvertToEventType();
    bool ConvertToMediaChannel();

    // The shared empty text.
    struct EmptyText {
        TextHeader header;
        char16_t unit;
    };
    static const EmptyText kNoText;

    std::uint32_t kind_ = 0;
    std::int32_t small_ = 0;
    std::uint32_t enumType_ = 0;
    std::uint32_t length_ = 0;  // of the text
    static_assert(sizeof(Numbers) == sizeof(TOrvGuid));
    union {
        Numbers numbers_ = {0, 0};
        TOrvGuid guid_;
    };
    std::uintptr_t text_ = NoText();  // units with a TextHeader before them, a Side or a TextRoom; see kTag
};
static_assert(sizeof(TOrvParameter) == 40, "an object has one for each parameter");

}  // namespace OrvPLC
