#include "ulmo/debug_out.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>

#include "configured.h"
#include "platform/own_module.h"
#include "ulmo/debug_out_streamers.h"

namespace {

using namespace Ulmo;

constexpr const char* kKey = "Software\\Tessarine\\Orv\\DebugOut";
constexpr const char* kFilterKey = "Software\\Tessarine\\Orv\\DebugOut\\Filter";

CountedPtr<DebugOutStreamer> StreamerOf(std::uint32_t kinds)
{
    auto streamer = MakeCounted<DebugOutStreamer>();
    streamer->Enable(kinds);
    return streamer;
}

template <class Output>
Output& OutputOf(DebugOutStreamer& streamer, std::uint32_t kind)
{
    return dynamic_cast<Output&>(*streamer.Find(kind));
}

std::vector<std::u16string> History(DebugOutStreamer& streamer)
{
    std::vector<std::u16string> texts;
    for (const auto& entry : OutputOf<OutputHistoryStreamer>(streamer, DebugStreamerHistory).Snapshot()) {
        texts.push_back(entry.text);
    }
    return texts;
}

TEST(DebugOutSettings, LimitsByTheSourceInAnyCase)
{
    const DebugOutSettings none = DebugOutSettings::Read();
    for (std::uint32_t level = 0; level < 4; ++level) EXPECT_TRUE(none.IsEnabled("any", level)) << level;
    for (const std::uint32_t level : {4u, 7u, 0xFFFFFFFFu}) EXPECT_FALSE(none.IsEnabled("any", level)) << level;
    EXPECT_EQ(none.ConsoleTimeMode(), 0u);
    EXPECT_TRUE(none.DebugWindowSourcePrefix());

    const Configured configured{
        {kKey, "ConsoleTimeMode", 2u},     {kKey, "DebugWindowSourcePrefix", 0u}, {kFilterKey, "MyModule", 8u},
        {kFilterKey, "quizza", 0u},        {kFilterKey, "negative", 0x80000000u}, {kFilterKey, "text", "9"},
        {kFilterKey, "most", 0x7FFFFFFFu},
    };
    const DebugOutSettings settings = DebugOutSettings::Read();
    EXPECT_EQ(settings.ConsoleTimeMode(), 2u);
    EXPECT_FALSE(settings.DebugWindowSourcePrefix());
    const struct {
        const char* source;
        std::uint32_t firstHidden;
    } cases[] = {{"mymodule", 8}, {"MYMODULE", 8}, {"mymodul", 4}, {"mymodule2", 4}, {"QUIZZA", 0},
                 {"negative", 4}, {"text", 4},     {"most", 10},   {"", 4}};
    for (const auto& [source, firstHidden] : cases) {
        for (std::uint32_t level = 0; level < 10; ++level) {
            EXPECT_EQ(settings.IsEnabled(source, level), level < firstHidden) << source << level;
        }
    }
}

TEST(DebugOut, WritesOneLine)
{
    const std::u16string_view labels[] = {u"ERROR", u"SECTY", u"WARNG", u"INFO ", u"DEBUG", u"UNKNOWN"};
    for (std::uint32_t level = 0; level < std::size(labels); ++level) {
        const DebugOutMessage message{1234, "mymodule", level};
        EXPECT_EQ(DebugLine(message, u"mymodule", u"something went wrong"),
                  std::u16string(labels[level]) + u" [mymodule,1234] something went wrong\r\n");
    }
    EXPECT_EQ(DebugLine({1, nullptr, 0}, u"", u"t"), u"ERROR [,1] t\r\n");
}

TEST(DebugOut, RoutesWhatTheFilterLetsPass)
{
    Diagnostics::End();
    const Configured configured{{kFilterKey, "LOUD", 8u}};
    const auto streamer = StreamerOf(DebugStreamerHistory);
    DebugOut loud("loud", streamer);
    DebugOut usual("usual", streamer);
    loud.Write(7, u"a");
    usual.Write(DebugLevelInfo, u"b");
    usual.Write(DebugLevelDebug, u"hidden");
    usual.SetEnabled(false);
    usual.Write(DebugLevelError, u"hidden");
    usual.SetEnabled(true);
    EXPECT_TRUE(loud.IsEnabled(7));
    EXPECT_FALSE(usual.IsEnabled(DebugLevelDebug));
    const auto entries = OutputOf<OutputHistoryStreamer>(*streamer, DebugStreamerHistory).Snapshot();
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].text, u"UNKNOWN : [loud] a");
    EXPECT_EQ(entries[1].text, u"INFO  : [usual] b");
    EXPECT_EQ(entries[1].source, u"usual");
    EXPECT_EQ(std::stoul(std::string(entries[1].number.begin(), entries[1].number.end())),
              std::stoul(std::string(entries[0].number.begin(), entries[0].number.end())) + 1);
    EXPECT_EQ(entries[1].threadId, Platform::CurrentThreadId());
    std::thread([&] { EXPECT_NE(entries[1].threadId, Platform::CurrentThreadId()); }).join();

    streamer->Enable(DebugStreamerFile, true);  // the history stays on and keeps what it has
    loud.Write(0, u"c");
    EXPECT_EQ(History(*streamer).size(), 3u);
    streamer->Enable(DebugStreamerHistory | 0xFFFFFF00u);
    EXPECT_FALSE(streamer->Find(DebugStreamerFile));
    streamer->Enable(0);
    loud.Write(0, u"nobody listens");
    streamer->Enable(DebugStreamerHistory);
    EXPECT_TRUE(History(*streamer).empty());
    Diagnostics::End();
}

