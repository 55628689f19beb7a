// The grammar of action text: exactly these patterns, and whatever they let through is accepted.
#pragma once

#include "forms/expression.h"

namespace OrvPLC {

struct TextPatterns {
    Expression header;     // groups: 1 prefix, 2 bare name, 3 quoted name
    Expression parameter;  // groups: see ParameterGroup
    Expression close;
    Expression resultDataItem;  // groups: 1 to 5 numbers, 6 name
    Expression guid;
    Expression dateTime;
    Expression markupTag;
};

// Group numbers of TextPatterns::parameter.
namespace ParameterGroup {
inline constexpr std::size_t BareName = 1;
inline constexpr std::size_t QuotedName = 2;
inline constexpr std::size_t Integer = 3;
inline constexpr std::size_t Float = 4;
inline constexpr std::size_t String = 5;
inline constexpr std::size_t Rect = 6;  // four groups, the lowest word first
inline constexpr std::size_t ChannelId = 10;
inline constexpr std::size_t ChannelNumber = 11;
inline constexpr std::size_t ChannelName = 12;
inline constexpr std::size_t EventTypeId = 13;
inline constexpr std::size_t EventTypeName = 14;
inline constexpr std::size_t ResourceGuid = 15;
inline constexpr std::size_t ResourceName = 16;
inline constexpr std::size_t ResultData = 17;  // the whole list; its items follow in groups that nothing reads
}  // namespace ParameterGroup

// Compiled between the start and the end of the library, once.
const TextPatterns& Patterns();
void StartTextPatterns();
void EndTextPatterns();

}  // namespace OrvPLC
