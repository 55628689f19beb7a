#include "platform/posix/user_locale.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <new>
#include <string>

namespace {

bool memoryHasRunOut = false;

}  // namespace

// In place of the C library's, for this whole program.
extern "C" locale_t newlocale(int categories, const char* name, locale_t base) noexcept
{
    static const auto original = reinterpret_cast<decltype(&newlocale)>(dlsym(RTLD_NEXT, "newlocale"));
    if (!memoryHasRunOut) return original(categories, name, base);
    errno = ENOMEM;
    return nullptr;
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
    for (const char* name : {"C", "C.UTF-8"}) {
        setenv("LC_ALL", name, 1);
        EXPECT_EXIT(std::exit(Platform::UserCodeset() ? 1 : 0), testing::ExitedWithCode(0), "") << name;
    }
    all ? setenv("LC_ALL", kept.c_str(), 1) : unsetenv("LC_ALL");
}

}  // namespace
