// What the create and decode functions owe their callers beyond the round trip of every pair.
#include "exports/boundary.h"

namespace {

using OrvTest::Handle;
using OrvTest::Text;
using OrvTest::W;

const TOrvChannelValue kChannel{70, W(u"Gate"), 7};

TEST(CreateDecode, RecordsAreFilledByCopyAndTheirNamesPointIntoTheAction)
{
    const Handle action(OrvAct_CreatePanLeft(&kChannel, 3));
    TOrvChannelValue channel{};
    std::int32_t speed = 0;
    ASSERT_TRUE(OrvAct_DecodePanLeft(action.get(), &channel, &speed));
    TOrvChannelValue stored{};
    ASSERT_TRUE(action->GetMediaChannel(W(u"Camera"), &stored));
    EXPECT_EQ(channel.name, stored.name);
    EXPECT_NE(channel.name, kChannel.name);
}

TEST(CreateDecode, AnyNonZeroByteIsTrueAndIsStoredAsOne)
{
    const TUlmoDateTime date{1};
    const Handle action(OrvAct_CreateSystemTerminating(&date, 0x80));
    std::int32_t stored = 0;
    EXPECT_TRUE(action->GetInt32(W(u"WindowsShutdown"), &stored));
    EXPECT_EQ(stored, 1);
}

TEST(CreateDecode, MatchActionsAreDecodedAndParametersAreFoundInAnyCase)
{
    const Handle action(Talvec_Action_CreateActionByName(W(u"panleft")));
    action->SetInt32(W(u"SPEED"), 5);
    TOrvHandle made = nullptr;
    ASSERT_TRUE(OrvAct_CreateMatchActionFromTemplate(action.get(), &made));
    const Handle matchAction(made);
    TOrvChannelValue channel{1, W(u"x"), 2};
    std::int32_t speed = 0;
    ASSERT_TRUE(OrvAct_DecodePanLeft(matchAction.get(), &channel, &speed));
    EXPECT_EQ(speed, 5);
    EXPECT_EQ(channel.name, nullptr);
}

TEST(CreateDecode, ThePlainPairKnowsNothingOfLaterParameters)
{
    const std::int64_t key = 44;
    const TOrvEventTypeValue event{5, nullptr, 0};
    const Handle plain(OrvAct_CreateStartEvent(&event));
    const Handle extended(OrvAct_CreateStartEventEx(&event, &key));
    EXPECT_FALSE(plain->HasParameter(W(u"ForeignKey")));
    std::int64_t stored = 0;
    EXPECT_TRUE(extended->GetInt64(W(u"ForeignKey"), &stored));
    EXPECT_EQ(stored, 44);
}

TEST(CreateDecode, AnEnumThatIsAbsentIsNotItsValueZero)
{
    const Handle action(OrvAct_CreateVCAWrongDirection(&kChannel, 0, "trigger", nullptr));
    TOrvChannelValue channel{};
    std::uint32_t type = 1;
    const char *trigger = nullptr, *info = "x";
    ASSERT_TRUE(OrvAct_DecodeVCAWrongDirection(action.get(), &channel, &type, &trigger, &info));
    EXPECT_EQ(type, 0u);
    EXPECT_EQ(info, nullptr);
    EXPECT_STREQ(trigger, "trigger");
    action->RemoveParameter(W(u"Type"));
    ASSERT_TRUE(OrvAct_DecodeVCAWrongDirection(action.get(), &channel, &type, &trigger, &info));
    EXPECT_EQ(type, ORV_ENUM_VALUE_ABSENT);
}

// The bytes are no valid text in some code pages, but whatever they are there, every reader of ANSI text agrees on it.
TEST(CreateDecode, NarrowTextComesInAsAnsiAndGoesOutAsUtf8)
{
    const Handle action(OrvAct_CreateSystemTimerStart(1, "Rose \xC3\xA9\xE9"));
    const char text[] = "SystemTimerStart (TimerID: 1, TimerName: \"Rose \xC3\xA9\xE9\")";
    constexpr OrvBool kIsAnsi = 0;
    const Handle read(OrvAct_CreateFromTextBufferA(text, ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, kIsAnsi, nullptr));
    EXPECT_TRUE(OrvTest::Equal(action, read));

    action->SetString(W(u"TimerName"), W(u"\u20AC"));
    const char* name = nullptr;
    std::int32_t id = 0;
    ASSERT_TRUE(OrvAct_DecodeSystemTimerStart(action.get(), &id, &name));
    EXPECT_STREQ(name, "\xE2\x82\xAC");
}

TEST(CreateDecode, WhatCannotBeConvertedLeavesTheOutputAsItWas)
{
    const Handle action(OrvAct_CreatePanLeft(&kChannel, 3));
    action->SetString(W(u"Camera"), W(u"Gate"));
    action->SetString(W(u"Speed"), W(u"12"));
    TOrvChannelValue channel{1, nullptr, 2};
    std::int32_t speed = 0;
    ASSERT_TRUE(OrvAct_DecodePanLeft(action.get(), &channel, &speed));
    EXPECT_EQ(channel.number, 2u);
    EXPECT_EQ(speed, 12);
    const TOrvGuid guid{};
    action->SetGuid(W(u"Speed"), &guid);
    ASSERT_TRUE(OrvAct_DecodePanLeft(action.get(), &channel, &speed));
    EXPECT_EQ(speed, 12);
}

// Longer than what a string object holds inside, so that a text made anew would move.
TEST(CreateDecode, TextsStayWhereTheyAreUntilTheParameterChanges)
{
    const std::u16string address = u"a server far away in the north of the country";
    const Handle connect(OrvAct_CreateABCConnect(W(address.c_str())));
    const Handle timer(OrvAct_CreateSystemTimerStart(1, "a timer that runs for quite a long time"));
    const TOrvGuid guid{0x12345678, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}};
    for (const bool isGuid : {false, true}) {
        if (isGuid) connect->SetGuid(W(u"Address"), &guid);
        if (isGuid) timer->SetGuid(W(u"TimerName"), &guid);
        const OrvWChar* wide[2] = {};
        const char* narrow[2] = {};
        std::int32_t id = 0;
        for (int i = 0; i < 2; ++i) {
            ASSERT_TRUE(OrvAct_DecodeABCConnect(connect.get(), &wide[i]));
            ASSERT_TRUE(OrvAct_DecodeSystemTimerStart(timer.get(), &id, &narrow[i]));
        }
        EXPECT_EQ(wide[0], wide[1]);
        EXPECT_EQ(narrow[0], narrow[1]);
        EXPECT_NE(Text(wide[1]).find(isGuid ? u"12345678" : u"far away"), std::u16string::npos);
        EXPECT_NE(std::string(narrow[1]).find(isGuid ? "12345678" : "quite"), std::string::npos);
    }
}

