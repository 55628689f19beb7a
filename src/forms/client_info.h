// Who caused an action: the host, the kind of client and the account, as general parameters of the action.
#pragma once

#include <cstdint>
#include <string_view>

#include "objects/action.h"

namespace OrvPLC {

inline constexpr std::u16string_view kClientHost = u"ClientHost";
inline constexpr std::u16string_view kClientType = u"ClientType";
inline constexpr std::u16string_view kClientAccount = u"ClientAccount";

// The outputs point into the parameters. The first parameter that is missing ends the reading: its output is null, the
// ones behind it are left as they were and the answer is false. Deliberate, as is that a type that is no number gives
// null and goes on.
bool ReadClientInfo(TOrvAction& action, const OrvWChar** host, const std::uint32_t** type, const OrvWChar** account);

// A null host or account removes the parameter.
void WriteClientInfo(TOrvAction& action, const OrvWChar* host, std::uint32_t type, const OrvWChar* account);

}  // namespace OrvPLC
