#include "platform/text.h"

#include <locale.h>
#include <wctype.h>

#include "platform/posix/codeset.h"
#include "platform/posix/user_locale.h"
#include "platform/posix/utf8.h"

namespace Platform {

namespace {

// The simple case mappings of Unicode, whatever language the user speaks.
locale_t UnicodeLocale()
{
    static const locale_t locale = FindLocale(LC_CTYPE_MASK, "C.UTF-8");
    return locale;
}

// As the Windows tables have it, a letter counts only when its lower-case form leads back to it: the Kelvin sign and
// the capital I with a dot, for example, stay.
char16_t LowerAboveAscii(char16_t unit)
{
    if (unit >= 0xD800 && unit <= 0xDFFF) return unit;
    const locale_t locale = UnicodeLocale();
    if (!locale) return unit;
    const wint_t lower = towlower_l(unit, locale);
    const bool counts = lower != unit && lower <= 0xFFFF && towupper_l(lower, locale) == unit;
    return counts ? static_cast<char16_t>(lower) : unit;
}

char16_t LowerUnit(char16_t unit)
{
    if (unit >= u'A' && unit <= u'Z') return static_cast<char16_t>(unit + (u'a' - u'A'));
    return unit < 0x80 ? unit : LowerAboveAscii(unit);
}

}  // namespace

void LowerInPlace(char16_t* text, std::size_t length)
{
    for (char16_t* unit = text; unit != text + length; ++unit) *unit = LowerUnit(*unit);
}

// Unit by unit, so that texts of different lengths are never equal.
bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b)
{
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i != a.size(); ++i) {
        if (a[i] != b[i] && LowerUnit(a[i]) != LowerUnit(b[i])) return false;
    }
    return true;
}

std::optional<bool> EqualForUser(std::u16string_view a, std::u16string_view b)
{
    return EqualIgnoringCase(a, b);
}

bool ToWide(CodePage page, std::string_view text, std::u16string& wide)
{
    const char* codeset = page == CodePage::Ansi ? UserCodeset() : nullptr;
    if (codeset) return CodesetToWide(codeset, text, wide);
    wide.resize(text.size());
    wide.resize(DecodeUtf8(text, wide.data()));
    return true;
}

bool ToNarrow(CodePage page, std::u16string_view text, std::string& narrow)
{
    const char* codeset = page == CodePage::Ansi ? UserCodeset() : nullptr;
    if (codeset) return WideToCodeset(codeset, text, narrow);
    narrow.resize(EncodedLength(text));
    EncodeUtf8(text, narrow.data());
    return true;
}

}  // namespace Platform
