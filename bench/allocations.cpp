#include "allocations.h"

#include <cstddef>

namespace {

std::uint64_t allocations = 0;  // the benchmarks run on one thread

}  // namespace

// They replace those of the C library, which also offers these names.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size)
{
    ++allocations;
    return __libc_realloc(block, size);
}
}

std::uint64_t OrvBench::Allocations()
{
    return allocations;
}
