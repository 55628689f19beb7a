#include "remarks.h"

#include <charconv>
#include <cstdint>
#include <limits>

#include "fault.h"
#include "forms.h"
#include "text.h"
#include "value_kind.h"

namespace {

constexpr std::size_t kShown = 60;  // columns of a text that a remark quotes

std::string Quoted(std::string_view text)
{
    return "'" + Shortened(Visible(text), kShown) + "'";
}

std::vector<std::string> ParameterNames(const ActionView& action)
{
    std::vector<std::string> names;
    for (const ParameterView& parameter : action.parameters) names.push_back(parameter.name);
    for (const orv::ParameterInfo& parameter : orv::GeneralParameters()) names.push_back(orv::ToUtf8(parameter.name));
    return names;
}

// Whether a value that looks like this has the declared kind without a conversion.
bool Fits(TextForm form, std::uint32_t kind)
{
    switch (ValueKind{kind}) {
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit:
    case ValueKind::Numeric64Bit: return form == TextForm::Integer;
    case ValueKind::NumericDouble: return form == TextForm::Integer || form == TextForm::Real;
    case ValueKind::String:
    case ValueKind::DateTime:
    case ValueKind::Guid: return form == TextForm::String;
    case ValueKind::EventType:
        return form == TextForm::Integer || form == TextForm::String || form == TextForm::EventType;
    case ValueKind::MediaChannel:
        return form == TextForm::Integer || form == TextForm::String || form == TextForm::Channel;
    case ValueKind::Resource: return form == TextForm::String || form == TextForm::Resource;
    case ValueKind::Rect: return form == TextForm::Rect;
    case ValueKind::None:
    case ValueKind::ResultDataSet: break;
    }
    return true;
}

struct Range {
    std::int64_t least;
    std::int64_t most;
};

// Of what the text may say for that kind without being cut.
Range RangeOf(std::uint32_t kind)
{
    constexpr std::int64_t kLeast = std::numeric_limits<std::int32_t>::min();
    switch (kind) {
    case ORV_KIND_Boolean: return {0, 1};
    case ORV_KIND_Numeric32Bit:
    case ORV_KIND_EventType: return {kLeast, std::numeric_limits<std::int32_t>::max()};
    // Its 32 bits are written with a sign and without.
    case ORV_KIND_MediaChannel: return {kLeast, std::numeric_limits<std::uint32_t>::max()};
    default: return {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()};
    }
}

// As the library reads it: a leading zero means octal.
bool IsWithin(std::u16string_view digits, const Range& range)
{
    std::string text = orv::ToUtf8(digits);
    if (text.starts_with('+')) text.erase(0, 1);
    const std::size_t first = text.starts_with('-');
    std::int64_t number = 0;
    const int base = text.size() > first + 1 && text[first] == '0' ? 8 : 10;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return error != std::errc::result_out_of_range && number >= range.least && number <= range.most;
}

// The first dozen; "" for an enum without values.
std::string Values(std::uint32_t enumType)
{
    constexpr std::size_t kMost = 12;
    std::string text;
    std::size_t count = 0;
    for (const orv::EnumValueInfo& value : orv::EnumValues(enumType)) {
        if (count++ == kMost) return text + ", ...";
        text += (text.empty() ? "" : ", ") + std::to_string(static_cast<std::int32_t>(value.value)) + " " +
                orv::ToUtf8(value.name);
    }
    return text;
}

class Inspector {
public:
    Inspector(const Action& action, std::u16string_view text, const TextWalk& walk, std::vector<Remark>& remarks)
        : action_(action), known_(FindAction(action.Code())), text_(text), walk_(walk), remarks_(remarks)
    {}

    void Inspect()
    {
        Unread();
        if (!known_) {
            // Once: a file may hold many actions that are unknown.
            static const std::vector<std::string> names = ActionNames();
            const std::string name = orv::ToUtf8(action_.Name());
            Add("unknown-action", walk_.name.begin, "unknown action " + Quoted(name) + ", which is kept as it stands",
                Nearest(name, names));
        }
        for (const orv::CarriedParameter& parameter : action_.Parameters()) Parameter(parameter);
    }

private:
    void Add(const std::string& code, std::size_t position, const std::string& message,
             const std::string& suggestion = {})
    {
        Remark& remark = remarks_.emplace_back(Remark{code, message, suggestion, 0, 0, {}});
        // Without a sound walk no place in the text can be trusted.
        if (walk_.sound) Locate(text_, position, remark);
    }

