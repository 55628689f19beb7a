// A text that grows at its end. A short one lies in the object itself, so making one on the stack allocates nothing.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

#include "ulmo/copy_units.h"

namespace Ulmo {

class GrowingText {
public:
    static constexpr std::size_t kOwnUnits = 2048;

    GrowingText() noexcept : end_(own_), limit_(own_ + kOwnUnits) {}
    GrowingText(const GrowingText&) = delete;
    GrowingText& operator=(const GrowingText&) = delete;

    std::u16string_view view() const noexcept { return {begin(), size()}; }
    std::size_t size() const noexcept { return static_cast<std::size_t>(end_ - begin()); }

    // The end of the text, with room for that many more units. The caller writes there and says with EndAt how far.
    char16_t* Room(std::size_t units)
    {
        if (static_cast<std::size_t>(limit_ - end_) < units) Grow(units);
        return end_;
    }
    void EndAt(char16_t* end) noexcept { end_ = end; }

    void Append(std::u16string_view text)
    {
        char16_t* const end = Room(text.size());
        CopyUnits(end, text.data(), text.size());
        EndAt(end + text.size());
    }

private:
    const char16_t* begin() const noexcept { return heap_ ? heap_.get() : own_; }

    void Grow(std::size_t units)
    {
        const std::size_t length = size();
        const std::size_t capacity = std::max(2 * length, length + units) + kOwnUnits;
        auto larger = std::make_unique_for_overwrite<char16_t[]>(capacity);
        CopyUnits(larger.get(), begin(), length);
        heap_ = std::move(larger);
        end_ = heap_.get() + length;
        limit_ = heap_.get() + capacity;
    }

    char16_t* end_;
    char16_t* limit_;
    std::unique_ptr<char16_t[]> heap_;
    char16_t own_[kOwnUnits];
};

}  // namespace Ulmo
