#include <gtest/gtest.h>
#include <OrvActions.hpp>

#include <chrono>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::chrono_literals;

TEST(Wrapper, OwnsItsHandle)
{
    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    {
        orv::Action action = orv::Action::Named("PanLeft");
        action.Set("Speed", 3);
        orv::Action copy = action.Clone();
        EXPECT_TRUE(copy == action);
        copy.Set(u"Speed", 4);
        EXPECT_TRUE(copy != action);
        orv::Action second = action.Duplicate();
        EXPECT_EQ(second.Handle(), action.Handle());
        const orv::Action moved = std::move(action);
        EXPECT_FALSE(action);
        EXPECT_TRUE(moved);
        second = std::move(copy);
        EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open + 2);
        OrvAct_CloseHandle(second.Detach());
        EXPECT_TRUE(moved.ToMatchAction().IsMatchAction());
        EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open + 1);
    }
    EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open);
}

template <class T, class Same>
void RoundTrip(const T& value, Same same)
{
    orv::Action action = orv::Action::Named("CustomAction");
    EXPECT_FALSE(action.Get<T>("Value").has_value());
    action.Set("Value", value);
    const auto read = action.Get<T>(u"VALUE");
    ASSERT_TRUE(read.has_value());
    EXPECT_TRUE(same(*read, value));
    // A guid reads as none of the others, and none of the others is taken for a result data set.
    action.Set("Value", orv::Resource{});
    if constexpr (!std::is_same_v<T, orv::Guid> && !std::is_same_v<T, orv::Resource> && !std::is_same_v<T, bool>) {
        EXPECT_FALSE(action.Get<T>("Value").has_value());
    }
}

TEST(Wrapper, ValuesOfEveryType)
{
    const auto equal = [](const auto& a, const auto& b) { return a == b; };
    for (const bool value : {false, true}) RoundTrip(value, equal);
    for (const std::int32_t value : {0, 1, -1, std::numeric_limits<std::int32_t>::min()}) RoundTrip(value, equal);
    for (const std::int64_t value : {std::int64_t{0}, std::int64_t{1}, std::numeric_limits<std::int64_t>::max()}) {
        RoundTrip(value, equal);
    }
    for (const double value : {0.0, 1.0, -2.5e300}) RoundTrip(value, equal);
    RoundTrip(std::u16string(u"a\0b", 3), equal);
    RoundTrip(std::u16string(), equal);
    RoundTrip(std::string("Zürich \xF0\x9F\x8E\xA5"), equal);
    RoundTrip(orv::TimePoint(1ms), equal);
    RoundTrip(orv::TimePoint(-11644473600000ms), equal);  // the date 0
    RoundTrip(orv::ToDateTime(orv::TimePoint(5s), -120min), [](auto a, auto b) { return a.value == b.value; });
    RoundTrip(orv::Channel{1, u"gate", 2}, equal);
    RoundTrip(orv::Channel{}, equal);
    RoundTrip(orv::EventType{3, u"event"}, [](auto a, auto b) { return a.id == b.id && a.name == b.name; });
    RoundTrip(orv::Guid{1, 2, 3, {4}}, [](auto a, auto b) { return a.Data1 == b.Data1 && a.Data4[0] == b.Data4[0]; });
    RoundTrip(orv::Resource{{1, 2, 3, {}}, u"set"},
              [](auto a, auto b) { return a.guid.Data2 == b.guid.Data2 && a.name == b.name; });
    RoundTrip(orv::Rect{-1, 2, -3, 4}, [](auto a, auto b) {
        return a.top == b.top && a.left == b.left && a.bottom == b.bottom && a.right == b.right;
    });
    RoundTrip(orv::Enum{2, ORV_ENUM_PlcViewerPlayMode},
              [](auto a, auto b) { return a.value == b.value && a.enumId == b.enumId; });
}

TEST(Wrapper, ReadsConvertAsTheLibraryDoes)
{
    orv::Action action = orv::Action::Named("CustomAction");
    action.Set("Text", "12");
    EXPECT_EQ(action.Get<std::int64_t>("Text"), 12);
    EXPECT_EQ(action.Get<double>("Text"), 12.0);
    action.Set("Channel", orv::Channel::Number(7));
    EXPECT_EQ(action.Get<std::int32_t>("Channel"), 7);
    EXPECT_EQ(action.Get<bool>("Channel"), false);  // it has no name
    action.Set("Zero", 0.0);
    EXPECT_EQ(action.Get<bool>("Zero"), false);
    EXPECT_FALSE(action.Get<std::string>("Channel").has_value());
    action.Set("Number", 7);
    EXPECT_FALSE(action.Get<orv::Enum>("Number").has_value());
    EXPECT_FALSE(action.Get<orv::DateTime>("Number").has_value());
    action.Set("Resource", orv::Resource{{9, 0, 0, {}}, {}});
    EXPECT_EQ(action.Get<orv::Guid>("Resource")->Data1, 9u);
    EXPECT_TRUE(action.Has("number"));
    action.Remove("NUMBER");
    EXPECT_FALSE(action.Has("Number"));
}

