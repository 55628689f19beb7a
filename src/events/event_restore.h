// From an event record back to an action: from its binary image where there is one, else from its columns.
//
// The columns are the poorer source. A parameter comes back only when all of its columns are filled, so a channel
// without a name stays away. Columns go into the fields of their own sort, whatever the declared kind reads: a guid or
// a resource comes back with the zero guid, a Boolean that has a 64-bit column as false. Deliberate: the image is there
// for that.
#pragma once

#include "OrvActions/OrvEvents.h"
#include "objects/match_action.h"

namespace OrvPLC {

// Each gives an object with one reference that the caller owns, or null when the record yields none. They raise what
// the readers of binary form and text raise, std::bad_alloc, and std::length_error for a column with an impossible
// length.

// From an image or the columns, as a caller gets it back.
TOrvAction* RestoreAction(const TOrvEventData& record);
TOrvMatchAction* RestoreMatchAction(const TOrvEventData& record);

// An image with an action in our own form, whatever the record's code.
TOrvAction* RestoreFromImage(const TOrvEventData& record);

// From the columns alone. Null only without the catalogue's entry of event records, which stands in for a code that is
// unknown; the action then has that entry, which no name finds.
TOrvAction* RestoreFromColumns(const TOrvEventData& record);

// For describing: the record's code says in whose form the image is, a match action in it comes back as one, and the
// columns follow.
TOrvAction* RestoreForDescription(const TOrvEventData& record);

}  // namespace OrvPLC
