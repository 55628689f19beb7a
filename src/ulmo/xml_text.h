// The text side of XML: entities, escaping, wildcards, and places in a document.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Ulmo {

// Replaces, in place, each "&" and what follows up to the next ";", or up to the end without one, by one byte: a
// decimal "&#n;" by n cut to 8 bits, the five names by their character, anything else by "?". Deliberately lax: there
// is no hexadecimal form, so "&#x41;" is the byte 0, and "&lt" and "&gt" are known by these letters alone.
void DecodeXmlEntities(std::string& text);

// Replaces < & > ' " by their entities, and each byte that is part of no UTF-8 sequence by "&#n;".
std::string EscapeXml(std::string_view utf8);

// Whether a name fits a pattern in which "?" stands for one byte and "*" for any run. An empty pattern fits any name.
bool MatchesWildcards(std::string_view pattern, std::string_view name);

// Where a position of a document is on a screen: both from 1, columns counted in characters.
struct TextPlace {
    std::size_t line = 1;
    std::size_t column = 1;
};
// `from` is where the text itself starts, for callers that search step by step.
TextPlace PlaceOf(std::string_view utf8, std::size_t position, TextPlace from = {});

// Whether a byte can be part of a name: an ASCII letter or digit, or one of ":_.-".
bool IsXmlNameCharacter(char c);
bool IsXmlBlank(char c);  // blank, tab, carriage return, line feed

}  // namespace Ulmo
