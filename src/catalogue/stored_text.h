// A name of the catalogue: zero-ended, never written again, with an address that callers may keep.
#pragma once

#include <algorithm>
#include <memory>
#include <string_view>

namespace OrvPLC {

// Points at a constant of the built-in table, or owns a copy. Copying copies what is owned.
template <class Char>
class StoredText {
public:
    using View = std::basic_string_view<Char>;

    StoredText() : text_(kEmpty, 0) {}
    StoredText(const StoredText& other) { *this = other; }
    StoredText(StoredText&&) noexcept = default;
    StoredText& operator=(StoredText&&) noexcept = default;
    StoredText& operator=(const StoredText& other)
    {
        if (other.owned_) {
            Assign(other.text_);
        } else {
            Borrow(other.text_);
        }
        return *this;
    }

    // The constant lives as long as the library and has a zero behind it.
    void Borrow(View constant)
    {
        text_ = constant;
        owned_.reset();
    }
    void Assign(View text)
    {
        auto copy = std::make_unique<Char[]>(text.size() + 1);
        std::copy(text.begin(), text.end(), copy.get());
        text_ = View(copy.get(), text.size());
        owned_ = std::move(copy);
    }

    View view() const noexcept { return text_; }
    const Char* c_str() const noexcept { return text_.data(); }
    bool empty() const noexcept { return text_.empty(); }

private:
    static constexpr Char kEmpty[1] = {};

    View text_;
    std::unique_ptr<Char[]> owned_;
};

}  // namespace OrvPLC
