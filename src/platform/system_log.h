// The log of the machine that its administrator reads: the event log on Windows, syslog on Linux.
#pragma once

#include <cstdint>
#include <string>

namespace Platform {

class SystemLog {
public:
    // Registers the source; if that fails every Write fails.
    explicit SystemLog(const char16_t* source);
    SystemLog(const SystemLog&) = delete;
    SystemLog& operator=(const SystemLog&) = delete;
    ~SystemLog();

    // Type 2 for errors, 1 for warnings, 0 for anything else. False when the system refuses; the reason is in
    // LastError().
    bool Write(std::uint16_t type, const std::u16string& line);

private:
    [[maybe_unused]] void* source_ = nullptr;  // of the system
    [[maybe_unused]] void* owner_ = nullptr;   // the identity of the user whom the entries belong to
};

// Loads the library that holds the texts of the event log's entries, so that they stay readable. Gives its handle, null
// if there is none; always null on Linux, where none is needed.
void* LoadSystemLogTexts();

}  // namespace Platform
