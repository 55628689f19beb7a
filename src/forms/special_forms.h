// Strings of action text that are read as a guid or a date because of how they look.
#pragma once

#include <string_view>

namespace OrvPLC {

// 8-4-4-4-12 letters, digits or underscores, not only those of a guid.
bool HasGuidForm(std::u16string_view text);

// "2022/10/20 12:00:00,000 GMT+01:00" by its kinds of characters, whatever the numbers.
bool HasDateTimeForm(std::u16string_view text);

}  // namespace OrvPLC
