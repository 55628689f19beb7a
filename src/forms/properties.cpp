#include "forms/properties.h"

#include "OrvActions/OrvEnums.h"
#include "catalogue/value_kind.h"
#include "forms/client_info.h"
#include "forms/text_pieces.h"
#include "ulmo/date_time.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

using View = std::u16string_view;

// Names of the system's and the sibling's world for general parameters.
struct WellKnownKey {
    View key;
    View parameter;
};
constexpr WellKnownKey kWellKnownKeys[] = {
    {u"windows-user", kClientAccount}, {u"windows-host", kClientHost},     {u"client-type", kClientType},
    {u"hesk-user", u"User1"},          {u"hesk-secondary-user", u"User2"}, {u"special-service", u"SpecialService"},
};

// A key that is not well-known is itself the name of the parameter.
View ParameterOfKey(View lowerKey)
{
    for (const WellKnownKey& known : kWellKnownKeys) {
        if (known.key == lowerKey) return known.parameter;
    }
    return lowerKey;
}

// Quotes and apostrophes stay, in attributes too.
void AppendEscaped(std::u16string& output, View text)
{
    for (const char16_t unit : text) {
        switch (unit) {
        case u'&': output += u"&amp;"; break;
        case u'<': output += u"&lt;"; break;
        case u'>': output += u"&gt;"; break;
        default: output += unit; break;
        }
    }
}

void AppendRectWords(std::u16string& output, std::int64_t packed)
{
    for (unsigned word = 0; word < 4; ++word) {
        output += word == 0 ? u'{' : u',';
        Ulmo::AppendDecimal(output, RectWord(packed, word));
    }
    output += u'}';
}

void AppendNamed(std::u16string& output, View name)
{
    output += u',';
    AppendQuoted(output, name);
    output += u'}';
}

// Neither the bare text of a value nor one of the action texts: a form of its own.
void AppendPropertyValue(std::u16string& output, const TOrvParameter& value)
{
    switch (ValueKind{value.Kind()}) {
    case ValueKind::Boolean: output += value.Small() != 0 ? u'1' : u'0'; break;
    case ValueKind::Numeric32Bit:
    case ValueKind::MediaChannel: Ulmo::AppendDecimal(output, value.Small()); break;
    case ValueKind::Numeric64Bit: Ulmo::AppendDecimal(output, value.Large()); break;
    case ValueKind::NumericDouble: Ulmo::AppendDouble(output, value.Real()); break;
    case ValueKind::String: output += value.Wide(); break;
    case ValueKind::DateTime: {
        Ulmo::DateText text;
        output += Ulmo::ToLocaleText(value.DateTime(), text);
        break;
    }
    case ValueKind::Guid: AppendQuotedGuid(output, value.Guid()); break;
    case ValueKind::EventType:
        output += u'{';
        Ulmo::AppendDecimal(output, value.Large());
        AppendNamed(output, value.Wide());
        break;
    case ValueKind::Resource:
        output += u'{';
        AppendGuid(output, value.Guid());
        AppendNamed(output, value.Wide());
        break;
    case ValueKind::Rect: AppendRectWords(output, value.Large()); break;
    case ValueKind::None:
    case ValueKind::ResultDataSet: break;
    }
}

}  // namespace

std::u16string PropertiesText(const TOrvAction& action)
{
    if (action.Parameters().Size() == 0) return u"<properties />";
    std::u16string output = u"<properties>\r\n";
    std::u16string text;
    action.Parameters().ForEachByKey([&](View, View name, const TOrvParameter& value, std::size_t) {
        output += u"  <property>\r\n    <name>";
        AppendEscaped(output, name);
        output += u"</name>\r\n    <value>";
        text.clear();
        AppendPropertyValue(text, value);
        AppendEscaped(output, text);
        output += u"</value>\r\n  </property>\r\n";
    });
    output += u"</properties>";
    return output;
}

std::u16string FlatXml(const TOrvAction& action)
{
    if (action.Parameters().Size() == 0) return u"<action />";
    std::u16string output = u"<action name=\"";
    // Names and keys go out as they are; only values are escaped.
    output += action.Entry() ? action.Entry()->NameW.view() : action.Name();
    output += u"\">";
    std::u16string text;
    action.Parameters().ForEachByKey([&](View key, View, const TOrvParameter& value, std::size_t) {
        output += u"  <property ";
        output += key;
        output += u"=\"";
        text.clear();
        value.AppendText(text);  // appends nothing for a kind without a text
        AppendEscaped(output, text);
        output += u"\">";
    });
    return output;
}

const char16_t* ReadProperty(TOrvAction& action, View key)
{
    TOrvParameter* value = action.Parameters().Find(ParameterOfKey(Ulmo::LowerCase(key)));
    return value ? value->MakeWideText().data() : nullptr;
}

void WriteProperty(TOrvAction& action, View key, View value)
{
    const std::u16string lower = Ulmo::LowerCase(key);
    const View parameter = ParameterOfKey(lower);
    action.Parameters().Store(parameter, [&](TOrvParameter& stored) {
        if (parameter != kClientType) return stored.SetString(value);
        // Ignored: a number out of range becomes the limit.
        bool inRange = true;
        stored.SetInt32(Ulmo::DetectInt32(value, inRange), ORV_ENUM_PlcClientType);
    });
}

}  // namespace OrvPLC
