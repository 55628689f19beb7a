// Binary, JSON and property forms through the interface: buffers, ownership, last error.
#include <OrvActions.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

void ExpectTooSmall()
{
    const auto failure = LastError();
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->code, 1008u);
    EXPECT_EQ(failure->subCode, 7u);
    EXPECT_EQ(failure->message, u"buffer too small");
}

TEST(BinaryExports, BufferProtocol)
{
    const Handle handle = Read(u"A (x: 5)");
    std::uint32_t required = 0;
    EXPECT_FALSE(OrvAct_StoreToBinBuffer(handle.get(), nullptr, 0, &required));
    EXPECT_EQ(required, 36u);
    ExpectTooSmall();
    EXPECT_FALSE(OrvAct_StoreToBinBuffer(handle.get(), nullptr, 100, nullptr));
    ExpectTooSmall();

    std::vector<unsigned char> buffer(100, 0xEE);
    EXPECT_FALSE(Talvec_Action_StoreToBinBuffer(handle.get(), buffer.data(), 35, &required));
    EXPECT_EQ(required, 36u);
    ExpectTooSmall();
    EXPECT_EQ(buffer[0], 3);
    EXPECT_EQ(buffer[32], 0xEE);
    EXPECT_FALSE(OrvAct_StoreToBinBuffer(handle.get(), buffer.data(), 0x80000000, &required));
    EXPECT_EQ(required, 36u);
    EXPECT_TRUE(OrvAct_StoreToBinBuffer(handle.get(), buffer.data(), 36, &required));
    EXPECT_FALSE(LastError().has_value());
    EXPECT_EQ(buffer[32], 5);
    EXPECT_EQ(buffer[36], 0xEE);

    const Handle generic(OrvAct_CreateGenericAction(nullptr, nullptr, nullptr, nullptr, 0));
    EXPECT_TRUE(OrvAct_StoreToBinBuffer(generic.get(), nullptr, 0, &required));
    EXPECT_EQ(required, 0u);
}

TEST(BinaryExports, ReadsWhatItStored)
{
    const Handle handle = Read(u"PanLeft (Camera: { 7, 5, \"front door\" }, Speed: 3)");
    std::vector<unsigned char> buffer(200);
    std::uint32_t size = 0;
    ASSERT_TRUE(OrvAct_StoreToBinBuffer(handle.get(), buffer.data(), 200, &size));
    std::uint32_t consumed = 0;
    const Handle read(Talvec_Action_CreateFromBinBuffer(buffer.data(), 200, ORV_EXPECT_ANY, &consumed));
    ASSERT_TRUE(read);
    EXPECT_EQ(consumed, size);
    EXPECT_TRUE(Equal(read, handle));

    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    EXPECT_EQ(OrvAct_CreateFromBinBuffer(buffer.data(), size, ORV_MESSAGE_MATCH_ACTION, &consumed), nullptr);
    EXPECT_FALSE(LastError().has_value());
    EXPECT_EQ(OrvAct_CreateFromBinBuffer(nullptr, 0, ORV_EXPECT_ANY, &consumed), nullptr);
    EXPECT_EQ(consumed, 0xFFFFFFFF);
    EXPECT_EQ(OrvAct_CreateFromBinBuffer(buffer.data(), 3, ORV_EXPECT_ANY, nullptr), nullptr);
    EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open);
}

