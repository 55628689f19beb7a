// The wrapper around the sibling product's library, with a replacement for it beside this program. What has been loaded
// stays in the process, so each suite has a process of its own.
#include "bridge/hesk_actions_wrapper.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

#include "events/event_restore.h"
#include "forms/binary_reader.h"
#include "forms/describe.h"
#include "forms/text_reader.h"

namespace HeskPLC {
namespace {

using namespace OrvPLC;
namespace files = std::filesystem;

files::path Folder()
{
    return files::absolute(testing::internal::GetArgvs().front()).parent_path();
}

files::path Library()
{
    return Folder() / files::path(Platform::ModuleFileName(u"HeskActions"));
}

void PutNothing()
{
    files::remove_all(Library());
}

void PutCopy(const char* variant)
{
    files::copy_file(Folder() / variant / Library().filename(), Library(), files::copy_options::overwrite_existing);
}

// An action in the form of the replacement.
std::vector<std::byte> Buffer(std::u16string_view text, std::uint32_t kind = 1)
{
    std::vector<std::byte> bytes(sizeof kind + text.size() * sizeof(char16_t));
    std::memcpy(bytes.data(), &kind, sizeof kind);
    std::memcpy(bytes.data() + sizeof kind, text.data(), text.size() * sizeof(char16_t));
    return bytes;
}

std::string TakeCalls()
{
    static const Platform::ModuleHandle module = Platform::LoadModule(Platform::ModuleFileName(u"HeskActions"));
    return reinterpret_cast<const char* (*)()>(Platform::FindFunction(module, "HeskTest_TakeCalls"))();
}

TEST(Loading, EveryState)
{
    PutNothing();
    std::u16string text = u"before";
    {
        HeskActionsWrapper wrapper;
        for (int i = 0; i < 20; ++i) EXPECT_FALSE(wrapper.Load());
        EXPECT_FALSE(wrapper.ConvertTextBuffer(u"CameraOn (5)", 1, false, text));
        EXPECT_FALSE(wrapper.ConvertTextBufferA("CameraOn (5)", 1, false, text));
        EXPECT_FALSE(wrapper.ConvertBinBuffer(Buffer(u"CameraOn (5)"), 1, false, text));
        EXPECT_FALSE(wrapper.ConvertEventData({}, text));
        files::create_directory(Library());
        for (int i = 0; i < 20; ++i) EXPECT_FALSE(wrapper.Load());
        files::remove(Library());
        // None of that was an attempt, and one is left after nine that fail.
        std::ofstream(Library()) << "no library";
        for (int i = 0; i < 9; ++i) EXPECT_FALSE(wrapper.Load());
        files::remove(Library());
        PutCopy("whole");
        EXPECT_EQ(text, u"before");
        EXPECT_TRUE(wrapper.ConvertTextBuffer(u"CameraOn (5)", 1, false, text));
    }
    EXPECT_EQ(TakeCalls(), "text 1 0; close 0 0; ");  // what was loaded stays, with all that it knows
}

TEST(GivingUp, AfterTenAttempts)
{
    PutNothing();
    HeskActionsWrapper second;
    {
        HeskActionsWrapper wrapper;
        std::ofstream(Library()) << "no library";
        for (int i = 0; i < 5; ++i) EXPECT_FALSE(wrapper.Load());
        for (int i = 0; i < 5; ++i) EXPECT_FALSE(second.Load());  // the process counts, not the object
        files::remove(Library());
        PutCopy("whole");
        EXPECT_FALSE(wrapper.Load());
        EXPECT_FALSE(second.Load());
    }
    // The end of a wrapper forgets the attempts.
    std::ofstream(Library()) << "no library";
    for (int i = 0; i < 9; ++i) EXPECT_FALSE(second.Load());
    files::remove(Library());
    PutCopy("whole");
    EXPECT_TRUE(second.Load());
}

TEST(Lacking, OneFunction)
{
    PutNothing();
    PutCopy("lacking");
    HeskActionsWrapper wrapper;
    std::u16string text;
    for (int i = 0; i < 12; ++i) EXPECT_FALSE(wrapper.Load());
    EXPECT_FALSE(wrapper.ConvertTextBuffer(u"CameraOn (5)", 1, false, text));
}

class Whole : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        PutNothing();
        PutCopy("whole");
    }

    Whole()
    {
        EXPECT_TRUE(wrapper.Load());
        TakeCalls();
    }

    HeskActionsWrapper& wrapper = GetHeskActionsWrapper();
    std::u16string text = u"before";
};

