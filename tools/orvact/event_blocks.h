// Questions for a channel or a text are answered from block to block. In one tree of all events they come in any order,
// so that each transaction would touch thousands of its pages, and more of them the more events there are. Behind the
// number of a block, which the id of the event tells, it touches the pages of the last block only.
#pragma once

#include <cstdint>
#include <limits>

#include "event_conditions.h"

struct Ids {
    std::int64_t first = 0;
    std::int64_t last = std::numeric_limits<std::int64_t>::max();

    bool AreFew() const;
};

// So many events are read one by one sooner than those that fit are found in a tree and brought in order.
inline constexpr std::int64_t kFewIds = 8192;

// What the bounds of a filter leave of the ids.
Ids IdsOf(const EventFilter& filter, Ids ids = {});

// Whether the trees with blocks answer best.
bool AsksForBlocks(const EventFilter& filter, Ids ids);
