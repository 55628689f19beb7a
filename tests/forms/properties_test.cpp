#include "forms/properties.h"

#include <gtest/gtest.h>

#include "forms/client_info.h"
#include "forms/describe.h"
#include "forms/text_reader.h"
#include "objects/match_action.h"
#include "ulmo/date_time.h"
#include "ulmo/exceptions.h"

namespace OrvPLC {
namespace {

ObjectPtr<TOrvAction> Read(std::u16string_view text)
{
    return ObjectPtr<TOrvAction>(ReadActionText(text, ORV_EXPECT_ANY, false).object);
}

std::u16string Block(std::u16string_view name, std::u16string_view value)
{
    std::u16string text = u"  <property>\r\n    <name>";
    text += name;
    text += u"</name>\r\n    <value>";
    text += value;
    return text + u"</value>\r\n  </property>\r\n";
}

constexpr TOrvGuid kGuid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

TEST(Properties, EveryKindInBothDumps)
{
    const TUlmoDateTime time = {0x00000C3A5B6C7D8E};
    Ulmo::DateText locale, technical;
    const struct {
        void (*set)(TOrvParameter&);
        std::u16string_view property;
        std::u16string_view flat;  // the bare text of the value
    } rows[] = {
        {[](TOrvParameter& p) { p.SetBoolean(true); }, u"1", u"1"},
        {[](TOrvParameter& p) { p.SetInt32(-1, 0x1028); }, u"-1", u"-1"},
        {[](TOrvParameter& p) { p.SetInt64(1LL << 40); }, u"1099511627776", u"1099511627776"},
        {[](TOrvParameter& p) { p.SetDouble(5); }, u"5", u"5"},
        {[](TOrvParameter& p) { p.SetString(u"<a b='\"'>&lt;"); }, u"&lt;a b='\"'&gt;&amp;lt;",
         u"&lt;a b='\"'&gt;&amp;lt;"},
        {[](TOrvParameter& p) { p.SetDateTime({0x00000C3A5B6C7D8E}); }, Ulmo::ToLocaleText(time, locale),
         Ulmo::ToText(time, technical)},
        {[](TOrvParameter& p) { p.SetGuid(kGuid); }, u"\"00000001-0002-0003-0405-060708090a0b\"",
         u"00000001-0002-0003-0405-060708090a0b"},
        {[](TOrvParameter& p) { p.SetEventType(7, u"a&b"); }, u"{7,\"a&amp;b\"}", u"a&amp;b"},
        {[](TOrvParameter& p) { p.SetMediaChannel(7, 8, u"c"); }, u"8", u"c"},
        {[](TOrvParameter& p) { p.SetResource(kGuid, u"r"); }, u"{00000001-0002-0003-0405-060708090a0b,\"r\"}", u"r"},
        {[](TOrvParameter& p) { p.SetRect(static_cast<std::int64_t>(0xFFFF'0003'0002'0001)); }, u"{1,2,3,-1}",
         u"{1, 2, 3, -1}"},
        {[](TOrvParameter& p) { p.SetResultDataText(u"1 2 3 4 5 'a'"); }, u"", u"1 2 3 4 5 'a'"},
        {[](TOrvParameter& p) { p.SetKindAndEnum(13, 0); }, u"", u""},
    };
    for (const auto& row : rows) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"My \"A\""));
        action->Parameters().Store(u"X&y", row.set);
        EXPECT_EQ(PropertiesText(*action), u"<properties>\r\n" + Block(u"X&amp;y", row.property) + u"</properties>");
        EXPECT_EQ(FlatXml(*action),
                  u"<action name=\"My \"A\"\">  <property x&y=\"" + std::u16string(row.flat) + u"\">");
    }
}

TEST(Properties, KeyOrderAndTheCatalogueName)
{
    const ObjectPtr<TOrvAction> action = Read(u"@ panleft (Comment: \"c\", Speed: 3, Camera: 7, b: 1)");
    EXPECT_EQ(PropertiesText(*action), u"<properties>\r\n" + Block(u"b", u"1") + Block(u"Camera", u"7") +
                                           Block(u"Speed", u"3") + u"</properties>");
    // The stored values keep their kinds.
    EXPECT_EQ(FlatXml(*action),
              u"<action name=\"PanLeft\">  <property b=\"1\">  <property camera=\"\">  <property speed=\"3\">");
    EXPECT_EQ(Describe(*action), "4 panleft; Comment str 'c'; b i32 1; Camera chan 0 7 ''; Speed i32 3");
    const ObjectPtr<TOrvAction> empty = Read(u"@ PanLeft (Comment: \"c\")");
    EXPECT_EQ(PropertiesText(*empty), u"<properties />");
    EXPECT_EQ(FlatXml(*empty), u"<action />");
}

TEST(Properties, KeysAndTheirParameters)
{
    const struct {
        const char16_t* key;
        const char16_t* value;
        const char* stored;
    } rows[] = {
        {u"Windows-User", u"u", "ClientAccount str 'u'"},
        {u"windows-host", u"h", "ClientHost str 'h'"},
        {u"hesk-user", u"1", "User1 str '1'"},
        {u"HESK-SECONDARY-USER", u"2", "User2 str '2'"},
        {u"special-service", u"s", "SpecialService str 's'"},
        {u"client-type", u"0x10", "ClientType i32 16 of 4136"},
        {u"client-type", u"010", "ClientType i32 8 of 4136"},
        {u"client-type", u"none", "ClientType i32 0 of 4136"},
        {u"client-type", u"99999999999", "ClientType i32 2147483647 of 4136"},
        {u"Foo", u"f", "foo str 'f'"},
        {u"ClientType", u"5", "clienttype str '5'"},  // by its own name it is a text like any other
        {u"", u"", " str ''"},
    };
    for (const auto& row : rows) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"A"));
        EXPECT_EQ(ReadProperty(*action, row.key), nullptr);
        WriteProperty(*action, row.key, row.value);
        EXPECT_EQ(Describe(*action), "3 A; " + std::string(row.stored));
        const char16_t* text = ReadProperty(*action, row.key);
        ASSERT_NE(text, nullptr);
        WriteProperty(*action, row.key, text);  // its own text
        EXPECT_EQ(Describe(*action).substr(0, 7), ("3 A; " + std::string(row.stored)).substr(0, 7));
    }
    const ObjectPtr<TOrvAction> login = Read(u"UserLogin (User1: \"u\", ClientType: 1)");
    EXPECT_EQ(std::u16string(ReadProperty(*login, u"hesk-user")), u"u");
    EXPECT_EQ(std::u16string(ReadProperty(*login, u"CLIENT-TYPE")), u"1");
}