// The optional outputs under test, each with its neighbours out of sight. An output that is left alone stays at the
// given pointer.
const std::int64_t* ForeignKey(const Handle& action, const std::int64_t* before)
{
    TOrvEventTypeValue event{};
    EXPECT_TRUE(OrvAct_DecodeStartEventEx(action.get(), &event, &before));
    return before;
}

const std::int32_t* HasDifference(const Handle& action, const std::int32_t* before)
{
    std::int32_t place = 0;
    TUlmoDateTime start{};
    std::uint32_t step = 0;
    const double* sums[3];
    const OrvWChar* texts[5];
    EXPECT_TRUE(OrvAct_DecodeSafebagData(action.get(), &place, &start, &texts[0], &texts[1], &step, &sums[0], &sums[1],
                                         &sums[2], &before, &texts[2], &texts[3], &texts[4]));
    return before;
}

const TUlmoDateTime* StartTime(const Handle& action, const TUlmoDateTime* before)
{
    TOrvResourceValue schedule{};
    TUlmoDateTime effective{};
    std::int32_t count = 0;
    OrvBool timer = 0;
    EXPECT_TRUE(OrvAct_DecodeAutoBackupScheduleStarted(action.get(), &schedule, &before, &effective, &count, &timer));
    return before;
}

Handle Action(const char16_t* name)
{
    return Handle(Talvec_Action_CreateActionByName(W(name)));
}

