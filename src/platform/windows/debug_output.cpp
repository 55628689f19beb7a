#include "platform/debug_output.h"

#include <algorithm>
#include <memory>
#include <new>

#include "platform/windows/windows_api.h"

namespace Platform {

namespace {

constexpr std::size_t kUsualUnits = 1023;

// The system wants a terminator, which the text need not have.
void WriteTerminated(std::u16string_view text, wchar_t* room)
{
    *std::copy(text.begin(), text.end(), room) = 0;
    OutputDebugStringW(room);
}

}  // namespace

void WriteDebug(std::u16string_view text)
{
    wchar_t usual[kUsualUnits + 1];
    if (text.size() <= kUsualUnits) return WriteTerminated(text, usual);
    const std::unique_ptr<wchar_t[]> large(new (std::nothrow) wchar_t[text.size() + 1]);
    if (large) return WriteTerminated(text, large.get());
    WriteTerminated(text.substr(0, kUsualUnits), usual);  // without memory only the beginning
}

}  // namespace Platform
