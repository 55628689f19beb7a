// The value of one parameter: a tagged record of twelve kinds, copied by value, with plain functions that switch on
// the kind.
//
// A value keeps its address until it is changed or removed, because callers hold pointers into it. It is small: what
// is rarely there (a narrow text, result data items) lives behind one pointer.
//
// Threads: an action is for one thread at a time. Only the lazily built narrow text and the result data items have a
// lock, one of a fixed pool, chosen when the value is made and shared by its copies.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OrvActions/OrvTypes.h"
#include "ulmo/critical_section.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

// A parameter's name with its case kept: the catalogue's own string where the spelling is the catalogue's, else a copy.
class ParameterName {
public:
    ParameterName() = default;
    static ParameterName Shared(std::u16string_view constant)  // lives as long as the library
    {
        ParameterName name;
        name.text_ = constant.data();
        name.length_ = static_cast<std::uint32_t>(constant.size());
        return name;
    }
    static ParameterName Copy(std::u16string_view name);
    ParameterName(const ParameterName& other);
    ParameterName(ParameterName&& other) noexcept
        : text_(other.text_), length_(other.length_), owned_(std::exchange(other.owned_, false))
    {}
    ParameterName& operator=(ParameterName&& other) noexcept
    {
        std::swap(text_, other.text_);
        std::swap(length_, other.length_);
        std::swap(owned_, other.owned_);
        return *this;
    }
    ParameterName& operator=(const ParameterName& other) { return *this = ParameterName(other); }
    ~ParameterName()
    {
        if (owned_) delete[] text_;
    }

    std::u16string_view view() const noexcept { return {text_, length_}; }
    const char16_t* c_str() const noexcept { return text_; }

private:
    const char16_t* text_ = u"";
    std::uint32_t length_ = 0;
    bool owned_ = false;
};

class TOrvParameter {
public:
    TOrvParameter() : lock_(ChooseLock(this)) {}
    explicit TOrvParameter(ParameterName name) : lock_(ChooseLock(this)), name_(std::move(name)) {}
    TOrvParameter(const TOrvParameter& other);  // shares the lock of its source
    TOrvParameter(TOrvParameter&&) noexcept = default;
    TOrvParameter& operator=(const TOrvParameter& other);
    TOrvParameter& operator=(TOrvParameter&&) noexcept = default;
    ~TOrvParameter() = default;

    // Back to a new value under this name: kind 0, everything empty.
    void Reset(ParameterName name);

    const ParameterName& Name() const noexcept { return name_; }
    void SetName(ParameterName name) { name_ = std::move(name); }
    std::uint32_t Kind() const noexcept { return kind_; }
    std::uint32_t EnumType() const noexcept { return enumType_; }

    // Setting: the kind and the fields that it uses; the enum becomes 0 unless given. Meant for a new value. A null
    // name pointer reads as "".
    void SetBoolean(bool value);
    void SetInt32(std::int32_t value, std::uint32_t enumType = 0);
    void SetInt64(std::int64_t value);
    void SetDouble(double value);
    void SetString(std::u16string_view value);
    void SetDateTime(TUlmoDateTime value);
    void SetGuid(const TOrvGuid& value);
    void SetEventType(std::uint64_t id, std::u16string_view name);
    void SetMediaChannel(std::uint64_t id, std::uint32_t number, std::u16string_view name);
    void SetResource(const TOrvGuid& guid, std::u16string_view name);
    void SetRect(std::int64_t packed);
    void SetResultDataText(std::u16string_view internalForm);
    void SetResultDataSet(const TOrvResultDataItem* items, std::size_t count);  // defined with the result data forms
    void SetKindAndEnum(std::uint32_t kind, std::uint32_t enumType)             // unchecked, for values from outside
    {
        kind_ = kind;
        enumType_ = enumType;
    }

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
    // that refuses leaves the wide value as it was.
    const std::u16string& MakeWideText();
    // The same text in UTF-8, kept in the value until it is made again.
    const char* MakeNarrowText();

    // The field of a kind inside the value, after the value has been read into it; null where there is no conversion.
    // The value keeps its kind, like one whose text is asked for. Only a date asked for as Int64, whose field already
    // holds the date, becomes the kind asked for.
    const std::int32_t* Int32InPlace();
    const std::int64_t* Int64InPlace();
    const double* DoubleInPlace();
    const TUlmoDateTime* DateTimeInPlace() const;  // converts nothing: null unless the value is a DateTime

    // Turns the value into another kind where the table of conversions allows it, and takes the enum. A refused
    // conversion is false and leaves the value as it was, its enum included.
    bool Retype(std::uint32_t kind, std::uint32_t enumType);

    // Same kind and same content; names and enums take no part. What most values are is compared without a call.
    bool SameValue(const TOrvParameter& other) const
    {
        if (kind_ != other.kind_) return false;
        if (kind_ == ORV_KIND_Numeric32Bit || kind_ == ORV_KIND_Boolean) return small_ == other.small_;
        if (kind_ == ORV_KIND_String) return Ulmo::SameText(wide_, other.wide_);
        return SameOtherValue(other);
    }

    // The raw fields, for writers and matching. Which of them counts is told by the kind.
    const std::int32_t& Small() const noexcept { return small_; }  // Boolean, Numeric32Bit, number of a MediaChannel
    const std::int64_t& Large() const noexcept { return large_; }  // Numeric64Bit, DateTime, Rect, ids
    const double& Real() const noexcept { return real_; }
    const TOrvGuid& Guid() const noexcept { return guid_; }
    TUlmoDateTime DateTime() const noexcept { return {static_cast<std::uint64_t>(large_)}; }
    const std::u16string& Wide() const noexcept { return wide_; }  // String, names, internal text of a ResultDataSet

private:
    // What few values ever have.
    struct Rare {
        std::string narrow;
        std::vector<TOrvResultDataItem> items;  // names are system strings, owned

        Rare() = default;
        Rare(const Rare& other);
        Rare& operator=(const Rare&) = delete;
        ~Rare();
        void FreeItems();
    };
    static constexpr std::size_t kLockCount = 64;
    static std::uint8_t ChooseLock(const void* value)
    {
        return static_cast<std::uint8_t>((reinterpret_cast<std::uintptr_t>(value) >> 5) % kLockCount);
    }
    Rare& MakeRare();
    bool SameOtherValue(const TOrvParameter& other) const;  // of the kinds that SameValue does not know itself
    Ulmo::CriticalSection& Lock() const;

    bool ConvertTo(std::uint32_t kind);  // the fields of the other kind; the kind itself stays
    bool ConvertInPlace(std::uint32_t kind);
    bool ConvertToDateTime();
    bool ConvertToEventType();
    bool ConvertToMediaChannel();
    bool ConvertToResource();

    std::uint32_t kind_ = 0;
    std::uint32_t enumType_ = 0;
    std::int32_t small_ = 0;
    std::uint8_t lock_;  // slot of the lock pool
    std::int64_t large_ = 0;
    double real_ = 0;
    TOrvGuid guid_{};
    std::u16string wide_;
    ParameterName name_;
    std::unique_ptr<Rare> rare_;
};

}  // namespace OrvPLC
