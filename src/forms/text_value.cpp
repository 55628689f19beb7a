#include "forms/text_value.h"

#include <string>

#include "forms/result_data.h"
#include "forms/special_forms.h"
#include "ulmo/date_time.h"
#include "ulmo/exceptions.h"
#include "ulmo/guid_tools.h"
#include "ulmo/number_text.h"

namespace OrvPLC {

namespace {

using View = std::u16string_view;

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

// Raises for a text in the form of a guid whose letters are no hexadecimal digits.
TOrvGuid ParseGuid(View text)
{
    TOrvGuid guid{};
    if (!Ulmo::GuidTools::StringToGuidW(text, guid)) throw Ulmo::GuidConversionException(text);
    return guid;
}

// Of 32 bits if it fits, else of 64, so that nothing is lost before the declared kind is known.
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
void ReadString(MarkupGuard& guard, View text, TOrvParameter& value)
{
    if (HasGuidForm(text)) {
        value.SetGuid(ParseGuid(text));
    } else if (HasDateTimeForm(text)) {
        value.SetDateTime(Ulmo::FromText(text));
    } else if (guard.IsActive()) {
        std::u16string restored(text);
        guard.Restore(restored);
        value.SetString(restored);
    } else {
        value.SetString(text);
    }
}

void ReadRect(const FieldMatch& found, TOrvParameter& value)
{
    std::uint64_t packed = 0;
    for (std::size_t word = 0; word < found.parts.size(); ++word) {
        const auto coordinate = static_cast<std::uint16_t>(Int32(found.parts[word]));
        packed |= std::uint64_t{coordinate} << (16 * word);
    }
    value.SetRect(static_cast<std::int64_t>(packed));
}

// Without a guid's text it is no resource but the empty string, whatever the name. Deliberate.
void ReadResource(View guidText, View name, TOrvParameter& value)
{
    if (guidText.empty()) {
        value.SetString({});
    } else {
        value.SetResource(HasGuidForm(guidText) ? ParseGuid(guidText) : TOrvGuid{}, name);
    }
}

// Text between the items is skipped, as everywhere in the language.
void ReadResultData(View list, TOrvParameter& value)
{
    std::u16string text;
    text.reserve(list.size());
    TextScanner items(list);
    for (ResultItemMatch found; items.FindResultItem(found);) {
        ResultDataFields item;
        for (std::size_t field = 0; field < item.words.size(); ++field) {
            // A number that is too large for its field is cut to it.
            item.words[field] = static_cast<std::uint16_t>(Ulmo::ScanInt64(found.numbers[field]));
        }
        item.number = static_cast<std::uint32_t>(Ulmo::ScanInt64(found.numbers.back()));
        item.name = found.name;
        AppendInternalItem(text, item);
    }
    value.SetResultDataText(text);
}

}  // namespace

void ReadTextValue(const FieldMatch& found, MarkupGuard& guard, TOrvParameter& value)
{
    using Form = FieldMatch::Form;
    const auto& parts = found.parts;
    switch (found.form) {
    case Form::Integer: return ReadInteger(parts[0], value);
    case Form::Float: return value.SetDouble(Ulmo::ScanDouble(parts[0]));
    case Form::String: return ReadString(guard, parts[0], value);
    case Form::Rect: return ReadRect(found, value);
    case Form::Channel:
        return value.SetMediaChannel(Id(parts[0]), static_cast<std::uint32_t>(Int32(parts[1])), parts[2]);
    case Form::EventType: return value.SetEventType(Id(parts[0]), parts[1]);
    case Form::Resource: return ReadResource(parts[0], parts[1], value);
    case Form::ResultData: return ReadResultData(parts[0], value);
    }
}

}  // namespace OrvPLC
