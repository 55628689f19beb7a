#include "platform/debug_output.h"

#include <unistd.h>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <new>

#include "platform/posix/descriptor.h"
#include "platform/posix/utf8.h"

namespace Platform {

namespace {

constexpr std::size_t kUsualUnits = 512;
constexpr std::size_t kBytesPerUnit = 3;

bool Enabled()
{
    const char* value = std::getenv("ORV_DEBUG_OUTPUT");
    return value && std::string_view(value) == "1";
}

// A pipe takes a long line in pieces, and another thread must not come in between. Never destroyed: threads may still
// write when the process ends.
std::mutex& Section()
{
    alignas(std::mutex) static char memory[sizeof(std::mutex)];
    static std::mutex& section = *new (memory) std::mutex;
    return section;
}

// The room is three bytes a unit and one for the end of the line.
void WriteLine(std::u16string_view text, char* room)
{
    std::size_t size = EncodeUtf8(text, room);
    if (size == 0 || room[size - 1] != '\n') room[size++] = '\n';
    const std::lock_guard<std::mutex> guard(Section());
    WriteWhole(STDERR_FILENO, std::string_view(room, size));  // if that fails it cannot be reported either
}

}  // namespace

void WriteDebug(std::u16string_view text)
{
    // Read once: a host may change its environment while threads write.
    static const bool enabled = Enabled();
    if (!enabled) return;
    char usual[kBytesPerUnit * kUsualUnits + 1];
    if (text.size() <= kUsualUnits) return WriteLine(text, usual);
    const std::unique_ptr<char[]> large(new (std::nothrow) char[kBytesPerUnit * text.size() + 1]);
    if (large) return WriteLine(text, large.get());
    WriteLine(text.substr(0, kUsualUnits), usual);  // without memory only the beginning
}

}  // namespace Platform
