#include <gtest/gtest.h>

#include <limits>

#include "catalogue/settings.h"
#include "forms/describe.h"
#include "forms/plain_text_writer.h"
#include "forms/pruning.h"
#include "forms/technical_text_writer.h"
#include "objects/generic_action.h"
#include "ulmo/date_time.h"

namespace OrvPLC {
namespace {

constexpr TOrvGuid kGuid = {0x1E240, 2, 3, {4, 5, 6, 7, 8, 9, 10, 0xAB}};
constexpr TOrvGuid kRestOfTime = {0xBAA41E7C, 0x9328, 0x427E, {0x94, 0x3D, 0xA6, 0x6B, 0x44, 0xEF, 0x2F, 0xDB}};

struct Row {
    void (*set)(TOrvParameter& value);
    const char16_t* technical;
    const char16_t* plain;
    const char16_t* bare;
};

// No row holds a date: its plain text is the language's business.
const Row rows[] = {
    {[](auto& v) { v.SetBoolean(true); }, u"1", u"True", u"1"},
    {[](auto& v) { v.SetBoolean(false); }, u"0", u"False", u"0"},
    {[](auto& v) { v.SetInt32(-5); }, u"-5", u"-5", u"-5"},
    {[](auto& v) { v.SetInt32(0, 0x1032); }, u"0", u"rest of time", u"0"},
    {[](auto& v) { v.SetInt32(777, 0x1032); }, u"777", u"777", u"777"},
    {[](auto& v) { v.SetInt32(1, 1); }, u"1", u"1", u"1"},  // the Boolean enum is for Booleans
    {[](auto& v) { v.SetInt64(std::numeric_limits<std::int64_t>::min()); }, u"-9223372036854775808",
     u"-9223372036854775808", u"-9223372036854775808"},
    {[](auto& v) { v.SetDouble(5); }, u"5", u"5", u"5"},
    {[](auto& v) { v.SetDouble(0.1); }, u"0.1", u"0.1", u"0.1"},
    {[](auto& v) { v.SetString(u"a\"b\\"); }, u"\"a\"b\\\"", u"\"a\"b\\\"", u"a\"b\\"},
    {[](auto& v) { v.SetGuid(kGuid); }, u"\"0001e240-0002-0003-0405-060708090aab\"",
     u"\"0001e240-0002-0003-0405-060708090aab\"", u"0001e240-0002-0003-0405-060708090aab"},
    {[](auto& v) { v.SetEventType(7, u"n"); }, u"{ 7, \"n\" }", u"\"n\"", u"n"},
    {[](auto& v) { v.SetEventType(7, u""); }, u"{ 7, \"\" }", u"7", u""},
    {[](auto& v) { v.SetEventType(0, u"n"); }, u"\"n\"", u"\"n\"", u"n"},
    {[](auto& v) { v.SetEventType(0, u""); }, u"\"\"", u"0", u""},
    {[](auto& v) { v.SetMediaChannel(7, 8, u"n"); }, u"{ 7, 8, \"n\" }", u"n (8)", u"n"},
    {[](auto& v) { v.SetMediaChannel(0, 8, u"n"); }, u"{ 0, 8, \"n\" }", u"n (8)", u"n"},
    {[](auto& v) { v.SetMediaChannel(7, 0, u""); }, u"{ 7, 0, \"\" }", u"#: 7", u""},
    {[](auto& v) { v.SetMediaChannel(7, 8, u""); }, u"{ 7, 8, \"\" }", u"8", u""},
    {[](auto& v) { v.SetMediaChannel(0, 8, u""); }, u"8", u"8", u""},
    {[](auto& v) { v.SetMediaChannel(0, 0, u""); }, u"0", u"#: 0", u""},
    {[](auto& v) { v.SetResource(kGuid, u"n"); }, u"{ \"0001e240-0002-0003-0405-060708090aab\", \"n\" }", u"\"n\"",
     u"n"},
    {[](auto& v) { v.SetResource(kGuid, u""); }, u"{ \"0001e240-0002-0003-0405-060708090aab\", \"\" }",
     u"\"0001e240-0002-0003-0405-060708090aab\"", u""},
    {[](auto& v) { v.SetResource({}, u""); }, u"\"\"", u"\"00000000-0000-0000-0000-000000000000\"", u""},
    {[](auto& v) { v.SetResource(kRestOfTime, u"n"); }, u"{ \"baa41e7c-9328-427e-943d-a66b44ef2fdb\", \"n\" }",
     u"rest of time", u"n"},
    {[](auto& v) { v.SetRect(0x0004'FFFF'0002'8000); }, u"{ -32768, 2, -1, 4 }", u"(2,-32768)-(4,-1)",
     u"{-32768, 2, -1, 4}"},
    {[](auto& v) { v.SetResultDataText(u"1 2 3 4 5 'a',6 7 8 9 0 'b'"); },
     u"{ { 1, 2, 3, 4, 5, \"a\" }, { 6, 7, 8, 9, 0, \"b\" } }", u"1 2 3 4 5 'a',6 7 8 9 0 'b'",
     u"1 2 3 4 5 'a',6 7 8 9 0 'b'"},
    {[](auto& v) { v.SetResultDataText(u""); }, u"{  }", u"", u""},
    {[](auto& v) { v.SetKindAndEnum(13, 0); }, u"unknown", u"unknown", nullptr},
};

TEST(TextWriters, EveryKind)
{
    for (const Row& row : rows) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"Foo"));
        action->Parameters().Store(u"x", row.set);
        EXPECT_EQ(TechnicalText(*action), std::u16string(u"Foo (x: ") + row.technical + u")");
        EXPECT_EQ(PlainText(*action), std::u16string(u"Foo; x: ") + row.plain + u";");
        std::u16string bare;
        EXPECT_EQ(action->Parameters().Find(u"x")->AppendText(bare), row.bare != nullptr);
        EXPECT_EQ(bare, row.bare ? row.bare : u"");
    }
}

TEST(TextWriters, Dates)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"Foo"));
    const TUlmoDateTime date = Ulmo::FromText(u"2026/11/15 03:10:43,123 GMT+01:00");
    action->Parameters().Store(u"x", [date](TOrvParameter& value) { value.SetDateTime(date); });
    EXPECT_EQ(TechnicalText(*action), u"Foo (x: \"2026/11/15 03:10:43,123 GMT+01:00\")");
    Ulmo::DateText text;
    EXPECT_EQ(PlainText(*action), u"Foo; x: \"" + std::u16string(Ulmo::ToLocaleText(date, text)) + u"\";");
}

