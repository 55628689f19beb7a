#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <latch>
#include <thread>
#include <vector>

#include "platform/file.h"
#include "platform/host_files.h"
#include "platform/living_count.h"
#include "platform/system_error.h"
#include "platform/system_string.h"
#include "platform/thread_slot.h"

namespace {

TEST(SystemStrings, KeepLengthAndContent)
{
    const std::u16string_view texts[] = {u"", u"a", std::u16string_view(u"a\0b", 3), u"\u00C4 text of some length"};
    for (const std::u16string_view text : texts) {
        char16_t* copy = Platform::NewSystemString(text);
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(Platform::SystemStringLength(copy), text.size());
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(copy) % alignof(char16_t), 0U);
        EXPECT_EQ(std::u16string_view(copy, text.size()), text);
        EXPECT_EQ(copy[text.size()], u'\0');
        std::uint32_t bytes = 0;
        std::memcpy(&bytes, reinterpret_cast<const char*>(copy) - sizeof bytes, sizeof bytes);
        EXPECT_EQ(bytes, text.size() * sizeof(char16_t));
        Platform::FreeSystemString(copy);
    }
    EXPECT_EQ(Platform::SystemStringLength(nullptr), 0U);
    Platform::FreeSystemString(nullptr);
}

int endedBlocks = 0;

void CountEnd(void* block)
{
    endedBlocks += *static_cast<int*>(block);
}

// On Linux the system runs the hook at thread end, on Windows the library's entry point does; asked for by hand it
// must run once on both.
TEST(ThreadSlot, IsPerThreadAndReportsTheEnd)
{
    Platform::ThreadSlot slot(CountEnd);
    int mine = 100;
    int theirs = 1;
    ASSERT_TRUE(slot.Set(&mine));
    std::thread([&] {
        EXPECT_EQ(slot.Get(), nullptr);
        EXPECT_TRUE(slot.Set(&theirs));
        EXPECT_EQ(slot.Get(), &theirs);
        slot.ThreadEnded();
        EXPECT_EQ(slot.Get(), nullptr);
    }).join();
    EXPECT_EQ(endedBlocks, 1);
    Platform::ThreadSlot other(CountEnd);
    ASSERT_TRUE(other.Set(&theirs));
    EXPECT_EQ(slot.Get(), &mine);
    other.Free();
    slot.Free();
    EXPECT_EQ(slot.Get(), nullptr);
    EXPECT_FALSE(slot.Set(&mine));
    slot.ThreadEnded();
    EXPECT_EQ(endedBlocks, 1);
}

// Shares go from thread to thread, and with more threads than shares some count in common: nothing is lost.
TEST(LivingCount, IsExactOverThreadsThatComeAndGo)
{
    const std::uint32_t before = Platform::LivingCount::Read();
    constexpr int kThreads = 200;
    constexpr int kEach = 1000;
    int block = 0;
    Platform::ThreadSlot slot(CountEnd);  // with a block in it the end of a thread is noticed
    const auto run = [&](void (*count)() noexcept) {
        std::latch all(kThreads);  // each has its share before one of them ends
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&] {
                EXPECT_TRUE(slot.Set(&block));
                count();
                all.arrive_and_wait();
                for (int at = 1; at < kEach; ++at) count();
            });
        }
        for (std::thread& thread : threads) thread.join();
    };
    run(Platform::LivingCount::ObjectMade);
    EXPECT_EQ(Platform::LivingCount::Read() - before, std::uint32_t{kThreads * kEach});
    run(Platform::LivingCount::ObjectEnded);
    EXPECT_EQ(Platform::LivingCount::Read(), before);
    using Platform::LivingCount::kShares, Platform::LivingCount::shares, Platform::LivingCount::ShareOfThread;
    const auto& mine = ShareOfThread();
    const int endedBefore = endedBlocks;
    block = 1;
    std::thread([&] {
        EXPECT_TRUE(slot.Set(&block));
        EXPECT_TRUE(kShares == 1 || (&ShareOfThread() != shares && &ShareOfThread() != &mine));
    }).join();  // those that ended left theirs
    EXPECT_TRUE(kShares == 1 || endedBlocks == endedBefore + 1);
    slot.Free();
}

TEST(Files, AFolderIsNone)
{
    Platform::File file;
    EXPECT_FALSE(file.Open(testing::TempDir(), Platform::File::Use::Read));
    EXPECT_FALSE(file.IsOpen());
    std::uint64_t found = 0;
    EXPECT_FALSE(file.GetSize(found) || file.GetPosition(found) || file.SetPosition(0));
}

TEST(SystemErrors, HaveTextsWithoutLineBreaks)
{
    const std::uint32_t codes[] = {5, Platform::kInvalidParameter, Platform::kInsufficientBuffer,
                                   Platform::kNoUnicodeTranslation, Platform::kResultInsufficientBuffer};
    for (const std::uint32_t code : codes) {
        const std::u16string text = Platform::SystemErrorText(code);
        EXPECT_FALSE(text.empty()) << code;
        EXPECT_EQ(text.find_first_of(u"\r\n"), std::u16string::npos) << code;
    }
    EXPECT_EQ(Platform::SystemErrorText(0xDEADBEEF), u"");
}

TEST(HostFiles, AFolderThatIsNotThereIsRefused)
{
    std::vector<std::filesystem::path> found;
    EXPECT_FALSE(Platform::FindFiles("no such folder", "plc", ".xml", found));
}

}  // namespace
