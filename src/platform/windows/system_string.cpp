#include "platform/system_string.h"

#include <limits>
#include <new>

#include "platform/windows/windows_api.h"

#include <objbase.h>
#include <oleauto.h>

namespace Platform {

char16_t* NewSystemString(std::u16string_view text)
{
    if (text.size() > std::numeric_limits<UINT>::max()) throw std::bad_alloc();
    // A null text would leave the units as they are.
    const wchar_t* units = text.empty() ? L"" : AsWide(text.data());
    const BSTR copy = SysAllocStringLen(units, static_cast<UINT>(text.size()));
    if (!copy) throw std::bad_alloc();
    return reinterpret_cast<char16_t*>(copy);
}

void FreeSystemString(char16_t* text)
{
    SysFreeString(AsWide(text));
}

std::size_t SystemStringLength(const char16_t* text)
{
    return SysStringLen(const_cast<BSTR>(AsWide(text)));
}

void* AllocateTaskMemory(std::size_t size)
{
    return CoTaskMemAlloc(size);
}

void FreeTaskMemory(void* block)
{
    CoTaskMemFree(block);
}

}  // namespace Platform
