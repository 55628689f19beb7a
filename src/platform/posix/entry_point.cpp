#include "platform/library_events.h"

namespace {

// The library is linked so that it stays in memory when a host closes it: threads that go on would otherwise end in a
// hook that is gone. So the destructor runs when the process ends, and only then.
struct Entry {
    Entry() { Platform::LibraryEvents::Started(); }
    ~Entry() { Platform::LibraryEvents::Ended(true); }
};
const Entry entry;

}  // namespace
