// Writes seeds for text_reader_fuzz into a directory: the text of every built-in action with every parameter set.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "catalogue/catalogue.h"
#include "forms/technical_text_writer.h"
#include "objects/match_action.h"
#include "ulmo/date_time.h"

using namespace OrvPLC;

namespace {

void SetSeedValue(TOrvParameter& value, std::uint32_t kind)
{
    const TOrvGuid guid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    const TOrvResultDataItem item = {1, 2, 3, 4, 5, nullptr};
    switch (kind) {
    case ORV_KIND_Boolean: value.SetBoolean(true); break;
    case ORV_KIND_Numeric32Bit: value.SetInt32(-7); break;
    case ORV_KIND_Numeric64Bit: value.SetInt64(99999999999); break;
    case ORV_KIND_NumericDouble: value.SetDouble(1.5e300); break;
    case ORV_KIND_String: value.SetString(u"<a b=\"1\"/>\\"); break;
    case ORV_KIND_DateTime: value.SetDateTime(Ulmo::FromText(u"2026/11/15 03:10:43,123 GMT+01:00")); break;
    case ORV_KIND_Guid: value.SetGuid(guid); break;
    case ORV_KIND_EventType: value.SetEventType(7, u"event"); break;
    case ORV_KIND_MediaChannel: value.SetMediaChannel(7, 8, u"channel"); break;
    case ORV_KIND_Resource: value.SetResource(guid, u"resource"); break;
    case ORV_KIND_Rect: value.SetRect(0x0004'0003'0002'0001); break;
    case ORV_KIND_ResultDataSet: value.SetResultDataSet(&item, 1); break;
    default: break;
    }
}

bool WriteSeed(const std::filesystem::path& file, char options, const std::u16string& text)
{
    std::ofstream stream(file, std::ios::binary);
    stream.put(options);
    stream.write(reinterpret_cast<const char*>(text.data()),
                 static_cast<std::streamsize>(text.size() * sizeof(char16_t)));
    return stream.good();
}

}  // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("usage: make_text_seeds <directory>\n", stderr);
        return 2;
    }
    const std::filesystem::path directory = arguments[1];
    std::filesystem::create_directories(directory);
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(*entry));
        for (std::size_t position = 0; position < entry->Parameters.size(); ++position) {
            const std::uint32_t kind = entry->Parameters[position].Type;
            action->Parameters().StoreDeclared(position, [kind](TOrvParameter& value) { SetSeedValue(value, kind); });
        }
        if (!WriteSeed(directory / entry->NameA.c_str(), '\0', TechnicalText(*action))) return 1;
    }
    const ObjectPtr<TOrvMatchAction> match(TOrvMatchAction::Create(u"PanLeft"));
    match->Description().SetString(u"description");
    return WriteSeed(directory / "match", '\x08', TechnicalText(*match)) ? 0 : 1;
}
