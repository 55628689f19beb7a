// An action as one line: its kind, its name and each parameter with its kind and raw fields.
#pragma once

#include <string>

#include "forms/text_pieces.h"
#include "objects/match_action.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

inline void DescribeValue(std::u16string& text, const TOrvParameter& value)
{
    const auto number = [&text](std::int64_t field) {
        text += u' ';
        Ulmo::AppendDecimal(text, field);
    };
    const auto wide = [&] { (text += u" '").append(value.Wide()) += u'\''; };
    switch (value.Kind()) {
    case ORV_KIND_Boolean: text += u" bool", number(value.Small()); break;
    case ORV_KIND_Numeric32Bit: text += u" i32", number(value.Small()); break;
    case ORV_KIND_Numeric64Bit: text += u" i64", number(value.Large()); break;
    case ORV_KIND_NumericDouble: text += u" dbl ", Ulmo::AppendDouble(text, value.Real()); break;
    case ORV_KIND_String: text += u" str", wide(); break;
    case ORV_KIND_DateTime: text += u" time ", AppendDateTime(text, value.DateTime()); break;
    case ORV_KIND_Guid: text += u" guid ", AppendGuid(text, value.Guid()); break;
    case ORV_KIND_EventType: text += u" event", number(value.Large()), wide(); break;
    case ORV_KIND_MediaChannel: text += u" chan", number(value.Large()), number(value.Small()), wide(); break;
    case ORV_KIND_Resource: text += u" res ", AppendGuid(text, value.Guid()), wide(); break;
    case ORV_KIND_Rect: AppendRect(text, value.Large(), u" rect ", u""); break;
    case ORV_KIND_ResultDataSet: text += u" data", wide(); break;
    default: text += u" kind", number(value.Kind()); break;
    }
    if (value.EnumType() != 0) text += u" of", number(value.EnumType());
}

// "3 PanLeft; Camera chan 0 5 ''"; parameters in key order, after the description of a match action.
inline std::string Describe(const TOrvAction& action)
{
    std::u16string text;
    Ulmo::AppendUnsigned(text, action.Kind());
    text += u' ';
    text += action.Name();
    const auto add = [&text](std::u16string_view name, const TOrvParameter& value) {
        text += u"; ";
        text += name;
        DescribeValue(text, value);
    };
    if (const TOrvParameter* description = action.DescriptionParameter()) add(action.DescriptionName(), *description);
    action.Parameters().ForEachByKey([&](std::u16string_view, std::u16string_view name, const TOrvParameter& value,
                                         std::size_t) { add(name, value); });
    return Ulmo::Utf8FromWide(text);
}

}  // namespace OrvPLC
