// What a value needs of a stream to go through it. The order of the two operations is part of the interface.
#pragma once

#include <cstddef>

namespace Ulmo {

class IByteStream {
public:
    virtual void Write(const void* buffer, std::size_t count) = 0;  // all of it, or a failure is raised
    virtual std::size_t Read(void* buffer, std::size_t count) = 0;  // fewer than asked for only at the end

protected:
    ~IByteStream() = default;
};

// Raises SystemException with Platform::kResultEndOfFile when the stream ends before.
void ReadExactly(IByteStream& stream, void* buffer, std::size_t count);

// Appends that many bytes to a container of bytes. The count may come from outside: memory is taken only as bytes
// arrive, in pieces.
template <class Bytes>
void ReadAppending(IByteStream& stream, Bytes& bytes, std::size_t count)
{
    constexpr std::size_t kPiece = 65536;
    while (count != 0) {
        const std::size_t piece = count < kPiece ? count : kPiece;
        const std::size_t before = bytes.size();
        bytes.resize(before + piece);
        ReadExactly(stream, bytes.data() + before, piece);
        count -= piece;
    }
}

}  // namespace Ulmo
