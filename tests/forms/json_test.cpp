#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "catalogue/settings.h"
#include "forms/json_writer.h"
#include "objects/generic_action.h"
#include "objects/match_action.h"
#include "platform/system_string.h"
#include "ulmo/exceptions.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {
namespace {

std::string Json(const TOrvMessage& message, bool wrap = true, const std::uint32_t* limit = nullptr)
{
    TOrvJsonWriter writer(wrap);
    message.WriteJson(writer, limit);
    return Ulmo::Utf8FromWide(writer.Finish());
}

// What follows "paramsCount":, with the closing braces.
std::string Parameters(const TOrvAction& action, const std::uint32_t* limit = nullptr)
{
    const std::string text = Json(action, true, limit);
    const std::string mark = "\"paramsCount\":";
    return text.substr(text.find(mark) + mark.size());
}

TEST(Json, WithoutEntryAndParameters)
{
    const ObjectPtr<TOrvMatchAction> match(TOrvMatchAction::Create(u"Nobody"));
    match->Description().SetString(u"not in this form");
    EXPECT_EQ(Json(*match),
              "{\"action\":{\"classCode\":0,\"className\":\"\",\"code\":0,\"flags\":0,\"name\":\"Nobody\","
              "\"plainName\":\"\",\"priority\":0,\"heskMessageClass\":2,\"index\":0,\"messageClass\":4,"
              "\"paramsCount\":0}}");
    const ObjectPtr<TOrvGenericAction> generic(TOrvGenericAction::Create({}));
    EXPECT_EQ(Json(*generic), "{}");
    EXPECT_EQ(Json(*generic, false), "");
    generic->Unused2();  // the places of the table that nothing uses answer nothing
    EXPECT_TRUE(!generic->Unused0() && generic->Unused1() == 0 && generic->GetGenericKind()->kind == 3);
}

TEST(Json, Values)
{
    const struct {
        void (*set)(TOrvParameter&);
        const char* written;  // after "x":, empty for a value that writes nothing
    } rows[] = {
        {[](TOrvParameter& p) { p.SetBoolean(true); }, "1"},
        {[](TOrvParameter& p) { p.SetKindAndEnum(ORV_KIND_Boolean, 0); }, "0"},
        {[](TOrvParameter& p) { p.SetInt32(INT32_MIN); }, "-2147483648"},
        {[](TOrvParameter& p) { p.SetInt32(1, 0x1028); }, "\"HeskView\""},
        {[](TOrvParameter& p) { p.SetInt32(12345, 0x1028); }, "12345"},
        {[](TOrvParameter& p) { p.SetInt32(1, 1); }, "1"},  // an enum without the bit of an identifier
        {[](TOrvParameter& p) { p.SetInt64(INT64_MIN); }, "-9223372036854775808"},
        {[](TOrvParameter& p) { p.SetDouble(2); }, "2.0"},
        {[](TOrvParameter& p) { p.SetDouble(0.1); }, "0.1"},
        {[](TOrvParameter& p) { p.SetDouble(-0.0); }, "0.0"},
        {[](TOrvParameter& p) { p.SetDouble(1e300); }, "1e+300"},
        {[](TOrvParameter& p) { p.SetDouble(std::nan("")); }, "null"},
        {[](TOrvParameter& p) { p.SetDouble(-HUGE_VAL); }, "null"},
        {[](TOrvParameter& p) { p.SetString({}); }, "\"\""},
        {[](TOrvParameter& p) { p.SetDateTime({0}); }, "\"1601-01-01T00:00:00.000Z\""},
        {[](TOrvParameter& p) { p.SetDateTime({0xFFC4'0000'0000'0000}); }, "\"1601-01-01T01:00:00.000+01:00\""},
        {[](TOrvParameter& p) {
             p.SetGuid({1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 0xFB}});
         },
         "\"00000001-0002-0003-0405-060708090afb\""},
        {[](TOrvParameter& p) { p.SetEventType(0, {}); }, "{\"eventTypeID\":0}"},
        {[](TOrvParameter& p) { p.SetEventType(UINT64_MAX, u"e"); }, "{\"eventName\":\"e\"}"},
        {[](TOrvParameter& p) { p.SetEventType(7, u"e"); }, "{\"eventTypeID\":7,\"eventName\":\"e\"}"},
        {[](TOrvParameter& p) { p.SetEventType(UINT64_MAX, {}); }, ""},
        {[](TOrvParameter& p) { p.SetMediaChannel(0, 0, {}); }, "{\"channelID\":0}"},
        {[](TOrvParameter& p) { p.SetMediaChannel(UINT64_MAX, 4, {}); }, "{\"globalNo\":4}"},
        {[](TOrvParameter& p) { p.SetMediaChannel(UINT64_MAX, 0, u"c"); }, "{\"channelName\":\"c\"}"},
        {[](TOrvParameter& p) { p.SetMediaChannel(UINT64_MAX, 0, {}); }, ""},
        // The identifier of a resource hangs on a number that plays no part in it otherwise.
        {[](TOrvParameter& p) { p.SetResource({}, u"r"); },
         "{\"resourceID\":\"00000000-0000-0000-0000-000000000000\",\"resourceName\":\"r\"}"},
        {[](TOrvParameter& p) {
             p.SetResource({1, 0, 0, {}}, {});
         },
         "{\"resourceID\":\"00000001-0000-0000-0000-000000000000\"}"},
        {[](TOrvParameter& p) {
             p.SetInt64(-1);
             p.SetResource({1, 0, 0, {}}, u"r");
         },
         "{\"resourceName\":\"r\"}"},
        {[](TOrvParameter& p) { p.SetResource({}, {}); }, ""},
        {[](TOrvParameter& p) { p.SetRect(static_cast<std::int64_t>(0xFFFF'0003'0002'0001)); },
         "{\"top\":1,\"left\":2,\"bottom\":3,\"right\":-1}"},
        {[](TOrvParameter& p) { p.SetResultDataText(u"1 2 3 4 5 'a'"); }, "\"1 2 3 4 5 'a'\""},
        {[](TOrvParameter& p) { p.SetKindAndEnum(13, 0); }, ""},
    };
    for (const auto& row : rows) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"A"));
        action->Parameters().Store(u"X", row.set);
        const std::string member = *row.written ? "\"x\":" + std::string(row.written) : "";
        EXPECT_EQ(Parameters(*action), "1,\"params\":{" + member + "}}}");
    }
}

// Two values that write nothing leave no comma behind.
TEST(Json, CommasAndRawKeys)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"A"));
    const auto nothing = [](TOrvParameter& value) { value.SetKindAndEnum(13, 0); };
    const auto number = [](TOrvParameter& value) { value.SetInt32(1); };
    for (const char16_t* name : {u"a", u"c", u"e"}) action->Parameters().Store(name, nothing);
    for (const char16_t* name : {u"b", u"D\"Q"}) action->Parameters().Store(name, number);
    EXPECT_EQ(Parameters(*action), "5,\"params\":{\"b\":1,\"d\"q\":1}}}");
}

TEST(Json, Strings)
{
    // Each unit at each place of a block, as the writer looks at several of them at once.
    const struct {
        char16_t unit;
        std::u16string written;
    } rows[] = {
        {u'"', u"\\\""},     {u'\\', u"\\\\"},     {1, u"\\u0001"},      {0x1F, u"\\u001F"}, {0, u"\\u0000"},
        {7, u"\\u0007"},     {8, u"\b"},           {u'\t', u"\t"},       {u'\n', u"\n"},     {11, u"\\u000B"},
        {12, u"\f"},         {u'\r', u"\r"},       {14, u"\\u000E"},     {0x20, u" "},       {u'!', u"!"},
        {u'/', u"/"},        {0x7F, u"\x7F"},      {0x84, u"\u0084"},    {0x85, u"\\u0085"}, {0xE4, u"\u00E4"},
        {0x2027, u"\u2027"}, {0x2028, u"\\u2028"}, {0x2029, u"\\u2029"}, {0xD800, {0xD800}},
    };
    for (const auto& row : rows) {
        for (std::size_t place = 0; place < 54; ++place) {
            const std::u16string front(place % 9, u'a');
            const std::u16string back(place / 9, u'z');
            TOrvJsonWriter writer(false);
            writer.WriteString(u"k", front + row.unit + back);
            EXPECT_EQ(writer.Finish(), u"\"k\":\"" + front + row.written + back + u'"') << int{row.unit};
        }
    }
    // Texts that end around the end of the writer's first memory, and one that outgrows the next in its escapes.
    for (std::size_t plain = 2020; plain < 2060; ++plain) {
        TOrvJsonWriter writer(false);
        std::u16string expected(u"\"k\":\"" + std::u16string(plain, u'p') + u"\",\"o\":{\"e\":\"");
        for (int i = 0; i < 3000; ++i) expected += u"\\u0001";
        writer.WriteString(u"k", std::u16string(plain, u'p'));
        writer.OpenObject(u"o");
        writer.WriteString(u"e", std::u16string(3000, u'\1'));
        EXPECT_EQ(writer.Finish(), expected + u'"') << plain;
    }
    TOrvJsonWriter writer(false);
    writer.WriteString(u"k", {});
    EXPECT_EQ(writer.Finish(), u"\"k\":null");
}

TEST(Json, NumbersThatAreNotFinite)
{
    using NonFinite = TOrvJsonWriter::NonFinite;
    const auto written = [](double value, NonFinite mode) {
        TOrvJsonWriter writer(true, mode);
        writer.WriteDouble(u"k", value);
        return Ulmo::Utf8FromWide(writer.Finish());
    };
    EXPECT_EQ(written(HUGE_VAL, NonFinite::Large), "{\"k\":1e999}");
    EXPECT_EQ(written(-HUGE_VAL, NonFinite::Large), "{\"k\":-1e999}");
    EXPECT_EQ(written(std::nan(""), NonFinite::Large), "{\"k\":null}");
    EXPECT_EQ(written(HUGE_VAL, NonFinite::Words), "{\"k\":\"Infinity\"}");
    EXPECT_EQ(written(-HUGE_VAL, NonFinite::Words), "{\"k\":\"-Infinity\"}");
    EXPECT_EQ(written(std::nan(""), NonFinite::Words), "{\"k\":\"NaN\"}");
    EXPECT_THROW(written(HUGE_VAL, NonFinite{3}), Ulmo::UlmoException);
    EXPECT_EQ(written(1.5, NonFinite{3}), "{\"k\":1.5}");
}

// A parameter of exactly the limit stays; what the catalogue does not declare has no limit.
TEST(Json, Limits)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"UserLogin"));
    for (const char16_t* name : {u"User1", u"ClientHost", u"Host", u"zzz", u"aaa"}) {
        action->SetInt32(Boundary(name), 1);
    }
    const struct {
        std::uint32_t limit;
        const char* written;
    } rows[] = {
        {0, "2,\"params\":{\"aaa\":1,\"zzz\":1}}}"},
        {3, "3,\"params\":{\"aaa\":1,\"user1\":1,\"zzz\":1}}}"},
        {6, "4,\"params\":{\"aaa\":1,\"clienthost\":1,\"user1\":1,\"zzz\":1}}}"},
        {7, "5,\"params\":{\"aaa\":1,\"clienthost\":1,\"host\":1,\"user1\":1,\"zzz\":1}}}"},
    };
    const std::uint32_t level = Settings::PriorityLevel;
    for (const auto& row : rows) {
        EXPECT_EQ(Parameters(*action, &row.limit), row.written);
        Settings::PriorityLevel = row.limit;
        EXPECT_EQ(Parameters(*action), row.written);
        Settings::PriorityLevel = level;
    }
    const std::uint32_t none = 0;
    action->RemoveParameter(Boundary(u"zzz"));
    action->RemoveParameter(Boundary(u"aaa"));
    EXPECT_EQ(Parameters(*action, &none), "0}}");
    const ObjectPtr<TOrvAction> unknown(TOrvAction::Create(u"Nobody"));
    unknown->SetInt32(Boundary(u"ClientType"), 1);
    EXPECT_EQ(Parameters(*unknown, &none), "1,\"params\":{\"clienttype\":1}}}");
}

TEST(Json, InterfaceStores)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"PanLeft"));
    action->SetInt32(Boundary(u"Speed"), 1);
    const auto stored = [](OrvBStr text) {
        const auto* units = reinterpret_cast<char16_t*>(text);
        const std::string result = Ulmo::Utf8FromWide({units, Platform::SystemStringLength(units)});
        Platform::FreeSystemString(reinterpret_cast<char16_t*>(text));
        return result;
    };
    OrvBStr text = nullptr;
    action->StoreJson(&text, 1);
    EXPECT_EQ(stored(text), Json(*action));
    const std::uint32_t none = 0;
    action->StoreJsonLimited(&text, 0, none);
    EXPECT_EQ(stored(text), Json(*action, false, &none));
}

}  // namespace
}  // namespace OrvPLC
