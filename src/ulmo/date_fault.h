// Why a text is no date or an instant out of range. A fault is plain data, so that a caller that only asks pays neither
// for a message nor for an entry in the exception history.
#pragma once

#include <string_view>

#include "ulmo/date_time.h"

namespace Ulmo {

struct DateFault {
    DateTimeError code = DateTimeError::Range;
    // The name of the part that is out of limits, what could have followed instead of the end, or the whole message.
    std::u16string_view text;
    // The limits of a part, or the characters of which one was expected; a second character of 0 means one only.
    unsigned low = 0;
    unsigned high = 0;
};

[[noreturn]] void Raise(const DateFault& fault);

// Stores the word; false with the fault for an instant outside 0 to 2^48 - 1.
bool TryMakeDateTime(std::int64_t utcMilliseconds, std::int16_t bias, TUlmoDateTime& value, DateFault& fault);

}  // namespace Ulmo
