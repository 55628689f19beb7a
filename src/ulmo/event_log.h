// The machine's log, one for the process.
#pragma once

#include <string>

#include "platform/system_log.h"
#include "ulmo/reference_count.h"

namespace Ulmo {

class EventLog final : public VirtualReferenceCountBaseClass {
public:
    // Made on first use, together with a look for the library that holds the texts of the entries.
    static CountedPtr<EventLog> Get();
    static void End() noexcept;  // drops the reference of the process

    // Type 2 for errors, 1 for warnings, 0 for anything else: deliberately not the numbers of the system's own types.
    // Raises SystemException.
    void Write(std::uint16_t type, const std::u16string& line);

private:
    EventLog();

    Platform::SystemLog log_;
};

}  // namespace Ulmo
