#include "platform/marshaler.h"

namespace Platform {

void* CreateFreeThreadedMarshaler(void*)
{
    return nullptr;
}

}  // namespace Platform
