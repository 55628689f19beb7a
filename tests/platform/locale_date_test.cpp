#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/calendar.h"
#include "platform/system_error.h"

namespace {

using Platform::DateStyle;
using Platform::SystemTime;

constexpr SystemTime kMoment{2026, 11, 0, 15, 3, 10, 43, 123};

std::u16string Date(DateStyle style, std::uint16_t day = 15)
{
    char16_t buffer[160];
    return {buffer, Platform::FormatLocaleDate({2026, 11, 0, day, 3, 10, 43, 123}, style, buffer)};
}

std::u16string Time(bool withSeconds)
{
    char16_t buffer[160];
    return {buffer, Platform::FormatLocaleTime(kMoment, withSeconds, buffer)};
}

TEST(LocaleDate, ShowsWhatItIsAskedFor)
{
    for (const char16_t* part : {u"26", u"11", u"15"}) {
        EXPECT_NE(Date(DateStyle::Short).find(part), std::u16string::npos);
    }
    EXPECT_NE(Date(DateStyle::Long).find(u"2026"), std::u16string::npos);
    EXPECT_NE(Date(DateStyle::Long).find(u"15"), std::u16string::npos);
    EXPECT_EQ(Date(DateStyle::Weekday).find(u"15"), std::u16string::npos);
    EXPECT_NE(Date(DateStyle::Weekday), Date(DateStyle::Weekday, 16));
    EXPECT_EQ(Date(DateStyle::Weekday), Date(DateStyle::Weekday, 22));
    EXPECT_NE(Time(true).find(u"10"), std::u16string::npos);
    EXPECT_NE(Time(true).find(u"43"), std::u16string::npos);
    EXPECT_NE(Time(false).find(u"10"), std::u16string::npos);
    EXPECT_EQ(Time(false).find(u"43"), std::u16string::npos);
}

TEST(LocaleDate, RefusesWhatDoesNotFitOrExist)
{
    char16_t buffer[160];
    const std::size_t whole = std::min(Date(DateStyle::Short).size(), Time(true).size());  // no room for the end
    for (const std::size_t room : {std::size_t{0}, std::size_t{1}, whole}) {
        const std::span<char16_t> small(buffer, room);
        Platform::SetLastError(0);
        EXPECT_EQ(Platform::FormatLocaleDate(kMoment, DateStyle::Short, small), 0U);
        EXPECT_EQ(Platform::LastError(), Platform::kInsufficientBuffer);
        Platform::SetLastError(0);
        EXPECT_EQ(Platform::FormatLocaleTime(kMoment, true, small), 0U);
        EXPECT_EQ(Platform::LastError(), Platform::kInsufficientBuffer);
    }
    EXPECT_EQ(Platform::FormatLocaleDate({2026, 2, 0, 30, 0, 0, 0, 0}, DateStyle::Short, buffer), 0U);
    EXPECT_EQ(Platform::LastError(), Platform::kInvalidParameter);
    EXPECT_EQ(Platform::FormatLocaleTime({2026, 2, 0, 3, 24, 0, 0, 0}, true, buffer), 0U);
    EXPECT_EQ(Platform::LastError(), Platform::kInvalidParameter);
}

}  // namespace
