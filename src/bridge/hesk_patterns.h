// The grammar of the sibling product's text: exactly these patterns, and whatever they let through is accepted.
#pragma once

#include <cstddef>

#include "forms/expression.h"

namespace HeskPLC {

struct HeskPatterns {
    OrvPLC::Expression head;   // groups: 1 prefix, 2 name
    OrvPLC::Expression field;  // groups: see TokenPart, one more each
    OrvPLC::Expression tail;
};

// The capture groups of a field, as they stand in a token.
enum class TokenPart : std::size_t {
    Key,
    Integer,
    Float,
    String,
    Rect,  // four of them, the lowest word first
    ChannelId = Rect + 4,
    ChannelNumber,
    ChannelName,
    EventTypeId,
    EventTypeName,
    ResourceGuid,
    ResourceName,
    Count
};

// Compiled for the first who needs them, by any thread: most hosts never meet such a text, and loading the library
// would cost them half a millisecond more.
const HeskPatterns& Patterns();
void EndHeskPatterns();  // gives them back when the library is unloaded

}  // namespace HeskPLC
