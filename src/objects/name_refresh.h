// Refreshes the names that an action carries of resources, event types and channels from a caller's configuration.
#pragma once

#include "OrvActions/OrvAccess.h"

namespace OrvPLC {

class TOrvAction;

// Asks the callbacks for every declared parameter that is set and names something. False when a callback did not know
// what it was asked for.
bool RefreshNames(TOrvAction& action, OrvWord context, const TOrvActionInfoUpdateCallbacks& callbacks);

}  // namespace OrvPLC
