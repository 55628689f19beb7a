// Growable byte buffers, and the pool that keeps a few of them for the next one who needs one.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ulmo/reference_count.h"

namespace Ulmo {

// Counted bytes; the last release gives the buffer to the pool. For one thread at a time.
class Buffer : public VirtualReferenceCountBaseClass {
public:
    static constexpr std::size_t kAlignment = 16;

    Buffer() = default;
    ~Buffer() override;

    std::byte* Data() noexcept { return data_; }
    const std::byte* Data() const noexcept { return data_; }
    std::size_t Size() const noexcept { return size_; }
    std::size_t Capacity() const noexcept { return capacity_; }

    void Reset() noexcept { size_ = 0; }  // to empty; keeps the storage
    // The capacity grows by half and to whole pages of 4096 bytes. Raises OutOfMemoryException and changes nothing when
    // there is no memory.
    void Reserve(std::size_t needed);
    void Resize(std::size_t size);                      // bytes that are new are 0
    void Assign(const void* bytes, std::size_t count);  // the bytes may be the buffer's own

    void Delete() noexcept override;

private:
    std::byte* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

// Any thread, at any time.
namespace BufferPool {

CountedPtr<Buffer> Take();  // an empty buffer
void Clear() noexcept;      // gives back what the pool keeps, before the library unloads

}  // namespace BufferPool

}  // namespace Ulmo
