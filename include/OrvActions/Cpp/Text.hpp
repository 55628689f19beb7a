// Text and failures of the C++ wrapper. Part of OrvActions.hpp; include that.
#pragma once

#include <OrvActions.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace orv {

// The library speaks UTF-16 in units of OrvWChar, this wrapper in char16_t; both are the same 16-bit unit.
inline std::u16string_view View(const OrvWChar* text)
{
    return text ? std::u16string_view(reinterpret_cast<const char16_t*>(text)) : std::u16string_view();
}

namespace detail {

inline void AppendUtf8(std::string& output, std::uint32_t point)
{
    const auto put = [&](std::uint32_t byte) { output.push_back(static_cast<char>(byte)); };
    if (point < 0x80) return put(point);
    if (point < 0x800) {
        put(0xC0 | (point >> 6));
    } else {
        if (point < 0x10000) {
            put(0xE0 | (point >> 12));
        } else {
            put(0xF0 | (point >> 18));
            put(0x80 | ((point >> 12) & 0x3F));
        }
        put(0x80 | ((point >> 6) & 0x3F));
    }
    put(0x80 | (point & 0x3F));
}

inline void AppendUtf16(std::u16string& output, std::uint32_t point)
{
    if (point < 0x10000) return output.push_back(static_cast<char16_t>(point));
    output.push_back(static_cast<char16_t>(0xD7C0 + (point >> 10)));
    output.push_back(static_cast<char16_t>(0xDC00 | (point & 0x3FF)));
}

constexpr std::uint32_t kReplacement = 0xFFFD;

// Takes one character from the front of the text; a byte that begins no character counts as one.
inline std::uint32_t TakeUtf8(std::string_view& text)
{
    const auto byte = [&](std::size_t i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])); };
    const std::uint32_t first = byte(0);
    const std::size_t length = first < 0x80   ? 1
                               : first < 0xC2 ? 0
                               : first < 0xE0 ? 2
                               : first < 0xF0 ? 3
                               : first < 0xF5 ? 4
                                              : 0;
    std::uint32_t point = length < 2 ? first : first & (0x7Fu >> length);
    bool sound = length != 0 && length <= text.size();
    for (std::size_t i = 1; sound && i < length; ++i) {
        sound = (byte(i) & 0xC0) == 0x80;
        point = (point << 6) | (byte(i) & 0x3F);
    }
    // Longer than need be, half of a pair, or past the last character.
    if ((length == 3 && (point < 0x800 || (point >= 0xD800 && point < 0xE000))) ||
        (length == 4 && (point < 0x10000 || point > 0x10FFFF))) {
        sound = false;
    }
    text.remove_prefix(sound ? length : 1);
    return sound ? point : kReplacement;
}

}  // namespace detail

// Conversions between UTF-16 and UTF-8. What is not sound becomes U+FFFD.
inline std::string ToUtf8(std::u16string_view text)
{
    std::string output;
    output.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint32_t unit = text[i];
        const bool high = unit >= 0xD800 && unit < 0xDC00;
        if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
            detail::AppendUtf8(output, 0x10000 + ((unit - 0xD800) << 10) + (text[++i] - 0xDC00u));
        } else {
            detail::AppendUtf8(output, unit >= 0xD800 && unit < 0xE000 ? detail::kReplacement : unit);
        }
    }
    return output;
}

inline std::u16string ToUtf16(std::string_view utf8)
{
    std::u16string output;
    output.reserve(utf8.size());
    while (!utf8.empty()) detail::AppendUtf16(output, detail::TakeUtf8(utf8));
    return output;
}

// A text as an argument, in whichever form the caller has it: narrow texts are UTF-8. It may refer to its source, so it
// is for arguments only.
class TextArg {
public:
    TextArg(const char16_t* text) : view_(text ? std::u16string_view(text) : std::u16string_view(u"")) {}
    TextArg(const std::u16string& text) : view_(text) {}
    TextArg(std::u16string_view text) : own_(text), view_(own_) {}
    TextArg(const char* utf8) : TextArg(std::string_view(utf8 ? utf8 : "")) {}
    TextArg(const std::string& utf8) : TextArg(std::string_view(utf8)) {}
    TextArg(std::string_view utf8) : own_(ToUtf16(utf8)), view_(own_) {}
#if defined(_WIN32)
    TextArg(const wchar_t* text) : TextArg(reinterpret_cast<const char16_t*>(text))
    {}
    TextArg(const std::wstring& text) : view_(reinterpret_cast<const char16_t*>(text.c_str()), text.size())
    {}
#endif
    TextArg(const TextArg&) = delete;
    TextArg& operator=(const TextArg&) = delete;

    std::u16string_view view() const
    {
        return view_;
    }
    const OrvWChar* c_str() const
    {
        return reinterpret_cast<const OrvWChar*>(view_.data());
    }  // ends in a zero unit
    std::uint32_t size() const
    {
        return static_cast<std::uint32_t>(view_.size());
    }

private:
    std::u16string own_;
    std::u16string_view view_;
};

// A failed call. what() is the message in UTF-8; the codes are those of OrvErrors.h.
class Error : public std::runtime_error {
public:
    explicit Error(const std::string& message, std::uint32_t code = 0, std::uint32_t subCode = 0,
                   std::string details = {}, std::string className = {})
        : std::runtime_error(message), code_(code), subCode_(subCode), details_(std::move(details)),
          className_(std::move(className))
    {}

    // Of the last failed call on this thread; `otherwise` is the message when that call has stored none. If that call
    // lacked memory, this throws std::bad_alloc: it says nothing about the action, the text or the buffer.
    static Error Last(const char* otherwise = "The call failed.")
    {
        TOrvLastErrorInfo info{};
        if (!OrvAct_GetLastError(&info)) return Error(otherwise);
        // As the library words it, whatever the compiler of this program calls it.
        if (info.code == 0 && View(info.messageW) == u"std::bad_alloc") throw std::bad_alloc();
        const auto text = [](const char* given) { return std::string(given ? given : ""); };
        return Error(ToUtf8(View(info.messageW)), info.code, info.subCode, text(info.details), text(info.className));
    }
    // The same about a place of a text or a buffer.
    static Error LastAt(std::size_t position, const char* otherwise)
    {
        Error error = Last(otherwise);
        error.position_ = position;
        return error;
    }

    std::uint32_t Code() const noexcept { return code_; }
    std::uint32_t SubCode() const noexcept { return subCode_; }
    const std::string& Details() const noexcept { return details_; }
    // The exception's class inside the library, "" when the call has stored none.
    const std::string& ClassName() const noexcept { return className_; }
    // How far reading came: in UTF-16 units of a text, in bytes of a buffer; empty if it is not about reading.
    std::optional<std::size_t> Position() const noexcept { return position_; }

private:
    std::uint32_t code_;
    std::uint32_t subCode_;
    std::string details_;
    std::string className_;
    std::optional<std::size_t> position_;
};

namespace detail {

inline void Check(OrvBool succeeded)
{
    if (!succeeded) throw Error::Last();
}

}  // namespace detail

}  // namespace orv
