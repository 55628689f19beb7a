// The start and the end of the library. There is no initialisation call: a host may call every export as soon as the
// library is loaded.
#include "bridge/bridge.h"
#include "catalogue/catalogue.h"
#include "catalogue/extensions.h"
#include "events/event_settings.h"
#include "exports/last_error.h"
#include "platform/crash_handler.h"
#include "platform/library_events.h"
#include "ulmo/buffer_pool.h"
#include "ulmo/debug_out.h"
#include "ulmo/exception_history.h"

namespace Platform::LibraryEvents {

void Started()
{
    // The order matters: a crash is reported from here on, a failure of a later step finds its history and its block,
    // and extension files find the catalogue. No step raises, since nobody could catch it.
    Platform::InstallCrashHandler();
    Ulmo::ExceptionHistory::Start();
    OrvPLC::LastError::Start();
    OrvPLC::StartCatalogue();
    HeskPLC::StartBridge();
    OrvPLC::EventSettings::Read();
    OrvPLC::LoadXMLExtensions();
}

void ThreadEnded()
{
    OrvPLC::LastError::ThreadEnded();
}

// Memory goes back to the process with the process; only an unload on its own has to give it back.
void Ended(bool processEnds)
{
    if (processEnds) return;
    Platform::RemoveCrashHandler();
    HeskPLC::EndBridge();
    OrvPLC::EndCatalogue();
    OrvPLC::LastError::End();
    Ulmo::BufferPool::Clear();
    // These two come last, because what ends before may still report.
    Ulmo::Diagnostics::End();
    Ulmo::ExceptionHistory::End();
}

}  // namespace Platform::LibraryEvents
