// Callers hand back what they were given: texts and records of the very object that a setter writes to.
#include <OrvActions.h>
#include <gtest/gtest.h>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

// Longer than what a string object holds inside, so that a text that goes frees its memory.
constexpr const char16_t* kFirst = u"the first of two texts of some length";
constexpr const char16_t* kSecond = u"another text that is not as short as it could be";

constexpr const char16_t* kName = u"A parameter whose name needs memory of its own";

const OrvWChar* Property(const Handle& action, const char16_t* key)
{
    const OrvWChar* text = nullptr;
    EXPECT_TRUE(OrvAct_GetProperty(action.get(), W(key), &text));
    return text;
}

struct NameTaker final : ITalvecParameterEnumerator {
    const OrvWChar* name = nullptr;

    std::int32_t ORV_CALL QueryInterface(const TOrvGuid&, void**) override { return -1; }
    std::uint32_t ORV_CALL AddRef() override { return 1; }
    std::uint32_t ORV_CALL Release() override { return 1; }
    void ORV_CALL OnParameter(const OrvWChar* given, std::uint32_t, std::uint32_t) override { name = given; }
};

// The name of the action's only parameter, as the object holds it.
const OrvWChar* OwnName(const Handle& action)
{
    NameTaker taker;
    action->EnumerateParameters(&taker);
    return taker.name;
}

TEST(OwnTexts, ClientInfoSwapped)
{
    const Handle action = Read(u"UserLogin ()");
    EXPECT_TRUE(OrvAct_UpdateWindowsClientInfo(action.get(), W(kFirst), 1, W(kSecond)));
    const OrvWChar *host = nullptr, *account = nullptr;
    const std::uint32_t* type = nullptr;
    ASSERT_TRUE(OrvAct_GetWindowsClientInfo(action.get(), &host, &type, &account));
    EXPECT_TRUE(OrvAct_UpdateWindowsClientInfo(action.get(), account, *type, host));
    ASSERT_TRUE(OrvAct_GetWindowsClientInfo(action.get(), &host, &type, &account));
    EXPECT_EQ(Text(host), kSecond);
    EXPECT_EQ(Text(account), kFirst);
    EXPECT_TRUE(OrvAct_UpdateWindowsClientInfo(action.get(), nullptr, 2, host));
    EXPECT_EQ(Property(action, u"ClientHost"), nullptr);
    EXPECT_EQ(Text(Property(action, u"ClientAccount")), kSecond);
}

