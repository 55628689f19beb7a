#include "event_parameters.h"

#include <map>
#include <set>

#include "forms.h"
#include "text.h"

namespace {

using Json = nlohmann::ordered_json;
using Names = std::set<std::string>;

// The parameters that have a column for themselves, in lower case. The first that is declared takes it.
Names NamesWithColumn(std::uint32_t code)
{
    Names names;
    std::uint32_t taken = 0;
    if (const ActionView* declared = FindAction(code)) {
        for (const ParameterView& parameter : declared->parameters) {
            if (parameter.columns != 0 && (parameter.columns & taken) == 0)
                names.insert(LowerCaseAscii(parameter.name));
            taken |= parameter.columns;
        }
    }
    for (const char* name : {"User1", "User2", "ClientHost", "ClientAccount"}) {
        const ParameterView* user = FindGeneralParameter(name);
        if (user && (user->columns & taken) == 0) names.insert(LowerCaseAscii(name));
    }
    return names;
}

// Kept by code: an input mostly has few kinds of actions.
const Names& WithColumn(std::uint32_t code)
{
    static std::map<std::uint32_t, Names> known;
    const auto found = known.find(code);
    return found != known.end() ? found->second : known.emplace(code, NamesWithColumn(code)).first->second;
}

std::string WithoutZeros(std::string text)
{
    for (std::size_t at = 0; (at = text.find('\0', at)) != std::string::npos;) text.replace(at, 1, "\uFFFD");
    return text;
}

// In names and in values, at any depth.
Json Cleaned(const Json& value)
{
    if (value.is_string()) return WithoutZeros(value.get<std::string>());
    if (!value.is_structured()) return value;
    Json cleaned = value.is_array() ? Json::array() : Json::object();
    for (const auto& item : value.items()) {
        if (value.is_array()) {
            cleaned.push_back(Cleaned(item.value()));
        } else {
            cleaned[WithoutZeros(item.key())] = Cleaned(item.value());
        }
    }
    return cleaned;
}

}  // namespace

Json ParametersJson(const Action& action)
{
    const Encoded encoded = action ? WriteJson(action) : Encoded();
    if (!action || !encoded.problem.empty()) return nullptr;
    const Json document = Json::parse(encoded.record, nullptr, false);
    return document.is_discarded() ? Json() : document.at("action").value("params", Json::object());
}

std::string ParametersWithoutColumn(const Action& action)
{
    const Names& names = WithColumn(action.Code());
    bool all = true;
    for (const orv::CarriedParameter& held : action.Parameters()) {
        all = all && names.contains(LowerCaseAscii(orv::ToUtf8(held.name)));
    }
    if (all) return {};
    Json parameters = ParametersJson(action);
    if (!parameters.is_object()) return {};
    for (const std::string& name : names) parameters.erase(name);
    return parameters.empty() ? std::string()
                              : Cleaned(parameters).dump(-1, ' ', false, Json::error_handler_t::replace);
}
