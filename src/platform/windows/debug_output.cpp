#include "platform/debug_output.h"

#include <algorithm>

#include "platform/windows/windows_api.h"

namespace Platform {

void WriteDebug(std::u16string_view text)
{
    constexpr std::size_t kUnitsPerCall = 1023;
    do {
        wchar_t piece[kUnitsPerCall + 1];
        const std::size_t length = std::min(text.size(), kUnitsPerCall);
        *std::copy_n(text.data(), length, piece) = 0;
        OutputDebugStringW(piece);
        text.remove_prefix(length);
    } while (!text.empty());
}

}  // namespace Platform
