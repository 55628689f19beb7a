#include "platform/library_events.h"

namespace {

// The library is linked so that it stays in memory when a host closes it. Otherwise the end of a thread would call a
// hook that is gone. So the destructor only runs when the process ends.
struct Entry {
    Entry() { Platform::LibraryEvents::Started(); }
    ~Entry() { Platform::LibraryEvents::Ended(true); }
};
const Entry entry;

}  // namespace
