#include <OrvActions.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

TEST(ObjectLife, AnUnknownNameIsAnActionLikeAnyOther)
{
    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    const TOrvHandle handle = Talvec_Action_CreateActionByName(W(u"NobodyKnows"));
    ITalvecAction* action = OrvInterfaceOf(handle);
    EXPECT_EQ(action->GetActionCode(), 0u);
    EXPECT_EQ(action->GetActionClassCode(), 0u);
    EXPECT_EQ(Text(action->GetActionPlainName()), u"");
    EXPECT_EQ(Text(action->GetActionName()), u"NobodyKnows");
    EXPECT_EQ(Text(action->GetActionDescription()), u"");
    action->SetInt32(W(u"x"), 5);
    EXPECT_EQ(action->GetParameterCount(), 1u);
    EXPECT_EQ(action->GetParameterEnum(W(u"absent")), 0u);
    EXPECT_EQ(action->GetParameterType(W(u"absent")), 0u);
    EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open + 1);
    EXPECT_TRUE(OrvAct_CloseHandle(handle));
    EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open);
}

TEST(ObjectLife, TheCatalogueSpellsTheName)
{
    const Handle handle(Talvec_Action_CreateActionByName(W(u"cameraON")));
    EXPECT_EQ(Text(handle->GetActionName()), u"CameraOn");
    EXPECT_EQ(handle->GetActionCode(), static_cast<std::uint32_t>(ORV_ACTION_CameraOn));
    EXPECT_EQ(Talvec_Action_CreateActionByName(nullptr), nullptr);
    EXPECT_EQ(Talvec_Action_CreateActionByCode(999), nullptr);
    EXPECT_EQ(Talvec_Action_CreateActionByCode(0), nullptr);
    EXPECT_FALSE(LastError().has_value());
    const Handle byCode(Talvec_Action_CreateActionByCode(ORV_ACTION_CameraOn));
    EXPECT_TRUE(Equal(handle, byCode));
}

TEST(ObjectLife, CountsAndCopies)
{
    const Handle handle(Talvec_Action_CreateActionByName(W(u"PanLeft")));
    handle->SetInt32(W(u"Speed"), 3);
    std::uint32_t count = 0;
    EXPECT_TRUE(OrvAct_DuplicateHandle(handle.get()));
    EXPECT_TRUE(OrvAct_GetReferenceCounter(handle.get(), &count));
    EXPECT_EQ(count, 2u);
    EXPECT_TRUE(OrvAct_CloseHandle(handle.get()));
    TOrvHandle copy = nullptr;
    ASSERT_TRUE(Talvec_Action_CloneHandle(handle.get(), &copy));
    const Handle clone(copy);
    EXPECT_TRUE(Equal(handle, clone));
    handle->SetInt32(W(u"speed"), 4);
    EXPECT_FALSE(Equal(handle, clone));
    EXPECT_TRUE(OrvAct_GetReferenceCounter(clone.get(), &count));
    EXPECT_EQ(count, 1u);
}

TEST(ObjectLife, EqualityKnowsCaseOrderAndKind)
{
    const Handle a(Talvec_Action_CreateActionByName(W(u"CustomAction")));
    const Handle b(Talvec_Action_CreateActionByName(W(u"customACTION")));
    const std::int64_t number = 12;
    a->SetInt64(W(u"Int"), &number);
    a->SetString(W(u"Extra"), W(u"value"));
    b->SetString(W(u"EXTRA"), W(u"value"));
    b->SetInt64(W(u"int"), &number);
    EXPECT_TRUE(Equal(a, b));
    b->SetString(W(u"Extra"), W(u"Value"));
    EXPECT_FALSE(Equal(a, b));
    EXPECT_FALSE(Equal(Read(u"Unknown1 (x: 1)"), Read(u"Unknown2 (x: 1)")));

    TOrvHandle made = nullptr;
    ASSERT_TRUE(OrvAct_CreateMatchActionFromTemplate(a.get(), &made));
    const Handle match(made);
    EXPECT_FALSE(Equal(a, match));
    EXPECT_EQ(match->GetMessageKind(), static_cast<std::uint32_t>(ORV_MESSAGE_MATCH_ACTION));
    TOrvHandle copy = nullptr;
    ASSERT_TRUE(OrvAct_CloneHandle(match.get(), &copy));
    const Handle clone(copy);
    EXPECT_TRUE(Equal(match, clone));
    EXPECT_EQ(match->GetParameterCount(), 2u);
    for (const char16_t* comment : {u"night", u"NIGHT", u""}) {
        EXPECT_TRUE(OrvMatchAct_SetDescriptionW(clone.get(), W(comment)));
        EXPECT_FALSE(Equal(match, clone)) << std::u16string_view(comment).size();
        EXPECT_TRUE(OrvMatchAct_SetDescriptionW(match.get(), W(comment)));
        EXPECT_TRUE(Equal(match, clone));
    }
}

