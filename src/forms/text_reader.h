// Reads one action from text.
#pragma once

#include <cstdint>
#include <string_view>

#include "objects/action.h"

namespace OrvPLC {

struct TextReadResult {
    TOrvAction* object;      // with one reference that the caller owns, or null
    std::uint32_t consumed;  // characters up to where the reading came, also without an object
};

// A text that is no action gives null without a failure. Raises GuidConversionException, EUlmoDateTime or
// SystemException for a literal with an impossible value, std::runtime_error for a text with too much
// markup (forms/markup_guard.h), std::bad_alloc.
//
// What looks like text of the sibling product goes through Sibling() and what comes back is read instead;
// `consumed` then counts its characters. `narrow`: the caller's text was narrow, and the sibling sees it through UTF-8.
TextReadResult ReadActionText(std::u16string_view text, std::uint32_t expectedKind, bool narrow);

}  // namespace OrvPLC
