#include "platform/text.h"

#include <climits>

#include "platform/windows/windows_api.h"

namespace Platform {

namespace {

constexpr std::size_t kLongest = INT_MAX;
constexpr std::size_t kNarrowPerWide = 3;

UINT Number(CodePage page)
{
    return static_cast<UINT>(page);
}

// UTF-8 refuses flags, even if it is the ANSI code page of the process.
DWORD FlagsFor(CodePage page, DWORD ansiFlags)
{
    return page == CodePage::Ansi && GetACP() != CP_UTF8 ? ansiFlags : 0;
}

// The system counts in an int.
bool TooLong()
{
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

int WideCall(CodePage page, std::string_view text, char16_t* output, int capacity)
{
    return MultiByteToWideChar(Number(page), FlagsFor(page, MB_PRECOMPOSED), text.data(), static_cast<int>(text.size()),
                               AsWide(output), capacity);
}

int NarrowCall(CodePage page, std::u16string_view text, char* output, int capacity)
{
    return WideCharToMultiByte(Number(page), FlagsFor(page, WC_COMPOSITECHECK), AsWide(text.data()),
                               static_cast<int>(text.size()), output, capacity, nullptr, nullptr);
}

int Compare(LCID language, std::u16string_view a, std::u16string_view b)
{
    return CompareStringW(language, NORM_IGNORECASE, AsWide(a.data()), static_cast<int>(a.size()), AsWide(b.data()),
                          static_cast<int>(b.size()));
}

// One pass with a buffer that nearly always suffices; if not, the size is asked for first.
template <class Text, class Output, class Call>
bool Convert(CodePage page, Text text, Output& output, std::size_t guess, Call call)
{
    output.resize(guess);
    int length = call(page, text, output.data(), static_cast<int>(guess));
    if (length == 0 && GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
        length = call(page, text, nullptr, 0);
        output.resize(static_cast<std::size_t>(length));
        if (length != 0) length = call(page, text, output.data(), length);
    }
    output.resize(static_cast<std::size_t>(length));
    return length != 0;
}

}  // namespace

void LowerInPlace(char16_t* text, std::size_t length)
{
    for (; length > kLongest; text += kLongest, length -= kLongest) CharLowerBuffW(AsWide(text), INT_MAX);
    CharLowerBuffW(AsWide(text), static_cast<DWORD>(length));
}

// In the system's language, not the user's: names of the catalogue are the same for every user.
bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b)
{
    if (a.size() > kLongest || b.size() > kLongest) return false;
    return Compare(LOCALE_SYSTEM_DEFAULT, a, b) == CSTR_EQUAL;
}

std::optional<bool> EqualForUser(std::u16string_view a, std::u16string_view b)
{
    // The system refuses a null text, which an empty view may be.
    if (a.empty() || b.empty()) return a.empty() && b.empty();
    const int order = a.size() > kLongest || b.size() > kLongest ? TooLong() : Compare(LOCALE_USER_DEFAULT, a, b);
    return order == 0 ? std::nullopt : std::optional<bool>(order == CSTR_EQUAL);
}

bool ToWide(CodePage page, std::string_view text, std::u16string& wide)
{
    wide.clear();
    if (text.empty()) return true;
    if (text.size() > kLongest) return TooLong();
    return Convert(page, text, wide, text.size(), WideCall);
}

bool ToNarrow(CodePage page, std::u16string_view text, std::string& narrow)
{
    narrow.clear();
    if (text.empty()) return true;
    if (text.size() > kLongest / kNarrowPerWide) return TooLong();
    return Convert(page, text, narrow, text.size() * kNarrowPerWide, NarrowCall);
}

}  // namespace Platform