TEST_F(Whole, TextIsJudgedThereAndConvertedHere)
{
    EXPECT_TRUE(wrapper.ConvertTextBuffer(u"CameraOn (5)", 1, true, text));
    EXPECT_EQ(text, u"CameraOn (Camera: 5)");
    EXPECT_EQ(TakeCalls(), "text 1 1; close 0 0; ");
    EXPECT_TRUE(wrapper.ConvertTextBufferA("SetCameraText (5, \"\u00e4\")", 2, false, text));
    EXPECT_EQ(text, u"SetCameraText (Camera: 5, Text: \"\u00e4\")");
    EXPECT_EQ(TakeCalls(), "text 2 0; close 0 0; ");
    EXPECT_TRUE(wrapper.ConvertTextBuffer(u"Unknown (5)", 1, false, text));
    EXPECT_EQ(text, u"");
    text = u"before";
    EXPECT_FALSE(wrapper.ConvertTextBuffer(u"Refuse", 1, false, text));
    EXPECT_EQ(text, u"");
    TakeCalls();
    EXPECT_FALSE(wrapper.ConvertTextBuffer({}, 1, false, text));
    EXPECT_EQ(TakeCalls(), "");
}

TEST_F(Whole, TextOfABuffer)
{
    const struct {
        std::u16string text;
        std::u16string converted;
        const char* calls;
    } rows[] = {
        {u"CameraOn (5)", u"CameraOn (Camera: 5)", "buffer 2 0; store 2047 0; close 0 0; "},
        {u"Unknown (5)", u"", "buffer 2 0; store 2047 0; close 0 0; "},
        {u"Silent (5)", u"", "buffer 2 0; store 2047 0; close 0 0; "},
        {u"Huge (5)", u"", "buffer 2 0; store 2047 0; measure 0 0; close 0 0; "},
        {u"Refuse (5)", u"before", "buffer 2 0; "},
    };
    for (const auto& row : rows) {
        text = u"before";
        EXPECT_EQ(wrapper.ConvertBinBuffer(Buffer(row.text), 2, false, text), row.converted == u"CameraOn (Camera: 5)");
        EXPECT_EQ(text, row.converted);
        EXPECT_EQ(TakeCalls(), row.calls);
    }
    EXPECT_FALSE(wrapper.ConvertBinBuffer({}, 1, false, text));
    EXPECT_EQ(TakeCalls(), "");
}

// A text of 2047 characters comes in one call. A longer one is measured, and then stored under a capacity of 0.
TEST_F(Whole, LongTexts)
{
    const std::u16string head = u"SetCameraText (5, \"";
    for (const std::size_t length : {2046u, 2047u, 2048u, 70000u}) {
        const std::u16string filling(length - head.size() - 2, u'x');
        EXPECT_TRUE(wrapper.ConvertBinBuffer(Buffer(head + filling + u"\")"), 1, false, text));
        EXPECT_EQ(text, u"SetCameraText (Camera: 5, Text: \"" + filling + u"\")");
        const std::string calls = TakeCalls();
        const std::string size = std::to_string(length);
        const std::string more = length > 2047 ? "measure 0 0; store 0 " + size + "; " : "";
        EXPECT_EQ(calls, "buffer 1 0; store 2047 0; " + more + "close 0 0; ");
    }
}

TEST_F(Whole, Events)
{
    const std::vector<std::byte> image = Buffer(u"CameraOn (5)");
    TOrvEventData record{};
    record.code = 7;
    EXPECT_FALSE(wrapper.ConvertEventData(record, text));
    record.imageSize = image.size() | 0x1'0000'0000;  // only the low half counts
    EXPECT_FALSE(wrapper.ConvertEventData(record, text));
    record.image = image.data();
    EXPECT_TRUE(wrapper.ConvertEventData(record, text));
    EXPECT_EQ(text, u"CameraOn (Camera: 5)");
    EXPECT_EQ(TakeCalls(), "event 7 28; store 2047 0; close 0 0; ");
    record.imageSize = 0;
    EXPECT_FALSE(wrapper.ConvertEventData(record, text));
    EXPECT_EQ(TakeCalls(), "");
}

