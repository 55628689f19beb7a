// The last failure of each thread, in a block of fixed size that is storable when memory has run out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "OrvActions/OrvTypes.h"
#include "platform/thread_slot.h"

namespace OrvPLC {

// One per thread. The sizes of the text fields are the limits of what a failure can report: longer texts are cut.
struct TOrvLastError {
    std::uint32_t present;
    std::uint32_t code;
    std::uint32_t subCode;
    char className[500];
    char message[1024];
    char16_t messageW[1024];
    char details[5632];
};
static_assert(offsetof(TOrvLastError, className) == 12 && sizeof(TOrvLastError) == 12 + 500 + 1024 + 2048 + 5632);

namespace LastError {

// Takes the per-thread slot. Until then, and when the system has none, the library works without a last error.
void Start();
// Frees the block of the calling thread and gives the slot back. The blocks of other living threads are not freed: they
// may be gone or stopped in them.
void End();
void ThreadEnded();

// A failure. A message that is null is derived from the other one; what was thrown may leave both null, and then they
// are empty. Texts are cut silently.
struct Report {
    std::uint32_t code;
    std::uint32_t subCode;
    const char* className;
    const char* message;
    const char16_t* messageW;
    const char* details;
};
void Store(const Report& report) noexcept;
void StoreBufferTooSmall() noexcept;

// The place of each thread's block; none before Start and after End.
extern std::optional<Platform::ThreadSlot> slot;
// The first call of a thread makes its block even if it succeeds, so that there is one when memory has run out.
void ClearFirst() noexcept;

// Only marks it absent: the texts stay. Every call that succeeds does this.
inline void Clear() noexcept
{
    void* block = slot ? slot->Get() : nullptr;
    if (!block) return ClearFirst();
    static_cast<TOrvLastError*>(block)->present = 0;
}

bool Read(TOrvLastErrorInfo& info) noexcept;

}  // namespace LastError

}  // namespace OrvPLC
