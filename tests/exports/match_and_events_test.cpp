#include <OrvActions.h>
#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

std::vector<char> BinaryOf(const Handle& handle)
{
    std::uint32_t required = 0;
    OrvAct_StoreToBinBuffer(handle.get(), nullptr, 0, &required);
    std::vector<char> bytes(required);
    EXPECT_TRUE(OrvAct_StoreToBinBuffer(handle.get(), bytes.data(), required, nullptr));
    return bytes;
}

TEST(MatchExports, MatchAndTemplateInBothFamilies)
{
    const Handle match = Read(u"@ PanLeft (Speed: 3)");
    const Handle action = Read(u"panleft (Camera: 7, Speed: 3)");
    for (const auto matches : {OrvMatchAct_Matches, TalvecMatchAct_Matches}) {
        OrvBool result = 7;
        EXPECT_TRUE(matches(match.get(), action.get(), &result));
        EXPECT_EQ(result, 1);
        EXPECT_TRUE(matches(match.get(), nullptr, &result));
        EXPECT_EQ(result, 0);
        EXPECT_TRUE(matches(action.get(), action.get(), &result));  // no match action matches nothing
        EXPECT_EQ(result, 0);
    }
    for (const auto create : {OrvMatchAct_CreateActionFromTemplate, TalvecMatchAct_CreateActionFromTemplate}) {
        TOrvHandle made = nullptr;
        EXPECT_TRUE(create(match.get(), action.get(), &made));
        EXPECT_EQ(StoredText(Handle(made).get()), u"PanLeft (Camera: 7, Speed: 3)");
    }
}

TEST(MatchExports, Descriptions)
{
    const Handle match = Read(u"@ PanLeft (Speed: 3)");
    const OrvWChar* wide = nullptr;
    const char* narrow = nullptr;
    OrvBool has = 7;
    EXPECT_TRUE(OrvMatchAct_HasDescription(match.get(), &has));
    EXPECT_EQ(has, 0);
    EXPECT_TRUE(OrvMatchAct_GetDescriptionA(match.get(), &narrow));
    EXPECT_STREQ(narrow, "");
    EXPECT_TRUE(OrvMatchAct_SetDescriptionW(match.get(), W(u"night shift, long enough for the heap")));
    EXPECT_TRUE(TalvecMatchAct_GetDescriptionW(match.get(), &wide));
    EXPECT_EQ(Text(wide), u"night shift, long enough for the heap");
    EXPECT_TRUE(TalvecMatchAct_GetDescriptionA(match.get(), &narrow));
    EXPECT_STREQ(narrow, "night shift, long enough for the heap");
    EXPECT_TRUE(OrvMatchAct_SetDescriptionW(match.get(), wide + 6));  // from its own text
    EXPECT_TRUE(TalvecMatchAct_HasDescription(match.get(), &has));
    EXPECT_EQ(has, 1);
    EXPECT_TRUE(TalvecMatchAct_SetDescriptionA(match.get(), "day"));
    EXPECT_EQ(StoredText(match.get()), u"@ PanLeft (Comment: \"day\", Speed: 3)");
    EXPECT_TRUE(OrvMatchAct_SetDescriptionA(match.get(), nullptr));
    EXPECT_TRUE(OrvMatchAct_HasDescription(match.get(), &has));
    EXPECT_EQ(has, 0);

    const Handle action = Read(u"PanLeft (Speed: 3)");
    EXPECT_TRUE(OrvMatchAct_SetDescriptionW(action.get(), W(u"nowhere")));
    EXPECT_TRUE(OrvMatchAct_GetDescriptionW(action.get(), &wide));
    EXPECT_TRUE(OrvMatchAct_GetDescriptionA(action.get(), &narrow));
    EXPECT_EQ(Text(wide), u"");
    EXPECT_STREQ(narrow, "");
    EXPECT_EQ(StoredText(action.get()), u"PanLeft (Speed: 3)");
}

