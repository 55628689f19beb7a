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
typename ChangingText<Char>::Change ChangingText<Char>::Prepare(View text) const
{
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("display text");
    Change change;
    // Writers are one at a time, so a writer sees what the last one did without more.
    const Room* present = room_.load(std::memory_order_relaxed);
    if (present && text.size() <= present->capacity) {
        // A copy: the given text may lie in the very room that Commit writes.
        change.text = text;
        return change;
    }
    change.room = std::make_unique<Room>(std::max(text.size(), present ? 2 * present->capacity : 0));
    std::copy(text.begin(), text.end(), change.room->units.get());
    change.room->length.store(static_cast<std::uint32_t>(text.size()), std::memory_order_relaxed);
    return change;
}

template <class Char>
void ChangingText<Char>::Commit(Change change) noexcept
{
    Room* const present = room_.load(std::memory_order_relaxed);
    if (change.room) {
        // Kept, since callers may hold pointers into it.
        change.room->older.reset(present);
        room_.store(change.room.release(), std::memory_order_release);
        return;
    }
    const std::uint32_t version = present->version.load(std::memory_order_relaxed);
    // Odd from here on. The fence lets nobody see a new unit before the odd version.
    present->version.store(version + 1, std::memory_order_relaxed);
    std::atomic_thread_fence(std::memory_order_release);
    Char* const units = present->units.get();
    for (std::size_t i = 0; i != change.text.size(); ++i) {
        Unit(units, i).store(change.text[i], std::memory_order_relaxed);
    }
    Unit(units, change.text.size()).store(Char{}, std::memory_order_relaxed);
    present->length.store(static_cast<std::uint32_t>(change.text.size()), std::memory_order_relaxed);
    present->version.store(version + 2, std::memory_order_release);
}

template <class Char>
std::basic_string_view<Char> ChangingText<Char>::WholeOfWritten(String& copy) const
{
    // A room that the text has left meanwhile still holds the text from before.
    while (!CopyUnits(*room_.load(std::memory_order_acquire), copy)) std::this_thread::yield();
    return copy;
}

template <class Char>
bool ChangingText<Char>::CopyUnits(const Room& room, String& copy)
{
    const std::uint32_t version = room.version.load(std::memory_order_acquire);
    if (version % 2 != 0) return false;
    copy.resize(room.length.load(std::memory_order_relaxed));
    for (std::size_t i = 0; i != copy.size(); ++i) copy[i] = Unit(room.units.get(), i).load(std::memory_order_relaxed);
    // A write in between has changed the version, or is seen as odd; then the copy is thrown away.
    std::atomic_thread_fence(std::memory_order_acquire);
    return room.version.load(std::memory_order_relaxed) == version;
}

template class ChangingText<char>;
template class ChangingText<char16_t>;

}  // namespace OrvPLC
