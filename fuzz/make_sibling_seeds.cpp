// Seeds for both sibling targets: each text that converts, in both grammars.
#include "bridge/action_text_parser.h"
#include "bridge/action_text_writer.h"
#include "forms/technical_text_writer.h"
#include "seeds.h"
#include "ulmo/string_conversion.h"

using namespace OrvPLC;

namespace {

std::u16string_view SampleField(std::uint32_t kind)
{
    switch (kind) {
    case ORV_KIND_NumericDouble: return u"-1.5e3";
    case ORV_KIND_String: return u"\"a \\\"b\"";
    case ORV_KIND_DateTime: return u"\"2026/11/15 03:10:43,123 GMT+01:00\"";
    case ORV_KIND_Guid: return u"\"01020304-0506-0708-090a-0b0c0d0e0f10\"";
    case ORV_KIND_EventType: return u"{ 7, \"event\" }";
    case ORV_KIND_MediaChannel: return u"{ 7, 8, \"channel\" }";
    case ORV_KIND_Resource: return u"{ \"01020304-0506-0708-090a-0b0c0d0e0f10\", \"resource\" }";
    case ORV_KIND_Rect: return u"{ 1, 2, 3, 4 }";
    default: return u"1";
    }
}

std::u16string HeskText(const HeskPLC::Converter& converter)
{
    HeskPLC::ActionTextWriter writer;
    writer.Begin(converter.name);
    for (const HeskPLC::Field field : converter.Fields()) {
        const std::u16string key = field.key.empty() ? std::u16string() : std::u16string(field.key) + u": ";
        writer.WriteLiteral(key + std::u16string(SampleField(field.kind)));
    }
    return writer.Finish();
}

void Make(const SeedFolder& folder)
{
    for (const HeskPLC::Converter& converter : HeskPLC::Converters()) {
        const std::u16string text = HeskText(converter);
        const ObjectPtr<TOrvAction> action = HeskPLC::ActionTextParser(text).Parse();
        const std::string name = Ulmo::Utf8FromWide(converter.name);
        if (!action) throw std::runtime_error(name + " does not read");
        folder.Write(name + ".hesk", text);
        folder.Write(name + ".orv", TechnicalText(*action));
    }
    folder.Write("number", std::u16string_view(u"VantikVMXAlarm (1, SterileZoneNumber: 2, VirtualFenceNumber: 3)"));
}

}  // namespace

int main(int count, char** arguments)
{
    return MakeSeeds(count, arguments, Make);
}
