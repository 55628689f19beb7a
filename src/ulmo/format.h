// Positional message formatting: "{0} of {1}", "{0,5}" padded on the left, "{0,-5}" on the right, "{{" and "}}" for
// braces. Arguments are strings; rendering numbers is the caller's business.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "ulmo/exceptions.h"

namespace Ulmo::Text {

// A fault in a format string, which is a programming fault of this library and not a fatal one.
class InvalidFormatStringException : public UlmoException {
public:
    InvalidFormatStringException(std::string_view text, std::u16string format, std::uint32_t position);

    const std::u16string& FormatString() const noexcept { return format_; }
    std::uint32_t Position() const noexcept { return position_; }  // in characters, of the fault

private:
    std::u16string format_;
    std::uint32_t position_;
};

// Appends to the output. A null format does nothing. Raises InvalidFormatStringException; what was appended up to the
// fault then stays in the output.
void Format(const char* format, std::string& output, std::span<const std::string_view> arguments);
void Format(const char16_t* format, std::u16string& output, std::span<const std::u16string_view> arguments);

}  // namespace Ulmo::Text
