// Where an object keeps the texts of its values: in its own block or a chunk as far as room was reserved there, then in
// a few more chunks. What finds no room there lives on the heap, each text by itself.
//
// A text in the room is never freed alone. So that an object which is changed for ever does not grow, the number of
// chunks has a limit, and a text that replaces another takes its place when it fits.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ulmo/reference_count.h"

namespace OrvPLC {

// Stands before the units of a text.
struct TextHeader {
    static constexpr std::uint32_t kOnHeap = 0x80000000;

    std::uint32_t room;  // units that fit, the terminating zero apart; kOnHeap marks a block of its own
};

class TextRoom : public Ulmo::NonCopyable {
public:
    // Bytes that a text takes, a multiple of the header's size.
    static constexpr std::size_t BytesFor(std::size_t units)
    {
        const std::size_t bytes = sizeof(TextHeader) + (units + 1) * sizeof(char16_t);
        return (bytes + alignof(TextHeader) - 1) / alignof(TextHeader) * alignof(TextHeader);
    }
    // The bytes to reserve for one text; an empty text takes none.
    static constexpr std::size_t Reserve(std::size_t units) { return units != 0 ? BytesFor(units) : 0; }

    // What the C library hands out several times as fast as anything larger, in bytes.
    static constexpr std::size_t kQuickBlock = 1032;
    static constexpr std::size_t kMostInQuickChunk = kQuickBlock - 2 * sizeof(void*);

    // The memory is aligned as a TextHeader and belongs to the caller.
    TextRoom(void* memory, std::uint32_t bytes) : next_(static_cast<std::byte*>(memory)), left_(bytes) {}
    ~TextRoom()
    {
        if (chunks_) FreeChunks();
    }

    // Room for that many bytes in a chunk, for an object without room in its block. Without memory there is none.
    void AddFirstChunk(std::size_t bytes) noexcept;

    // Raw memory for that many units and a terminator, with its header before it; null when there is no room.
    char16_t* Take(std::size_t units) noexcept
    {
        const std::size_t bytes = BytesFor(units);
        // Lengths come from outside: the bytes of a hostile one wrap.
        const bool fits = units < left_ && bytes <= left_;
        if (!fits && !AddChunk(units)) return nullptr;
        auto* header = reinterpret_cast<TextHeader*>(next_);
        header->room = static_cast<std::uint32_t>(units);
        next_ += bytes;
        *reinterpret_cast<TextHeader*>(next_ - sizeof(TextHeader)) = {0};  // what the text may not reach
        left_ -= static_cast<std::uint32_t>(bytes);
        return reinterpret_cast<char16_t*>(header + 1);
    }

    // The bytes of the texts in the present piece of the room, one behind the other, every one of them written.
    // `inBlock` is where the room of the object's block begins, the present piece as long as there are no chunks.
    struct Piece {
        const std::byte* begin;
        std::size_t size;
    };
    Piece Taken(const void* inBlock) const noexcept
    {
        const auto* begin =
            chunks_ ? reinterpret_cast<const std::byte*>(chunks_ + 1) : static_cast<const std::byte*>(inBlock);
        return {begin, static_cast<std::size_t>(next_ - begin)};
    }

private:
    struct Chunk {
        Chunk* next;
        std::uint32_t size;
    };
    bool AddChunk(std::size_t units) noexcept;  // with room for that many
    bool Append(std::uint32_t size) noexcept;   // a chunk of that size in bytes
    void FreeChunks() noexcept;

    std::byte* next_;
    Chunk* chunks_ = nullptr;  // the youngest first
    std::uint32_t left_;
};

}  // namespace OrvPLC