TEST(JsonExports, BufferProtocol)
{
    const Handle handle = Read(u"Nobody (x: 1)");
    const std::u16string expected =
        u"\"action\":{\"classCode\":0,\"className\":\"\",\"code\":0,\"flags\":0,\"name\":\"Nobody\",\"plainName\":\"\","
        u"\"priority\":0,\"heskMessageClass\":1,\"index\":0,\"messageClass\":3,\"paramsCount\":1,\"params\":{\"x\":1}}";
    std::uint32_t required = 0;
    EXPECT_FALSE(OrvAct_StoreToJson(handle.get(), nullptr, 0, &required, 1, nullptr));
    EXPECT_EQ(required, expected.size() + 3);
    ExpectTooSmall();
    std::vector<OrvWChar> buffer(required);
    EXPECT_FALSE(Talvec_Action_StoreToJson(handle.get(), buffer.data(), required - 1, nullptr, 1, nullptr));
    EXPECT_EQ(buffer[0], 0);
    EXPECT_TRUE(Talvec_Action_StoreToJson(handle.get(), buffer.data(), required, nullptr, 1, nullptr));
    EXPECT_EQ(Text(buffer.data()), u"{" + expected + u"}");
    const std::uint32_t limit = 0;
    EXPECT_TRUE(OrvAct_StoreToJson(handle.get(), buffer.data(), required, &required, 0, &limit));
    EXPECT_EQ(Text(buffer.data()), expected);
    EXPECT_FALSE(LastError().has_value());

    const TUlmoDateTime impossible = {0x0001'0000'0000'0000};  // a minute before the first one
    handle->SetDateTime(W(u"t"), &impossible);
    EXPECT_FALSE(OrvAct_StoreToJson(handle.get(), buffer.data(), required, &required, 0, nullptr));
    EXPECT_EQ(LastError().value_or(Failure{}).className, "Ulmo::SystemException");
}

// A dump frees the string that it finds; leaks and double frees show under the sanitizers.
TEST(PropertyExports, DumpsReplaceTheString)
{
    const Handle handle = Read(u"PanLeft (Speed: 3)");
    OrvBStr text = nullptr;
    EXPECT_TRUE(OrvAct_GetProperties(handle.get(), &text));
    EXPECT_EQ(Text(text),
              u"<properties>\r\n  <property>\r\n    <name>Speed</name>\r\n    <value>3</value>\r\n"
              u"  </property>\r\n</properties>");
    EXPECT_TRUE(OrvAct_GetXML(handle.get(), &text));
    EXPECT_EQ(Text(text), u"<action name=\"PanLeft\">  <property speed=\"3\">");
    const TUlmoDateTime impossible = {0x0001'0000'0000'0000};
    handle->SetDateTime(W(u"t"), &impossible);
    EXPECT_FALSE(OrvAct_GetProperties(handle.get(), &text));
    EXPECT_EQ(Text(text), u"<action name=\"PanLeft\">  <property speed=\"3\">");
    SysFreeString(text);
}

TEST(PropertyExports, KeyedReadAndWrite)
{
    const Handle handle = Read(u"UserLogin ()");
    const OrvWChar* value = W(u"before");
    EXPECT_TRUE(OrvAct_GetProperty(handle.get(), W(u"hesk-user"), &value));
    EXPECT_EQ(value, nullptr);
    EXPECT_TRUE(OrvAct_SetProperty(handle.get(), W(u"hesk-user"), W(u"me")));
    EXPECT_TRUE(OrvAct_SetProperty(handle.get(), nullptr, nullptr));
    EXPECT_TRUE(OrvAct_GetProperty(handle.get(), W(u"USER1"), &value));
    EXPECT_EQ(Text(value), u"me");
    EXPECT_TRUE(OrvAct_GetProperty(handle.get(), nullptr, &value));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(Text(value), u"");

    OrvBStr copy = SysAllocString(W(u"not looked at"));
    OrvBStr before = copy;
    EXPECT_TRUE(OrvAct_GetProperty__Q_NEW_Q__(handle.get(), W(u"User1"), &copy));
    EXPECT_EQ(Text(copy), u"me");
    SysFreeString(copy);
    SysFreeString(before);
    EXPECT_TRUE(OrvAct_GetProperty__Q_NEW_Q__(handle.get(), W(u"User2"), &copy));
    EXPECT_EQ(copy, nullptr);
    EXPECT_TRUE(OrvAct_GetProperty__Q_NEW_Q__(handle.get(), W(u"User1"), nullptr));
}

TEST(PropertyExports, ClientInfo)
{
    const Handle handle = Read(u"SystemStarted ()");
    const OrvWChar* host = nullptr;
    const OrvWChar* account = nullptr;
    const std::uint32_t* type = nullptr;
    EXPECT_FALSE(OrvAct_GetWindowsClientInfo(handle.get(), &host, &type, &account));
    EXPECT_FALSE(LastError().has_value());
    EXPECT_TRUE(OrvAct_UpdateWindowsClientInfo(handle.get(), W(u"h"), 3, W(u"a")));
    EXPECT_TRUE(OrvAct_GetWindowsClientInfo(handle.get(), &host, &type, &account));
    EXPECT_EQ(Text(host), u"h");
    EXPECT_EQ(*type, 3u);
    EXPECT_EQ(Text(account), u"a");
    EXPECT_TRUE(OrvAct_UpdateWindowsClientInfo(handle.get(), host, *type, nullptr));  // its own texts
    EXPECT_EQ(StoredText(handle.get()), u"SystemStarted (ClientHost: \"h\", ClientType: 3)");
}

}  // namespace
