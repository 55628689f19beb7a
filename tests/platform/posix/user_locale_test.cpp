#include "platform/posix/user_locale.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <langinfo.h>

#include <cerrno>
#include <cstdlib>
#include <new>
#include <string>

#include "platform/calendar.h"
#include "platform/text.h"

namespace {

bool memoryHasRunOut = false;

// What the user's locale says here.
struct {
    nl_item item;
    const char* text;
} said{};

}  // namespace

// In place of the C library's, for this whole program.
extern "C" locale_t newlocale(int categories, const char* name, locale_t base) noexcept
{
    static const auto original = reinterpret_cast<decltype(&newlocale)>(dlsym(RTLD_NEXT, "newlocale"));
    if (!memoryHasRunOut) return original(categories, name, base);
    errno = ENOMEM;
    return nullptr;
}

extern "C" char* nl_langinfo_l(nl_item item, locale_t locale)
{
    static const auto original = reinterpret_cast<decltype(&nl_langinfo_l)>(dlsym(RTLD_NEXT, "nl_langinfo_l"));
    return said.text && item == said.item ? const_cast<char*>(said.text) : original(item, locale);
}

namespace {

TEST(UserLocale, TellsAMissingOneFromMissingMemory)
{
    const locale_t found = Platform::FindLocale(LC_ALL_MASK, "C");
    EXPECT_TRUE(found);
    freelocale(found);
    EXPECT_FALSE(Platform::FindLocale(LC_ALL_MASK, "no_SUCH.locale"));
    memoryHasRunOut = true;
    EXPECT_THROW(Platform::FindLocale(LC_ALL_MASK, "C"), std::bad_alloc);
    memoryHasRunOut = false;
}

// A host without a locale has ASCII, whose upper half would be lost.
TEST(UserLocaleDeathTest, AsciiIsReadAsUtf8)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const char* all = std::getenv("LC_ALL");
    const std::string kept = all ? all : "";
    for (const char* name : {"C", "C.UTF-8", "no_SUCH.locale"}) {
        setenv("LC_ALL", name, 1);
        EXPECT_EXIT(std::exit(Platform::UserCodeset() ? 1 : 0), testing::ExitedWithCode(0), "") << name;
    }
    all ? setenv("LC_ALL", kept.c_str(), 1) : unsetenv("LC_ALL");
}

TEST(UserLocaleDeathTest, TextsAreInItsCodeset)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto run = [] {
        said = {CODESET, "ISO-8859-1"};
        std::string narrow;
        std::u16string wide;
        const bool there = Platform::ToNarrow(Platform::CodePage::Ansi, u"\u00C4", narrow) && narrow == "\xC4";
        std::exit(there && Platform::ToWide(Platform::CodePage::Ansi, narrow, wide) && wide == u"\u00C4" ? 0 : 1);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
    const auto unknown = [] {
        said = {CODESET, "no such codeset"};
        char16_t buffer[16];
        std::exit(static_cast<int>(Platform::FormatLocaleTime({2026, 1, 0, 1, 3, 10, 43, 0}, true, buffer)));
    };
    EXPECT_EXIT(unknown(), testing::ExitedWithCode(0), "");
}

TEST(UserLocale, AZoneThatIsNotKnownLeavesNoBlanks)
{
    said = {T_FMT, "%Z %H:%M:%S %z"};
    char16_t buffer[16];
    const std::size_t length = Platform::FormatLocaleTime({2026, 1, 0, 1, 3, 10, 43, 0}, false, buffer);
    EXPECT_EQ(std::u16string(buffer, length), u"03:10");
    said = {};
}

}  // namespace