    void Unread()
    {
        for (const UnreadText& unread : walk_.unread) {
            const std::string text = Quoted(orv::ToUtf8(unread.span.Of(text_)));
            Add(kUnreadCode, unread.span.begin,
                unread.lacksComma ? text + " is not read: no comma and no closing bracket after it"
                                  : text + " is not read: neither a parameter nor the closing bracket");
        }
        for (const WalkedParameter& parameter : walk_.parameters) {
            if (parameter.form != TextForm::Word) continue;
            Add(kUnreadCode, parameter.value.begin,
                Quoted(orv::ToUtf8(parameter.value.Of(text_))) +
                    " is not read: no value; --names takes those of enums");
        }
        for (const WalkedParameter& parameter : walk_.parameters) Repeated(parameter);
        if (walk_.behind.end == 0) return;
        Add(kUnreadCode, walk_.behind.begin,
            walk_.secondAction ? "a second action on one line is not read: its parameters count as the first one's"
                               : "left out what comes after the action");
    }

    void Repeated(const WalkedParameter& parameter)
    {
        const WalkedParameter* last = Find(orv::ToUtf8(parameter.name.Of(text_)));
        if (last == &parameter || parameter.name.end == 0) return;
        Add(kUnreadCode, parameter.name.begin,
            Quoted(orv::ToUtf8(parameter.name.Of(text_))) + " is given twice; only the last value counts");
    }

    // The last one of a name counts.
    const WalkedParameter* Find(const std::string& name) const
    {
        const std::string lower = LowerCaseAscii(name);
        for (auto it = walk_.parameters.rbegin(); it != walk_.parameters.rend(); ++it) {
            if (LowerCaseAscii(orv::ToUtf8(it->name.Of(text_))) == lower) return &*it;
        }
        return nullptr;
    }

    void Parameter(const orv::CarriedParameter& held)
    {
        const std::string name = orv::ToUtf8(held.name);
        const ParameterView* own = known_ ? known_->Find(name) : nullptr;
        const ParameterView* declared = own ? own : FindGeneralParameter(name);
        const WalkedParameter* walked = Find(name);
        if (known_ && !declared) {
            Add("unknown-parameter", walked ? walked->name.begin : 0,
                known_->name + " declares no parameter " + Quoted(name), Nearest(name, ParameterNames(*known_)));
        }
        Kind(held, own, walked);
        Number(held, walked);
        EnumValue(held, walked);
    }

    void Kind(const orv::CarriedParameter& held, const ParameterView* declared, const WalkedParameter* walked)
    {
        if (!declared || IsWord(walked)) return;
        const bool fits = declared->type == held.kind && (!walked || Fits(walked->form, declared->type));
        if (fits) return;
        const std::string wanted = TypeName(declared->type, declared->enumType);
        std::string message = declared->name + " is declared as " + wanted;
        if (walked) {
            message += ", not as " + Quoted(orv::ToUtf8(walked->value.Of(text_)));
            if (walked->form == TextForm::String && declared->enumType) message += " (--names takes a name)";
        } else {
            message += ", and holds " + KindName(held.kind);
        }
        const std::string value = held.kind == declared->type && walked ? ValueText(action_, held) : std::string();
        Add("kind", walked ? walked->value.begin : 0, message + (value.empty() ? "" : "; reads as " + value));
    }

    static bool IsWord(const WalkedParameter* walked) { return walked && walked->form == TextForm::Word; }

    void Number(const orv::CarriedParameter& held, const WalkedParameter* walked)
    {
        if (!walked || walked->form != TextForm::Integer) return;
        const std::u16string_view digits = walked->value.Of(text_);
        const Range range = RangeOf(held.kind);
        if (IsWithin(digits, range)) return;
        Add("range", walked->value.begin,
            orv::ToUtf8(digits) + " does not fit " + TypeName(held.kind, held.enumType) + ", which holds " +
                std::to_string(range.least) + " to " + std::to_string(range.most) + "; reads as " +
                ValueText(action_, held));
    }

    void EnumValue(const orv::CarriedParameter& held, const WalkedParameter* walked)
    {
        if (held.kind != ORV_KIND_Numeric32Bit || held.enumType == 0) return;
        const std::int32_t number = action_.Get<std::int32_t>(held.name).value_or(0);
        const bool known = !ValueName(held.enumType, static_cast<std::uint32_t>(number)).empty();
        const std::string values = known ? std::string() : Values(held.enumType);
        if (values.empty()) return;  // also an enum that nobody has declared
        Add("enum", walked ? walked->value.begin : 0,
            std::to_string(number) + " is no value of " + EnumName(held.enumType) + ": " + values);
    }

    const Action& action_;
    const ActionView* known_;
    std::u16string_view text_;
    const TextWalk& walk_;
    std::vector<Remark>& remarks_;
};

}  // namespace

void AddRemarks(const Action& action, std::vector<Remark>& remarks)
{
    Inspector(action, {}, {}, remarks).Inspect();
}

void AddRemarks(const Action& action, std::u16string_view text, const TextWalk& walk, std::vector<Remark>& remarks)
{
    Inspector(action, text, walk, remarks).Inspect();
}
