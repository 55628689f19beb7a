// The free-threaded marshaler that lets a COM host pass an object between apartments as a plain pointer.
#pragma once

namespace Platform {

// The marshaler for `outer`, an object whose table begins with the three operations of IUnknown, as a pointer to the
// marshaler's own IUnknown with one reference. Null if the system has no marshaler, as on Linux, or refuses.
void* CreateFreeThreadedMarshaler(void* outer);

}  // namespace Platform
