// The one way to the Windows headers, and the one place where our UTF-16 unit meets theirs.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef UNICODE
#define UNICODE
#endif
#include <windows.h>

namespace Platform {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

inline wchar_t* AsWide(char16_t* text)
{
    return reinterpret_cast<wchar_t*>(text);
}

inline const wchar_t* AsWide(const char16_t* text)
{
    return reinterpret_cast<const wchar_t*>(text);
}

}  // namespace Platform
