// Case and code pages of the operating system.
//
// The functions here only answer; ulmo/string_conversion.h wraps them with the exceptions of this system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Platform {

// Lower-cases UTF-16 units one by one, in place. Units above ASCII follow the system's simple mapping; surrogates stay.
void LowerInPlace(char16_t* text, std::size_t length);

// Compares without regard to case, as names of catalogue tables are compared.
bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b);
// The same by the rules of the user's language. Nothing when the system refuses; the reason is in LastError().
std::optional<bool> EqualForUser(std::u16string_view a, std::u16string_view b);

enum class CodePage : std::uint32_t {
    Ansi = 0,  // the system's; on Linux the codeset of the user's locale, UTF-8 when that is C or POSIX
    Utf8 = 65001,
};

// Converts the whole text. What does not fit the target becomes a replacement character, never a failure, so a false
// result means that the system refused the call: the reason is in LastError() and the output is empty.
bool ToWide(CodePage page, std::string_view text, std::u16string& wide);
bool ToNarrow(CodePage page, std::u16string_view text, std::string& narrow);

}  // namespace Platform
