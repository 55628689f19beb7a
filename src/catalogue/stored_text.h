// A name of the catalogue: zero-ended, never written again, with an address that callers may keep.
#pragma once

#include <string_view>

#include "catalogue/builtin_texts.h"

namespace OrvPLC {

// Refers to a text of the pools, or to one that the entry owns.
template <class Char>
class StoredText {
public:
    using View = std::basic_string_view<Char>;

    constexpr StoredText(Builtin::Text constant = {}) noexcept : place_(constant.offset), length_(constant.length) {}
    explicit StoredText(View own) noexcept
        : place_(Builtin::Pool<Char>(), own.data()), length_(static_cast<std::uint32_t>(own.size()))
    {}

    View view() const noexcept { return {c_str(), length_}; }
    const Char* c_str() const noexcept { return place_.From(Builtin::Pool<Char>()); }
    bool empty() const noexcept { return length_ == 0; }

private:
    Distance<const Char> place_;
    std::uint32_t length_;
};

}  // namespace OrvPLC
