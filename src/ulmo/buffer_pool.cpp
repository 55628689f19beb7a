#include "ulmo/buffer_pool.h"

#include <array>
#include <atomic>
#include <cstring>
#include <limits>
#include <new>

#include "ulmo/exceptions.h"

namespace Ulmo {

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kMostKept = 64 * 1024;  // a larger storage is not worth keeping

// Slots instead of a list and a lock: neither has to be built or destroyed, so buffers of static objects may come and
// go at any time.
constinit std::array<std::atomic<Buffer*>, 16> kept{};

// False when all slots are taken.
bool Keep(Buffer* buffer) noexcept
{
    for (std::atomic<Buffer*>& slot : kept) {
        Buffer* none = nullptr;
        if (slot.compare_exchange_strong(none, buffer, std::memory_order_release, std::memory_order_relaxed))
            return true;
    }
    return false;
}

Buffer* TakeKept() noexcept
{
    for (std::atomic<Buffer*>& slot : kept) {
        if (!slot.load(std::memory_order_relaxed)) continue;
        if (Buffer* buffer = slot.exchange(nullptr, std::memory_order_acquire)) return buffer;
    }
    return nullptr;
}

void Free(std::byte* storage) noexcept
{
    ::operator delete (storage, std::align_val_t{Buffer::kAlignment});
}

}  // namespace

Buffer::~Buffer()
{
    Free(data_);
}

void Buffer::Reserve(std::size_t needed)
{
    if (needed <= capacity_) return;
    // So that growing by half cannot wrap.
    if (needed > std::numeric_limits<std::size_t>::max() / 4) throw OutOfMemoryException(needed);
    const std::size_t capacity = (needed * 3 / 2 + kPage - 1) / kPage * kPage;
    auto* storage = static_cast<std::byte*>(::operator new (capacity, std::align_val_t{kAlignment}, std::nothrow));
    if (!storage) throw OutOfMemoryException(capacity);
    if (size_ != 0) std::memcpy(storage, data_, size_);
    Free(data_);
    data_ = storage;
    capacity_ = capacity;
}

void Buffer::Resize(std::size_t size)
{
    Reserve(size);
    if (size > size_) std::memset(data_ + size_, 0, size - size_);
    size_ = size;
}

void Buffer::Assign(const void* bytes, std::size_t count)
{
    if (count > capacity_) Reset();  // nothing to keep, and bytes of the buffer's own would fit
    Reserve(count);
    if (count != 0) std::memmove(data_, bytes, count);
    size_ = count;
}

void Buffer::Delete() noexcept
{
    Reset();
    if (capacity_ > kMostKept || !Keep(this)) delete this;
}

namespace BufferPool {

CountedPtr<Buffer> Take()
{
    Buffer* buffer = TakeKept();
    return CountedPtr<Buffer>(buffer ? buffer : new Buffer);
}

void Clear() noexcept
{
    while (const Buffer* buffer = TakeKept()) delete buffer;
}

}  // namespace BufferPool

}  // namespace Ulmo