TEST(OptionalOutputs, TellUnsetFromZero)
{
    const double zero = 0.0, sentinel = 1.0;
    const Handle action(OrvAct_CreateCameraAbsolutePosition(&kChannel, 0, &zero, &zero, nullptr, &zero));
    TOrvChannelValue channel{};
    OrvBool updated = 1;
    double alpha = 1, beta = 1;
    const double *zoom = &sentinel, *focus = &sentinel;
    ASSERT_TRUE(OrvAct_DecodeCameraAbsolutePosition(action.get(), &channel, &updated, &alpha, &beta, &zoom, &focus));
    EXPECT_EQ(zoom, nullptr);
    ASSERT_NE(focus, nullptr);
    EXPECT_EQ(*focus, 0.0);
}

// The value itself is converted, as the next reader of the action sees.
TEST(OptionalOutputs, PointAtTheConvertedValue)
{
    const OrvWChar* name = W(u"ForeignKey");
    const Handle action = Action(u"StartEvent");
    const double real = 3.9;
    const TOrvEventTypeValue event{9, nullptr, 0};
    const TUlmoDateTime date{77};
    const auto expect = [&](std::int64_t value) {
        SCOPED_TRACE(value);
        const std::int64_t* key = ForeignKey(action, nullptr);
        ASSERT_NE(key, nullptr);
        EXPECT_EQ(*key, value);
        EXPECT_EQ(ForeignKey(action, nullptr), key);
        EXPECT_EQ(action->GetParameterType(name), std::uint32_t{ORV_KIND_Numeric64Bit});
    };
    action->SetInt32(name, -7);
    expect(-7);
    action->SetString(name, W(u"12"));
    expect(12);
    action->SetDouble(name, &real);
    expect(3);
    action->SetEventType(name, &event);
    expect(9);
    action->SetDateTime(name, &date);
    expect(1);
    EXPECT_EQ(OrvTest::StoredText(action.get()), u"StartEvent (ForeignKey: 1)");
}

TEST(OptionalOutputs, OfTruthValuesAreZeroOrOneAfterAConversion)
{
    const OrvWChar* name = W(u"HasDifference");
    const Handle bag = Action(u"SafebagData");
    const auto expectTrue = [&] {
        const std::int32_t* truth = HasDifference(bag, nullptr);
        ASSERT_NE(truth, nullptr);
        EXPECT_EQ(*truth, 1);
        EXPECT_EQ(bag->GetParameterType(name), std::uint32_t{ORV_KIND_Boolean});
        EXPECT_EQ(bag->GetParameterEnum(name), 0u);
    };
    bag->SetEnum(name, 5, ORV_ENUM_PlcClientType);
    expectTrue();
    bag->SetMediaChannel(name, &kChannel);
    expectTrue();
    bag->SetString(name, W(u"0"));
    expectTrue();
}

TEST(OptionalOutputs, AreLeftAloneByWhatCannotBeConverted)
{
    const TOrvGuid guid{1, 2, 3, {}};
    const Handle start = Action(u"StartEvent");
    start->SetGuid(W(u"ForeignKey"), &guid);
    const std::int64_t number = 0;
    EXPECT_EQ(ForeignKey(start, &number), &number);

    const Handle bag = Action(u"SafebagData");
    bag->SetGuid(W(u"HasDifference"), &guid);
    const std::int32_t truth = 0;
    EXPECT_EQ(HasDifference(bag, &truth), &truth);
}

TEST(OptionalOutputs, OfDatesAreNullForAnyOtherKind)
{
    const TUlmoDateTime date{77};
    const std::int64_t number = 77;
    const Handle action = Action(u"AutoBackupScheduleStarted");
    action->SetDateTime(W(u"StartTime"), &date);
    const TUlmoDateTime* time = StartTime(action, nullptr);
    ASSERT_NE(time, nullptr);
    EXPECT_EQ(time->value, 77u);
    action->SetInt64(W(u"StartTime"), &number);
    EXPECT_EQ(StartTime(action, &date), nullptr);
}

}  // namespace
