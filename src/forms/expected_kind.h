// Which objects a caller of a reader is willing to take.
#pragma once

#include <cstdint>

#include "OrvActions/OrvTypes.h"

namespace OrvPLC {

// `expected` comes from the caller: 0 and 0x7FFFFFFF admit both kinds of objects; the kinds of the sibling platform
// stand for ours; any other number admits nothing.
constexpr bool Admits(std::uint32_t expected, std::uint32_t kind)
{
    const bool action = kind == ORV_MESSAGE_ACTION;
    const bool matchAction = kind == ORV_MESSAGE_MATCH_ACTION;
    switch (expected) {
    case ORV_EXPECT_ANY:
    case 0x7FFFFFFF: return action || matchAction;
    case ORV_MESSAGE_SIBLING_ACTION:
    case ORV_MESSAGE_ACTION: return action;
    case ORV_MESSAGE_SIBLING_MATCH_ACTION:
    case ORV_MESSAGE_MATCH_ACTION: return matchAction;
    default: return false;
    }
}

}  // namespace OrvPLC
