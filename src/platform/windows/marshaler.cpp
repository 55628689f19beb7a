#include "platform/marshaler.h"

#include "platform/windows/windows_api.h"

#include <objbase.h>

namespace Platform {

void* CreateFreeThreadedMarshaler(void* outer)
{
    IUnknown* marshaler = nullptr;
    return CoCreateFreeThreadedMarshaler(static_cast<IUnknown*>(outer), &marshaler) == S_OK ? marshaler : nullptr;
}

}  // namespace Platform