// The same texts in memory say nothing as long as other parameters have them, and other memory says nothing either.
TEST(ObjectLife, EqualityKnowsWhoseTextItIs)
{
    const std::u16string one(40, u'a');
    const std::u16string two(40, u'b');
    const auto made = [](const char16_t* first, const std::u16string& text, const char16_t* second,
                         const std::u16string& other) {
        Handle handle(Talvec_Action_CreateActionByName(W(u"LenelAccessEvent")));
        handle->SetString(W(first), W(text.c_str()));
        handle->SetString(W(second), W(other.c_str()));
        return handle;
    };
    const Handle action = made(u"Panel", one, u"Device", two);
    EXPECT_TRUE(Equal(action, made(u"Panel", one, u"Device", two)));
    EXPECT_TRUE(Equal(action, made(u"Device", two, u"Panel", one)));
    EXPECT_FALSE(Equal(action, made(u"Device", one, u"Panel", two)));
    EXPECT_FALSE(Equal(action, made(u"Panel", one, u"Device", one)));
    const Handle other = made(u"Panel", one, u"Device", two);
    other->SetString(W(u"Device"), W(two.c_str() + 1));
    EXPECT_FALSE(Equal(action, other));
    other->SetString(W(u"Device"), W(two.c_str()));
    EXPECT_TRUE(Equal(action, other));
}

TEST(ObjectLife, NullHandles)
{
    const Handle handle(Talvec_Action_CreateActionByName(W(u"X")));
    OrvAct_StoreToTextBufferW(handle.get(), nullptr, 0, 0, 0, nullptr);
    ASSERT_TRUE(LastError().has_value());
    EXPECT_FALSE(OrvAct_DuplicateHandle(nullptr));
    EXPECT_TRUE(LastError().has_value());  // as it was
    EXPECT_TRUE(OrvAct_CloseHandle(nullptr));
    EXPECT_FALSE(LastError().has_value());
    std::thread([] { EXPECT_TRUE(OrvAct_CloseHandle(nullptr) && !LastError()); }).join();  // the first call of a thread
}

TEST(ObjectLife, GenericAction)
{
    const TOrvChannelValue input = {7, W(u"gate"), 3};
    const Handle handle(OrvAct_CreateGenericAction(&input, nullptr, nullptr, nullptr, 9));
    EXPECT_EQ(Text(handle->GetActionName()), u"");
    EXPECT_EQ(handle->GetActionCode(), 0u);
    handle->SetInt32(W(u"x"), 1);
    TOrvHandle copy = nullptr;
    ASSERT_TRUE(OrvAct_CloneHandle(handle.get(), &copy));
    const Handle clone(copy);
    EXPECT_EQ(clone->GetParameterCount(), 0u);  // deliberately
    std::uint32_t count = 0;
    EXPECT_TRUE(OrvAct_GetReferenceCounter(clone.get(), &count));
    EXPECT_EQ(count, 1u);
    std::uint32_t required = 0;
    OrvWChar buffer[4];
    EXPECT_TRUE(OrvAct_StoreToTextBufferW(handle.get(), buffer, 4, 0, 0, &required));
    EXPECT_EQ(required, 1u);
}

struct Interfaces {
    const char* what;
    TOrvHandle (*make)();
    bool action, matchAction;
};

