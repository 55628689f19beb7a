// Letters with combining marks as the single characters that codesets have.
#pragma once

namespace Platform {

inline constexpr char16_t kFirstCombiningMark = u'\x0300';

// The character that a letter and the mark after it make together, 0 when no codeset has one.
char16_t Composed(char16_t letter, char16_t mark);

}  // namespace Platform