TEST(EventExports, AWrongSizeIsRefusedAndNothingTouched)
{
    const Handle action = Read(u"PanLeft (Speed: 3)");
    for (const auto fill : {OrvAct_GetActionEventData, Talvec_Action_GetActionEventData, OrvMatchAct_GetActionEventData,
                            TalvecMatchAct_GetActionEventData}) {
        TOrvEventData record;
        std::memset(&record, 0xEE, sizeof record);
        const TOrvEventData before = record;
        std::uint8_t field = 9;
        for (const std::uint32_t size : {0u, 271u, 273u}) {
            record.size = size;
            EXPECT_FALSE(fill(action.get(), &record, &field));
            EXPECT_EQ(std::memcmp(reinterpret_cast<const char*>(&record) + 4,
                                  reinterpret_cast<const char*>(&before) + 4, sizeof record - 4),
                      0);
            EXPECT_EQ(field, 9);
            const auto failure = LastError();
            ASSERT_TRUE(failure);
            EXPECT_EQ(failure->code, 1008u);
            EXPECT_EQ(failure->subCode, 8u);
            EXPECT_EQ(failure->message, u"Wrong structure size");
        }
        record.size = 272;
        EXPECT_TRUE(fill(action.get(), &record, &field));
        EXPECT_EQ(field, 0);
        EXPECT_EQ(record.code, 1102u);
        EXPECT_EQ(*record.int32Field[1], 3);
    }
}

TEST(EventExports, ThereAndBackAgain)
{
    const Handle action = Read(u"PanLeft (Camera: { 7, 5, \"front door\" }, Speed: 3)");
    TOrvEventData record = {};
    record.size = sizeof record;
    std::uint8_t field = 0;
    ASSERT_TRUE(OrvAct_GetActionEventData(action.get(), &record, &field));
    const std::vector<char> image = BinaryOf(action);
    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    for (const bool withImage : {false, true}) {
        record.image = withImage ? image.data() : nullptr;
        record.imageSize = image.size();
        for (const auto restore : {OrvAct_RestoreActionFromEventData, Talvec_Action_RestoreActionFromEventData}) {
            EXPECT_TRUE(Equal(Handle(restore(&record)), action));
        }
        for (const auto restore : {OrvMatchAct_RestoreActionFromEventData, TalvecMatchAct_RestoreActionFromEventData}) {
            EXPECT_EQ(StoredText(Handle(restore(&record)).get()),
                      u"@ PanLeft (Comment: \"\", Camera: { 7, 5, \"front door\" }, Speed: 3)");
        }
    }
    EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open);
    record.image = nullptr;
    record.stringField[0].length = ~0ull;
    EXPECT_EQ(OrvAct_RestoreActionFromEventData(&record), nullptr);
    EXPECT_TRUE(LastError().has_value());
}

TEST(EventExports, DescriptionsOfEveryForm)
{
    TOrvEventData record = {};
    record.code = ORV_ACTION_PanLeft;
    const std::int32_t speed = 3;
    record.int32Field[1] = &speed;
    std::u16string text;
    const auto context = reinterpret_cast<OrvWord>(&text);
    const TOrvEventDescriptionCallback plain = [](OrvWord to, std::int32_t, const OrvWChar*, const OrvWChar* value) {
        reinterpret_cast<std::u16string*>(to)->append(Text(value)).append(u"|");
    };
    const TOrvEventDescriptionCallback2 extended = [](OrvWord to, std::int32_t, const OrvWChar* label, const OrvWChar*,
                                                      std::uint32_t priority) {
        reinterpret_cast<std::u16string*>(to)->append(Text(label)).append(priority == 5 ? u"+" : u"-");
    };
    EXPECT_EQ(OrvAct_GetActionEventDescription(&record, context, plain), 1);
    EXPECT_EQ(Talvec_Action_GetActionEventDescriptionEx(&record, context, plain, 4), 1);
    EXPECT_EQ(OrvAct_GetActionEventDescription2(&record, context, extended, 5), 1);
    EXPECT_EQ(OrvAct_GetActionEventDescription2(&record, context, nullptr, 5), 1);
    EXPECT_EQ(text, u"3|speed: 3;||speed+Pan left-");

    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    const TOrvEventDescriptionCallback failing = [](OrvWord, std::int32_t, const OrvWChar*, const OrvWChar*) {
        throw "the caller's own";
    };
    EXPECT_FALSE(OrvAct_GetActionEventDescription(&record, 0, failing));
    EXPECT_TRUE(LastError().has_value());
    EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open);
}

}  // namespace
