#include "platform/system_log.h"

#include <syslog.h>
#include <string_view>

#include "platform/text.h"

namespace Platform {

// No openlog: the identity of the log belongs to the host. The lines name their source themselves.
SystemLog::SystemLog(const char16_t*)
{}
SystemLog::~SystemLog() = default;

bool SystemLog::Write(std::uint16_t type, const std::u16string& line)
{
    // The log ends each entry itself, so the end of the line is left out.
    const std::size_t end = line.find_last_not_of(u"\r\n") + 1;
    std::string bytes;
    if (!ToNarrow(CodePage::Utf8, std::u16string_view(line).substr(0, end), bytes)) return false;
    syslog(type == 2 ? LOG_ERR : type == 1 ? LOG_WARNING : LOG_INFO, "%s", bytes.c_str());
    return true;
}

void* LoadSystemLogTexts()
{
    return nullptr;
}

}  // namespace Platform
