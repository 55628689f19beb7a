#include "platform/system_error.h"

#include <array>
#include <cerrno>
#include <cstring>

#include "platform/text.h"

namespace Platform {

namespace {

struct OwnText {
    std::uint32_t code;
    const char16_t* text;
};

// These codes stand for failures of this library. One of them is an errno value as well: 87, too many users, which no
// call that the library makes reports.
constexpr std::array<OwnText, 6> kOwnTexts = {{
    {kInvalidParameter, u"The parameter is incorrect."},
    {kInsufficientBuffer, u"The data area passed to a system call is too small."},
    {kNoUnicodeTranslation, u"No mapping for the Unicode character exists in the target multi-byte code page."},
    {kResultInsufficientBuffer, u"The data area passed to a system call is too small."},
    {kResultInvalidParameter, u"The parameter is incorrect."},
    {kResultEndOfFile, u"Reached the end of the file."},
}};

}  // namespace

std::uint32_t LastError()
{
    return static_cast<std::uint32_t>(errno);
}

void SetLastError(std::uint32_t code)
{
    errno = static_cast<int>(code);
}

std::u16string SystemErrorText(std::uint32_t code)
{
    for (const OwnText& own : kOwnTexts) {
        if (own.code == code) return own.text;
    }
    std::u16string text;
    // Never translated, unlike the text of strerror.
    if (const char* description = strerrordesc_np(static_cast<int>(code))) {
        ToWide(CodePage::Utf8, description, text);
    }
    return text;
}

}  // namespace Platform
