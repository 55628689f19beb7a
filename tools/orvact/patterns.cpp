#include "patterns.h"

#include "action_reader.h"
#include "settings.h"
#include "text.h"
#include "value_kind.h"

namespace {

// Why a parameter of the action does not match that of the pattern.
struct Differing {
    const Action& wanted;
    const Action& given;
    orv::CarriedParameter parameter;
    std::string name;

    std::string Field(const char* field, const std::string& is, const std::string& want) const
    {
        return name + ": " + field + " " + is + ", not " + want;
    }

    std::string Numbers(const char* field, std::uint64_t is, std::uint64_t want) const
    {
        return Field(field, std::to_string(is), std::to_string(want));
    }

    std::string Names(const std::u16string& is, const std::u16string& want) const
    {
        const auto quoted = [](const std::u16string& text) { return "\"" + Visible(orv::ToUtf8(text)) + "\""; };
        return Field("the name is", quoted(is), quoted(want));
    }

    template <class T>
    std::string Compared() const
    {
        return Why(given.Get<T>(parameter.name).value_or(T()), wanted.Get<T>(parameter.name).value_or(T()));
    }

    // The first field that the pattern fills decides alone.
    std::string Why(const orv::Channel& is, const orv::Channel& want) const
    {
        if (want.id != 0) return Numbers("the id is", is.id, want.id);
        return want.number != 0 ? Numbers("the number is", is.number, want.number) : Names(is.name, want.name);
    }

    std::string Why(const orv::EventType& is, const orv::EventType& want) const
    {
        return want.id != 0 ? Numbers("the id is", is.id, want.id) : Names(is.name, want.name);
    }

    std::string Why(const orv::Resource& is, const orv::Resource& want) const
    {
        if (orv::IsZero(want.guid)) return Names(is.name, want.name);
        return Field("the guid is", orv::ToText(is.guid), orv::ToText(want.guid));
    }

    std::string Why() const
    {
        if (!given.Has(parameter.name)) return name + ": the action has none";
        const std::uint32_t kind = given.KindOf(parameter.name);
        if (kind != parameter.kind) {
            return Field("the kind is", KindName(kind), KindName(parameter.kind)) + ", and kinds are not converted";
        }
        switch (ValueKind{kind}) {
        case ValueKind::MediaChannel: return Compared<orv::Channel>();
        case ValueKind::EventType: return Compared<orv::EventType>();
        case ValueKind::Resource: return Compared<orv::Resource>();
        case ValueKind::None:
        case ValueKind::Boolean:
        case ValueKind::Numeric32Bit:
        case ValueKind::Numeric64Bit:
        case ValueKind::NumericDouble:
        case ValueKind::String:
        case ValueKind::DateTime:
        case ValueKind::Guid:
        case ValueKind::Rect:
        case ValueKind::ResultDataSet: break;
        }
        // The kind is the same, but the enum is the action's.
        orv::CarriedParameter held = parameter;
        held.enumType = given.EnumOf(parameter.name);
        return Field("the value is", ValueText(given, held), ValueText(wanted, parameter));
    }
};

// A pattern with one parameter only, so that the library itself says which parameters fail.
Action Narrowed(const Action& pattern, const std::vector<orv::CarriedParameter>& parameters, std::size_t kept)
{
    Action narrowed = pattern.Clone();
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (i != kept) narrowed.Remove(parameters[i].name);
    }
    return narrowed;
}

// Takes the action over. An action that is no match action is reported.
bool Take(Action& action, const std::string& place, std::vector<Pattern>& patterns)
{
    const std::string text = ShownText(action);
    if (!action.IsMatchAction()) {
        Complain("not-a-pattern", "no match action: " + Shortened(text, 60) + "; a match action begins with @", {},
                 place);
        return false;
    }
    patterns.push_back({std::move(action), place, text});
    return true;
}

// A pattern that is given as an argument.
bool ReadPattern(const std::string& text, std::vector<Pattern>& patterns)
{
    Decoded decoded = ReadTechnical(text);
    bool sound = static_cast<bool>(decoded.action);
    if (!sound) decoded.remarks.push_back(decoded.problem);
    for (const Remark& remark : decoded.remarks) {
        const bool fault = !decoded.action || settings.strict || remark.code == kUnreadCode;
        sound = sound && !fault;
        Report({"the pattern", 1, false}, fault ? Severity::Error : Severity::Note, remark);
    }
    return sound && Take(decoded.action, "", patterns);
}

}  // namespace

bool ReadPatterns(const std::string& argument, std::vector<Pattern>& patterns)
{
    const std::size_t first = argument.find_first_not_of(" \t");
    if (first != std::string::npos && argument[first] == '@') return ReadPattern(argument, patterns);
    ActionReader reader(Strictness::Unread);
    if (!reader.Open({argument}, nullptr)) return false;
    bool sound = true;
    Action action;
    for (Record record; reader.Next(action, record);) sound = Take(action, TextOf(record.place), patterns) && sound;
    sound = sound && !reader.failed() && reader.unreadable() == 0;
    if (sound && patterns.empty()) Complain("no-patterns", "holds no match action", {}, argument);
    return sound && !patterns.empty();
}

orv::RuleSet RulesOf(const std::vector<Pattern>& patterns)
{
    orv::RuleSet rules;
    for (const Pattern& pattern : patterns) rules.Add(pattern.action);
    return rules;
}

std::vector<std::string> Refusals(const Pattern& pattern, const Action& action)
{
    std::vector<std::string> reasons;
    const std::vector<orv::CarriedParameter> parameters = pattern.action.Parameters();
    // With none of its parameters the pattern asks for the name.
    if (!Narrowed(pattern.action, parameters, parameters.size()).Matches(action)) return reasons;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (Narrowed(pattern.action, parameters, i).Matches(action)) continue;
        const std::string name = Visible(orv::ToUtf8(parameters[i].name));
        reasons.push_back(Differing{pattern.action, action, parameters[i], name}.Why());
    }
    return reasons;
}
