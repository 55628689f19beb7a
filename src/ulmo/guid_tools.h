// GUIDs as text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "OrvActions/OrvTypes.h"

namespace Ulmo::GuidTools {

inline constexpr std::size_t kTextLength = 36;

// Writes 36 lower-case characters "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x" without braces and without a
// terminating zero. The caller's buffer holds at least kTextLength units.
void Write(const TOrvGuid& guid, char16_t* buffer);
void Write(const TOrvGuid& guid, char* buffer);
std::string GuidToStringA(const TOrvGuid& guid);
std::u16string GuidToStringW(const TOrvGuid& guid);

// Parse without raising. A leading "{" is skipped and whether a closing one follows is not checked; characters behind
// the 36th pass. False leaves the output unchanged.
bool StringToGuidA(std::string_view text, TOrvGuid& guid);
bool StringToGuidW(std::u16string_view text, TOrvGuid& guid);

bool Equal(const TOrvGuid& a, const TOrvGuid& b);
bool IsZero(const TOrvGuid& guid);

}  // namespace Ulmo::GuidTools