// The date of the Unix epoch, and the zone in the upper sixteen bits.
TEST(Wrapper, DatesCountFrom1601)
{
    EXPECT_EQ(orv::ToDateTime(orv::TimePoint(0ms)).value, 11644473600000u);
    EXPECT_EQ(orv::ToDateTime(orv::TimePoint(1ms), -60min).value, 0xFFC4000000000000u | 11644473600001u);
    EXPECT_EQ(orv::ToTimePoint({0xFFC4000000000000u | 11644473600001u}), orv::TimePoint(1ms));
}

TEST(Wrapper, TextsInAndOut)
{
    const char* text = "CustomAction (Int: 5, String: \"Zürich\")";
    const orv::Action action = orv::Action::Parse(text);
    EXPECT_EQ(action.Name(), u"CustomAction");
    EXPECT_EQ(action.Code(), static_cast<std::uint32_t>(ORV_ACTION_CustomAction));
    EXPECT_EQ(action.TextUtf8(), text);
    EXPECT_EQ(action.Text(), orv::ToUtf16(text));
    EXPECT_EQ(orv::ToUtf8(action.PlainText()), action.PlainTextUtf8());

    orv::Action large = orv::Action::Named("CustomAction");
    for (const std::size_t length : {200u, 220u, 235u, 240u, 100000u}) {  // around the size of the first buffer
        large.Set("String", std::string(length, 'x'));
        const std::string stored = large.TextUtf8();
        EXPECT_NE(stored.find(std::string(length, 'x')), std::string::npos);
        EXPECT_EQ(large.Text().size(), stored.size());
    }

    std::size_t consumed = 0;
    EXPECT_TRUE(orv::Action::TryParse(u"CameraOn (Camera: 1) and a tail", &consumed));
    EXPECT_EQ(consumed, 20u);
    EXPECT_FALSE(orv::Action::TryParse(""));
}

