#include "patterns.h"

#include "action_reader.h"
#include "console.h"
#include "text.h"

namespace {

bool Matches(const Action& pattern, const Action& action)
{
    OrvBool matches = 0;
    return OrvMatchAct_Matches(pattern.get(), action.get(), &matches) && matches;
}

// A parameter that an action does not have as a pattern wants it.
struct Differing {
    const Action& wanted;
    const Action& given;
    HeldParameter parameter;
    std::string name;

    std::string Field(const char* field, const std::string& is, const std::string& want) const
    {
        return name + ": " + field + " " + is + ", not " + want;
    }

    std::string Numbers(const char* field, std::uint64_t is, std::uint64_t want) const
    {
        return Field(field, std::to_string(is), std::to_string(want));
    }

    std::string Names(const OrvWChar* is, const OrvWChar* want) const
    {
        const auto quoted = [](const OrvWChar* text) { return "\"" + Visible(Utf8FromWide(text)) + "\""; };
        return Field("the name is", quoted(is), quoted(want));
    }

    // The first field that the pattern fills decides alone.
    std::string Channel() const
    {
        TOrvChannelValue is{};
        TOrvChannelValue want{};
        given->GetMediaChannel(parameter.Name(), &is);
        wanted->GetMediaChannel(parameter.Name(), &want);
        if (want.id != 0) return Numbers("the id is", is.id, want.id);
        return want.number != 0 ? Numbers("the number is", is.number, want.number) : Names(is.name, want.name);
    }

    std::string EventType() const
    {
        TOrvEventTypeValue is{};
        TOrvEventTypeValue want{};
        given->GetEventType(parameter.Name(), &is);
        wanted->GetEventType(parameter.Name(), &want);
        return want.id != 0 ? Numbers("the id is", is.id, want.id) : Names(is.name, want.name);
    }

    std::string Resource() const
    {
        TOrvResourceValue is{};
        TOrvResourceValue want{};
        given->GetResource(parameter.Name(), &is);
        wanted->GetResource(parameter.Name(), &want);
        const std::string guid = GuidText(want.guid);
        const bool byName = guid.find_first_not_of("0-") == std::string::npos;
        return byName ? Names(is.name, want.name) : Field("the guid is", GuidText(is.guid), guid);
    }

    std::string Why() const
    {
        if (!given->HasParameter(parameter.Name())) return name + ": the action has none";
        const std::uint32_t kind = given->GetParameterType(parameter.Name());
        if (kind != parameter.kind) {
            return Field("the kind is", KindName(kind), KindName(parameter.kind)) + ", and kinds are not converted";
        }
        switch (kind) {
        case ORV_KIND_MediaChannel: return Channel();
        case ORV_KIND_EventType: return EventType();
        case ORV_KIND_Resource: return Resource();
        default: break;
        }
        HeldParameter held = parameter;
        held.enumType = given->GetParameterEnum(parameter.Name());
        return Field("the value is", ValueText(given, held), ValueText(wanted, parameter));
    }
};

// A pattern that asks for one parameter only: so the library itself says which of them fail.
Action Narrowed(const Action& pattern, const std::vector<HeldParameter>& parameters, std::size_t kept)
{
    TOrvHandle clone = nullptr;
    OrvAct_CloneHandle(pattern.get(), &clone);
    Action narrowed(clone);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (i != kept) narrowed->RemoveParameter(parameters[i].Name());
    }
    return narrowed;
}

bool Take(Action& action, const std::string& place, std::vector<Pattern>& patterns)
{
    const std::string text = Visible(Utf8FromWide(TextOf(action, false)));
    if (action->GetMessageKind() != ORV_MESSAGE_MATCH_ACTION) {
        PrintError("orvact: " + (place.empty() ? "" : place + ": ") + "no match action: " + Shortened(text, 60) +
                   "\norvact: a match action begins with @\n");
        return false;
    }
    patterns.push_back({std::move(action), place, text});
    return true;
}

}  // namespace

bool ReadPatterns(const std::string& argument, std::vector<Pattern>& patterns)
{
    const std::size_t first = argument.find_first_not_of(" \t");
    if (first != std::string::npos && argument[first] == '@') {
        Decoded decoded = ReadTechnical(argument);
        if (decoded.action && decoded.note.empty()) return Take(decoded.action, "", patterns);
        PrintError("orvact: the pattern: " + decoded.problem + decoded.note + "\n" + decoded.context);
        return false;
    }
    ActionReader reader;
    if (!reader.Open(argument, nullptr)) return false;
    bool sound = true;
    Action action{nullptr};
    for (Record record; reader.Next(action, record);) sound = Take(action, reader.Place(record), patterns) && sound;
    sound = sound && !reader.failed() && reader.unreadable() == 0;
    if (sound && patterns.empty()) PrintError("orvact: " + argument + ": holds no match action\n");
    return sound && !patterns.empty();
}

bool MatchesAny(const std::vector<Pattern>& patterns, const Action& action)
{
    for (const Pattern& pattern : patterns) {
        if (Matches(pattern.action, action)) return true;
    }
    return false;
}

std::vector<std::string> Refusals(const Pattern& pattern, const Action& action)
{
    std::vector<std::string> reasons;
    const std::vector<HeldParameter> parameters = HeldParameters(pattern.action);
    // With none of its parameters the pattern asks for the name.
    if (!Matches(Narrowed(pattern.action, parameters, parameters.size()), action)) return reasons;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (Matches(Narrowed(pattern.action, parameters, i), action)) continue;
        const std::string name = Visible(Utf8FromWide(parameters[i].name));
        reasons.push_back(Differing{pattern.action, action, parameters[i], name}.Why());
    }
    return reasons;
}
