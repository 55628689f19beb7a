// Writing into buffers of fixed capacity, with a failure in place of a cut.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Ulmo {

// A buffer that is being filled: the next unit and the room left, the terminating zero counted.
template <class Char>
struct FixedBuffer {
    Char* next;
    std::size_t room;
};

// Raises SystemException for an append that a room did not allow: 0x80070057 for a room of 0 or above 0x7FFFFFFF,
// otherwise 0x8007007A.
[[noreturn]] void ThrowCheckedString(std::size_t room, std::u16string_view function);

// Appends the text and a terminating zero; when the room does not suffice, what fits is cut in before `function` is
// named in the failure.
template <class Char>
void AppendChecked(FixedBuffer<Char>& buffer, std::basic_string_view<Char> text, std::u16string_view function)
{
    constexpr std::size_t kLargestRoom = 0x7FFFFFFF;
    const bool usable = buffer.room != 0 && buffer.room <= kLargestRoom;
    const std::size_t length = usable ? std::min(text.size(), buffer.room - 1) : 0;
    if (usable) {
        buffer.next = std::copy_n(text.data(), length, buffer.next);
        *buffer.next = Char(0);
    }
    if (!usable || length != text.size()) ThrowCheckedString(buffer.room, function);
    buffer.room -= length;
}

template <class Char>
void CheckedStringCchCopyEx(FixedBuffer<Char>& buffer, std::basic_string_view<Char> text)
{
    AppendChecked(buffer, text, u"Ulmo::CheckedStringCchCopyEx");
}

// For a text that was composed from fields.
template <class Char>
void CheckedStringCchPrintfEx(FixedBuffer<Char>& buffer, std::basic_string_view<Char> composed)
{
    AppendChecked(buffer, composed, u"Ulmo::CheckedStringCchPrintfEx");
}

}  // namespace Ulmo
