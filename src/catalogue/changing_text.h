// A display text, which may be written at any time while other threads read it.
//
// A pointer that a caller got may be kept: no room is freed while the library lives. A text that fits the room of the
// one before is written in place; otherwise it moves to a new room of at least twice the size, so that all the rooms of
// a text together are never more than a few times its longest. What such a pointer reads while another thread writes is
// the caller's affair; it always meets a zero.
//
// The library itself takes no lock to read: it takes a copy and looks whether a write came in between. A text that was
// never written is a constant and needs no copy. Writers are one at a time, under the catalogue's lock.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace OrvPLC {

template <class Char>
class ChangingText {
    // The last unit is zero from the beginning and stays so: whoever looks for the end of a text finds one.
    struct Room {
        explicit Room(std::size_t length) : capacity(length), units(std::make_unique<Char[]>(length + 1)) {}

        std::size_t capacity;
        std::unique_ptr<Char[]> units;
        std::unique_ptr<Room> older;
    };

public:
    using String = std::basic_string<Char>;
    using View = std::basic_string_view<Char>;

    // A write that has all it needs, so that it cannot fail any more.
    class Change {
        friend ChangingText;
        String text;
        std::unique_ptr<Room> room;  // null when the text fits the present one
    };

    ChangingText() = default;
    // Copying, moving and borrowing belong to the time of loading, when nobody else reads. The units of a moved text
    // keep their address.
    ChangingText(const ChangingText& other) { *this = other; }
    ChangingText(ChangingText&& other) noexcept { *this = std::move(other); }
    ChangingText& operator=(const ChangingText& other);
    ChangingText& operator=(ChangingText&& other) noexcept;
    ~ChangingText() = default;

    // The constant lives as long as the library and has a zero behind it.
    void Borrow(View constant);

    Change Prepare(View text) const;  // may fail, and then nothing has changed
    void Commit(Change change) noexcept;

    // For callers, and for readers that no writer disturbs.
    const Char* c_str() const noexcept { return text_.load(std::memory_order_acquire); }
    View view() const noexcept { return {c_str(), length_.load(std::memory_order_relaxed)}; }

    // The text as it was before or after any write, never in the middle of one. The view is valid as long as `copy`.
    View Whole(String& copy) const
    {
        const std::uint32_t version = version_.load(std::memory_order_acquire);
        const View text(text_.load(std::memory_order_relaxed), length_.load(std::memory_order_relaxed));
        return version == kConstant && StillAt(version) ? text : WholeOfWritten(copy);
    }

private:
    static constexpr Char kEmpty[1] = {};
    static constexpr std::uint32_t kConstant = 0;

    bool StillAt(std::uint32_t version) const noexcept
    {
        std::atomic_thread_fence(std::memory_order_acquire);
        return version % 2 == 0 && version_.load(std::memory_order_relaxed) == version;
    }
    View WholeOfWritten(String& copy) const;
    bool CopyUnits(View text, String& copy, std::uint32_t version) const;

    std::atomic<const Char*> text_{kEmpty};
    std::atomic<std::uint32_t> length_{0};
    std::atomic<std::uint32_t> version_{kConstant};  // odd while a write is going on
    std::unique_ptr<Room> room_;                     // the present one, which holds the older ones
};

extern template class ChangingText<char>;
extern template class ChangingText<char16_t>;

}  // namespace OrvPLC
