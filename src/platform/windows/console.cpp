#include "platform/console.h"

#include <algorithm>
#include <string>

#include "platform/text.h"
#include "platform/windows/windows_api.h"

namespace Platform {

namespace {

constexpr std::size_t kLargestWrite = 0xFFFFF;

HANDLE HandleOf(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

}  // namespace

// A process without a console has null handles, which the system does not call a failure.
ConsoleStream::ConsoleStream(Kind kind)
    : handle_(
          reinterpret_cast<std::intptr_t>(GetStdHandle(kind == Kind::Error ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE))),
      valid_(HandleOf(handle_) != INVALID_HANDLE_VALUE && HandleOf(handle_) != nullptr)
{}

void ConsoleStream::Write(std::u16string_view text, std::optional<ConsoleColour> colour) const
{
    if (!valid_) return;
    const HANDLE handle = HandleOf(handle_);
    DWORD written = 0;
    CONSOLE_SCREEN_BUFFER_INFO before;
    // Not a console: a file or a pipe.
    if (!GetConsoleScreenBufferInfo(handle, &before)) {
        std::string bytes;
        if (ToNarrow(CodePage::Utf8, text, bytes)) {
            WriteFile(handle, bytes.data(), static_cast<DWORD>(std::min<std::size_t>(bytes.size(), MAXDWORD)), &written,
                      nullptr);
        }
        return;
    }
    if (colour) SetConsoleTextAttribute(handle, *colour);
    WriteConsoleW(handle, AsWide(text.data()), static_cast<DWORD>(std::min(text.size(), kLargestWrite)), &written,
                  nullptr);
    if (colour) SetConsoleTextAttribute(handle, before.wAttributes);
}

}  // namespace Platform
