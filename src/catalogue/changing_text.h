// A display text, which may be written at any time while other threads read it.
//
// A pointer that a caller got may be kept: no room is freed while the library lives. A text that fits the room of the
// one before is written in place; otherwise it moves to a new room of at least twice the size, so that all the rooms of
// a text together are never more than a few times its longest. What such a pointer reads while another thread writes is
// the caller's affair; it always meets a zero.
//
// The library itself takes no lock to read: it takes a copy and looks whether a write came in between. A text that was
// never written is a constant and needs neither a copy nor a room. Writers are one at a time, under the catalogue's
// lock.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "catalogue/builtin_texts.h"

namespace OrvPLC {

template <class Char>
class ChangingText {
    // Complete before anybody sees it, and left as it is when the text moves on. The last unit is zero from the
    // beginning and stays zero, so a search for the end of a text always ends.
    struct Room {
        explicit Room(std::size_t size) : capacity(size), units(std::make_unique<Char[]>(size + 1)) {}

        std::atomic<std::uint32_t> version{0};  // odd while a write is going on
        std::atomic<std::uint32_t> length{0};
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
        String text;                 // for the present room
        std::unique_ptr<Room> room;  // with the text, when it does not fit the present one
    };

    constexpr ChangingText(Builtin::Text constant = {}) noexcept : constant_(constant) {}
    // For the time of loading, when nobody else reads. The units of a moved text keep their address.
    ChangingText(ChangingText&& other) noexcept : constant_(other.constant_), room_(other.room_.exchange(nullptr)) {}
    ChangingText& operator=(const ChangingText&) = delete;
    ~ChangingText() { Forget(); }

    Change Prepare(View text) const;  // may fail, and then nothing has changed
    void Commit(Change change) noexcept;
    // Gives the rooms back; the constant shows again. For the end of the library.
    void Forget() noexcept { delete room_.exchange(nullptr); }

    // For callers, and for readers that no writer disturbs.
    const Char* c_str() const noexcept { return view().data(); }
    View view() const noexcept
    {
        const Room* room = room_.load(std::memory_order_acquire);
        return room ? View(room->units.get(), room->length.load(std::memory_order_relaxed)) : Constant();
    }

    // The text as it was before or after any write, never in the middle of one. The view is valid as long as `copy`.
    View Whole(String& copy) const { return room_.load(std::memory_order_acquire) ? WholeOfWritten(copy) : Constant(); }

private:
    View Constant() const noexcept { return {Builtin::Pool<Char>() + constant_.offset, constant_.length}; }
    View WholeOfWritten(String& copy) const;
    static bool CopyUnits(const Room& room, String& copy);

    Builtin::Text constant_;
    std::atomic<Room*> room_{nullptr};  // the present one, which holds the older ones; null: the constant
};

extern template class ChangingText<char>;
extern template class ChangingText<char16_t>;

}  // namespace OrvPLC
