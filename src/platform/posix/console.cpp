#include "platform/console.h"

#include <fcntl.h>
#include <unistd.h>
#include <cstdlib>
#include <string>

#include "platform/posix/descriptor.h"
#include "platform/text.h"

namespace Platform {

namespace {

// The terminal counts red, green, blue from the lowest bit up, and bright colours from 90.
std::string EscapeOf(ConsoleColour colour)
{
    const int hue = (colour & 4 ? 1 : 0) | (colour & 2 ? 2 : 0) | (colour & 1 ? 4 : 0);
    return "\x1B[" + std::to_string((colour & 8 ? 90 : 30) + hue) + "m";
}

bool ShowsColours(int descriptor)
{
    const char* refused = std::getenv("NO_COLOR");
    // An empty variable refuses nothing: that is the convention of NO_COLOR.
    return isatty(descriptor) && !(refused && *refused);
}

}  // namespace

ConsoleStream::ConsoleStream(Kind kind)
    : handle_(kind == Kind::Error ? STDERR_FILENO : STDOUT_FILENO),
      valid_(fcntl(static_cast<int>(handle_), F_GETFD) != -1)
{}

void ConsoleStream::Write(std::u16string_view text, std::optional<ConsoleColour> colour) const
{
    const int descriptor = static_cast<int>(handle_);
    std::string bytes;
    if (!valid_ || !ToNarrow(CodePage::Utf8, text, bytes)) return;
    if (colour && ShowsColours(descriptor)) bytes = EscapeOf(*colour) + bytes + "\x1B[0m";
    WriteWhole(descriptor, bytes);
}

}  // namespace Platform
