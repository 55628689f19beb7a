// The name of an object or a parameter.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

namespace OrvPLC {

// A name with its case kept: the catalogue's own string where the spelling is the catalogue's, else a copy.
class SharedName {
public:
    SharedName() = default;
    static SharedName Shared(std::u16string_view constant)  // lives as long as the library
    {
        SharedName name;
        name.text_ = constant.data();
        name.length_ = static_cast<std::uint32_t>(constant.size());
        return name;
    }
    static SharedName Copy(std::u16string_view name);
    SharedName(const SharedName& other);
    SharedName(SharedName&& other) noexcept
        : text_(other.text_), length_(other.length_), owned_(std::exchange(other.owned_, false))
    {}
    SharedName& operator=(SharedName&& other) noexcept
    {
        std::swap(text_, other.text_);
        std::swap(length_, other.length_);
        std::swap(owned_, other.owned_);
        return *this;
    }
    SharedName& operator=(const SharedName& other) { return *this = SharedName(other); }
    ~SharedName()
    {
        if (owned_) delete[] text_;
    }

    std::u16string_view view() const noexcept { return {text_, length_}; }
    const char16_t* c_str() const noexcept { return text_; }

private:
    const char16_t* text_ = u"";
    std::uint32_t length_ = 0;
    bool owned_ = false;
};

}  // namespace OrvPLC
