#include "platform/debug_output.h"

#include <unistd.h>
#include <algorithm>
#include <cstdlib>

#include "platform/posix/utf8.h"

namespace Platform {

namespace {

constexpr std::size_t kUnitsPerWrite = 512;

bool Enabled()
{
    const char* value = std::getenv("ORV_DEBUG_OUTPUT");
    return value && std::string_view(value) == "1";
}

bool WriteAll(const char* bytes, std::size_t size)
{
    while (size != 0) {
        const ssize_t written = write(STDERR_FILENO, bytes, size);
        if (written <= 0) return false;  // nobody is left to tell
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

// The units of the next write: a surrogate pair stays together.
std::size_t NextPiece(std::u16string_view text)
{
    std::size_t length = std::min(text.size(), kUnitsPerWrite);
    const bool cut = length < text.size();
    if (cut && text[length - 1] >= 0xD800 && text[length - 1] <= 0xDBFF) --length;
    return length;
}

}  // namespace

void WriteDebug(std::u16string_view text)
{
    static const bool enabled = Enabled();
    if (!enabled) return;
    char bytes[3 * kUnitsPerWrite + 1];
    do {
        const std::size_t piece = NextPiece(text);
        std::size_t size = EncodeUtf8(text.substr(0, piece), bytes);
        const bool lineEnded = size != 0 && bytes[size - 1] == '\n';
        text.remove_prefix(piece);
        if (text.empty() && !lineEnded) bytes[size++] = '\n';
        if (!WriteAll(bytes, size)) return;
    } while (!text.empty());
}

}  // namespace Platform
