// Kinds of messages in the forms: which of them a reader may take, which the prefix of a text names, and which a client
// of the sibling platform knows.
#pragma once

#include <cstdint>
#include <string_view>

#include "OrvActions/OrvTypes.h"

namespace OrvPLC {

// A prefix may name these; no object has them.
inline constexpr std::uint32_t kQuestionMarkKind = 5;
inline constexpr std::uint32_t kExclamationMarkKind = 6;

// From a caller: any kind, like 0. To a caller: a kind that the sibling platform lacks.
inline constexpr std::uint32_t kAnyOrUnknownKind = 0x7FFFFFFF;

// `expected` comes from the caller: 0 and 0x7FFFFFFF admit both kinds of objects; the kinds of the sibling platform
// stand for ours; any other number admits nothing.
constexpr bool Admits(std::uint32_t expected, std::uint32_t kind)
{
    const bool action = kind == ORV_MESSAGE_ACTION;
    const bool matchAction = kind == ORV_MESSAGE_MATCH_ACTION;
    switch (expected) {
    case ORV_EXPECT_ANY:
    case kAnyOrUnknownKind: return action || matchAction;
    case ORV_MESSAGE_SIBLING_ACTION:
    case ORV_MESSAGE_ACTION: return action;
    case ORV_MESSAGE_SIBLING_MATCH_ACTION:
    case ORV_MESSAGE_MATCH_ACTION: return matchAction;
    default: return false;
    }
}

// The number by which a client of the sibling platform tells actions from match actions.
constexpr std::uint32_t SiblingKindOf(std::uint32_t kind)
{
    switch (kind) {
    case ORV_MESSAGE_SIBLING_ACTION:
    case ORV_MESSAGE_ACTION: return ORV_MESSAGE_SIBLING_ACTION;
    case ORV_MESSAGE_SIBLING_MATCH_ACTION:
    case ORV_MESSAGE_MATCH_ACTION: return ORV_MESSAGE_SIBLING_MATCH_ACTION;
    default: return kAnyOrUnknownKind;
    }
}

// What technical text begins with. Plain text has no mark for match actions.
constexpr std::u16string_view PrefixOf(std::uint32_t kind)
{
    switch (kind) {
    case ORV_MESSAGE_SIBLING_MATCH_ACTION:
    case ORV_MESSAGE_MATCH_ACTION: return u"@ ";
    case kQuestionMarkKind: return u"? ";
    case kExclamationMarkKind: return u"! ";
    default: return {};
    }
}

// The kind of a prefix that a reader has found: nothing or one unit of @!?
constexpr std::uint32_t KindOfPrefix(std::u16string_view prefix)
{
    if (prefix.empty()) return ORV_MESSAGE_ACTION;
    switch (prefix.front()) {
    case u'@': return ORV_MESSAGE_MATCH_ACTION;
    case u'?': return kQuestionMarkKind;
    default: return kExclamationMarkKind;
    }
}

}  // namespace OrvPLC
