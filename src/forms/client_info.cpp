#include "forms/client_info.h"

#include <optional>
#include <string>

#include "OrvActions/OrvEnums.h"

namespace OrvPLC {

namespace {

// False and null if the action has no such parameter.
bool ReadText(TOrvAction& action, std::u16string_view name, const OrvWChar** text)
{
    TOrvParameter* value = action.Parameters().Find(name);
    *text = value ? Boundary(value->MakeWideText().data()) : nullptr;
    return value != nullptr;
}

bool ReadType(TOrvAction& action, const std::uint32_t** type)
{
    TOrvParameter* value = action.Parameters().Find(kClientType);
    *type = value ? reinterpret_cast<const std::uint32_t*>(value->Int32InPlace()) : nullptr;
    return value != nullptr;
}

using OptionalText = std::optional<std::u16string>;  // nothing removes the parameter

// Null is nothing, "" a text.
OptionalText Copy(const OrvWChar* text)
{
    return text ? OptionalText(TerminatedView(text)) : std::nullopt;
}

void StoreText(ParameterMap& parameters, std::u16string_view name, const OptionalText& text)
{
    if (!text) {
        parameters.Remove(name);
        return;
    }
    parameters.Store(name, [&text](TOrvParameter& value) { value.SetString(*text); });
}

}  // namespace

bool ReadClientInfo(TOrvAction& action, const OrvWChar** host, const std::uint32_t** type, const OrvWChar** account)
{
    return ReadText(action, kClientHost, host) && ReadType(action, type) && ReadText(action, kClientAccount, account);
}

void WriteClientInfo(TOrvAction& action, const OrvWChar* host, std::uint32_t type, const OrvWChar* account)
{
    // Both texts are read before the first is written: they may be texts of this very action.
    const OptionalText newHost = Copy(host);
    const OptionalText newAccount = Copy(account);
    StoreText(action.Parameters(), kClientHost, newHost);
    action.Parameters().Store(kClientType, [type](TOrvParameter& value) {
        value.SetInt32(static_cast<std::int32_t>(type), ORV_ENUM_PlcClientType);
    });
    StoreText(action.Parameters(), kClientAccount, newAccount);
}

}  // namespace OrvPLC
