// The system's error codes and their texts.
//
// Codes are those of the system that runs: Windows codes there, errno values on Linux. A handful of Windows codes that
// this library itself reports have the same number and an English text on both systems.
#pragma once

#include <cstdint>
#include <string>

namespace Platform {

inline constexpr std::uint32_t kInvalidParameter = 87;
inline constexpr std::uint32_t kInsufficientBuffer = 122;
inline constexpr std::uint32_t kNoUnicodeTranslation = 1113;
inline constexpr std::uint32_t kResultInsufficientBuffer = 0x8007007A;
inline constexpr std::uint32_t kResultInvalidParameter = 0x80070057;
inline constexpr std::uint32_t kResultEndOfFile = 0x80070026;

std::uint32_t LastError();
void SetLastError(std::uint32_t code);

// The system's text for a code without trailing line breaks; empty when it has none.
std::u16string SystemErrorText(std::uint32_t code);

}  // namespace Platform
