#include "failing_allocator.h"

#include <atomic>
#include <cerrno>
#include <cstring>

#include <execinfo.h>

// What the names below stand for in the C library.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace FailingAllocator {

namespace {

constexpr int kFrames = 40;

thread_local bool armed __attribute__((tls_model("initial-exec"))) = false;
std::uint64_t failAt = 0;
bool allFrom = false;
std::uint64_t asked = 0;
bool failed = false;
void* stack[kFrames];
int stackSize = 0;
std::atomic<std::int64_t> live{0};

// Whether this allocation is one to refuse.
bool Refused() noexcept
{
    if (!armed) return false;
    ++asked;
    if (failAt == 0 || asked < failAt || (asked > failAt && !allFrom)) return false;
    if (!failed) {
        armed = false;  // the walk over the stack may allocate
        stackSize = backtrace(stack, kFrames);
        armed = true;
    }
    failed = true;
    errno = ENOMEM;
    return true;
}

void* Counted(void* block) noexcept
{
    if (block) live.fetch_add(1, std::memory_order_relaxed);
    return block;
}

}  // namespace

void Arm(std::uint64_t number, bool allFromThere) noexcept
{
    failAt = number;
    allFrom = allFromThere;
    asked = 0;
    failed = false;
    stackSize = 0;
    armed = true;
}

std::uint64_t Disarm() noexcept
{
    armed = false;
    return asked;
}

bool Failed() noexcept
{
    return failed;
}

std::int64_t LiveBlocks() noexcept
{
    return live.load(std::memory_order_relaxed);
}

std::size_t FailingStack(void** frames, std::size_t room) noexcept
{
    const auto size = static_cast<std::size_t>(stackSize) < room ? static_cast<std::size_t>(stackSize) : room;
    std::memcpy(frames, stack, size * sizeof(void*));
    return size;
}

}  // namespace FailingAllocator

using namespace FailingAllocator;

extern "C" {

void* malloc(std::size_t size) noexcept
{
    return Refused() ? nullptr : Counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    return Refused() ? nullptr : Counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) noexcept
{
    if (Refused()) return nullptr;
    void* moved = __libc_realloc(block, size);
    return block ? moved : Counted(moved);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept
{
    return Refused() ? nullptr : Counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept
{
    void* made = memalign(alignment, size);
    if (!made) return ENOMEM;
    *block = made;
    return 0;
}

void free(void* block) noexcept
{
    if (block) live.fetch_sub(1, std::memory_order_relaxed);
    __libc_free(block);
}

}  // extern "C"
