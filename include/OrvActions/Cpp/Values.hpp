// The values of parameters in the C++ wrapper. Part of OrvActions.hpp; include that.
//
//     C++ type                        kind            note
//     bool                            Boolean         reads convert
//     int32_t and shorter, signed     Numeric32Bit    reads convert
//     int64_t                         Numeric64Bit    reads convert
//     double, float                   NumericDouble   reads convert
//     std::u16string, std::string     String          the latter in UTF-8; writes take any text
//     DateTime, TimePoint             DateTime        reads convert
//     Guid                            Guid            reads take the guid of a resource as well
//     EventType                       EventType
//     Channel                         MediaChannel
//     Resource                        Resource
//     Rect                            Rect
//     Enum                            Numeric32Bit    with the id of its enum
//     ResultData                      ResultDataSet
//
// Value holds any of them, in the type that belongs to its kind.
//
// "Reads convert" means by the library's rules: a number may be read from another number, a text or a channel.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "OrvActions/Cpp/Text.hpp"

#if defined(_WIN32)
// The system's own; declared here so that no caller gets all of its headers with this one.
extern "C" __declspec(dllimport) wchar_t* __stdcall SysAllocStringLen(const wchar_t* text, unsigned int length);
extern "C" __declspec(dllimport) unsigned int __stdcall SysStringLen(wchar_t* text);
extern "C" __declspec(dllimport) void __stdcall SysFreeString(wchar_t* text);
#endif

namespace orv {

using Guid = TOrvGuid;
using DateTime = TUlmoDateTime;
using TimePoint = std::chrono::time_point<std::chrono::system_clock, std::chrono::milliseconds>;

struct Channel {
    std::uint64_t id = 0;
    std::u16string name;
    std::uint32_t number = 0;

    static Channel Number(std::uint32_t number) { return {0, {}, number}; }
    bool operator==(const Channel& other) const
    {
        return id == other.id && name == other.name && number == other.number;
    }
};

struct EventType {
    std::uint64_t id = 0;
    std::u16string name;
};

struct Resource {
    Guid guid{};
    std::u16string name;
};

struct Rect {
    std::int16_t top = 0;
    std::int16_t left = 0;
    std::int16_t bottom = 0;
    std::int16_t right = 0;
};

// A value of one of the catalogue's enums, ORV_ENUM_....
struct Enum {
    std::int32_t value = 0;
    std::uint32_t enumId = 0;
};

// A date of the library counts milliseconds from 1601 in UTC and remembers the zone that it was taken in as a bias in
// minutes, UTC = local + bias. A time point before 1601 does not fit.
inline DateTime ToDateTime(TimePoint time, std::chrono::minutes bias = std::chrono::minutes(0))
{
    constexpr std::int64_t kFrom1601To1970 = 11644473600000;
    const auto milliseconds = static_cast<std::uint64_t>(time.time_since_epoch().count() + kFrom1601To1970);
    const auto zone = static_cast<std::uint64_t>(static_cast<std::uint16_t>(bias.count()));
    return {(milliseconds & 0xFFFFFFFFFFFF) | (zone << 48)};
}

inline TimePoint ToTimePoint(DateTime date)
{
    return TimePoint(
        std::chrono::milliseconds(static_cast<std::int64_t>(date.value & 0xFFFFFFFFFFFF) - 11644473600000));
}

// One item of a result data set.
struct ResultItem {
    std::uint16_t first = 0;
    std::uint16_t second = 0;
    std::int16_t third = 0;
    std::int16_t fourth = 0;
    std::int32_t fifth = 0;
    std::u16string name;
};
using ResultData = std::vector<ResultItem>;

// The value of a parameter, in the type of its kind; nothing for a kind that does not exist.
using Value = std::variant<std::monostate, bool, std::int32_t, std::int64_t, double, std::u16string, DateTime, Guid,
                           EventType, Channel, Resource, Rect, Enum, ResultData>;

// "01234567-89ab-cdef-0123-456789abcdef".
inline std::string ToText(const Guid& guid)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    const auto append = [&](std::uint64_t number, int digits) {
        while (digits-- > 0) text += kDigits[number >> 4 * digits & 15];
    };
    append(guid.Data1, 8);
    text += '-';
    append(guid.Data2, 4);
    text += '-';
    append(guid.Data3, 4);
    for (int i = 0; i < 8; ++i) {
        if (i == 0 || i == 2) text += '-';
        append(guid.Data4[i], 2);
    }
    return text;
}

