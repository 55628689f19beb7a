// The locale of the user as the environment names it, without the process-wide setlocale: a library must not change
// what its host prints.
#pragma once

#include <locale.h>

namespace Platform {

// Null if no locale of that name is installed. Raises std::bad_alloc: a moment without memory must not decide what is
// kept for the life of the process.
locale_t FindLocale(int categories, const char* name);

// Made on first use and kept for the life of the process; the locale "C" when the environment names one that is not
// installed. Raises std::bad_alloc; the next call tries again.
locale_t UserLocale();

// The codeset of the user's locale for iconv; null when it is UTF-8 or plain ASCII, which is treated as UTF-8.
const char* UserCodeset();

}  // namespace Platform
