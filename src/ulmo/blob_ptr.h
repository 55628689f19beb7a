// A pointer to bytes and their size. Either the bytes are somebody else's, and nobody asks whether they are still
// there, or copies of the pointer share them by a count.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace Ulmo {

class BlobPtr {
public:
    BlobPtr() = default;
    BlobPtr(const void* data, std::uint32_t size) noexcept  // somebody else's bytes
        : data_(static_cast<std::byte*>(const_cast<void*>(data))), size_(size)
    {}
    BlobPtr(const BlobPtr& other) noexcept;
    BlobPtr(BlobPtr&& other) noexcept : BlobPtr() { Swap(other); }
    BlobPtr& operator=(BlobPtr other) noexcept
    {
        Swap(other);
        return *this;
    }
    ~BlobPtr() { Release(); }

    // Bytes of its own, to be filled by the caller; raises std::bad_alloc.
    static BlobPtr Allocate(std::uint32_t size);

    std::byte* Data() const noexcept { return data_; }
    std::uint32_t Size() const noexcept { return size_; }

    void Release() noexcept;  // the pointer is null then, the size stays

    // "blobptr ", the size and the address, deliberately with nothing between the two numbers: the text is for reading
    // by people. FromText wants a blank there, and takes whatever address the text names.
    std::string ToText() const;
    void FromText(std::string_view text);  // raises VariantStringToValueConversionException without the word

private:
    void Swap(BlobPtr& other) noexcept
    {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(owned_, other.owned_);
    }

    std::byte* data_ = nullptr;
    std::uint32_t size_ = 0;
    bool owned_ = false;  // a count of 4 bytes stands before the data, at the start of the allocation
};

}  // namespace Ulmo