inline bool IsZero(const Guid& guid)
{
    bool zero = guid.Data1 == 0 && guid.Data2 == 0 && guid.Data3 == 0;
    for (const unsigned char byte : guid.Data4) zero = zero && byte == 0;
    return zero;
}

namespace detail {

// A plain record that owns its text.
class Record {
public:
    explicit Record(std::uint32_t kind = ORV_KIND_None) { value_.kind = kind; }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;
    ~Record() { SysFreeString(value_.text); }

    // Reads a parameter; false when it is absent.
    bool Read(TOrvHandle handle, const TextArg& name)
    {
        return Talvec_Action_GetParameterByName(handle, name.c_str(), &value_);
    }
    // The same; false also for a value of another kind.
    bool Read(TOrvHandle handle, const TextArg& name, std::uint32_t kind)
    {
        return Read(handle, name) && value_.kind == kind;
    }
    void SetText(const TextArg& text)
    {
        value_.kind = ORV_KIND_String;
        value_.text = SysAllocStringLen(text.c_str(), text.size());
        if (!value_.text) throw std::bad_alloc();
    }
    std::u16string_view Text() const
    {
        return {reinterpret_cast<const char16_t*>(value_.text), SysStringLen(value_.text)};
    }

    TOrvParameterValue* operator->() { return &value_; }
    const TOrvParameterValue* get() const { return &value_; }

private:
    TOrvParameterValue value_{};
};

inline const OrvWChar* Units(const std::u16string& text)
{
    return reinterpret_cast<const OrvWChar*>(text.c_str());
}

// Reads with conversion. The library only reports that the parameter is present, and leaves the output alone if it
// cannot convert. So a zero is read a second time, over another number.
template <class Number, class Operation>
std::optional<Number> ReadNumber(TOrvHandle handle, const TextArg& name, Operation operation)
{
    ITalvecAction* action = OrvInterfaceOf(handle);
    Number value{};
    if (!(action->*operation)(name.c_str(), &value)) return std::nullopt;
    if (value != Number{}) return value;
    Number other{1};
    (action->*operation)(name.c_str(), &other);
    return other == Number{} ? std::optional<Number>(value) : std::nullopt;
}

// How a C++ type is read and written: Read(handle, name) and Write(record, value).
template <class T, class = void>
struct ValueOf {
    static_assert(sizeof(T) == 0,
                  "This type is not the value of a parameter; see the table in OrvActions/Cpp/Values.hpp");
};

template <>
struct ValueOf<bool> {
    static std::optional<bool> Read(TOrvHandle handle, const TextArg& name)
    {
        const auto value = ReadNumber<OrvBool>(handle, name, &ITalvecAction::GetBoolean);
        return value ? std::optional<bool>(*value != 0) : std::nullopt;
    }
    static void Write(Record& record, bool value)
    {
        record->kind = ORV_KIND_Boolean;
        record->payload.boolean = value;
    }
};

template <class T>
struct ValueOf<T, std::enable_if_t<std::is_integral_v<T> && std::is_signed_v<T> && sizeof(T) <= 4 &&
                                   !std::is_same_v<T, char> && !std::is_same_v<T, wchar_t>>> {
    static std::optional<std::int32_t> Read(TOrvHandle handle, const TextArg& name)
    {
        static_assert(sizeof(T) == 4, "Read a number as int32_t.");
        return ReadNumber<std::int32_t>(handle, name, &ITalvecAction::GetInt32);
    }
    static void Write(Record& record, T value)
    {
        record->kind = ORV_KIND_Numeric32Bit;
        record->payload.int32 = value;
    }
};

template <class T>
struct ValueOf<T, std::enable_if_t<std::is_integral_v<T> && std::is_signed_v<T> && sizeof(T) == 8>> {
    static std::optional<T> Read(TOrvHandle handle, const TextArg& name)
    {
        return ReadNumber<std::int64_t>(handle, name, &ITalvecAction::GetInt64);
    }
    static void Write(Record& record, T value)
    {
        record->kind = ORV_KIND_Numeric64Bit;
        record->payload.int64 = value;
    }
};

template <class T>
struct ValueOf<T, std::enable_if_t<std::is_floating_point_v<T> && sizeof(T) <= 8>> {
    static std::optional<double> Read(TOrvHandle handle, const TextArg& name)
    {
        static_assert(sizeof(T) == 8, "Read a floating point number as double.");
        return ReadNumber<double>(handle, name, &ITalvecAction::GetDouble);
    }
    static void Write(Record& record, T value)
    {
        record->kind = ORV_KIND_NumericDouble;
        record->payload.real = value;
    }
};

// Texts of all sorts; only the two owning ones can be read.
template <class T>
struct ValueOf<T, std::enable_if_t<std::is_convertible_v<const T&, TextArg>>> {
    static std::optional<T> Read(TOrvHandle handle, const TextArg& name)
    {
        constexpr bool narrow = std::is_same_v<T, std::string>;
        static_assert(narrow || std::is_same_v<T, std::u16string>, "Read a text as std::u16string or std::string.");
        Record record;
        if (!record.Read(handle, name, ORV_KIND_String)) return std::nullopt;
        if constexpr (narrow) {
            return ToUtf8(record.Text());
        } else {
            return std::u16string(record.Text());
        }
    }
    static void Write(Record& record, const T& value) { record.SetText(value); }
};

template <>
struct ValueOf<DateTime> {
    static std::optional<DateTime> Read(TOrvHandle handle, const TextArg& name)
    {
        const auto read = [&](DateTime& value) { return OrvInterfaceOf(handle)->GetDateTime(name.c_str(), &value); };
        DateTime value{0};
        if (!read(value)) return std::nullopt;
        DateTime other{1};
        if (value.value == 0 && read(other) && other.value != 0) return std::nullopt;
        return value;
    }
    static void Write(Record& record, DateTime value)
    {
        record->kind = ORV_KIND_DateTime;
        record->payload.dateTime = value;
    }
};

template <class Duration>
struct ValueOf<std::chrono::time_point<std::chrono::system_clock, Duration>> {
    using Time = std::chrono::time_point<std::chrono::system_clock, Duration>;
    static std::optional<Time> Read(TOrvHandle handle, const TextArg& name)
    {
        const auto date = ValueOf<DateTime>::Read(handle, name);
        return date ? std::optional<Time>(std::chrono::time_point_cast<Duration>(ToTimePoint(*date))) : std::nullopt;
    }
    static void Write(Record& record, Time value)
    {
        ValueOf<DateTime>::Write(record, ToDateTime(std::chrono::floor<std::chrono::milliseconds>(value)));
    }
};

template <>
struct ValueOf<Guid> {
    static std::optional<Guid> Read(TOrvHandle handle, const TextArg& name)
    {
        Record record;
        if (record.Read(handle, name, ORV_KIND_Guid)) return record->payload.guid;
        if (record->kind == ORV_KIND_Resource) return record->payload.resource.guid;
        return std::nullopt;
    }
    static void Write(Record& record, const Guid& value)
    {
        record->kind = ORV_KIND_Guid;
        record->payload.guid = value;
    }
};

template <>
struct ValueOf<EventType> {
    static std::optional<EventType> Read(TOrvHandle handle, const TextArg& name)
    {
        Record record;
        if (!record.Read(handle, name, ORV_KIND_EventType)) return std::nullopt;
        return EventType{record->payload.eventType.id, std::u16string(View(record->payload.eventType.name))};
    }
    static void Write(Record& record, const EventType& value)
    {
        record->kind = ORV_KIND_EventType;
        record->payload.eventType = {value.id, Units(value.name)};
    }
};

template <>
struct ValueOf<Channel> {
    static Channel From(const TOrvChannelValue& value)
    {
        return {value.id, std::u16string(View(value.name)), value.number};
    }
    static TOrvChannelValue ToPlain(const Channel& value) { return {value.id, Units(value.name), value.number}; }

