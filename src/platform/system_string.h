// System strings and task memory: blocks that cross the library's boundary and are freed by whoever receives them.
//
// On Windows these are the system's own. Elsewhere the library brings them, with the same layout (a 32-bit byte length
// before the units, a zero unit after them) and exports them for its callers.
#pragma once

#include <cstddef>
#include <string_view>

namespace Platform {

// A new system string with a copy of the text; raises std::bad_alloc when there is no memory.
char16_t* NewSystemString(std::u16string_view text);
void FreeSystemString(char16_t* text);                 // null is allowed
std::size_t SystemStringLength(const char16_t* text);  // in units; 0 for null

void* AllocateTaskMemory(std::size_t size);  // null when there is no memory
void FreeTaskMemory(void* block);

}  // namespace Platform
