#include "catalogue/name_tables.h"

#include <algorithm>
#include <span>

#include "OrvActions/OrvTypes.h"
#include "catalogue/entries.h"
#include "catalogue/value_kind.h"
#include "platform/text.h"

namespace OrvPLC {

namespace {

struct NamedNumber {
    std::u16string_view name;
    std::uint32_t number;
};

// In the order in which names are tried. ResultDataSet has no name: it cannot be declared from outside.
constexpr NamedNumber kTypes[] = {
    {u"Boolean", ORV_KIND_Boolean},
    {u"Bool", ORV_KIND_Boolean},
    {u"Numeric32Bit", ORV_KIND_Numeric32Bit},
    {u"32Bit", ORV_KIND_Numeric32Bit},
    {u"Int32", ORV_KIND_Numeric32Bit},
    {u"__int32", ORV_KIND_Numeric32Bit},
    {u"Numeric64Bit", ORV_KIND_Numeric64Bit},
    {u"64Bit", ORV_KIND_Numeric64Bit},
    {u"Int64", ORV_KIND_Numeric64Bit},
    {u"__int64", ORV_KIND_Numeric64Bit},
    {u"NumericFloat", ORV_KIND_NumericDouble},
    {u"Float", ORV_KIND_NumericDouble},
    {u"NumericDouble", ORV_KIND_NumericDouble},
    {u"Double", ORV_KIND_NumericDouble},
    {u"String", ORV_KIND_String},
    {u"WideString", ORV_KIND_String},
    {u"DateTime", ORV_KIND_DateTime},
    {u"TUlmoDateTime", ORV_KIND_DateTime},
    {u"Guid", ORV_KIND_Guid},
    {u"EventType", ORV_KIND_EventType},
    {u"TEventTypeID", ORV_KIND_EventType},
    {u"MediaChannel", ORV_KIND_MediaChannel},
    {u"TMediaChannelID", ORV_KIND_MediaChannel},
    {u"Resource", ORV_KIND_Resource},
    {u"TResourceID", ORV_KIND_Resource},
    {u"Rect", ORV_KIND_Rect},
    {u"TPlcRect", ORV_KIND_Rect},
};

#define ORV_NAMED_NUMBER(name, number) {u## #name, number},
constexpr NamedNumber kViews[] = {ORV_FOR_EACH_VIEW(ORV_NAMED_NUMBER)};
constexpr NamedNumber kColumns[] = {ORV_FOR_EACH_COLUMN(ORV_NAMED_NUMBER)};
#undef ORV_NAMED_NUMBER

constexpr NamedNumber kNoColumns[] = {{u"Unavailable", 0}, {u"None", 0}};

// The public numbering: kinds below 10 and from 100 on, enums from 10 on by their codes.
constexpr std::uint32_t kPublicBoolean = 5;
constexpr std::uint32_t kFirstPublicEnum = 10;

// In any case; an empty name is none.
std::optional<std::uint32_t> Find(std::span<const NamedNumber> table, std::u16string_view name)
{
    if (name.empty()) return std::nullopt;
    for (const NamedNumber& row : table) {
        if (Platform::EqualIgnoringCase(row.name, name)) return row.number;
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::uint32_t> FindParameterType(std::u16string_view name)
{
    return Find(kTypes, name);
}

std::optional<std::uint32_t> FindView(std::u16string_view name)
{
    return Find(kViews, name);
}

std::optional<std::uint32_t> FindColumn(std::u16string_view name)
{
    const std::optional<std::uint32_t> column = Find(kColumns, name);
    return column ? column : Find(kNoColumns, name);
}

std::uint32_t ParameterTypeFromName(std::u16string_view name)
{
    return FindParameterType(name).value_or(ORV_KIND_Numeric32Bit);
}

std::uint32_t ViewFromName(std::u16string_view name)
{
    return FindView(name).value_or(ORV_VIEW_Unavailable);
}

std::uint32_t ColumnsFromText(std::u16string_view text)
{
    std::uint32_t mask = Find(kColumns, text).value_or(0);
    // A single name; what follows reads names between bars.
    if (mask != 0) return mask;
    std::size_t survivors = 0;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(u'|', begin), text.size());
        const std::uint32_t bit = Find(kColumns, text.substr(begin, end - begin)).value_or(0);
        survivors += bit != 0;
        mask |= bit;
        begin = end + 1;
    }
    return survivors >= 2 ? mask : 0;
}

std::uint32_t PublicType(std::uint32_t type, std::uint32_t enumType)
{
    switch (ValueKind{type}) {
    case ValueKind::Numeric32Bit: return enumType != 0 ? PublicEnumType(enumType) : 0;
    case ValueKind::Numeric64Bit: return 1;
    case ValueKind::DateTime: return 2;
    case ValueKind::String: return 4;
    case ValueKind::Boolean: return kPublicBoolean;
    case ValueKind::Guid: return 6;
    case ValueKind::EventType: return 7;
    case ValueKind::MediaChannel: return 8;
    case ValueKind::Resource: return 9;
    case ValueKind::NumericDouble: return 100;
    case ValueKind::Rect: return 101;
    case ValueKind::ResultDataSet: return 102;
    case ValueKind::None: break;
    }
    return kPublicTypeUnknown;
}

std::uint32_t PublicEnumType(std::uint32_t enumId)
{
    return enumId == kBooleanEnum ? kPublicBoolean : (enumId & ~kEnumIdBit) + kFirstPublicEnum;
}

std::uint32_t EnumIdFromPublicType(std::uint32_t publicType)
{
    return publicType == kPublicBoolean ? kBooleanEnum : ((publicType - kFirstPublicEnum) | kEnumIdBit);
}

}  // namespace OrvPLC
