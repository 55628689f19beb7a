#include "platform/posix/time_pattern.h"

#include <gtest/gtest.h>

namespace {

// Every pattern that the locales of the C library have, by the way in which the seconds stand in it.
TEST(TimePattern, LosesTheSecondsAndWhatBelongsToThem)
{
    const struct {
        const char* pattern;
        const char* twelveHours;
        const char* expected;
    } cases[] = {
        {"%T", "", "%H:%M"},
        {"%T %Z", "", "%H:%M %Z"},
        {"%R", "", "%R"},
        {"%r", "%I:%M:%S %p", "%I:%M %p"},
        {"%r", "", "%I:%M %p"},
        {"%r", "%I:%M:%S %p %Z", "%I:%M %p %Z"},
        {"%Z %I:%M:%S %p", "", "%Z %I:%M %p"},
        {"%p%I.%M.%S %Z", "", "%p%I.%M %Z"},
        {"%H.%M.%S", "", "%H.%M"},
        {"%k:%M:%S", "", "%k:%M"},
        {"%OH:%OM:%OS", "", "%OH:%OM"},
        {"%OI:%OM:%OS %p", "", "%OI:%OM %p"},
        {"%-H:%_M:%02S", "", "%-H:%_M"},
        {"kl. %H.%M %z", "", "kl. %H.%M %z"},
        {"%I:%M:%S.%p %Z", "", "%I:%M.%p %Z"},
        {"%l:%M:%S\u1361%p", "", "%l:%M\u1361%p"},
        {"%H\u6642%M\u5206%S\u79D2", "", "%H\u6642%M\u5206"},
        {"%OH\u6642%OM\u5206%OS\u79D2", "", "%OH\u6642%OM\u5206"},
        {"%H\u65F6%M\u5206%S\u79D2 %Z", "", "%H\u65F6%M\u5206 %Z"},
        {"%p %I\u6642%M\u5206%S\u79D2 %Z", "", "%p %I\u6642%M\u5206 %Z"},
        {"%H\uC2DC %M\uBD84 %S\uCD08", "", "%H\uC2DC %M\uBD84"},
        {"hour %H min %M sec %S", "", "hour %H min %M"},
        {"%S", "", ""},
        {"%", "", "%"},
        {"", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Platform::TimePatternWithoutSeconds(c.pattern, c.twelveHours), c.expected) << c.pattern;
    }
}

}  // namespace
