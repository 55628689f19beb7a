// The grammars of action text, ours and the sibling product's: exactly these patterns, and whatever they let through is
// accepted. The library walks over texts by hand; these patterns define the language.
#pragma once

#include "judge/expression.h"

namespace OrvPLC::Judge {

struct OwnPatternSet {
    Expression identifier;
    Expression header;  // groups: 1 prefix, 2 bare name, 3 quoted name
    // Groups: 1, 2 bare and quoted name, 3 integer, 4 float, 5 string, 6 to 9 rectangle, 10 to 12 channel, 13, 14 event
    // type, 15, 16 resource, 17 result data.
    Expression parameter;
    Expression close;
    Expression resultDataItem;  // groups: 1 to 5 numbers, 6 name
    Expression guid;
    Expression dateTime;
    Expression markupTag;
};

struct SiblingPatternSet {
    Expression head;  // groups: 1 prefix, 2 name
    // Groups: 1 key, 2 integer, 3 float, 4 string, 5 to 8 rectangle, 9 to 11 channel, 12, 13 event type, 14, 15
    // resource.
    Expression field;
    Expression tail;
};

// Compiled once, on first use.
const OwnPatternSet& OwnPatterns();
const SiblingPatternSet& SiblingPatterns();

}  // namespace OrvPLC::Judge
