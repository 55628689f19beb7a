// What a value needs of a stream to go through it. The order of the two operations is part of the interface.
#pragma once

#include <cstddef>
#include <string>

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

// That many bytes. The count may come from outside: memory is taken only as bytes arrive.
std::string ReadBytes(IByteStream& stream, std::size_t count);

}  // namespace Ulmo
