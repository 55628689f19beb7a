// Tells an event record to people, parameter by parameter.
#pragma once

#include <cstdint>

#include "OrvActions/OrvEvents.h"

namespace OrvPLC {

// Of the two callbacks the plain one is used when there is one.
struct TOrvEventDescriptionCallbacks {
    OrvWord context;
    TOrvEventDescriptionCallback plain;      // may be null
    TOrvEventDescriptionCallback2 extended;  // may be null

    void Call(std::int32_t index, const char16_t* label, const char16_t* value, std::uint32_t priority) const;
};

// Walks the declared parameters of the record's action; those above the level get no call. A record that yields no
// action gives no call at all. Raises what restoring and the callbacks raise.
void DescribeEvent(const TOrvEventData& record, const TOrvEventDescriptionCallbacks& callbacks, std::uint32_t level);

}  // namespace OrvPLC
