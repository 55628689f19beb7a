#include "forms/text_value.h"

#include <string>

#include "forms/result_data.h"
#include "forms/text_patterns.h"
#include "ulmo/date_time.h"
#include "ulmo/exceptions.h"
#include "ulmo/guid_tools.h"
#include "ulmo/number_text.h"

namespace OrvPLC {

namespace {

using View = std::u16string_view;

constexpr std::size_t kDateLength = 33;

// All integers detect their base, so a leading zero makes them octal: 010 is 8 and 019 is 1. Deliberate; callers'
// stored texts depend on it.
std::int32_t Int32(View text)
{
    bool inRange = true;
    return Ulmo::DetectInt32(text, inRange);
}

std::uint64_t Id(View text)
{
    return static_cast<std::uint64_t>(Ulmo::DetectInt64(text));
}

bool HasGuidForm(PatternSearch& search, View text)
{
    return text.size() == Ulmo::GuidTools::kTextLength && search.FitsWhole(Patterns().guid, text);
}

TOrvGuid ParseGuid(View text)
{
    TOrvGuid guid{};
    if (!Ulmo::GuidTools::StringToGuidW(text, guid)) throw Ulmo::GuidConversionException(text);
    return guid;
}

void ReadInteger(View text, TOrvParameter& value)
{
    bool inRange = true;
    const std::int32_t number = Ulmo::DetectInt32(text, inRange);
    if (inRange) {
        value.SetInt32(number);
    } else {
        value.SetInt64(Ulmo::DetectInt64(text));
    }
}

// A text in the form of a guid or a date is never a string, whatever is declared; a declared String turns it back.
void ReadString(PatternSearch& search, MarkupGuard& guard, View text, TOrvParameter& value)
{
    if (HasGuidForm(search, text)) {
        value.SetGuid(ParseGuid(text));
    } else if (text.size() == kDateLength && search.FitsWhole(Patterns().dateTime, text)) {
        value.SetDateTime(Ulmo::FromText(text));
    } else if (guard.IsActive()) {
        std::u16string restored(text);
        guard.Restore(restored);
        value.SetString(restored);
    } else {
        value.SetString(text);
    }
}

void ReadRect(const PatternSearch& found, TOrvParameter& value)
{
    std::uint64_t packed = 0;
    for (std::size_t word = 0; word < 4; ++word) {
        const auto coordinate = static_cast<std::uint16_t>(Int32(found[ParameterGroup::Rect + word]));
        packed |= std::uint64_t{coordinate} << (16 * word);
    }
    value.SetRect(static_cast<std::int64_t>(packed));
}

void ReadResource(PatternSearch& search, View guidText, View name, TOrvParameter& value)
{
    value.SetResource(HasGuidForm(search, guidText) ? ParseGuid(guidText) : TOrvGuid{}, name);
}

void ReadResultData(PatternSearch& search, View list, TOrvParameter& value)
{
    std::u16string text;
    for (View rest = list; search.Find(Patterns().resultDataItem, rest); rest = search.Rest()) {
        ResultDataFields item;
        for (std::size_t field = 0; field < item.words.size(); ++field) {
            item.words[field] = static_cast<std::uint16_t>(Ulmo::ScanInt64(search[field + 1]));
        }
        item.number = static_cast<std::uint32_t>(Ulmo::ScanInt64(search[5]));
        item.name = search[6];
        AppendInternalItem(text, item);
    }
    value.SetResultDataText(text);
}

}  // namespace

// A group counts when it is not empty, so an empty string literal has no group at all and neither has { "", "x" }:
// both read as the empty string.
void ReadTextValue(PatternSearch& found, MarkupGuard& guard, TOrvParameter& value)
{
    using namespace ParameterGroup;
    if (const View integer = found[Integer]; !integer.empty()) {
        ReadInteger(integer, value);
    } else if (const View real = found[Float]; !real.empty()) {
        value.SetDouble(Ulmo::ScanDouble(real));
    } else if (const View text = found[String]; !text.empty()) {
        ReadString(found, guard, text, value);
    } else if (!found[Rect].empty()) {
        ReadRect(found, value);
    } else if (const View number = found[ChannelNumber]; !number.empty()) {
        value.SetMediaChannel(Id(found[ChannelId]), static_cast<std::uint32_t>(Int32(number)), found[ChannelName]);
    } else if (const View id = found[EventTypeId]; !id.empty()) {
        value.SetEventType(Id(id), found[EventTypeName]);
    } else if (const View guid = found[ResourceGuid]; !guid.empty()) {
        ReadResource(found, guid, found[ResourceName], value);
    } else if (const View list = found[ResultData]; !list.empty()) {
        ReadResultData(found, list, value);
    } else {
        value.SetString({});
    }
}

}  // namespace OrvPLC