// One parameter is read and written under its own name, through every setter that takes a name.
TEST(OwnTexts, NameAndValueOfTheParameterItself)
{
    const struct {
        const char* what;
        void (*set)(const Handle& action, const OrvWChar* name);
        const char16_t* text;
    } cases[] = {
        {"string", [](const Handle& a, const OrvWChar* n) { a->SetString(n, n + 2); },
         u"X (\"A parameter whose name needs memory of its own\": \"parameter whose name needs memory of its own\")"},
        {"event type",
         [](const Handle& a, const OrvWChar* n) {
             TOrvEventTypeValue value{3, n, 0};
             a->SetEventType(n, &value);
             a->GetEventType(W(kName), &value);
             a->SetEventType(W(kName), &value);
         },
         u"X (\"A parameter whose name needs memory of its own\": "
         u"{ 3, \"A parameter whose name needs memory of its own\" })"},
        {"channel",
         [](const Handle& a, const OrvWChar* n) {
             TOrvChannelValue value{3, n, 4};
             a->SetMediaChannel(n, &value);
             a->GetMediaChannel(W(kName), &value);
             a->SetMediaChannel(value.name, &value);
         },
         u"X (\"A parameter whose name needs memory of its own\": "
         u"{ 3, 4, \"A parameter whose name needs memory of its own\" })"},
        {"resource",
         [](const Handle& a, const OrvWChar* n) {
             TOrvResourceValue value{{}, n};
             a->SetResource(n, &value);
             a->GetResource(W(kName), &value);
             a->SetResource(value.name, &value);
         },
         u"X (\"A parameter whose name needs memory of its own\": \"A parameter whose name needs memory of its own\")"},
        {"items",
         [](const Handle& a, const OrvWChar* n) {
             const TOrvResultDataItem item{1, 2, 3, 4, 5, nullptr};
             a->SetResultDataSet(n, &item, 1);
             const TOrvResultDataItem* items = nullptr;
             std::uint64_t count = 0;
             a->GetResultDataSet(W(kName), &items, &count);
             a->SetResultDataSet(W(kName), items, count);
         },
         u"X (\"A parameter whose name needs memory of its own\": { { 1, 2, 3, 4, 5, \"\" } })"},
        {"record",
         [](const Handle& a, const OrvWChar* n) {
             TOrvParameterValue value{};
             value.kind = ORV_KIND_MediaChannel;
             value.payload.channel = {3, n, 4};
             Talvec_Action_SetParameterByName(a.get(), n, &value);
             Talvec_Action_GetParameterByName(a.get(), W(kName), &value);
             Talvec_Action_SetParameterByName(a.get(), value.payload.channel.name, &value);
         },
         u"X (\"A parameter whose name needs memory of its own\": "
         u"{ 3, 4, \"A parameter whose name needs memory of its own\" })"},
        {"removed by null", [](const Handle& a, const OrvWChar* n) { a->SetString(n, nullptr); }, u"X ()"},
        {"removed", [](const Handle& a, const OrvWChar* n) { a->RemoveParameter(n); }, u"X ()"},
        {"property",
         [](const Handle& a, const OrvWChar* n) { OrvAct_SetProperty(a.get(), n, n); },
         u"X (\"a parameter whose name needs memory of its own\": \"A parameter whose name needs memory of its own\")"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        const Handle action(Talvec_Action_CreateActionByName(W(u"X")));
        action->SetString(W(kName), W(kFirst));
        row.set(action, OwnName(action));
        EXPECT_EQ(StoredText(action.get()), row.text);
    }
}

TEST(OwnTexts, RolesAndDescriptions)
{
    const Handle action = Read(u"@PanLeft ()");
    const TOrvChannelValue given{3, W(kFirst), 4};
    ASSERT_TRUE(OrvAct_SetVideoInput(action.get(), &given));
    const TOrvChannelValue* channel = nullptr;
    ASSERT_TRUE(OrvAct_GetVideoInput(action.get(), &channel));
    EXPECT_TRUE(OrvAct_SetVideoInput(action.get(), channel));
    EXPECT_TRUE(OrvMatchAct_SetDescriptionW(action.get(), W(kSecond)));
    const OrvWChar* wide = nullptr;
    ASSERT_TRUE(OrvMatchAct_GetDescriptionW(action.get(), &wide));
    EXPECT_TRUE(OrvMatchAct_SetDescriptionW(action.get(), wide + 8));
    const char* narrow = nullptr;
    ASSERT_TRUE(OrvMatchAct_GetDescriptionA(action.get(), &narrow));
    EXPECT_TRUE(OrvMatchAct_SetDescriptionA(action.get(), narrow + 5));
    EXPECT_EQ(StoredText(action.get()),
              u"@ PanLeft (Comment: \"that is not as short as it could be\", "
              u"Camera: { 3, 4, \"the first of two texts of some length\" })");
}

OrvBool KeepName(OrvWord, TOrvChannelValue* channel)
{
    channel->name += 4;
    return 1;
}

TEST(OwnTexts, AnswersOfARefresh)
{
    const Handle action = Read(u"PanLeft ()");
    const TOrvChannelValue given{3, W(kFirst), 4};
    ASSERT_TRUE(OrvAct_SetVideoInput(action.get(), &given));
    TOrvActionInfoUpdateCallbacks callbacks{};
    callbacks.videoInput = KeepName;
    OrvBool known = 0;
    EXPECT_TRUE(OrvAct_UpdateActionInfo(action.get(), 0, &callbacks, &known));
    EXPECT_TRUE(known);
    EXPECT_EQ(StoredText(action.get()), u"PanLeft (Camera: { 3, 4, \"first of two texts of some length\" })");
}

}  // namespace