TEST(TextWriters, NamesAreBareOrQuoted)
{
    const struct {
        const char16_t* name;
        bool bare;
    } names[] = {{u"aZ09", true},     {u"\u00e4\u0431", true}, {u"9a", false},
                 {u"a b", false},     {u"a_b", false},         {u"", false},
                 {u"a\u00a0", false}, {u"\u00bfa", false},     {u"a\u00b2", true},
                 {u"\u00b2a", false}, {u"a\u00aa", false}};
    for (const auto& [name, bare] : names) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(name));
        action->Parameters().Store(name, [](TOrvParameter& value) { value.SetInt32(1); });
        const std::u16string shown = bare ? name : u"\"" + std::u16string(name) + u"\"";
        EXPECT_EQ(TechnicalText(*action), shown + u" (" + shown + u": 1)");
    }
}

// The catalogue's parameters come first, in their order; the object's own spelling is written.
TEST(TextWriters, OrderAndSpelling)
{
    const ObjectPtr<TOrvMatchAction> action(TOrvMatchAction::Create(u"panLEFT"));
    EXPECT_EQ(TechnicalText(*action), u"@ panLEFT (Comment: \"\")");
    for (const auto* name : {u"zulu", u"Alpha", u"SPEED", u"Camera"}) {
        action->Parameters().Store(name, [](TOrvParameter& value) { value.SetInt32(1); });
    }
    action->Description().SetString(u"d");
    EXPECT_EQ(TechnicalText(*action), u"@ panLEFT (Comment: \"d\", Camera: 1, SPEED: 1, Alpha: 1, zulu: 1)");
    EXPECT_EQ(PlainText(*action), u"Pan left; PTZ head: 1; speed: 1; Alpha: 1; zulu: 1;");
}

TEST(TextWriters, PlainTextHidesByPriority)
{
    const ObjectPtr<TOrvMatchAction> action(TOrvMatchAction::Create(u"PanLeft"));
    for (const auto* name : {u"Speed", u"CLIENThost", u"own"}) {
        action->Parameters().Store(name, [](TOrvParameter& value) { value.SetInt32(1); });
    }
    const struct {
        std::uint32_t level;
        const char16_t* text;
    } levels[] = {{4, u"Pan left; own: 1;"},
                  {5, u"Pan left; speed: 1; own: 1;"},
                  {6, u"Pan left; speed: 1; client host: 1; own: 1;"},
                  {8, u"Pan left; comment: \"\"; speed: 1; client host: 1; own: 1;"}};
    const std::uint32_t before = Settings::PriorityLevel;
    for (const auto& [level, text] : levels) {
        Settings::PriorityLevel = level;
        EXPECT_EQ(PlainText(*action), text);
    }
    Settings::PriorityLevel = before;
    Settings::NativeTranslation = 0;
    EXPECT_EQ(PlainText(*action), u"PanLeft; Speed: 1; own: 1;");
    Settings::NativeTranslation = 1;
}

TEST(TextWriters, AnActionWithoutContent)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"Foo"));
    EXPECT_EQ(TechnicalText(*action), u"Foo ()");
    EXPECT_EQ(PlainText(*action), u"Foo;");
    const ObjectPtr<TOrvGenericAction> generic(TOrvGenericAction::Create({}));
    EXPECT_EQ(TechnicalText(*generic) + PlainText(*generic), u"");
}

TEST(TextWriters, PruningRemovesWhatIsAboveTheLimit)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"PanLeft"));
    for (const auto* name : {u"Camera", u"speed", u"ClientHost"}) {
        action->Parameters().Store(name, [](TOrvParameter& value) { value.SetInt32(1); });
    }
    PruneParameters(*action, 5);
    EXPECT_EQ(action->Parameters().Size(), 3u);
    PruneParameters(*action, 4);
    EXPECT_EQ(Describe(*action), "3 PanLeft; ClientHost i32 1");
}

TEST(ValueText, IsKeptInTheValue)
{
    TOrvParameter value;
    value.SetInt32(42);
    EXPECT_EQ(value.MakeWideText(), u"42");
    EXPECT_EQ(value.Wide(), u"42");
    EXPECT_EQ(value.Kind(), 2u);
    value.SetString(u"\u00e4");
    EXPECT_STREQ(value.MakeNarrowText(), "\xc3\xa4");
    value.SetKindAndEnum(13, 0);
    EXPECT_STREQ(value.MakeNarrowText(), "\xc3\xa4");
    EXPECT_EQ(value.MakeWideText(), u"\u00e4");
}

}  // namespace
}  // namespace OrvPLC
