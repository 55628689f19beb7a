#include "platform/library_events.h"
#include "platform/windows/windows_api.h"

namespace {

// Set by DllMain at process end; read by destructors that run later.
bool processEnds = false;

struct Entry {
    Entry() { Platform::LibraryEvents::Started(); }
    ~Entry() { Platform::LibraryEvents::Ended(processEnds); }
};
const Entry entry;

}  // namespace

// Does next to nothing, since it runs under the loader's lock. A reserved value at detach means that the process ends.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved)
{
    if (reason == DLL_THREAD_DETACH) Platform::LibraryEvents::ThreadEnded();
    if (reason == DLL_PROCESS_DETACH) processEnds = reserved != nullptr;
    return TRUE;
}
