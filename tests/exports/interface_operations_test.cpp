#include <OrvActions.h>
#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

constexpr TUlmoDateTime kWithoutText = {0x0001'0000'0000'0000};  // a minute before the first one

Handle ActionWithImpossibleDate()
{
    Handle handle(Talvec_Action_CreateActionByName(W(u"SystemStarted")));
    handle->SetDateTime(W(u"Date"), &kWithoutText);
    handle->SetDateTime(W(u"User1"), &kWithoutText);  // a column of texts asks for its text
    return handle;
}

OrvWChar unwritten[] = {'x', 0};

// Ends the test when the operation lets a failure out.
template <class Work>
void Quietly(const char* what, Work&& work)
{
    SCOPED_TRACE(what);
    EXPECT_NO_THROW(work());
    EXPECT_FALSE(LastError().has_value()) << "operations store no last error";
}

TEST(InterfaceOperations, AValueWithoutTextIsNoFailure)
{
    const Handle handle = ActionWithImpossibleDate();
    ITalvecJson* json = nullptr;
    ASSERT_EQ(handle->QueryInterface(ORV_IID_ITalvecJson, reinterpret_cast<void**>(&json)), 0);

    OrvBStr text = unwritten;
    Quietly("a read says that the parameter is there and leaves the output", [&] {
        EXPECT_TRUE(handle->GetString(W(u"date"), &text));
        EXPECT_EQ(text, unwritten);
    });
    const struct {
        const char* what;
        void (*store)(ITalvecMatchAction& action, ITalvecJson& json, OrvBStr* text);
    } stores[] = {
        {"technical", [](ITalvecMatchAction& action, ITalvecJson&, OrvBStr* t) { action.StoreToTextTechnical(t); }},
        {"plain", [](ITalvecMatchAction& action, ITalvecJson&, OrvBStr* t) { action.StoreToTextPlain(t); }},
        {"json", [](ITalvecMatchAction&, ITalvecJson& j, OrvBStr* t) { j.StoreJson(t, 1); }},
        {"limited json", [](ITalvecMatchAction&, ITalvecJson& j, OrvBStr* t) { j.StoreJsonLimited(t, 0, 9); }},
    };
    for (const auto& row : stores) {
        Quietly(row.what, [&] {
            text = unwritten;
            row.store(*handle.operator->(), *json, &text);
            EXPECT_EQ(text, nullptr);
        });
    }
    TOrvEventData record{};
    record.size = sizeof record;
    Quietly("event data", [&] { EXPECT_FALSE(handle->GetEventData(&record)); });
    EXPECT_EQ(record.code, static_cast<std::uint32_t>(ORV_ACTION_SystemStarted));
    json->Release();
}

// The functions see the failure that the operations keep to themselves.
TEST(InterfaceOperations, FunctionsStoreWhatOperationsKeep)
{
    const Handle handle = ActionWithImpossibleDate();
    TOrvEventData record{};
    record.size = sizeof record;
    EXPECT_FALSE(OrvAct_GetActionEventData(handle.get(), &record, nullptr));
    EXPECT_EQ(LastError().value_or(Failure{}).code, 87u);
    std::uint32_t required = 7;
    EXPECT_FALSE(OrvAct_StoreToTextBufferW(handle.get(), nullptr, 0, 0, 0, &required));
    EXPECT_EQ(LastError().value_or(Failure{}).code, 87u);
    EXPECT_EQ(required, 7u);
    const TUlmoDateTime impossible{0x7FFF000000000000};
    handle->SetDateTime(W(u"ClientHost"), &impossible);
    const OrvWChar *host = nullptr, *account = nullptr;
    const std::uint32_t* type = nullptr;
    EXPECT_FALSE(OrvAct_GetWindowsClientInfo(handle.get(), &host, &type, &account));
    EXPECT_EQ(LastError().value_or(Failure{}).code, 87u);
}

TEST(InterfaceOperations, ValuesOfAFixedSizeComeBack)
{
    const Handle handle(Talvec_Action_CreateActionByName(W(u"Nobody")));
    const TUlmoDateTime date{13350000000000};
    const TOrvGuid guid{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    const std::int64_t rect = 0x0004000300020001;
    handle->SetDateTime(W(u"date"), &date);
    handle->SetGuid(W(u"guid"), &guid);
    handle->SetRect(W(u"rect"), &rect);
    TUlmoDateTime dateRead{};
    TOrvGuid guidRead{};
    std::int64_t rectRead = 0;
    EXPECT_TRUE(handle->GetDateTime(W(u"DATE"), &dateRead));
    EXPECT_TRUE(handle->GetGuid(W(u"GUID"), &guidRead));
    EXPECT_TRUE(handle->GetRect(W(u"RECT"), &rectRead));
    EXPECT_EQ(std::memcmp(&dateRead, &date, sizeof date), 0);
    EXPECT_EQ(std::memcmp(&guidRead, &guid, sizeof guid), 0);
    EXPECT_EQ(rectRead, rect);
    EXPECT_FALSE(handle->GetRect(W(u"absent"), &rectRead));
}

TEST(InterfaceOperations, AnActionIsNoPattern)
{
    const Handle handle(Talvec_Action_CreateActionByName(W(u"PanLeft")));
    handle->SetDescription(W(u"x"));
    EXPECT_EQ(Text(handle->GetDescription()), u"");
    EXPECT_FALSE(handle->HasDescription());
    EXPECT_FALSE(handle->Matches(handle.operator->())) << "not even itself";
    EXPECT_EQ(handle->CreateActionFromTemplate(handle.operator->()), nullptr);
    std::uint32_t index = 0;
    EXPECT_TRUE(OrvAct_GetInternalIndex(handle.get(), &index));
    EXPECT_EQ(index, OrvAct_GetInternalIndexByCode(ORV_ACTION_PanLeft));
    ITalvecMatchAction* const pattern = handle->CreateMatchAction();
    ASSERT_NE(pattern, nullptr);
    pattern->AddRef();
    EXPECT_EQ(pattern->GetMessageKind(), std::uint32_t{ORV_MESSAGE_MATCH_ACTION});
    EXPECT_TRUE(pattern->Matches(handle.operator->()));
    EXPECT_EQ(pattern->Release(), 0u);
}

struct ThrowingEnumerator final : ITalvecParameterEnumerator {
    int calls = 0;

    std::int32_t ORV_CALL QueryInterface(const TOrvGuid&, void**) override { return -1; }
    std::uint32_t ORV_CALL AddRef() override { return 1; }
    std::uint32_t ORV_CALL Release() override { return 1; }
    void ORV_CALL OnParameter(const OrvWChar*, std::uint32_t, std::uint32_t) override
    {
        ++calls;
        throw std::runtime_error("no");
    }
};

TEST(InterfaceOperations, AnEnumeratorThatThrowsEndsTheEnumeration)
{
    const Handle handle = ActionWithImpossibleDate();
    ThrowingEnumerator enumerator;
    Quietly("enumeration", [&] { handle->EnumerateParameters(&enumerator); });
    EXPECT_EQ(enumerator.calls, 1);
}

}  // namespace
