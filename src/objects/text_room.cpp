#include "objects/text_room.h"

#include <new>

namespace OrvPLC {

namespace {

// Sizes of the chunks, which double up to the last. With what malloc adds they fill its size classes.
constexpr std::uint32_t kFirstChunk = 248;
constexpr std::uint32_t kLastChunk = 1016;
// A longer text would leave most of a chunk unused.
constexpr std::size_t kLongestInChunk = 60;

}  // namespace

bool TextRoom::AddChunk(std::size_t units) noexcept
{
    const bool full = chunks_ && chunks_->size >= kLastChunk;
    if (full || units > kLongestInChunk) return false;
    return Append(chunks_ ? 2 * chunks_->size + 8 : kFirstChunk);
}

void TextRoom::AddFirstChunk(std::size_t bytes) noexcept
{
    static_assert(kMostInQuickChunk + sizeof(Chunk) <= kQuickBlock);
    Append(static_cast<std::uint32_t>(bytes + sizeof(Chunk)));
}

bool TextRoom::Append(std::uint32_t size) noexcept
{
    // No memory is no failure yet: the text then asks the heap for a block of its own, which reports it.
    void* memory = ::operator new(size, std::nothrow);
    if (!memory) return false;
    // What is left of the chunk before stays unused.
    chunks_ = new (memory) Chunk{chunks_, size};
    next_ = reinterpret_cast<std::byte*>(chunks_ + 1);
    left_ = size - static_cast<std::uint32_t>(sizeof(Chunk));
    return true;
}

void TextRoom::FreeChunks() noexcept
{
    while (chunks_) {
        Chunk* next = chunks_->next;
        ::operator delete(chunks_);
        chunks_ = next;
    }
}

}  // namespace OrvPLC
