#include "ulmo/event_log.h"

#include <atomic>

#include "platform/debug_output.h"
#include "ulmo/critical_section.h"
#include "ulmo/exceptions.h"
#include "ulmo/format.h"
#include "ulmo/number_text.h"

namespace Ulmo {

namespace {

constinit std::atomic<EventLog*> instance{nullptr};

CriticalSection& Section()
{
    static CriticalSection& section = *new CriticalSection;  // never destroyed: threads may outlive the library's end
    return section;
}

// Without the library the entries are written all the same, but the system's viewer has no text for them.
void LoadTexts()
{
    Platform::WriteDebug(u"Check for EventLogOutput dll");
    std::u16string handle;
    AppendUnsigned(handle, reinterpret_cast<std::uintptr_t>(Platform::LoadSystemLogTexts()));
    std::u16string line;
    const std::u16string_view arguments[] = {handle};
    Text::Format(u"Load EventLogOutput result: {0}", line, arguments);
    Platform::WriteDebug(line);
}

}  // namespace

EventLog::EventLog() : log_(u"OrvActions")
{}

CountedPtr<EventLog> EventLog::Get()
{
    // The usual way takes no lock: the log stays once it is made.
    if (EventLog* present = instance.load(std::memory_order_acquire)) return CountedPtr<EventLog>(present);
    const CriticalSectionGuard guard(Section());
    EventLog* log = instance.load(std::memory_order_relaxed);
    if (!log) {
        LoadTexts();
        log = new EventLog;
        log->AddRef();
        instance.store(log, std::memory_order_release);
    }
    return CountedPtr<EventLog>(log);
}

void EventLog::End() noexcept
{
    const CriticalSectionGuard guard(Section());
    if (EventLog* log = instance.exchange(nullptr)) log->Release();
}

void EventLog::Write(std::uint16_t type, const std::u16string& line)
{
    if (!log_.Write(type, line)) ThrowLastError(u"ReportEvent");
}

}  // namespace Ulmo
