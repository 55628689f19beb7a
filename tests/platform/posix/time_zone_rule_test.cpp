#include "platform/posix/time_zone_rule.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>

namespace {

using Platform::ParsePosixRule;
using Platform::SystemTime;
using Platform::TimeZone;

std::string Text(const SystemTime& date)
{
    std::string text;
    for (const unsigned field :
         {date.year, date.month, date.dayOfWeek, date.day, date.hour, date.minute, date.second, date.milliseconds}) {
        text += std::to_string(field) + ' ';
    }
    return text;
}

// The record as "bias daylightBias | daylight date | standard date".
std::string Text(const std::optional<TimeZone>& zone)
{
    if (!zone) return "none";
    std::string text = std::to_string(zone->bias) + ' ' + std::to_string(zone->daylightBias);
    if (zone->daylightDate.month == 0) return text;
    return text + " | " + Text(zone->daylightDate) + "| " + Text(zone->standardDate);
}

TEST(PosixRule, BecomesAZoneRecord)
{
    struct Case {
        const char* rule;
        const char* record;
    };
    const Case cases[] = {
        {"UTC0", "0 0"},
        {"<+0530>-5:30", "-330 0"},
        {"EST5", "300 0"},
        {"EST+5:00:00", "300 0"},
        {"azAZ5", "300 0"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", "-60 -60 | 0 3 0 5 2 0 0 0 | 0 10 0 5 3 0 0 0 "},
        {"NZST-12NZDT,M9.5.0,M4.1.0/3", "-720 -60 | 0 9 0 5 2 0 0 0 | 0 4 0 1 3 0 0 0 "},
        {"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", "-630 -30 | 0 10 0 1 2 0 0 0 | 0 4 0 1 2 0 0 0 "},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", "-60 60 | 0 10 0 5 2 0 0 0 | 0 3 0 5 1 0 0 0 "},
        {"EST5EDT", "300 -60 | 0 3 0 2 2 0 0 0 | 0 11 0 1 2 0 0 0 "},
        // The end of a day is its last millisecond.
        {"EET-2EEST,M4.5.5/0,M10.5.4/24", "-120 -60 | 0 4 5 5 0 0 0 0 | 0 10 4 5 23 59 59 999 "},
        // Beyond a day: the Thursday of week 4 of March 2026 is the 26th, and 26 hours on is the 27th.
        {"IST-2IDT,M3.4.4/26,M10.5.0", "-120 -60 | 2026 3 5 27 2 0 0 0 | 0 10 0 5 2 0 0 0 "},
        {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", "120 -60 | 2026 3 6 28 23 0 0 0 | 0 10 0 5 0 0 0 0 "},
        // The same beyond the end of a year, where no month follows.
        {"AAA3BBB,M12.5.0/26,0/0", "180 -60 | 2026 12 1 28 2 0 0 0 | 2026 1 4 1 0 0 0 0 "},
        {"AAA3:30:45BBB,J60/0,300/1:30:15", "210 -60 | 2026 3 0 1 0 0 0 0 | 2026 10 3 28 1 30 15 0 "},
    };
    for (const Case& test : cases) EXPECT_EQ(Text(ParsePosixRule(test.rule, 2026)), test.record) << test.rule;
    EXPECT_EQ(Text(ParsePosixRule("AAA3BBB,J60/0,59/0", 2024)),
              "180 -60 | 2024 3 5 1 0 0 0 0 | 2024 2 4 29 0 0 0 0 ");  // only the second form counts the leap day
}

TEST(PosixRule, RefusesWhatIsNone)
{
    for (const char* rule : {"", "UTC", "U0", "UTC25", "<+01", "CET-1CEST,M13.1.0,M10.5.0", "CET-1CEST,M3.6.0,M10.5.0",
                             "CET-1CEST,M3.5.7,M10.5.0", "CET-1CEST,M3.5.0", "CET-1CEST,M3.5.0,M10.5.0/3x", "CET-1 ",
                             "CET-1CEST,J0/25,J5", "CET-1CEST,0/-1,J5", "CET-1CEST,0/0,J365/25",
                             "CET-1CEST,M3.5.0/168,M10.5.0", "CET-1CEST25", "Europe/Nowhere"}) {
        EXPECT_EQ(Text(ParsePosixRule(rule, 2026)), "none") << rule;
    }
    // Cut, with another sign between the parts, and with what is no letter.
    for (const char* rule :
         {"CET-1CEST,M3", "CET-1CEST,M3.5", "CET-1CEST,M3:5.0,M10.5.0", "CET-1CEST,M3.5:0,M10.5.0",
          "CET-1CESTM3.5.0,M10.5.0", "CET-1CEST;M3.5.0,M10.5.0", "CET-1CEST,M3.0.0,M10.5.0", "CET-1CEST,J366,J5",
          "CET-1:60", "CET-1:00:60", "CET-CET", "CET-1CEST,M0.1.0,M10.5.0", "[AA5", "{{{5", "@@@5", "```5"}) {
        EXPECT_EQ(Text(ParsePosixRule(rule, 2026)), "none") << rule;
    }
}

class LocalTimeZone : public testing::Test {
protected:
    ~LocalTimeZone() override { kept_ ? setenv("TZ", kept_->c_str(), 1) : unsetenv("TZ"); }

    static std::string ZoneUnder(const std::string& variable)
    {
        setenv("TZ", variable.c_str(), 1);
        TimeZone zone;
        EXPECT_TRUE(Platform::GetLocalTimeZone(zone));
        return Text(std::optional(zone));
    }

private:
    static std::optional<std::string> Current()
    {
        const char* value = std::getenv("TZ");
        return value ? std::optional<std::string>(value) : std::nullopt;
    }

    const std::optional<std::string> kept_ = Current();
};

TEST_F(LocalTimeZone, FollowsTheVariable)
{
    EXPECT_EQ(ZoneUnder("CET-1CEST,M3.5.0,M10.5.0/3"), Text(ParsePosixRule("CET-1CEST,M3.5.0,M10.5.0/3", 2026)));
    EXPECT_EQ(ZoneUnder(":UTC0"), "0 0");
    EXPECT_EQ(ZoneUnder(""), "0 0");
    EXPECT_EQ(ZoneUnder("XYZ7"), "420 0");
    EXPECT_EQ(ZoneUnder("ABC-2;"), "-120 0");  // what the C library makes of it
    EXPECT_EQ(ZoneUnder("Nowhere/AtAll"), "0 0");
    EXPECT_EQ(ZoneUnder("AAA3BBB,J60/0,300").substr(0, 11), "180 -60 | 2");  // dates of this year
    EXPECT_EQ(ZoneUnder("XYZ7:03"), "423 0");
    unsetenv("TZ");
    TimeZone zone;
    EXPECT_TRUE(Platform::GetLocalTimeZone(zone));
    EXPECT_NE(zone.bias, 423);  // no place has it
}

TEST_F(LocalTimeZone, ReadsTheLastLineOfAZoneFile)
{
    const std::string path = testing::TempDir() + "orv_zone_file";
    struct Case {
        std::string content;
        std::string record;
    };
    // From 1970 until the 26th century two hours; no rule.
    const std::string table = "TZif2" + std::string(39, '\0') + "TZif2" + std::string(27, '\0') +
                              std::string("\0\0\0\2\0\0\0\2\0\0\0\1\0\0\0\0\0\0\0\0\0\0\0\4\0\0\0\0\1\0", 30) +
                              std::string("\0\0\0\0\0\0\0\0\x1C\x20\0\0\0", 13);
    const Case cases[] = {
        {table, "-120 0"},
        {"TZif2" + std::string((1 << 20) - 11, '\n') + "ABC-2\n", "-120 0"},
        {"TZif2\nABC-2:30\n", "-150 0"},
        {"TZif2\nABC-23", "0 0"},
        {"TZif2\n\n", "0 0"},
        {"no zone\nABC-2\n", "0 0"},
        {"TZif2" + std::string((1 << 20) - 10, '\n') + "ABC-2\n", "0 0"},  // no zone has so many transitions
        {"", "0 0"},
    };
    for (const Case& test : cases) {
        std::ofstream(path, std::ios::binary) << test.content;
        ZoneUnder("UTC0");  // another value, so that the file is read anew
        EXPECT_EQ(ZoneUnder(path), test.record);
        EXPECT_EQ(ZoneUnder(':' + path), test.record);
    }
    setenv("TZDIR", testing::TempDir().c_str(), 1);
    std::ofstream(path, std::ios::binary) << "TZif2\nABC-3\n";
    EXPECT_EQ(ZoneUnder("orv_zone_file"), "-180 0");
    unsetenv("TZDIR");
    std::remove(path.c_str());
}

}  // namespace
