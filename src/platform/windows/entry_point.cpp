#include "platform/library_events.h"
#include "platform/windows/windows_api.h"

namespace {

// The process terminates: told to the entry point, needed by the static objects that end after it.
bool processEnds = false;

struct Entry {
    Entry() { Platform::LibraryEvents::Started(); }
    ~Entry() { Platform::LibraryEvents::Ended(processEnds); }
};
const Entry entry;

}  // namespace

// Near empty: it runs under the loader's lock. A reserved value at detach tells that the process ends.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved)
{
    if (reason == DLL_THREAD_DETACH) Platform::LibraryEvents::ThreadEnded();
    if (reason == DLL_PROCESS_DETACH) processEnds = reserved != nullptr;
    return TRUE;
}
