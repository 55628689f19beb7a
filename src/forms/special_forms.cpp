#include "forms/special_forms.h"

#include "ulmo/character_class.h"

namespace OrvPLC {

namespace {

// A form is a text with a letter for each class of characters; any other character stands for itself.
bool Fits(char16_t unit, char form)
{
    switch (form) {
    case 'w': return Ulmo::IsWord(unit);
    case 'd': return Ulmo::IsDigit(unit);
    case 'a': return Ulmo::IsAlnum(unit);
    case 's': return Ulmo::IsSpace(unit);
    case '+': return unit == u'+' || unit == u' ' || unit == u'-';
    default: return unit == static_cast<char16_t>(form);
    }
}

// The whole text must fit, unit by unit.
bool HasForm(std::u16string_view text, std::string_view form)
{
    if (text.size() != form.size()) return false;
    for (std::size_t at = 0; at < form.size(); ++at) {
        if (!Fits(text[at], form[at])) return false;
    }
    return true;
}

}  // namespace

bool HasGuidForm(std::u16string_view text)
{
    return HasForm(text, "wwwwwwww-wwww-wwww-wwww-wwwwwwwwwwww");
}

bool HasDateTimeForm(std::u16string_view text)
{
    return HasForm(text, "dddd/dd/ddsdd:dd:dd,dddsaaa+dd:dd");
}

}  // namespace OrvPLC
