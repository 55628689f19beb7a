// The texts of the built-in content, and how an entry tells the place of one.
//
// No entry holds a pointer to a constant: a pointer has to be corrected at every load, for each process, on pages that
// could be shared otherwise. An entry tells how far what it means lies from the head of a table. Where an entry is made
// at run time that distance leads to memory of its own, so a reader need not know which of the two it has.
#pragma once

#include <cstddef>
#include <cstdint>

namespace OrvPLC {

namespace Builtin {

// A text of the pools. All built-in texts are ASCII (the generator refuses others) and the pools hold the same ones at
// the same places, so one place serves for all forms; a zero stands behind each text. Place 0 holds the empty text.
struct Text {
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
};

struct Name {
    std::uint32_t offset;  // as spelt
    std::uint32_t lower;
    std::uint32_t length;  // of both

    constexpr Text Spelt() const { return {offset, length}; }
    constexpr Text Lower() const { return {lower, length}; }
};

extern const char kNarrowTexts[];
extern const char16_t kWideTexts[];

template <class Char>
const Char* Pool() noexcept;
template <>
inline const char* Pool() noexcept
{
    return kNarrowTexts;
}
template <>
inline const char16_t* Pool() noexcept
{
    return kWideTexts;
}

}  // namespace Builtin

// Refers to a T by its distance from a constant.
template <class T>
class Distance {
public:
    constexpr explicit Distance(std::size_t index) noexcept : bytes_(static_cast<std::intptr_t>(index * sizeof(T))) {}
    Distance(const void* origin, T* target) noexcept
        : bytes_(reinterpret_cast<std::intptr_t>(target) - reinterpret_cast<std::intptr_t>(origin))
    {}

    T* From(const void* origin) const noexcept
    {
        return reinterpret_cast<T*>(reinterpret_cast<std::intptr_t>(origin) + bytes_);
    }

private:
    std::intptr_t bytes_;
};

}  // namespace OrvPLC
