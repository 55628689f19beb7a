#include "platform/debug_output.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

// The variable is read once a process, so each case has a process of its own.
[[noreturn]] void WriteUnder(const char* variable, const std::u16string& text)
{
    setenv("ORV_DEBUG_OUTPUT", variable, 1);
    Platform::WriteDebug(text);
    std::exit(0);
}

TEST(PosixDebugOutputDeathTest, GoesToStandardErrorWhenAsked)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::u16string longText = std::u16string(511, u'a') + u"\xD83D\xDE00 end";  // a pair across two writes
    EXPECT_EXIT(WriteUnder("1", longText), testing::ExitedWithCode(0), "^a{200,}\xF0\x9F\x98\x80 end\n$");
    EXPECT_EXIT(WriteUnder("1", u"line\n"), testing::ExitedWithCode(0), "^line\n$");
    EXPECT_EXIT(WriteUnder("1", u"\n"), testing::ExitedWithCode(0), "^\n$");
    EXPECT_EXIT(WriteUnder("0", u"line"), testing::ExitedWithCode(0), "^$");
}

// Two threads write long lines into a pipe, which is shorter than all of them. Ends with the number of mixed lines.
[[noreturn]] void WriteFromTwoThreads()
{
    constexpr int kLines = 100;
    setenv("ORV_DEBUG_OUTPUT", "1", 1);
    int ends[2] = {};
    if (pipe(ends) != 0) std::exit(-1);
    dup2(ends[1], STDERR_FILENO);
    close(ends[1]);
    const auto write = [](char16_t unit) {
        for (int i = 0; i < kLines; ++i) Platform::WriteDebug(std::u16string(3000, unit));
    };
    std::thread first(write, u'a');
    std::thread second(write, u'\u20AC');
    std::thread closing([&] {
        first.join();
        second.join();
        close(STDERR_FILENO);
    });
    std::string euros;
    for (int i = 0; i < 3000; ++i) euros += "\u20AC";
    const std::string whole[] = {std::string(3000, 'a') + "\n", euros + "\n"};
    int mixed = 0;
    FILE* const reader = fdopen(ends[0], "r");
    char line[10000];
    while (std::fgets(line, sizeof line, reader)) {
        if (line != whole[0] && line != whole[1]) ++mixed;
    }
    closing.join();
    std::exit(mixed);
}

TEST(PosixDebugOutputDeathTest, LinesStayWhole)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(WriteFromTwoThreads(), testing::ExitedWithCode(0), "");
}

}  // namespace