TEST(ClientInfo, WritesAndReads)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"A"));
    const OrvWChar* const untouched = Boundary(u"untouched");
    const OrvWChar* host = untouched;
    const OrvWChar* account = untouched;
    const std::uint32_t kept = 0;
    const std::uint32_t* type = &kept;
    const auto read = [&] {
        host = account = untouched;
        type = &kept;
        return ReadClientInfo(*action, &host, &type, &account);
    };

    WriteClientInfo(*action, Boundary(u"h"), 0xFFFFFFFF, Boundary(u"a"));
    EXPECT_EQ(Describe(*action), "3 A; ClientAccount str 'a'; ClientHost str 'h'; ClientType i32 -1 of 4136");
    ASSERT_TRUE(read());
    EXPECT_EQ(TerminatedView(host), u"h");
    EXPECT_EQ(*type, 0xFFFFFFFF);
    EXPECT_EQ(TerminatedView(account), u"a");

    action->SetGuid(Boundary(kClientType.data()), &kGuid);  // there, but no number
    EXPECT_TRUE(read());
    EXPECT_EQ(type, nullptr);
    EXPECT_EQ(TerminatedView(account), u"a");

    WriteClientInfo(*action, Boundary(u"h"), 2, nullptr);
    EXPECT_FALSE(read());
    EXPECT_EQ(*type, 2u);
    EXPECT_EQ(account, nullptr);

    action->RemoveParameter(Boundary(kClientType.data()));
    EXPECT_FALSE(read());
    EXPECT_EQ(type, nullptr);
    EXPECT_EQ(account, untouched);

    WriteClientInfo(*action, nullptr, 1, Boundary(u"a"));
    EXPECT_FALSE(read());
    EXPECT_EQ(host, nullptr);
    EXPECT_EQ(type, &kept);
    EXPECT_EQ(account, untouched);
}

}  // namespace
}  // namespace OrvPLC
