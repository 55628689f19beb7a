#include "platform/debug_output.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

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
    EXPECT_EXIT(WriteUnder("0", u"line"), testing::ExitedWithCode(0), "^$");
}

}  // namespace
