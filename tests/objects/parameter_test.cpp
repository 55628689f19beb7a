#include "objects/parameter.h"

#include <gtest/gtest.h>

#include <functional>

#include "ulmo/date_time.h"

namespace OrvPLC {
namespace {

const TOrvGuid kGuid = {0x01234567, 0x89AB, 0xCDEF, {1, 2, 3, 4, 5, 6, 7, 8}};
const TUlmoDateTime kDate = Ulmo::FromText(u"2026/11/15 03:10:43,123 GMT+01:00");

// A value of each kind that differs from every default.
TOrvParameter Sample(std::uint32_t kind)
{
    TOrvParameter value;
    switch (kind) {
    case ORV_KIND_Boolean: value.SetBoolean(true); break;
    case ORV_KIND_Numeric32Bit: value.SetInt32(-7, 0x1001); break;
    case ORV_KIND_Numeric64Bit: value.SetInt64(0x1122334455667788); break;
    case ORV_KIND_NumericDouble: value.SetDouble(-2.75); break;
    case ORV_KIND_String: value.SetString(u"12 apples"); break;
    case ORV_KIND_DateTime: value.SetDateTime(kDate); break;
    case ORV_KIND_Guid: value.SetGuid(kGuid); break;
    case ORV_KIND_EventType: value.SetEventType(9, u"door"); break;
    case ORV_KIND_MediaChannel: value.SetMediaChannel(5, 3, u"yard"); break;
    case ORV_KIND_Resource: value.SetResource(kGuid, u"profile"); break;
    case ORV_KIND_Rect: value.SetRect(0x0004000300020001); break;
    case ORV_KIND_ResultDataSet: value.SetResultDataText(u"1 2 3 4 5 'a'"); break;
    default: value.SetKindAndEnum(kind, 0);
    }
    return value;
}

TEST(Parameter, ReadsConvertByKind)
{
    constexpr std::int32_t none = 99;  // stands for: no conversion, the output keeps what it had
    const struct {
        std::uint32_t kind;
        std::int32_t truth, int32;
        std::int64_t int64;
        double real;
    } rows[] = {
        {0, none, none, none, none},
        {ORV_KIND_Boolean, 1, 1, 1, 1},
        {ORV_KIND_Numeric32Bit, 1, -7, -7, -7},
        {ORV_KIND_Numeric64Bit, 1, 0x55667788, 0x1122334455667788, 1234605616436508552.0},
        {ORV_KIND_NumericDouble, 1, -2, -2, -2.75},
        {ORV_KIND_String, 1, 12, 12, 12},
        {ORV_KIND_DateTime, 1, 1, 1, 1},
        {ORV_KIND_Guid, none, none, none, none},
        {ORV_KIND_EventType, 1, none, 9, none},
        {ORV_KIND_MediaChannel, 1, 3, 5, none},
        {ORV_KIND_Resource, 1, none, none, none},
        {ORV_KIND_Rect, none, none, 0x0004000300020001, none},
        {ORV_KIND_ResultDataSet, 1, none, none, none},
        {13, none, none, none, none},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.kind);
        const TOrvParameter value = Sample(row.kind);
        bool truth = false;
        EXPECT_EQ(value.ReadBoolean(truth) ? truth : none, row.truth);
        std::int32_t int32 = none;
        EXPECT_EQ(value.ReadInt32(int32), row.int32 != none);
        EXPECT_EQ(int32, row.int32);
        std::int64_t int64 = none;
        EXPECT_EQ(value.ReadInt64(int64), row.int64 != none);
        EXPECT_EQ(int64, row.int64);
        double real = none;
        EXPECT_EQ(value.ReadDouble(real), row.real != none);
        EXPECT_EQ(real, row.real);
    }
}

TEST(Parameter, RecordsAreReadFromTheirOwnKindOnly)
{
    for (std::uint32_t kind = 0; kind <= 13; ++kind) {
        SCOPED_TRACE(kind);
        const TOrvParameter value = Sample(kind);
        TOrvEventTypeValue eventType{1, nullptr, 77};
        TOrvChannelValue channel{};
        TOrvResourceValue resource{};
        std::int64_t rect = 0;
        TOrvGuid guid{};
        EXPECT_EQ(value.ReadEventType(eventType), kind == ORV_KIND_EventType);
        EXPECT_EQ(value.ReadMediaChannel(channel), kind == ORV_KIND_MediaChannel);
        EXPECT_EQ(value.ReadResource(resource), kind == ORV_KIND_Resource);
        EXPECT_EQ(value.ReadRect(rect), kind == ORV_KIND_Rect || kind == ORV_KIND_Numeric64Bit);
        EXPECT_EQ(value.ReadGuid(guid), kind == ORV_KIND_Guid || kind == ORV_KIND_Resource);
        EXPECT_EQ(eventType.reserved, 77u);
    }
    TOrvChannelValue channel{};
    const TOrvParameter value = Sample(ORV_KIND_MediaChannel);
    value.ReadMediaChannel(channel);
    EXPECT_EQ(channel.id, 5u);
    EXPECT_EQ(channel.number, 3u);
    EXPECT_EQ(std::u16string_view(reinterpret_cast<const char16_t*>(channel.name)), u"yard");
}

TEST(Parameter, DatesAreReadFromTextOnlyWhenTheyAreDates)
{
    TUlmoDateTime date{42};
    TOrvParameter text = Sample(ORV_KIND_String);
    EXPECT_FALSE(text.ReadDateTime(date));
    EXPECT_FALSE(text.Retype(ORV_KIND_DateTime, 0));
    EXPECT_EQ(text.Kind(), static_cast<std::uint32_t>(ORV_KIND_String));
    EXPECT_EQ(date.value, 42u);
    bool truth = true;
    TOrvParameter never;
    never.SetDateTime({0});
    EXPECT_TRUE(never.ReadBoolean(truth));
    EXPECT_FALSE(truth);
    std::int64_t number = 1;
    double real = 1;
    EXPECT_TRUE(never.ReadInt64(number) && never.ReadDouble(real));
    EXPECT_EQ(number, 0);
    EXPECT_EQ(real, 0);
    text.SetString(u"2026/11/15 03:10:43,123 GMT+01:00");
    EXPECT_TRUE(text.ReadDateTime(date));
    EXPECT_EQ(date.value, kDate.value);
}

// Every pair of kinds: which retypings are taken. A row a target, a column a source from 1 to 12.
TEST(Parameter, RetypingFollowsTheTable)
{
    const char* const taken[] = {
        "111111011101",  // Boolean
        "111111001000",  // Numeric32Bit
        "111111011010",  // Numeric64Bit
        "111111000000",  // NumericDouble
        "111111111111",  // String
        "001001000000",  // DateTime; the sample String is no date
        "000000100100",  // Guid
        "010010010000",  // EventType
        "011010001000",  // MediaChannel
        "000010000100",  // Resource
        "001000000010",  // Rect
        "000010000001",  // ResultDataSet
    };
    for (std::uint32_t target = 1; target <= 12; ++target) {
        for (std::uint32_t source = 1; source <= 12; ++source) {
            SCOPED_TRACE(testing::Message() << source << " to " << target);
            TOrvParameter value = Sample(source);
            const TOrvParameter before = value;
            const bool expected = taken[target - 1][source - 1] == '1';
            EXPECT_EQ(value.Retype(target, 0x1005), expected);
            EXPECT_EQ(value.Kind(), expected ? target : source);
            EXPECT_EQ(value.EnumType(), expected ? 0x1005 : before.EnumType());
            if (!expected) {
                EXPECT_TRUE(value.SameValue(before));
            }
        }
    }
}

TEST(Parameter, RetypingKeepsWhatItShould)
{
    TOrvParameter value = Sample(ORV_KIND_String);
    value.Retype(ORV_KIND_Numeric32Bit, 0);
    value.Retype(ORV_KIND_MediaChannel, 0);
    EXPECT_EQ(value.Small(), 12);
    EXPECT_EQ(value.Large(), 0);
    EXPECT_EQ(value.Wide(), u"");
    EXPECT_EQ(*value.Wide().data(), u'\0');

    value = Sample(ORV_KIND_Numeric64Bit);
    value.Retype(ORV_KIND_MediaChannel, 0);
    EXPECT_EQ(value.Small(), 0x55667788);
    EXPECT_EQ(value.Large(), 0);

    value = Sample(ORV_KIND_Numeric32Bit);
    value.Retype(ORV_KIND_EventType, 0);
    EXPECT_EQ(value.Large(), -7);
    EXPECT_EQ(value.Small(), 0);

    // The id of a value that has been a channel survives the way over a text.
    value = Sample(ORV_KIND_MediaChannel);
    value.Retype(ORV_KIND_String, 0);
    value.Retype(ORV_KIND_EventType, 0);
    EXPECT_EQ(value.Large(), 5);
    EXPECT_EQ(value.Wide(), u"yard");

    value = Sample(ORV_KIND_Rect);
    value.Retype(ORV_KIND_String, 0);
    EXPECT_EQ(value.Wide(), u"{1, 2, 3, 4}");
}

TEST(Parameter, EqualityLooksAtTheFieldsOfTheKind)
{
    using Change = std::function<void(TOrvParameter&)>;
    const TOrvGuid other = {1, 2, 3, {}};
    const struct {
        std::uint32_t kind;
        Change change;
    } rows[] = {
        {ORV_KIND_Boolean, [](auto& v) { v.SetBoolean(false); }},
        {ORV_KIND_Numeric32Bit, [](auto& v) { v.SetInt32(8); }},
        {ORV_KIND_Numeric64Bit, [](auto& v) { v.SetInt64(8); }},
        {ORV_KIND_NumericDouble, [](auto& v) { v.SetDouble(8); }},
        {ORV_KIND_String, [](auto& v) { v.SetString(u"12 Apples"); }},
        {ORV_KIND_DateTime, [](auto& v) { v.SetDateTime({8}); }},
        {ORV_KIND_Guid, [&](auto& v) { v.SetGuid(other); }},
        {ORV_KIND_EventType, [](auto& v) { v.SetEventType(9, u"Door"); }},
        {ORV_KIND_EventType, [](auto& v) { v.SetEventType(8, u"door"); }},
        {ORV_KIND_MediaChannel, [](auto& v) { v.SetMediaChannel(5, 4, u"yard"); }},
        {ORV_KIND_MediaChannel, [](auto& v) { v.SetMediaChannel(6, 3, u"yard"); }},
        {ORV_KIND_MediaChannel, [](auto& v) { v.SetMediaChannel(5, 3, u"gate"); }},
        {ORV_KIND_Resource, [&](auto& v) { v.SetResource(other, u"profile"); }},
        {ORV_KIND_Resource, [](auto& v) { v.SetResource(kGuid, u"Profile"); }},
        {ORV_KIND_Rect, [](auto& v) { v.SetRect(8); }},
        {ORV_KIND_ResultDataSet, [](auto& v) { v.SetResultDataText(u"1"); }},
        {ORV_KIND_String, [](auto& v) { v.SetResultDataText(u"12 apples"); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.kind);
        const TOrvParameter value = Sample(row.kind);
        TOrvParameter changed = value;
        EXPECT_TRUE(changed.SameValue(value));
        row.change(changed);
        EXPECT_FALSE(changed.SameValue(value));
    }
}

TEST(Parameter, ACopyIsIndependent)
{
    TOrvParameter value = Sample(ORV_KIND_ResultDataSet);
    TOrvResultDataList list{};
    ASSERT_TRUE(value.ReadResultDataSet(list));
    ASSERT_EQ(list.count, 1u);
    TOrvParameter copy = value;
    TOrvResultDataList copied{};
    ASSERT_TRUE(copy.ReadResultDataSet(copied));
    EXPECT_NE(copied.items, list.items);
    EXPECT_STREQ(copy.MakeNarrowText(), "1 2 3 4 5 'a'");
    value = TOrvParameter();
    EXPECT_EQ(copied.items[0].field4, 5);
    // Items stay while their text cannot be read; a copy has them as well.
    copy.SetResultDataText(u"no item");
    TOrvParameter later;
    later = copy;
    TOrvResultDataList kept{};
    ASSERT_TRUE(later.ReadResultDataSet(kept));
    ASSERT_EQ(kept.count, 1u);
    EXPECT_EQ(kept.items[0].field4, 5);
}

TEST(Parameter, DoublesOutsideTheRangeOfAnIntegerStopAtItsLimits)
{
    const struct {
        double value;
        std::int32_t int32;
        std::int64_t int64;
    } rows[] = {
        {1e300, INT32_MAX, INT64_MAX},
        {-1e300, INT32_MIN, INT64_MIN},
        {3e9, INT32_MAX, 3000000000},
        {9223372036854775808.0, INT32_MAX, INT64_MAX},
        {std::numeric_limits<double>::quiet_NaN(), 0, 0},
    };
    for (const auto& row : rows) {
        TOrvParameter value;
        value.SetDouble(row.value);
        std::int32_t int32 = 1;
        std::int64_t int64 = 1;
        EXPECT_TRUE(value.ReadInt32(int32));
        EXPECT_TRUE(value.ReadInt64(int64));
        EXPECT_EQ(int32, row.int32);
        EXPECT_EQ(int64, row.int64);
    }
}

}  // namespace
}  // namespace OrvPLC
