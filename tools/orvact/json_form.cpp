// The JSON form: made valid where the library writes names raw, and read back, which the library does not do.
#include <charconv>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>

#include "forms.h"
#include "iso_time.h"
#include "remarks.h"
#include "text.h"

namespace {

using Json = nlohmann::json;

// What the library leaves raw in strings and names, as an escape.
std::string Escaped(std::string_view text, bool withQuotes)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string escaped;
    for (const char unit : text) {
        const auto byte = static_cast<unsigned char>(unit);
        if (withQuotes && (unit == '"' || unit == '\\')) {
            escaped += '\\';
            escaped += unit;
        } else if (byte >= 0x20) {
            escaped += unit;
        } else {
            const std::size_t known = std::string_view("\b\t\n\f\r").find(unit);
            escaped += known != std::string_view::npos ? std::string("\\") + "btnfr"[known]
                                                       : std::string("\\u00") + kDigits[byte >> 4] + kDigits[byte & 15];
        }
    }
    return escaped;
}

// Whether the library's raw key is valid JSON as it stands.
bool IsPlain(std::u16string_view name)
{
    return name.find_first_of(u"\"\\") == std::u16string_view::npos &&
           std::none_of(name.begin(), name.end(), [](char16_t unit) { return unit < 0x20; });
}

// The text with the keys of its parameters as a strict parser wants them. The keys are the lower-cased names, unit by
// unit, in the order in which the action gives them; a value without content has no key.
std::u16string WithSoundKeys(const Action& action, const std::u16string& text)
{
    const std::vector<orv::CarriedParameter> parameters = action.Parameters();
    if (std::ranges::all_of(parameters, [](const auto& parameter) { return IsPlain(parameter.name); })) return text;
    std::size_t at = text.find(u"\"params\":{");
    if (at == std::u16string::npos) return text;
    std::u16string sound = text.substr(0, at += 10);
    const auto begins = [&](std::size_t from, std::u16string_view name) {
        if (text.compare(from + name.size(), 2, u"\":") != 0) return false;
        return std::equal(name.begin(), name.end(), text.begin() + static_cast<std::ptrdiff_t>(from),
                          [](char16_t a, char16_t b) {
                              const bool upper = a >= u'A' && a <= u'Z';
                              return a == b || (upper && b == (a | 0x20)) || (a >= 0x80 && b >= 0x80);
                          });
    };
    for (const orv::CarriedParameter& parameter : parameters) {
        const std::size_t length = parameter.name.size();
        if (at >= text.size() || text[at] != u'"' || !begins(at + 1, parameter.name)) continue;
        const std::string key = orv::ToUtf8(text.substr(at + 1, length));
        sound += u"\"" + orv::ToUtf16(Escaped(key, true)) + u"\":";
        at += length + 3;
        // After the value, which is sound: strings escape their quotes.
        int depth = 0;
        bool quoted = false;
        for (; at < text.size(); ++at) {
            const char16_t unit = text[at];
            if (!quoted && depth == 0 && (unit == u',' || unit == u'}')) break;
            if (quoted && unit == u'\\') sound += text[at++];
            if (text[at] == u'"' && unit != u'\\') quoted = !quoted;
            if (!quoted) depth += (unit == u'{') - (unit == u'}');
            sound += text[at];
        }
        if (at < text.size() && text[at] == u',') sound += text[at++];
    }
    return sound + text.substr(at);
}

// Raw control characters stand in strings only.
std::string WithoutRawControls(std::string_view text)
{
    std::string sound;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') quoted = !quoted;
        const std::size_t length = quoted && text[i] == '\\' && i + 1 < text.size() ? 2 : 1;
        sound += quoted ? Escaped(text.substr(i, length), false) : std::string(text.substr(i, length));
        i += length - 1;
    }
    return sound;
}

