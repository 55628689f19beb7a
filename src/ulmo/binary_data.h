// Bytes as a value: a reference to a buffer of the pool. Copies have buffers of their own.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "ulmo/buffer_pool.h"

namespace Ulmo {

class BinaryData {
public:
    BinaryData() = default;  // empty: without a buffer
    BinaryData(const void* bytes, std::size_t count) { Assign(bytes, count); }
    BinaryData(const BinaryData& other);  // without a buffer when the other is empty
    BinaryData(BinaryData&& other) noexcept = default;
    BinaryData& operator=(BinaryData other) noexcept
    {
        std::swap(buffer_, other.buffer_);
        return *this;
    }

    const std::byte* Data() const noexcept { return buffer_ ? buffer_->Data() : nullptr; }
    std::size_t Size() const noexcept { return buffer_ ? buffer_->Size() : 0; }
    const Buffer* Held() const noexcept { return buffer_.get(); }

    // Both make the bytes the whole value: a buffer that is held is reset to empty and used again, deliberately by
    // Append as well.
    void Assign(const void* bytes, std::size_t count);
    void Append(const void* bytes, std::size_t count) { Assign(bytes, count); }

    std::string ToText() const;  // binarydata 3 AQID
    // The size that the text declares counts: of bytes beyond it nothing is seen, and what is missing stays as it was
    // (0 where nothing was). Damaged Base64 is not reported. Raises VariantStringToValueConversionException when the
    // text does not begin with the word, OutOfMemoryException when it declares far more than it brings; the value is
    // then unchanged.
    void FromText(std::string_view text);

private:
    CountedPtr<Buffer> buffer_;
};

}  // namespace Ulmo
