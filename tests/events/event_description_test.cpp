#include "events/event_description.h"

#include <gtest/gtest.h>

#include <string>

#include "catalogue/settings.h"
#include "forms/binary_writer.h"
#include "forms/text_reader.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {
namespace {

// The calls of one walk, a line each: "0 label|value", with the priority where it was told.
struct Calls {
    std::u16string text;

    void Add(std::int32_t index, const OrvWChar* label, const OrvWChar* value)
    {
        text += Ulmo::WideFromUtf8(std::to_string(index)) + u" ";
        text.append(TerminatedView(label)).append(u"|").append(TerminatedView(value)).append(u"\n");
    }
    static void Plain(OrvWord context, std::int32_t index, const OrvWChar* label, const OrvWChar* value)
    {
        reinterpret_cast<Calls*>(context)->Add(index, label, value);
    }
    static void Extended(OrvWord context, std::int32_t index, const OrvWChar* label, const OrvWChar* value,
                         std::uint32_t priority)
    {
        auto& calls = *reinterpret_cast<Calls*>(context);
        calls.text += u"p" + Ulmo::WideFromUtf8(std::to_string(priority)) + u" ";
        calls.Add(index, label, value);
    }
};

// Describes the record of an action with its image.
std::string Described(std::u16string_view action, std::uint32_t level, bool plain = true, bool extended = false)
{
    const ObjectPtr<TOrvAction> read(ReadActionText(action, ORV_EXPECT_ANY, false).object);
    std::byte image[1000];
    TOrvBinaryCursor cursor(image, sizeof image);
    read->WriteBinary(cursor);
    TOrvEventData record{};
    read->GetEventData(&record);
    record.image = image;
    record.imageSize = static_cast<std::uint64_t>(cursor.Required());
    Calls calls;
    DescribeEvent(
        record,
        {reinterpret_cast<OrvWord>(&calls), plain ? Calls::Plain : nullptr, extended ? Calls::Extended : nullptr},
        level);
    return Ulmo::Utf8FromWide(calls.text);
}

constexpr const char16_t* kLogin =
    u"UserLogin (ClientHost: \"pc\", User1: \"ann\", Host: \"h\", own: 1, SpecialService: \"s\")";

TEST(EventDescription, CallsForEachParameterAndForTheWhole)
{
    const struct {
        const char16_t* action;
        std::uint32_t level;
        const char* calls;
    } cases[] = {
        {u"PanLeft (Speed: 3, Camera: { 7, 5, \"front door\" })", 5,
         "0 PTZ head|front door (5)\n1 speed|3\n-1 Pan left|PTZ head: front door (5); speed: 3;\n"},
        {u"PanLeft ()", 5, "-1 Pan left|\n"},
        {u"@ PanLeft (Comment: \"c\", Speed: 3)", 5, "0 speed|3\n-1 Pan left|speed: 3;\n"},
        {kLogin, 2, "-1 User login|own: 1;\n"},
        {kLogin, 3, "0 first user|\"ann\"\n-1 User login|first user: \"ann\"; own: 1;\n"},
    };
    for (const auto& [action, level, calls] : cases) EXPECT_EQ(Described(action, level), calls);
}

TEST(EventDescription, LevelsAndPriorities)
{
    // The level rules what is declared, the process-wide level the rest.
    Settings::PriorityLevel = 9;
    const std::string all = Described(kLogin, 3, false, true);
    Settings::PriorityLevel = 5;
    EXPECT_EQ(all,
              "p3 0 first user|\"ann\"\n"
              "p0 -1 User login|first user: \"ann\"; own: 1; special service: \"s\";\n");
    EXPECT_EQ(Described(kLogin, 3, true, true), Described(kLogin, 3));  // the plain one goes first
    EXPECT_EQ(Described(kLogin, 3, false, false), "");
}

TEST(EventDescription, OfColumnsAlone)
{
    const std::int32_t number = 5;
    TOrvEventData record{};
    record.code = 123456;
    record.int32Field[1] = &number;
    Calls calls;
    DescribeEvent(record, {reinterpret_cast<OrvWord>(&calls), Calls::Plain, nullptr}, 5);
    EXPECT_EQ(Ulmo::Utf8FromWide(calls.text), "0 value B (32-bit)|5\n-1 GeneralEventInfo|value B (32-bit): 5;\n");
}

}  // namespace
}  // namespace OrvPLC
