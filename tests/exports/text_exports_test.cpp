#include <OrvActions.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

TEST(Versions, BothFamilies)
{
    EXPECT_EQ(OrvAct_InterfaceVersion(), 143u);
    EXPECT_EQ(Talvec_Action_InterfaceVersion(), 143u);
    EXPECT_STREQ(OrvAct_InterfaceDate(), "20.10.2022");
    EXPECT_EQ(Text(Talvec_Action_InterfaceDate()), u"20.10.2022");
}

// Narrow text is read and written in either code page, and a length may end it early.
TEST(TextExports, NarrowText)
{
    const char utf8[] = "CustomAction (Int: 7, String: \"T\xc3\xbcr\") tail";
    std::uint32_t consumed = 0;
    const Handle handle(OrvAct_CreateFromTextBufferA(utf8, ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 1, &consumed));
    ASSERT_TRUE(handle);
    EXPECT_EQ(consumed, std::strlen("CustomAction (Int: 7, String: \"Tur\")"));
    EXPECT_EQ(StoredText(handle.get()), u"CustomAction (Int: 7, String: \"T\u00fcr\")");
    std::uint32_t required = 0;
    EXPECT_FALSE(OrvAct_StoreToTextBufferA(handle.get(), nullptr, 0, 0, 1, &required));
    EXPECT_EQ(required, std::strlen(utf8) - std::strlen(" tail") + 1);
    char buffer[100];
    EXPECT_TRUE(Talvec_Action_StoreToTextBufferA(handle.get(), buffer, sizeof buffer, 0, 1, nullptr));
    EXPECT_EQ(std::string(buffer) + " tail", utf8);
    const Handle cut(OrvAct_CreateFromTextBufferA(utf8, 21, ORV_EXPECT_ANY, 1, &consumed));
    EXPECT_FALSE(cut);
    EXPECT_FALSE(LastError().has_value());
}

TEST(TextExports, NoTextIsNoAction)
{
    for (const std::uint32_t length : {0u, ORV_LENGTH_TERMINATED, 0xFFFFFFFFu}) {
        for (const OrvBool utf8 : {OrvBool{0}, OrvBool{1}}) {
            std::uint32_t wide = 7, narrow = 7;
            EXPECT_FALSE(OrvAct_CreateFromTextBufferW(nullptr, length, ORV_EXPECT_ANY, 0, &wide));
            EXPECT_FALSE(Talvec_Action_CreateFromTextBufferA(nullptr, length, ORV_EXPECT_ANY, utf8, &narrow));
            EXPECT_EQ(wide, 0u);
            EXPECT_EQ(narrow, 0u);
            EXPECT_FALSE(LastError());
        }
    }
}

TEST(TextExports, AFailureOnTheWayIsStored)
{
    const struct {
        const char16_t* text;
        std::uint32_t code, subCode;
        const char* className;
        const char16_t* message;
    } rows[] = {
        {u"A(x: \"zzzzzzzz-0000-0000-0000-000000000000\")", 0, 0, "Ulmo::GuidConversionException",
         u"Conversion of guid 'zzzzzzzz-0000-0000-0000-000000000000' failed."},
        {u"A(x: \"2023/02/29 00:00:00,000 GMT+00:00\")", 5, 5, "Ulmo::EUlmoDateTime",
         u"Invalid day part in date/time string. Expected a number from 1 to 28."},
    };
    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    for (const auto& row : rows) {
        EXPECT_FALSE(Read(row.text));
        const auto failure = LastError();
        ASSERT_TRUE(failure.has_value());
        EXPECT_EQ(failure->code, row.code);
        EXPECT_EQ(failure->subCode, row.subCode);
        EXPECT_EQ(failure->className, row.className);
        EXPECT_EQ(failure->message, row.message);
        std::thread([] { EXPECT_FALSE(LastError().has_value()); }).join();
    }
    EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open);
}

// The narrow priority forms prune, the wide ones store what they were given; both refuse an unknown action.
TEST(TextExports, PriorityForms)
{
    const Handle handle = Read(u"UserLogin (User1: \"u\", Host: \"h\", ClientHost: \"c\")");
    const std::u16string whole = StoredText(handle.get());
    char narrow[200];
    OrvWChar wide[200];
    const auto limited = [&](std::uint32_t limit) {
        EXPECT_TRUE(OrvAct_StoreToTextBufWithPriorityLimitA(handle.get(), narrow, 200, 0, 1, limit, nullptr));
        EXPECT_TRUE(OrvAct_StoreToTextBufWithPriorityLimitW(handle.get(), wide, 200, 0, 0, limit, nullptr));
        EXPECT_EQ(Text(wide), whole);
        return std::string(narrow);
    };
    EXPECT_EQ(limited(0), "UserLogin ()");
    EXPECT_EQ(limited(3), "UserLogin (User1: \"u\")");
    EXPECT_EQ(limited(6), "UserLogin (User1: \"u\", ClientHost: \"c\")");
    EXPECT_EQ(limited(7), std::string(whole.begin(), whole.end()));

    EXPECT_TRUE(OrvAct_StoreToTextBufferExA(handle.get(), narrow, 200, 0, 1, 0, nullptr));
    EXPECT_EQ(std::string(narrow), std::string(whole.begin(), whole.end()));
    EXPECT_TRUE(OrvAct_StoreToTextBufferExA(handle.get(), narrow, 200, 0, 1, ORV_STORE_APPLY_PRIORITY_LEVEL, nullptr));
    EXPECT_STREQ(narrow, "UserLogin (User1: \"u\")");
    EXPECT_TRUE(OrvAct_StoreToTextBufferExW(handle.get(), wide, 200, 0, 0, ORV_STORE_APPLY_PRIORITY_LEVEL, nullptr));
    EXPECT_EQ(Text(wide), whole);

    const Handle unknown = Read(u"NobodyKnows (x: 1)");
    std::uint32_t required = 77;
    const auto refused = [&](auto store) {
        OrvAct_StoreToTextBufferW(handle.get(), nullptr, 0, 0, 0, nullptr);  // a failure from before
        EXPECT_FALSE(store());
        EXPECT_FALSE(LastError().has_value());
    };
    const TOrvHandle none = unknown.get();
    refused([&] { return OrvAct_StoreToTextBufWithPriorityLimitA(none, narrow, 200, 0, 1, 9, &required); });
    refused([&] { return OrvAct_StoreToTextBufWithPriorityLimitW(none, wide, 200, 0, 0, 9, &required); });
    refused([&] { return OrvAct_StoreToTextBufferExA(none, narrow, 200, 0, 1, 0, &required); });
    refused([&] { return OrvAct_StoreToTextBufferExW(none, wide, 200, 0, 0, 0, &required); });
    EXPECT_EQ(required, 77u);
}

TEST(TextExports, PlainTextFollowsThePriorityLevel)
{
    const Handle handle = Read(u"UserLogin (User1: \"u\", Host: \"h\", ClientType: 5)");
    EXPECT_EQ(StoredText(handle.get(), true), u"User login; first user: \"u\";");
    Talvec_Action_SetPriorityLevel(7);
    const std::u16string all = StoredText(handle.get(), true);
    Talvec_Action_SetPriorityLevel(5);
    EXPECT_EQ(all, u"User login; first user: \"u\"; host: \"h\"; client type: default;");
}

}  // namespace
