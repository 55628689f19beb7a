// What the makers of seeds have in common: the folder that they write into, and actions with all their parameters set.
#pragma once

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "catalogue/catalogue.h"
#include "forms/binary_writer.h"
#include "objects/match_action.h"
#include "ulmo/date_time.h"

class SeedFolder {
public:
    explicit SeedFolder(const std::filesystem::path& path) : path_(path) { std::filesystem::create_directories(path); }

    // A seed is the bytes after a head, such as a byte of options.
    void Write(const std::string& name, std::string_view bytes, std::string_view front = {}) const
    {
        std::ofstream stream(path_ / name, std::ios::binary);
        stream << front << bytes;
        if (!stream.flush()) throw std::runtime_error("cannot write " + name);
    }
    void Write(const std::string& name, std::u16string_view text, std::string_view front = {}) const
    {
        Write(name, {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)}, front);
    }

private:
    std::filesystem::path path_;
};

// The main function of a maker, whose one argument is the folder.
inline int MakeSeeds(int count, char** arguments, void (*make)(const SeedFolder& folder))
try {
    if (count != 2) {
        std::fprintf(stderr, "usage: %s <directory>\n", arguments[0]);
        return 2;
    }
    make(SeedFolder(arguments[1]));
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s: %s\n", arguments[0], failure.what());
    return 1;
}

// A value of the declared kind, with what is hard for the forms: markup, quotes, backslashes, exponents, signs.
inline void SetSeedValue(OrvPLC::TOrvParameter& value, const OrvPLC::TOrvParameterInternalInfo& info)
{
    const TOrvGuid guid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    const TOrvResultDataItem item = {1, 2, 3, 4, 5, nullptr};
    switch (info.Type) {
    case ORV_KIND_Boolean: value.SetBoolean(true); break;
    case ORV_KIND_Numeric32Bit: value.SetInt32(-7, info.EnumType); break;
    case ORV_KIND_Numeric64Bit: value.SetInt64(-99999999999); break;
    case ORV_KIND_NumericDouble: value.SetDouble(1.5e300); break;
    case ORV_KIND_String: value.SetString(u"<a b=\"1\"/> & \\"); break;
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

template <class SetValue>
OrvPLC::ObjectPtr<OrvPLC::TOrvAction> SeedAction(const OrvPLC::TOrvActionInternalInfo& entry, SetValue&& setValue)
{
    OrvPLC::ObjectPtr<OrvPLC::TOrvAction> action(OrvPLC::TOrvAction::Create(entry));
    for (std::size_t position = 0; position < entry.Parameters.size(); ++position) {
        const OrvPLC::TOrvParameterInternalInfo& info = entry.Parameters[position];
        action->Parameters().StoreDeclared(position, [&](OrvPLC::TOrvParameter& value) { setValue(value, info); });
    }
    return action;
}

inline OrvPLC::ObjectPtr<OrvPLC::TOrvMatchAction> SeedMatchAction()
{
    OrvPLC::ObjectPtr<OrvPLC::TOrvMatchAction> match(OrvPLC::TOrvMatchAction::Create(u"PanLeft"));
    match->Description().SetString(u"description");
    return match;
}

inline std::string BinaryOf(const OrvPLC::TOrvAction& action)
{
    OrvPLC::TOrvBinaryCursor measure(nullptr, 0);
    action.WriteBinary(measure);
    std::string bytes(static_cast<std::size_t>(measure.Required()), '\0');
    OrvPLC::TOrvBinaryCursor cursor(bytes.data(), measure.Required());
    action.WriteBinary(cursor);
    return bytes;
}
