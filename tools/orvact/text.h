// How text stands on a screen, and whether it is text at all. All of it is UTF-8; the library's UTF-16 goes through the
// wrapper's conversions.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

bool IsUtf8(std::string_view text);

// Removes the first character from the text and gives it; U+FFFD for a byte that begins no character.
char32_t NextCharacter(std::string_view& text);
void AppendUtf8(std::string& text, char32_t character);

// Columns on a terminal: 2 for East Asian wide characters and emoji, 0 for combining ones.
std::size_t CharacterWidth(char32_t character);
std::size_t DisplayWidth(std::string_view text);

// Fills up with blanks on the right.
std::string Padded(std::string_view text, std::size_t width);
// Cuts to a width, with an ellipsis where something was lost.
std::string Shortened(std::string_view text, std::size_t width);
// Control characters as their pictures: input from a log must not steer a terminal. Tabs become blanks.
std::string Visible(std::string_view text);
char32_t VisibleCharacter(char32_t character);

std::string LowerCaseAscii(std::string_view text);
