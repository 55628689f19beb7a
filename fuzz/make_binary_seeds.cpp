// Writes seeds for the binary fuzz targets into a directory: each built-in action with every parameter set, as a binary
// form for the reader, behind its byte of options, and as text for the round trip.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "catalogue/catalogue.h"
#include "forms/binary_writer.h"
#include "forms/technical_text_writer.h"
#include "objects/match_action.h"
#include "ulmo/date_time.h"

using namespace OrvPLC;

namespace {

void SetSeedValue(TOrvParameter& value, const TOrvParameterInternalInfo& info)
{
    const TOrvGuid guid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    const TOrvResultDataItem item = {1, 2, 3, 4, 5, nullptr};
    switch (info.Type) {
    case ORV_KIND_Boolean: value.SetBoolean(true); break;
    case ORV_KIND_Numeric32Bit: value.SetInt32(1, info.EnumType); break;
    case ORV_KIND_Numeric64Bit: value.SetInt64(-99999999999); break;
    case ORV_KIND_NumericDouble: value.SetDouble(0.25); break;
    case ORV_KIND_String: value.SetString(u"text & <tag>"); break;
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

bool WriteFile(const std::filesystem::path& file, std::string_view front, const void* data, std::size_t size)
{
    std::ofstream stream(file, std::ios::binary);
    stream.write(front.data(), static_cast<std::streamsize>(front.size()));
    stream.write(static_cast<const char*>(data), static_cast<std::streamsize>(size));
    return stream.good();
}

bool WriteSeeds(const std::filesystem::path& directory, const TOrvAction& action, const std::string& name)
{
    TOrvBinaryCursor measure(nullptr, 0);
    action.WriteBinary(measure);
    std::vector<std::byte> form(static_cast<std::size_t>(measure.Required()));
    TOrvBinaryCursor cursor(form.data(), measure.Required());
    action.WriteBinary(cursor);
    const std::u16string text = TechnicalText(action);
    return WriteFile(directory / (name + ".bin"), std::string_view("\0", 1), form.data(), form.size()) &&
           WriteFile(directory / (name + ".txt"), {}, text.data(), text.size() * sizeof(char16_t));
}

}  // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("usage: make_binary_seeds <directory>\n", stderr);
        return 2;
    }
    const std::filesystem::path directory = arguments[1];
    std::filesystem::create_directories(directory);
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(*entry));
        for (std::size_t position = 0; position < entry->Parameters.size(); ++position) {
            const TOrvParameterInternalInfo& info = entry->Parameters[position];
            action->Parameters().StoreDeclared(position, [&info](TOrvParameter& value) { SetSeedValue(value, info); });
        }
        if (!WriteSeeds(directory, *action, entry->NameA.c_str())) return 1;
    }
    const ObjectPtr<TOrvMatchAction> match(TOrvMatchAction::Create(u"PanLeft"));
    match->Description().SetString(u"description");
    return WriteSeeds(directory, *match, "match") ? 0 : 1;
}