// UTF-8 that is not sound becomes replacement characters, one a byte.
TEST(Wrapper, Utf8)
{
    const struct {
        std::string_view utf8;
        std::u16string_view utf16;
        bool sound;
    } rows[] = {
        {"", u"", true},
        {"a\x7F", u"a\x7F", true},
        {"\xC2\x80\xDF\xBF", u"\x80\u07FF", true},
        {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", u"\u0800\uD7FF\uE000\uFFFF", true},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF", true},
        {"\x80", u"\uFFFD", false},
        {"\xC1\xBF", u"\uFFFD\uFFFD", false},
        {"\xE2\x82", u"\uFFFD\uFFFD", false},
        {"\xE2\x82z", u"\uFFFD\uFFFDz", false},
        {"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD", false},
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD", false},
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD", false},
        {"\xFF", u"\uFFFD", false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(orv::ToUtf16(row.utf8), row.utf16);
        if (row.sound) {
            EXPECT_EQ(orv::ToUtf8(row.utf16), row.utf8);
        }
    }
    const char16_t lone[] = {0xDC00, 0xD800, u'x', 0xD800};
    EXPECT_EQ(orv::ToUtf8({lone, 4}), "\xEF\xBF\xBD\xEF\xBF\xBDx\xEF\xBF\xBD");
}

template <class Work>
orv::Error Thrown(Work work)
{
    try {
        work();
    } catch (const orv::Error& error) {
        return error;
    }
    return orv::Error("nothing was thrown", 999);
}

TEST(Wrapper, FailuresAreThrown)
{
    orv::Action action = orv::Action::Named("SystemStarted");
    const orv::Error role = Thrown([&] { action.SetVideoInput(orv::Channel::Number(1)); });
    EXPECT_EQ(role.Code(), static_cast<std::uint32_t>(ORV_ERROR));
    EXPECT_EQ(role.SubCode(), static_cast<std::uint32_t>(ORV_SUBERROR_NO_SUCH_ROLE));
    EXPECT_STREQ(role.what(), "SetVideoInput failed");
    EXPECT_FALSE(action.VideoInput().has_value());

    EXPECT_EQ(Thrown([] { orv::Action::OfCode(999); }).Code(), 0u);
    EXPECT_STREQ(Thrown([] { orv::Action::Parse("?"); }).what(), "The text holds no action.");
    const auto badGuid = [] { orv::Action::TryParse("A(x: \"zzzzzzzz-0000-0000-0000-000000000000\")"); };
    EXPECT_NE(std::string(Thrown(badGuid).what()).find("zzzzzzzz"), std::string::npos);
}

TEST(Wrapper, RolesAndCarriedParameters)
{
    orv::Action action = orv::Action::OfCode(ORV_ACTION_ViewerConnectLive);
    action.SetVideoOutput(orv::Channel::Number(2));
    action.SetVideoInput({4711, u"gate", 7});
    EXPECT_EQ(action.VideoInput(), (orv::Channel{4711, u"gate", 7}));
    EXPECT_EQ(action.VideoOutput()->number, 2u);
    std::vector<std::u16string> names;
    for (const orv::CarriedParameter& parameter : action.Parameters()) {
        names.push_back(parameter.name);
        EXPECT_EQ(parameter.kind, static_cast<std::uint32_t>(ORV_KIND_MediaChannel));
    }
    EXPECT_EQ(names, (std::vector<std::u16string>{u"Channel", u"Viewer"}));
}

TEST(Wrapper, MatchActions)
{
    orv::Action match = orv::Action::Parse("PanLeft (Camera: 7)").ToMatchAction();
    match.SetDescription("at the gate");
    EXPECT_EQ(match.Description(), u"at the gate");
    EXPECT_TRUE(match.Matches(orv::Action::Parse("PanLeft (Camera: 7, Speed: 3)")));
    EXPECT_FALSE(match.Matches(orv::Action::Parse("PanLeft (Camera: 8, Speed: 3)")));
}

TEST(Wrapper, TheCatalogueByRange)
{
    std::size_t parameters = 0;
    for (const orv::ActionInfo& action : orv::AllActions()) parameters += action.parameterCount;
    EXPECT_GT(parameters, orv::AllActions().size());
    EXPECT_EQ(orv::AllActions().front().name, u"ABCConnect");
    EXPECT_EQ(orv::AllClasses().size(), OrvAct_GetNumberOfActionClasses());
    EXPECT_EQ(orv::GeneralParameters().size(), 13u);

    const auto connect = orv::FindAction("viewerCONNECT");
    ASSERT_TRUE(connect.has_value());
    EXPECT_EQ(connect->code, static_cast<std::uint32_t>(ORV_ACTION_ViewerConnect));
    const std::vector<orv::ParameterInfo> declared = orv::ParametersOf(connect->code);
    ASSERT_EQ(declared.size(), 3u);
    EXPECT_EQ(declared[2].name, u"PlayMode");
    EXPECT_EQ(declared[2].enumId, static_cast<std::uint32_t>(ORV_ENUM_PlcViewerPlayMode));
    EXPECT_FALSE(orv::FindAction(999).has_value());

    std::size_t values = 0;
    for (const orv::EnumValueInfo& value : orv::EnumValues(declared[2].enumId)) {
        EXPECT_EQ(value.enumId, declared[2].enumId);
        ++values;
    }
    EXPECT_GT(values, 1u);
    EXPECT_EQ(orv::EnumValues(1).size(), 2u);
    EXPECT_GT(orv::EnumValues().size(), values);
}

// Every form there and back, through calls that are asked twice for what does not fit at once.
TEST(Wrapper, FormsAndRecords)
{
    orv::Action action = orv::Action::Parse("PanLeft (Camera: { 12, 7, \"Süd\" }, Speed: 3)");
    const std::string image = action.Binary();
    std::size_t consumed = 0;
    EXPECT_TRUE(orv::Action::TryFromBinary(image + "tail", &consumed) == action);
    EXPECT_EQ(consumed, image.size());
    EXPECT_FALSE(orv::Action::TryFromBinary(""));

    action.Set("Text", std::string(1000, 'x'));
    EXPECT_NE(action.Json(true, orv::Action::kEveryPriority).find(std::u16string(1000, u'x')), std::u16string::npos);
    EXPECT_EQ(action.Json(false, 0).find(u"\"action\":{"), 0u);
    EXPECT_EQ(action.Properties().find(u"<properties>"), 0u);
    EXPECT_EQ(action.FlatXml().find(u"<action name=\"PanLeft\">"), 0u);
    action.SetProperty("hesk-user", "ann");
    EXPECT_EQ(action.Get<std::string>("User1"), "ann");
    EXPECT_EQ(action.Property("hesk-user"), u"ann");
    EXPECT_FALSE(action.Property("absent").has_value());

    orv::EventRecord record(action.Handle());
    EXPECT_EQ(*record->int32Field[0], 7);
    std::vector<std::u16string> labels;
    orv::DescribeEvent(*record.get(), [&](const orv::EventLine& line) { labels.emplace_back(line.label); }, 10);
    EXPECT_EQ(labels, (std::vector<std::u16string>{u"PTZ head", u"speed", u"Pan left"}));
    EXPECT_FALSE(orv::Action::Restored(*record.get()).Has("Text"));
    record.SetImage(image);
    EXPECT_TRUE(orv::Action::Restored(*record.get()) == orv::Action::FromBinary(image));
}

TEST(Wrapper, ARangeOverValues)
{
    const std::vector<orv::Value> values = {true, 3, std::int64_t{4}, 1.5, std::u16string(u"a"), orv::DateTime{5},
                                            orv::Guid{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}}, orv::EventType{3, u"e"},
                                            orv::Channel{1, u"c", 2}, orv::Resource{{}, u"r"}, orv::Rect{-1, 2, 3, 4},
                                            orv::Enum{2, ORV_ENUM_PlcViewerPlayMode},
                                            orv::ResultData{{1, 2, 3, 4, 5, u"i"}, {6, 7, 8, 9, 10, u""}}};
    orv::Action action = orv::Action::Named("CustomAction");
    for (std::size_t i = 0; i < values.size(); ++i) action.Set("v" + std::to_string(10 + i), values[i]);
    orv::Action copy = orv::Action::Named("CustomAction");
    std::size_t next = 1;
    for (const orv::ParameterWithValue& parameter : action.Values()) {
        EXPECT_EQ(parameter.value.index(), next++);
        copy.Set(parameter.name, parameter.value);
    }
    EXPECT_EQ(next, values.size() + 1);
    EXPECT_TRUE(copy == action);
    const auto data = action.Get<orv::ResultData>("v22");
    ASSERT_TRUE(data && data->size() == 2);
    EXPECT_EQ((*data)[0].name, u"i");
    EXPECT_EQ((*data)[1].fifth, 10);
    EXPECT_EQ(orv::ToText(orv::Guid{0x01234567, 0x89ab, 0xcdef, {1, 0x23, 0x45, 0x67, 0x89, 0xab, 0xcd, 0xef}}),
              "01234567-89ab-cdef-0123-456789abcdef");
    action.SetResultText("v22", "1 2 3 4 5 'i' 6 7 8 9 10 ''");
    EXPECT_EQ(action.Get<orv::ResultData>("v22")->size(), 2u);
    action.Set("v10", orv::Value());
    EXPECT_FALSE(action.Has("v10"));
}

