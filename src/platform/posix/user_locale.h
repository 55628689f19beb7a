// The locale of the user as the environment names it, without the process-wide setlocale: a library must not change
// what its host prints.
#pragma once

#include <locale.h>

namespace Platform {

// Made on first use and kept for the life of the process; the locale "C" when the environment names one that is not
// installed.
locale_t UserLocale();

// The codeset of the user's locale for iconv; null when it is UTF-8 or plain ASCII, which is treated as UTF-8.
const char* UserCodeset();

}  // namespace Platform
