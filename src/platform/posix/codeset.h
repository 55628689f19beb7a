// Code pages other than UTF-8, by the names that iconv knows.
#pragma once

#include <string>
#include <string_view>

namespace Platform {

// Convert the whole text. A byte that means nothing becomes U+FFFD, a character that the codeset lacks "?". False for
// an unknown codeset, with "invalid parameter" as the last error and an empty output.
bool CodesetToWide(const char* codeset, std::string_view text, std::u16string& wide);
bool WideToCodeset(const char* codeset, std::u16string_view text, std::string& narrow);

}  // namespace Platform
