// Why and where a text is no action, for a person to see.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The reason, as far as it shows. To be asked right after the reader gave nothing, while the last error is its own.
std::string ReasonFor(std::u16string_view text, std::uint32_t consumed);

// The column of a position, counted in characters from 1.
std::size_t ColumnOf(std::u16string_view text, std::size_t position);

// Two lines: the text, or the part of a long one around the position, and a caret below the position.
std::string WithCaret(std::u16string_view text, std::size_t position);