class LackingStreamer final : public DebugOutStreamer {
public:
    bool lacking = true;

protected:
    CountedPtr<IDebugOutStreamerObject> Make(std::uint32_t kind) override
    {
        if (lacking && kind == DebugStreamerFile) throw std::bad_alloc();
        return DebugOutStreamer::Make(kind);
    }
};

TEST(DebugOut, AnOutputThatCannotBeMadeStaysOff)
{
    const auto streamer = MakeCounted<LackingStreamer>();
    DebugOut out("s", CountedPtr<DebugOutStreamer>(streamer.get()));
    streamer->Enable(DebugStreamerHistory);
    for (int i = 0; i < 2; ++i) EXPECT_THROW(streamer->Enable(DebugStreamerFile, true), std::bad_alloc);
    EXPECT_FALSE(streamer->Find(DebugStreamerFile));
    out.Write(DebugLevelError, u"kept");
    EXPECT_EQ(History(*streamer).size(), 1u);
    streamer->lacking = false;
    streamer->Enable(DebugStreamerFile, true);
    EXPECT_TRUE(streamer->Find(DebugStreamerFile));
    streamer->lacking = true;
    streamer->Enable(0);
    EXPECT_THROW(streamer->Enable(DebugStreamerFile), std::bad_alloc);
    streamer->Enable(0);
}

TEST(DebugOut, HistoryKeepsTheLatest)
{
    const auto streamer = StreamerOf(DebugStreamerHistory);
    DebugOut out("s", streamer);
    for (std::size_t i = 0; i <= OutputHistoryStreamer::kLimit; ++i) out.Write(0, i == 1 ? u"second" : u"other");
    ASSERT_EQ(History(*streamer).size(), OutputHistoryStreamer::kLimit);
    EXPECT_EQ(History(*streamer).front(), u"ERROR : [s] second");
}

class BrokenStream final : public THugeStream {
public:
    void Write(const void*, std::size_t) override { throw std::runtime_error("disk full"); }
    std::size_t Read(void*, std::size_t) override { return 0; }
    std::uint64_t Size() const override { return 0; }
    std::uint64_t Position() const override { return 0; }
    void SetPosition(std::uint64_t) override {}
};

TEST(DebugOut, FileGetsElementsAndItsFailuresEndThere)
{
    const std::filesystem::path path = std::filesystem::path(testing::TempDir()) / "orv_debug_out.xml";
    std::filesystem::remove(path);
    const auto streamer = StreamerOf(DebugStreamerFile | DebugStreamerHistory);
    auto& file = OutputOf<FileOutputStreamer>(*streamer, DebugStreamerFile);
    DebugOut out("a<b", streamer);
    out.Write(0, u"no file yet");
    file.SetStream(std::make_unique<THugeFileStream>(path, Platform::File::Use::Append));
    out.Write(3, u"\"\u00C4\" & '\u20AC'");
    file.SetStream(std::make_unique<BrokenStream>());
    out.Write(0, u"lost");
    EXPECT_EQ(History(*streamer).size(), 3u);
    streamer->Enable(0);

    std::ifstream stream(path, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_EQ(content,
              "<debugout type=\"INFO \" filter=\"a&lt;b\">&quot;\u00C4&quot; &amp; &apos;\u20AC&apos;</debugout>\r\n");
    stream.close();
    std::filesystem::remove(path);
}

TEST(DebugOut, ConsoleTellsErrorsApartAndTheTimeWhenAsked)
{
    const auto written = [](std::uint32_t timeMode) {
        Diagnostics::End();
        const Configured configured{{kKey, "ConsoleTimeMode", timeMode}};
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        DebugOut out("s", StreamerOf(DebugStreamerConsole));
        out.Write(DebugLevelError, u"e");
        out.Write(DebugLevelWarning, u"\u00C4");
        return std::pair(testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr());
    };
    std::size_t shortest = 0;
    for (const std::uint32_t timeMode : {0u, 4u, 1u, 3u}) {
        const auto [output, error] = written(timeMode);
        const std::size_t start = output.find("WARNG [s,");
        ASSERT_NE(start, std::string::npos) << output;
        EXPECT_NE(output.find("] \u00C4"), std::string::npos) << output;
        EXPECT_EQ(output.find("ERROR"), std::string::npos);
        EXPECT_NE(error.find("ERROR [s,"), std::string::npos);
        if (timeMode == 0 || timeMode == 4) {
            EXPECT_EQ(start, 0u);
        } else {
            EXPECT_GT(start, shortest);  // date and time are longer than the time
            shortest = start;
        }
    }
    Diagnostics::End();
}

}  // namespace