class Unusable : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A member that is missing or of another type reads as "" or 0.
std::string StringOf(const Json& object, const char* key)
{
    const auto found = object.find(key);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::int64_t NumberOf(const Json& object, const char* key)
{
    const auto found = object.find(key);
    return found != object.end() && found->is_number_integer() ? found->get<std::int64_t>() : 0;
}

// An unsigned number is compared as such: it may be above what a signed one holds.
bool IsWithin(const Json& value, std::int64_t least, std::int64_t most)
{
    if (value.is_number_unsigned()) return value.get<std::uint64_t>() <= static_cast<std::uint64_t>(most);
    return value.is_number_integer() && value.get<std::int64_t>() >= least && value.get<std::int64_t>() <= most;
}

bool IsInt32(const Json& value)
{
    return IsWithin(value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max());
}

std::optional<orv::Guid> GuidOf(const std::string& text)
{
    if (text.size() != 36) return std::nullopt;
    const auto hex = [&](std::size_t at, std::size_t size) {
        std::uint32_t number = 0;
        const char* end = text.data() + at + size;
        return std::from_chars(text.data() + at, end, number, 16).ptr == end ? number : 0;
    };
    orv::Guid guid{hex(0, 8), static_cast<std::uint16_t>(hex(9, 4)), static_cast<std::uint16_t>(hex(14, 4)), {}};
    for (std::size_t i = 0; i < 8; ++i) guid.Data4[i] = static_cast<std::uint8_t>(hex(19 + 2 * i + (i > 1), 2));
    // Written again and compared: that finds whatever the parsing above has let pass.
    return orv::ToText(guid) == LowerCaseAscii(text) ? std::optional<orv::Guid>(guid) : std::nullopt;
}

// By the members that it has: the form does not name the kind.
orv::Value FromObject(const Json& value)
{
    const auto name = [&](const char* key) { return orv::ToUtf16(StringOf(value, key)); };
    const auto id = [&](const char* key) { return static_cast<std::uint64_t>(NumberOf(value, key)); };
    const auto side = [&](const char* key) { return static_cast<std::int16_t>(NumberOf(value, key)); };
    if (value.contains("channelID") || value.contains("channelName") || value.contains("globalNo")) {
        return orv::Channel{id("channelID"), name("channelName"), static_cast<std::uint32_t>(id("globalNo"))};
    }
    if (value.contains("eventTypeID") || value.contains("eventName")) {
        return orv::EventType{id("eventTypeID"), name("eventName")};
    }
    if (value.contains("resourceID") || value.contains("resourceName")) {
        const auto guid = GuidOf(StringOf(value, "resourceID"));
        return orv::Resource{guid.value_or(orv::Guid{}), name("resourceName")};
    }
    if (value.contains("top")) return orv::Rect{side("top"), side("left"), side("bottom"), side("right")};
    throw Unusable("holds an object that is no value of an action");
}

// A value whose kind nothing declares is judged by its look.
orv::Value ByLook(const Json& value)
{
    if (value.is_boolean()) return value.get<bool>();
    if (IsInt32(value)) return value.get<std::int32_t>();
    if (IsWithin(value, std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max())) {
        return value.get<std::int64_t>();
    }
    if (value.is_number()) return value.get<double>();
    if (value.is_string()) return orv::ToUtf16(value.get<std::string>());
    // The library writes null for what is no finite number.
    if (value.is_null()) return std::numeric_limits<double>::quiet_NaN();
    if (value.is_object()) return FromObject(value);
    throw Unusable("is a list, which no value of an action is");
}

// The word of an enum: the plain name, which the library writes, or the name.
orv::Value EnumOf(const std::string& word, std::uint32_t enumType)
{
    const std::vector<orv::EnumValueInfo> values = orv::EnumValues(enumType);
    std::vector<std::string> names;
    for (const auto text : {&orv::EntryTexts::plainName, &orv::EntryTexts::name}) {
        for (const orv::EnumValueInfo& value : values) {
            names.push_back(orv::ToUtf8(value.*text));
            if (names.back() == word) return orv::Enum{static_cast<std::int32_t>(value.value), enumType};
        }
    }
    const std::string near = Nearest(word, names);
    throw Unusable("'" + Visible(word) + "' is no value of " + EnumName(enumType) +
                   (near.empty() ? "" : "; did you mean " + near + "?"));
}

// As declared where the value has that look, else by its look, so that nothing is lost.
orv::Value ByKind(const Json& value, const ParameterView& declared)
{
    const auto text = [&] { return value.get<std::string>(); };
    switch (declared.type) {
    case ORV_KIND_Boolean:
        if (IsWithin(value, 0, 1)) return value.get<int>() != 0;
        break;
    case ORV_KIND_Numeric32Bit:
        if (declared.enumType == 0) break;
        if (IsInt32(value)) return orv::Enum{value.get<std::int32_t>(), declared.enumType};
        if (value.is_string()) return EnumOf(text(), declared.enumType);
        break;
    case ORV_KIND_Numeric64Bit:
        if (value.is_number_integer()) return value.get<std::int64_t>();
        break;
    case ORV_KIND_NumericDouble:
        if (value.is_number()) return value.get<double>();
        break;
    case ORV_KIND_DateTime:
        if (const auto date = value.is_string() ? DateFromIso(text()) : std::nullopt) return *date;
        break;
    case ORV_KIND_Guid:
        if (const auto guid = value.is_string() ? GuidOf(text()) : std::nullopt) return *guid;
        break;
    default: break;
    }
    return ByLook(value);
}

void SetParameter(Action& action, const ActionView* known, const std::string& key, const Json& value)
{
    const ParameterView* declared = known ? known->Find(key) : nullptr;
    if (!declared) declared = FindGeneralParameter(key);
    const std::string name = declared ? declared->name : key;
    if (declared && declared->type == ORV_KIND_ResultDataSet && value.is_string()) {
        return action.SetResultText(name, value.get<std::string>());
    }
    try {
        action.Set(name, declared ? ByKind(value, *declared) : ByLook(value));
    } catch (const Unusable& unusable) {
        throw Unusable("parameter '" + Visible(key) + "': " + unusable.what());
    }
}

Json Parsed(const std::string& record)
{
    // The library itself writes them raw, and the parser refuses them.
    std::string text = WithoutRawControls(record);
    // The member alone, without a document around it.
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first != std::string::npos && text[first] == '"') text = "{" + text + "}";
    Json document = Json::parse(text);
    const bool wrapped = document.is_object() && document.contains("action");
    return wrapped ? document["action"] : document;
}

