// Numbers that people give.
#pragma once

#include <charconv>
#include <string_view>
#include <system_error>

// Decimal digits and nothing else; false for any other text.
template <class Number>
bool ParseWhole(std::string_view text, Number& number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && error == std::errc() && end == text.data() + text.size();
}
