#include "catalogue/name_tables.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "OrvActions/OrvTypes.h"
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

std::u16string ColumnsToText(std::uint32_t mask)
{
    std::u16string text;
    for (const NamedNumber& row : kColumns) {
        if (!(mask & row.number)) continue;
        if (!text.empty()) text += u'|';
        text += row.name;
    }
    return text;
}

std::uint32_t PublicType(std::uint32_t type, std::uint32_t enumType)
{
    static constexpr std::uint32_t kCodes[] = {kPublicTypeUnknown, 5, 0, 1, 100, 4, 2, 6, 7, 8, 9, 101, 102};
    if (type == ORV_KIND_Numeric32Bit && enumType != 0) return PublicEnumType(enumType);
    return type < std::size(kCodes) ? kCodes[type] : kPublicTypeUnknown;
}

std::uint32_t PublicEnumType(std::uint32_t enumId)
{
    return enumId == kBooleanEnum ? 5 : (enumId & ~kEnumIdBit) + 10;
}

std::uint32_t EnumIdFromPublicType(std::uint32_t publicType)
{
    return publicType == 5 ? kBooleanEnum : ((publicType - 10) | kEnumIdBit);
}

}  // namespace OrvPLC