TEST(Wrapper, TextOfTheSiblingProduct)
{
    EXPECT_EQ(orv::FromSiblingText("CameraOn (5)"), u"CameraOn (Camera: 5)");
    EXPECT_EQ(orv::ToSiblingText("CameraOn (Camera: 5)"), u"CameraOn (5)");
    EXPECT_EQ(Thrown([] { orv::ToSiblingText("Counter ()"); }).Code(), static_cast<std::uint32_t>(ORV_ERROR));
}

// What a callable throws comes out again, and the walk has ended.
TEST(Wrapper, CallablesAsSinks)
{
    std::size_t actions = 0;
    orv::ForEachAction([&](const orv::ActionInfo& info) { actions += !info.name.empty(); });
    EXPECT_EQ(actions, orv::AllActions().size());
    std::size_t values = 0;
    orv::ForEachEnumValue([&](const orv::EnumValueInfo&) { ++values; }, 1);
    EXPECT_EQ(values, 2u);
    std::vector<std::u16string> names;
    orv::ForEachParameter(ORV_ACTION_PanLeft, [&](const orv::ParameterInfo& info) { names.emplace_back(info.name); });
    EXPECT_EQ(names, (std::vector<std::u16string>{u"Camera", u"Speed"}));
    std::size_t calls = 0;
    const auto stop = [&](const orv::ClassInfo&) {
        ++calls;
        throw orv::Error("enough", 7);
    };
    EXPECT_EQ(Thrown([&] { orv::ForEachClass(stop); }).Code(), 7u);
    EXPECT_EQ(calls, 1u);
}

TEST(Wrapper, FailuresTellTheirPlace)
{
    EXPECT_EQ(Thrown([] { orv::Action::Parse("PanLeft (Speed: 3, x"); }).Position(), 19u);
    EXPECT_EQ(Thrown([] { orv::Action::FromBinary(std::string("\3\0\0", 3)); }).Position().has_value(), true);
    const orv::Error guid = Thrown([] { orv::Action::Parse("A(x: \"zzzzzzzz-0000-0000-0000-000000000000\")"); });
    EXPECT_TRUE(guid.Position().has_value());
    EXPECT_FALSE(guid.ClassName().empty());
    orv::Action action = orv::Action::Named("SystemStarted");
    EXPECT_FALSE(Thrown([&] { action.SetVideoInput({}); }).Position().has_value());
}

}  // namespace
