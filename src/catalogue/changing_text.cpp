#include "catalogue/changing_text.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <thread>
#include <utility>

namespace OrvPLC {

namespace {

// Other threads may be reading or writing the very unit.
template <class Char>
std::atomic_ref<Char> Unit(const Char* units, std::size_t index)
{
    return std::atomic_ref<Char>(const_cast<Char&>(units[index]));
}

}  // namespace

template <class Char>
ChangingText<Char>& ChangingText<Char>::operator=(const ChangingText& other)
{
    if (other.room_) {
        Commit(Prepare(other.view()));
    } else {
        Borrow(other.view());
    }
    return *this;
}

template <class Char>
ChangingText<Char>& ChangingText<Char>::operator=(ChangingText&& other) noexcept
{
    Borrow(other.view());
    version_.store(other.version_.load(std::memory_order_relaxed), std::memory_order_relaxed);
    room_ = std::move(other.room_);
    other.Borrow({kEmpty, 0});
    return *this;
}

template <class Char>
void ChangingText<Char>::Borrow(View constant)
{
    text_.store(constant.data(), std::memory_order_relaxed);
    length_.store(static_cast<std::uint32_t>(constant.size()), std::memory_order_relaxed);
    version_.store(kConstant, std::memory_order_relaxed);
    room_.reset();
}

template <class Char>
typename ChangingText<Char>::Change ChangingText<Char>::Prepare(View text) const
{
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("display text");
    Change change;
    change.text = text;
    const std::size_t present = room_ ? room_->capacity : 0;
    if (!room_ || text.size() > present) change.room = std::make_unique<Room>(std::max(text.size(), 2 * present));
    return change;
}

template <class Char>
void ChangingText<Char>::Commit(Change change) noexcept
{
    const std::uint32_t version = version_.load(std::memory_order_relaxed);
    version_.store(version + 1, std::memory_order_relaxed);
    std::atomic_thread_fence(std::memory_order_release);
    if (change.room) {
        change.room->older = std::move(room_);
        room_ = std::move(change.room);
    }
    Char* const units = room_->units.get();
    for (std::size_t i = 0; i != change.text.size(); ++i) {
        Unit(units, i).store(change.text[i], std::memory_order_relaxed);
    }
    Unit(units, change.text.size()).store(Char{}, std::memory_order_relaxed);
    length_.store(static_cast<std::uint32_t>(change.text.size()), std::memory_order_relaxed);
    text_.store(units, std::memory_order_release);
    // After some two thousand million writes the count begins anew, past the number that means a constant.
    const std::uint32_t next = version + 2;
    version_.store(next == kConstant ? 2 : next, std::memory_order_release);
}

template <class Char>
std::basic_string_view<Char> ChangingText<Char>::WholeOfWritten(String& copy) const
{
    for (;; std::this_thread::yield()) {
        const std::uint32_t version = version_.load(std::memory_order_acquire);
        const View text(text_.load(std::memory_order_relaxed), length_.load(std::memory_order_relaxed));
        // Only a pointer and a length that belong together may be followed.
        if (StillAt(version) && CopyUnits(text, copy, version)) return copy;
    }
}

template <class Char>
bool ChangingText<Char>::CopyUnits(View text, String& copy, std::uint32_t version) const
{
    copy.resize(text.size());
    for (std::size_t i = 0; i != text.size(); ++i) copy[i] = Unit(text.data(), i).load(std::memory_order_relaxed);
    return StillAt(version);
}

template class ChangingText<char>;
template class ChangingText<char16_t>;

}  // namespace OrvPLC
