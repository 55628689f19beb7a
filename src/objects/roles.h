// Access to parameters by what they designate, whatever they are called: the catalogue's view of a parameter is its
// role.
//
// Reads answer a pointer into the object, to its scratch record, which the next role read on the object overwrites.
// Deliberate: callers copy what they keep. Because of it a read counts as a write to the object.
#pragma once

#include <cstdint>

#include "OrvActions/OrvTypes.h"
#include "catalogue/entries.h"

namespace OrvPLC {

class TOrvAction;

namespace Roles {

// A set of views, a bit each.
using Views = std::uint32_t;
constexpr Views Bit(std::uint32_t view)
{
    return TOrvActionInternalInfo::ViewBit(view);
}

inline constexpr Views kVideoInput = Bit(ORV_VIEW_VideoInput) | Bit(ORV_VIEW_PTZHead) | Bit(ORV_VIEW_AudioInput);
inline constexpr Views kVideoOutput = Bit(ORV_VIEW_VideoOutput);
inline constexpr Views kInputContact = Bit(ORV_VIEW_InputContact);
inline constexpr Views kOutputContact = Bit(ORV_VIEW_OutputContact);
inline constexpr Views kForeignKey = Bit(ORV_VIEW_ForeignKey);

// The first parameter in declaration order that has one of the views and is set; null if there is none. A value of
// another kind leaves the scratch record as it was and is answered all the same.
const TOrvChannelValue* ReadChannel(TOrvAction& action, Views views);
const std::int64_t* ReadForeignKey(TOrvAction& action);

// Stores the channel in the first declared parameter that has one of the views, set or not, whatever its type. False
// when the action has no such parameter.
bool WriteChannel(TOrvAction& action, Views views, const TOrvChannelValue& channel);

// The first declared 32-bit parameter, enums included; 0 if there is none or it is not set.
std::int32_t ReadGenericInt32(const TOrvAction& action);

}  // namespace Roles

}  // namespace OrvPLC
