/* System strings and task memory, for callers outside Windows.
 *
 * Windows brings these functions itself (oleauto.h, combaseapi.h), and there this header declares nothing: use the
 * system's. Elsewhere the library exports them with the same names, layout and ownership.
 *
 * A system string is a pointer to 16-bit units. Before them stands their length in bytes, a 32-bit number, and after
 * them a zero unit that the length does not count; zero units inside the text are allowed. Null stands for the empty
 * string everywhere. Whoever receives a string owns it and frees it once, on any thread. These functions leave the last
 * error alone. */
#ifndef ORV_SYSTEM_STRINGS_H
#define ORV_SYSTEM_STRINGS_H

#include "OrvTypes.h"

#if !defined(_WIN32)

#if defined(__cplusplus)
extern "C" {
#endif

/* A copy of a text that ends in a zero unit; the caller frees it with SysFreeString. Null for a null text and when
 * there is no memory. */
OrvBStr SysAllocString(const OrvWChar* text);

/* A string of `length` units, copied from `text`, which may hold zero units. With a null text the units are left for
 * the caller to fill. Null when there is no memory or the length does not fit a string. */
OrvBStr SysAllocStringLen(const OrvWChar* text, uint32_t length);

/* As SysAllocStringLen for `size` bytes; an odd number is allowed. Null when there is no memory. */
OrvBStr SysAllocStringByteLen(const char* bytes, uint32_t size);

/* The length in units, rounded down, and in bytes, the zero unit not counted; 0 for null. */
uint32_t SysStringLen(OrvBStr text);
uint32_t SysStringByteLen(OrvBStr text);

/* Frees a string; null is allowed. */
void SysFreeString(OrvBStr text);

/* A block of `size` bytes, aligned for any type, that the caller frees with CoTaskMemFree; null when there is no
 * memory. A size of 0 gives a block that holds nothing. */
void* CoTaskMemAlloc(size_t size);
void CoTaskMemFree(void* block); /* null is allowed */

#if defined(__cplusplus)
} /* extern "C" */
#endif

#endif /* !_WIN32 */

#endif
