// An allocator for the whole process that refuses chosen allocations. Linked into a program it takes the place
// of malloc and its kin for every library in it, or is preloaded into a program by LD_PRELOAD.
#pragma once

#include <cstddef>
#include <cstdint>

namespace FailingAllocator {

// From now on allocations are counted; the one with this number (from 1) fails, or all from there on. 0: none fails.
void Arm(std::uint64_t number, bool allFromThere) noexcept;
// The end of that; returns how many allocations were asked for.
std::uint64_t Disarm() noexcept;
bool Failed() noexcept;  // whether one was refused since Arm

// Blocks that are in use.
std::int64_t LiveBlocks() noexcept;

// Where the first refused allocation was asked for, innermost frame first.
std::size_t FailingStack(void** frames, std::size_t room) noexcept;

}  // namespace FailingAllocator
