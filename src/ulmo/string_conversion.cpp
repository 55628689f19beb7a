#include "ulmo/string_conversion.h"

#include <cstdint>
#include <cstring>
#include <limits>

#include "platform/debug_output.h"
#include "platform/system_error.h"
#include "platform/text.h"
#include "ulmo/ascii_words.h"
#include "ulmo/exceptions.h"

namespace Ulmo {

namespace {

using Platform::CodePage;

// Three bytes a character fill a 32-bit size at this length.
constexpr std::size_t kLongestWide = 715827882;
constexpr std::u16string_view kToNarrow = u"WideCharToMultiByte";
constexpr std::u16string_view kToWide = u"MultiByteToWideChar";

// A size beyond the system call makes the text end at its first zero.
std::string_view Clipped(std::string_view text)
{
    return ClipSizeT(text.size()) == -1 ? text.substr(0, text.find('\0')) : text;
}

// Every code page in use agrees with ASCII below 0x80.
std::string Narrow(CodePage page, std::u16string_view text)
{
    if (text.size() > kLongestWide) ThrowSystemError(Platform::kInvalidParameter, kToNarrow);
    std::string narrow;
    if (IsAscii(text)) {
        narrow.resize(text.size());
        NarrowAscii(text, narrow.data());
        return narrow;
    }
    if (!Platform::ToNarrow(page, text, narrow)) ThrowLastError(kToNarrow);
    return narrow;
}

std::u16string Wide(CodePage page, std::string_view text)
{
    std::u16string wide;
    if (IsAscii(text)) {
        wide.resize(text.size());
        WidenAscii(text, wide.data());
        return wide;
    }
    if (!Platform::ToWide(page, Clipped(text), wide)) ThrowLastError(kToWide);
    return wide;
}

}  // namespace

std::string Utf8FromWide(std::u16string_view text)
{
    return Narrow(CodePage::Utf8, text);
}

std::u16string WideFromUtf8(std::string_view text)
{
    return Wide(CodePage::Utf8, text);
}

std::u16string WideFromAnsi(std::string_view text)
{
    return Wide(CodePage::Ansi, text);
}

std::string AnsiFromWide(std::u16string_view text)
{
    return Narrow(CodePage::Ansi, text);
}

std::u16string LowerCase(std::u16string_view text)
{
    std::u16string lower(text);
    const std::size_t ascii = LowerAsciiPrefix(lower.data(), lower.size());
    if (ascii != lower.size()) Platform::LowerInPlace(lower.data() + ascii, lower.size() - ascii);
    return lower;
}

bool IsLowerCase(std::u16string_view text)
{
    return EqualsLower(text, text);
}

bool EqualsLower(std::u16string_view text, std::u16string_view lower)
{
    if (text.size() != lower.size()) return false;
    const std::size_t same = EqualAsciiLowerPrefix(text.data(), lower.data(), text.size());
    if (same == text.size()) return true;
    // ASCII that differs here differs for good; only other units need the system.
    const bool ascii = text[same] < 0x80;
    return !ascii && SameText(LowerCase(text.substr(same)), lower.substr(same));
}

int ClipSizeT(std::size_t size)
{
    if (size <= std::numeric_limits<std::uint32_t>::max()) return static_cast<int>(static_cast<std::uint32_t>(size));
    Platform::WriteDebug(u"ClipSizeT failed - Size > MaxSize");
    return -1;
}

}  // namespace Ulmo