    static std::optional<Channel> Read(TOrvHandle handle, const TextArg& name)
    {
        Record record;
        if (!record.Read(handle, name, ORV_KIND_MediaChannel)) return std::nullopt;
        return From(record->payload.channel);
    }
    static void Write(Record& record, const Channel& value)
    {
        record->kind = ORV_KIND_MediaChannel;
        record->payload.channel = ToPlain(value);
    }
};

template <>
struct ValueOf<Resource> {
    static std::optional<Resource> Read(TOrvHandle handle, const TextArg& name)
    {
        Record record;
        if (!record.Read(handle, name, ORV_KIND_Resource)) return std::nullopt;
        return Resource{record->payload.resource.guid, std::u16string(View(record->payload.resource.name))};
    }
    static void Write(Record& record, const Resource& value)
    {
        record->kind = ORV_KIND_Resource;
        record->payload.resource = {value.guid, Units(value.name)};
    }
};

template <>
struct ValueOf<Rect> {
    static std::optional<Rect> Read(TOrvHandle handle, const TextArg& name)
    {
        Record record;
        if (!record.Read(handle, name, ORV_KIND_Rect)) return std::nullopt;
        const auto bits = static_cast<std::uint64_t>(record->payload.int64);
        const auto side = [bits](int shift) { return static_cast<std::int16_t>(bits >> shift & 0xFFFF); };
        return Rect{side(0), side(16), side(32), side(48)};
    }
    static void Write(Record& record, const Rect& value)
    {
        const auto bits = [](std::int16_t side, int shift) {
            return static_cast<std::uint64_t>(static_cast<std::uint16_t>(side)) << shift;
        };
        record->kind = ORV_KIND_Rect;
        record->payload.int64 = static_cast<std::int64_t>(bits(value.top, 0) | bits(value.left, 16) |
                                                          bits(value.bottom, 32) | bits(value.right, 48));
    }
};

template <>
struct ValueOf<Enum> {
    static std::optional<Enum> Read(TOrvHandle handle, const TextArg& name)
    {
        Record record;
        if (!record.Read(handle, name, ORV_KIND_Numeric32Bit) || record->enum_type == 0) return std::nullopt;
        return Enum{record->payload.int32, record->enum_type};
    }
    static void Write(Record& record, const Enum& value)
    {
        record->kind = ORV_KIND_Numeric32Bit;
        record->enum_type = value.enumId;
        record->payload.int32 = value.value;
    }
};

template <>
struct ValueOf<ResultData> {
    static std::optional<ResultData> Read(TOrvHandle handle, const TextArg& name)
    {
        ITalvecAction* action = OrvInterfaceOf(handle);
        const TOrvResultDataItem* items = nullptr;
        std::uint64_t count = 0;
        if (action->GetParameterType(name.c_str()) != ORV_KIND_ResultDataSet) return std::nullopt;
        action->GetResultDataSet(name.c_str(), &items, &count);
        ResultData data;
        for (std::uint64_t i = 0; i < count; ++i) {
            const TOrvResultDataItem& item = items[i];
            const auto* text = reinterpret_cast<const char16_t*>(item.name);
            const std::size_t length = item.name ? SysStringLen(item.name) : 0;
            data.push_back({item.field0, item.field1, item.field2, item.field3, item.field4,
                            std::u16string(text ? text : u"", length)});
        }
        return data;
    }
    static void Store(TOrvHandle handle, const TextArg& name, const ResultData& value)
    {
        std::vector<Record> texts(value.size());
        std::vector<TOrvResultDataItem> items;
        for (std::size_t i = 0; i < value.size(); ++i) {
            texts[i].SetText(value[i].name);
            items.push_back({value[i].first, value[i].second, value[i].third, value[i].fourth, value[i].fifth,
                             texts[i].get()->text});
        }
        OrvInterfaceOf(handle)->SetResultDataSet(name.c_str(), items.data(), items.size());
    }
};

// A parameter of a known kind as a value.
inline Value ValueOfKind(TOrvHandle handle, const TextArg& name, std::uint32_t kind, std::uint32_t enumType)
{
    const auto read = [&](auto sample) {
        auto value = ValueOf<decltype(sample)>::Read(handle, name);
        return value ? Value(*value) : Value();
    };
    switch (kind) {
    case ORV_KIND_Boolean: return read(false);
    case ORV_KIND_Numeric32Bit: return enumType != 0 ? read(Enum()) : read(std::int32_t());
    case ORV_KIND_Numeric64Bit: return read(std::int64_t());
    case ORV_KIND_NumericDouble: return read(double());
    case ORV_KIND_String: return read(std::u16string());
    case ORV_KIND_DateTime: return read(DateTime());
    case ORV_KIND_Guid: return read(Guid());
    case ORV_KIND_EventType: return read(EventType());
    case ORV_KIND_MediaChannel: return read(Channel());
    case ORV_KIND_Resource: return read(Resource());
    case ORV_KIND_Rect: return read(Rect());
    case ORV_KIND_ResultDataSet: return read(ResultData());
    default: return {};
    }
}

}  // namespace detail

}  // namespace orv