// Where the debug output can be seen it says what was caught.
TEST_F(Whole, NothingIsRaised)
{
    const std::string storing = "#### HeskActionsWrapper >>>> Exception _HeskAct_StoreToTextBuffer >>>> \n";
    const std::string buffer = "#### HeskActionsWrapper >>>> Error FHeskAct_CreateFromBinBuffer >>>> \n";
    const std::string event = "#### HeskActionsWrapper >>>> Error FStoreHeskEventDataRecordToTextBuffer >>>> \n";
    const auto attempt = [&](const std::string& message, auto&& work) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(work());
        EXPECT_EQ(testing::internal::GetCapturedStderr(), std::getenv("ORV_DEBUG_OUTPUT") ? message : "");
    };
    const std::u16string_view badDate = u"SetClock (\"yesterday\")";
    attempt(buffer, [&] { return wrapper.ConvertTextBuffer(u"Throw ()", 1, false, text); });
    attempt(buffer, [&] { return wrapper.ConvertTextBuffer(u"ThrowClose ()", 1, false, text); });
    attempt(buffer, [&] { return wrapper.ConvertTextBuffer(badDate, 1, false, text); });
    attempt(buffer, [&] { return wrapper.ConvertTextBuffer(u"Foreign ()", 1, false, text); });
    attempt(buffer, [&] { return wrapper.ConvertBinBuffer(Buffer(u"Foreign ()"), 1, false, text); });
    attempt(buffer, [&] { return wrapper.ConvertTextBufferA("Throw ()", 1, false, text); });
    attempt(buffer, [&] { return wrapper.ConvertBinBuffer(Buffer(u"Throw ()"), 1, false, text); });
    attempt(storing, [&] { return wrapper.ConvertBinBuffer(Buffer(u"ThrowStore ()"), 1, false, text); });
    TOrvEventData record{};
    const std::vector<std::byte> image = Buffer(u"Throw ()");
    record.image = image.data();
    record.imageSize = image.size();
    attempt(event, [&] { return wrapper.ConvertEventData(record, text); });
    // But for the want of memory, which closes the action as well.
    TakeCalls();
    EXPECT_THROW(wrapper.ConvertBinBuffer(Buffer(u"NoMemory ()"), 1, false, text), std::bad_alloc);
    EXPECT_TRUE(TakeCalls().ends_with("close 0 0; "));
}

TEST_F(Whole, ThroughTheReaders)
{
    const auto described = [](TOrvAction* object) {
        const ObjectPtr<TOrvAction> action(object);
        return action ? Describe(*action) : "none";
    };
    for (const bool narrow : {false, true}) {
        TakeCalls();
        const TextReadResult read = ReadActionText(u"CameraOn (5) tail", ORV_EXPECT_ANY, narrow);
        EXPECT_EQ(TakeCalls(), "text 1 0; close 0 0; ");
        EXPECT_EQ(described(read.object), "3 CameraOn; Camera chan 0 5 ''");
        EXPECT_EQ(read.consumed, 20u);  // of the rewritten text
        const TextReadResult refused = ReadActionText(u"Refuse (5) tail", ORV_EXPECT_ANY, narrow);
        EXPECT_EQ(described(refused.object), "none");
        EXPECT_EQ(refused.consumed, 10u);
        const TextReadResult unknown = ReadActionText(u"Unknown (5)", ORV_EXPECT_ANY, narrow);
        EXPECT_EQ(described(unknown.object), "none");
        EXPECT_EQ(unknown.consumed, 0u);
    }
    for (const std::uint32_t kind : {ORV_MESSAGE_SIBLING_ACTION, ORV_MESSAGE_SIBLING_MATCH_ACTION}) {
        const std::vector<std::byte> bytes = Buffer(u"CameraOn (5)", kind);
        const auto size = static_cast<std::uint32_t>(bytes.size());
        const BinaryReadResult read = ReadActionBinary(bytes.data(), size, ORV_MESSAGE_MATCH_ACTION);
        EXPECT_EQ(described(read.object), "3 CameraOn; Camera chan 0 5 ''");
        EXPECT_EQ(read.consumed, 20u);
    }
    const std::vector<std::byte> image = Buffer(u"StartEvent (\"alarm\")", 9);  // in no binary form of ours
    TOrvEventData record{};
    record.code = 1000;
    record.image = image.data();
    record.imageSize = image.size();
    EXPECT_EQ(described(RestoreAction(record)), "3 StartEvent; TypeID event 0 'alarm'");
    record.code = 1001;  // not the sibling's
    EXPECT_EQ(described(RestoreAction(record)), "3 SystemStarted");
}

TEST_F(Whole, ManyThreads)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] { EXPECT_TRUE(GetHeskActionsWrapper().Load()); });
    }
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace HeskPLC
