#include "names.h"

#include <OrvActions.hpp>

#include <charconv>
#include <optional>

#include "catalogue_view.h"
#include "fault.h"
#include "text.h"

namespace {

bool SameName(std::string_view a, std::u16string_view b)
{
    return LowerCaseAscii(a) == LowerCaseAscii(orv::ToUtf8(b));
}

// The enum of a parameter of the action, 0 for none.
std::uint32_t EnumOf(const ActionView* action, std::u16string_view parameter)
{
    const std::string name = orv::ToUtf8(parameter);
    const ParameterView* declared = action ? action->Find(name) : nullptr;
    if (!declared) declared = FindGeneralParameter(name);
    if (!declared) return 0;
    return declared->type == ORV_KIND_Boolean ? 1 : declared->enumType;
}

// Null for an action that the catalogue does not know, whose enums nobody knows either.
const ActionView* ActionOf(std::u16string_view text, const TextWalk& walk)
{
    return FindAction(ActionCode(orv::ToUtf8(walk.name.Of(text))));
}

// The declared spelling comes first: the plain name of one value may be the name of another.
std::optional<std::uint32_t> NumberOf(std::uint32_t enumType, const std::string& word)
{
    const std::vector<orv::EnumValueInfo> values = orv::EnumValues(enumType);
    for (const orv::EnumValueInfo& value : values) {
        if (SameName(word, value.name)) return value.value;
    }
    for (const orv::EnumValueInfo& value : values) {
        if (SameName(word, value.plainName)) return value.value;
    }
    return std::nullopt;
}

std::string NearestValue(std::uint32_t enumType, const std::string& word)
{
    std::vector<std::string> names;
    for (const orv::EnumValueInfo& value : orv::EnumValues(enumType)) names.push_back(orv::ToUtf8(value.name));
    return Nearest(word, names);
}

// What may stand without quotes; of ASCII only, so that every reader agrees.
bool IsIdentifier(std::u16string_view name)
{
    const auto letter = [](char16_t unit) { return (unit | 0x20) >= u'a' && (unit | 0x20) <= u'z'; };
    if (name.empty() || !letter(name[0])) return false;
    for (const char16_t unit : name) {
        if (!letter(unit) && (unit < u'0' || unit > u'9')) return false;
    }
    return true;
}

// The text with other words in place of some values.
class Rewriter {
public:
    explicit Rewriter(std::u16string_view text) : text_(text) { numbered_.places.push_back({0, 0}); }

    void Replace(const TextSpan& span, std::u16string_view by)
    {
        numbered_.text += text_.substr(at_, span.begin - at_);
        numbered_.places.push_back({numbered_.text.size(), span.begin});
        numbered_.text += by;
        numbered_.places.push_back({numbered_.text.size(), span.end});
        at_ = span.end;
    }

    Numbered Take()
    {
        numbered_.text += text_.substr(at_);
        return std::move(numbered_);
    }

private:
    std::u16string_view text_;
    std::size_t at_ = 0;
    Numbered numbered_;
};

}  // namespace

std::size_t Numbered::Original(std::size_t position) const
{
    std::size_t original = position;
    for (const auto& [here, there] : places) {
        if (here <= position) original = there + (position - here);
    }
    return original;
}

bool NumberNames(std::u16string_view text, TextWalk& walk, Numbered& numbered, Remark& problem)
{
    const ActionView* action = ActionOf(text, walk);
    Rewriter rewriter(text);
    for (WalkedParameter& parameter : walk.parameters) {
        const bool word = parameter.form == TextForm::Word;
        const std::uint32_t enumType = EnumOf(action, parameter.name.Of(text));
        if (enumType == 0 || (!word && parameter.form != TextForm::String)) continue;
        std::u16string_view name = parameter.value.Of(text);
        if (!word) name = name.substr(1, name.size() - 2);
        const std::string narrow = orv::ToUtf8(name);
        const std::optional<std::uint32_t> number = NumberOf(enumType, narrow);
        if (!number) {
            problem = {"enum", "'" + Visible(narrow) + "' is no value of " + EnumName(enumType),
                       NearestValue(enumType, narrow), 0, 0, {}};
            Locate(text, parameter.value.begin, problem);
            return false;
        }
        rewriter.Replace(parameter.value, orv::ToUtf16(std::to_string(static_cast<std::int32_t>(*number))));
        parameter.form = TextForm::Integer;
    }
    numbered = rewriter.Take();
    return true;
}

std::u16string NameNumbers(std::u16string_view text)
{
    const TextWalk walk = WalkText(text);
    const ActionView* action = ActionOf(text, walk);
    Rewriter rewriter(text);
    for (const WalkedParameter& parameter : walk.parameters) {
        const std::uint32_t enumType = EnumOf(action, parameter.name.Of(text));
        if (enumType == 0 || parameter.form != TextForm::Integer) continue;
        const std::string digits = orv::ToUtf8(parameter.value.Of(text));
        std::int32_t number = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
        const auto value = orv::FindEnumValue(enumType, static_cast<std::uint32_t>(number));
        // A name with a quote could not be read back.
        if (!value || value->name.find(u'"') != std::u16string_view::npos) continue;
        const std::u16string name(value->name);
        rewriter.Replace(parameter.value, IsIdentifier(name) ? name : u"\"" + name + u"\"");
    }
    return rewriter.Take().text;
}
