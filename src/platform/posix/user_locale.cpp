#include "platform/posix/user_locale.h"

#include <langinfo.h>
#include <algorithm>
#include <array>
#include <cerrno>
#include <new>
#include <string_view>

namespace Platform {

namespace {

// The environment may name a locale that is not installed.
locale_t MakeUserLocale()
{
    const locale_t user = FindLocale(LC_ALL_MASK, "");
    return user ? user : FindLocale(LC_ALL_MASK, "C");
}

const char* FindUserCodeset()
{
    static constexpr std::array<std::string_view, 5> kReadAsUtf8 = {"UTF-8", "utf8", "ANSI_X3.4-1968", "US-ASCII",
                                                                    "ASCII"};
    const char* codeset = nl_langinfo_l(CODESET, UserLocale());
    const bool utf8 = std::find(kReadAsUtf8.begin(), kReadAsUtf8.end(), codeset) != kReadAsUtf8.end();
    return utf8 ? nullptr : codeset;
}

}  // namespace

locale_t FindLocale(int categories, const char* name)
{
    const locale_t locale = newlocale(categories, name, nullptr);
    if (!locale && errno == ENOMEM) throw std::bad_alloc();
    return locale;
}

locale_t UserLocale()
{
    static const locale_t locale = MakeUserLocale();
    return locale;
}

const char* UserCodeset()
{
    static const char* const codeset = FindUserCodeset();
    return codeset;
}

}  // namespace Platform