TEST(ObjectLife, QueryInterfaceDiffersByClass)
{
    const Interfaces rows[] = {
        {"action", [] { return Talvec_Action_CreateActionByName(W(u"PanLeft")); }, true, false},
        {"generic action", [] { return OrvAct_CreateGenericAction(nullptr, nullptr, nullptr, nullptr, 0); }, true,
         false},
        {"match action", [] { return OrvAct_CreateFromTextBufferW(W(u"@PanLeft()"), 10, 0, 0, nullptr); }, true, true},
    };
    const TOrvGuid marshal = {3, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    const TOrvGuid nonsense = {3, 1, 4, {}};
    for (const Interfaces& row : rows) {
        SCOPED_TRACE(row.what);
        const Handle handle(row.make());
        const auto answer = [&](const TOrvGuid& id) {
            void* object = &object;
            const auto status = static_cast<std::uint32_t>(handle->QueryInterface(id, &object));
            EXPECT_EQ(object != nullptr, status == 0);
            if (object) static_cast<OrvUnknown*>(object)->Release();
            return status;
        };
        EXPECT_EQ(answer(ORV_IID_IUnknown), 0u);
        EXPECT_EQ(answer(ORV_IID_ITalvecMessage), 0u);
        EXPECT_EQ(answer(ORV_IID_ITalvecJson), 0u);
        EXPECT_EQ(answer(ORV_IID_ITalvecAction), row.action ? 0u : 0x80004002u);
        EXPECT_EQ(answer(ORV_IID_ITalvecMatchAction), row.matchAction ? 0u : 0x80004002u);
        EXPECT_EQ(answer(nonsense), 0x80004002u);
#if defined(_WIN32)
        EXPECT_EQ(answer(marshal), row.matchAction ? 0x80004002u : 0u);
#else
        EXPECT_EQ(answer(marshal), 0x80004002u);
#endif
        EXPECT_EQ(static_cast<std::uint32_t>(handle->QueryInterface(nonsense, nullptr)), 0x80004003u);
        std::uint32_t count = 0;
        OrvAct_GetReferenceCounter(handle.get(), &count);
        EXPECT_EQ(count, 1u);
    }
}

TEST(ObjectLife, TypedValuesThroughTheInterface)
{
    const Handle handle(Talvec_Action_CreateActionByName(W(u"CustomAction")));
    const TOrvGuid guid = {1, 2, 3, {4}};
    handle->SetGuid(W(u"g"), &guid);
    std::int64_t number = 77;
    EXPECT_TRUE(handle->GetInt64(W(u"G"), &number));  // present, yet no number
    EXPECT_EQ(number, 77);
    EXPECT_FALSE(handle->GetInt64(W(u"absent"), &number));
    handle->SetString(W(u"String"), W(u"text"));
    handle->SetString(W(u"String"), nullptr);
    EXPECT_FALSE(handle->HasParameter(W(u"String")));
    handle->SetString(W(u"absent"), nullptr);
    handle->SetEnum(W(u"e"), 2, 4136);
    EXPECT_EQ(handle->GetParameterEnum(W(u"E")), 4136u);

    const TOrvChannelValue channel = {5, W(u"a channel with a long name"), 9};
    handle->SetMediaChannel(W(u"c"), &channel);
    TOrvChannelValue read{};
    EXPECT_TRUE(handle->GetMediaChannel(W(u"C"), &read));
    handle->SetMediaChannel(W(u"C"), &read);  // its name lives in the value that goes
    EXPECT_TRUE(handle->GetMediaChannel(W(u"c"), &read));
    EXPECT_EQ(Text(read.name), u"a channel with a long name");

    OrvBStr text = nullptr;
    EXPECT_TRUE(handle->GetString(W(u"c"), &text));
    EXPECT_EQ(Text(text), u"a channel with a long name");
    SysFreeString(text);
    TOrvResultDataItem items[2] = {{1, 2, -3, -4, 5, nullptr}, {6, 7, 8, 9, 10, nullptr}};
    items[1].name = SysAllocString(W(u"second"));
    handle->SetResultDataSet(W(u"r"), items, 2);
    SysFreeString(items[1].name);
    const TOrvResultDataItem* stored = nullptr;
    std::uint64_t count = 0;
    EXPECT_TRUE(handle->GetResultDataSet(W(u"r"), &stored, &count));
    ASSERT_EQ(count, 2u);
    EXPECT_EQ(Text(stored[1].name), u"second");
    EXPECT_EQ(stored[1].field4, 10);
}

TEST(ObjectLife, EnumerationByInterface)
{
    struct Collector final : ITalvecParameterEnumerator {
        std::vector<std::u16string> seen;
        std::int32_t QueryInterface(const TOrvGuid&, void**) override { return 0; }
        std::uint32_t AddRef() override { return 1; }
        std::uint32_t Release() override { return 1; }
        void OnParameter(const OrvWChar* name, std::uint32_t kind, std::uint32_t) override
        {
            seen.push_back(Text(name) + static_cast<char16_t>(u'0' + kind));
        }
    } collector;
    const Handle handle(Talvec_Action_CreateActionByName(W(u"PanLeft")));
    handle->SetInt32(W(u"Speed"), 1);
    handle->SetBoolean(W(u"Always"), 1);
    handle->EnumerateParameters(nullptr);
    handle->EnumerateParameters(&collector);
    EXPECT_EQ(collector.seen, (std::vector<std::u16string>{u"Always1", u"Speed2"}));
}

TEST(ObjectLife, ReferencesAreCountedAcrossThreads)
{
    const Handle handle(Talvec_Action_CreateActionByName(W(u"PanLeft")));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int k = 0; k < 5000; ++k) {
                OrvAct_DuplicateHandle(handle.get());
                OrvAct_CloseHandle(handle.get());
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    std::uint32_t count = 0;
    OrvAct_GetReferenceCounter(handle.get(), &count);
    EXPECT_EQ(count, 1u);
}

}  // namespace