// Raises Unusable for an object that is no action.
Action ActionOf(const Json& object)
{
    const std::string name = object.is_object() ? StringOf(object, "name") : "";
    if (name.empty()) throw Unusable("no action: expected an object with a name");
    Action action = Action::Named(name);
    // A document may come from a client that writes the sibling's number only.
    const bool match = object.contains("messageClass") ? NumberOf(object, "messageClass") == ORV_MESSAGE_MATCH_ACTION
                                                       : NumberOf(object, "heskMessageClass") == 2;
    if (match) action = action.ToMatchAction();
    const ActionView* known = FindAction(action.Code());
    const auto parameters = object.find("params");
    if (parameters == object.end()) return action;
    if (!parameters->is_object()) throw Unusable("params is no object");
    for (const auto& [key, value] : parameters->items()) SetParameter(action, known, key, value);
    return action;
}

}  // namespace

void DocumentWalk::Add(std::string_view text)
{
    for (const char unit : text) {
        const bool escaped = escaped_;
        escaped_ = quoted_ && unit == '\\' && !escaped;
        if (unit == '"' && !escaped) quoted_ = !quoted_;
        if (!quoted_) depth_ += (unit == '{') - (unit == '}');
    }
}

Encoded WriteJson(const Action& action)
{
    try {
        const std::u16string text = action.Json(true, Action::kEveryPriority);
        // The library leaves controls raw. They stand in strings only, so an escape means the same and keeps the line.
        return {Escaped(orv::ToUtf8(WithSoundKeys(action, text)), false), {}};
    } catch (const orv::Error& failure) {
        return {{}, Visible(failure.what())};
    }
}

Decoded ReadJson(const std::string& record)
{
    Decoded decoded;
    decoded.problem.code = "not-an-action";
    try {
        decoded.action = ActionOf(Parsed(record));
        AddRemarks(decoded.action, decoded.remarks);
    } catch (const Json::parse_error& fault) {
        const std::string_view before = std::string_view(record).substr(0, fault.byte > 0 ? fault.byte - 1 : 0);
        const std::size_t begin = before.rfind('\n') + 1;  // of nothing is 0
        decoded.problem.line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
        decoded.problem.column = orv::ToUtf16(before.substr(begin)).size() + 1;
        decoded.problem.message = "no JSON here";
    } catch (const Json::exception&) {
        decoded.problem.message = "no action: a member is of another type than the form has";
    } catch (const Unusable& unusable) {
        decoded.problem.message = unusable.what();
    }
    return decoded;
}
