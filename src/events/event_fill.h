// From an action to an event record.
#pragma once

#include "OrvActions/OrvEvents.h"
#include "objects/action.h"

namespace OrvPLC {

// Clears the record and points its columns at the values of the action, which are converted in place where a column is
// of another kind. An action that the catalogue does not know leaves the record empty.
void FillEventRecord(TOrvEventData& record, TOrvAction& action);

}  // namespace OrvPLC
