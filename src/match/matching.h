// The decision whether an action is one of those that a match action describes.
//
// There are no wildcards and no ranges: a parameter of the match action demands an equal one of the action, and what it
// does not mention does not matter.
#pragma once

#include "objects/match_action.h"

namespace OrvPLC {

// Neither object is changed. Action codes and the description take no part, nor does it matter whether the action is a
// match action itself.
bool Matches(const TOrvMatchAction& pattern, const TOrvAction& action);

// The pattern's value against the action's. Not symmetric, deliberately: a pattern may name a channel, an event type
// or a resource by id, by number or by name, and the first of them that it fills decides alone. So this is not the
// equality of values, which compares all fields and regards case.
bool MatchesValue(const TOrvParameter& wanted, const TOrvParameter& given);

}  // namespace OrvPLC
