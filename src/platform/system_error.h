// The system's error codes and their texts.
//
// Codes are those of the system that runs: Windows codes there, errno values on Linux. A handful of Windows codes that
// this library itself reports have the same number and an English text on both systems.
#pragma once

#include <cstdint>
#include <string>

namespace Platform {

inline constexpr std::uint32_t kInvalidParameter = 87;
inline constexpr std::uint32_t kNoUnicodeTranslation = 1113;
inline constexpr std::uint32_t kResultInsufficientBuffer = 0x8007007A;
inline constexpr std::uint32_t kResultInvalidParameter = 0x80070057;
inline constexpr std::uint32_t kResultEndOfFile = 0x80070026;
// A buffer that is too small for a date in the user's language. On Linux 122 means an exceeded quota, so inside
// the library the code is another there.
inline constexpr std::uint32_t kToldInsufficientBuffer = 122;
#if defined(_WIN32)
inline constexpr std::uint32_t kInsufficientBuffer = kToldInsufficientBuffer;
#else
inline constexpr std::uint32_t kInsufficientBuffer = 0x20000000 | kToldInsufficientBuffer;
#endif

// The code for callers, from one of those above or of the system.
constexpr std::uint32_t ToldCode(std::uint32_t code)
{
    return code == kInsufficientBuffer ? kToldInsufficientBuffer : code;
}

std::uint32_t LastError();
void SetLastError(std::uint32_t code);

// The system's text for a code without trailing line breaks; empty if there is none.
std::u16string SystemErrorText(std::uint32_t code);

}  // namespace Platform
