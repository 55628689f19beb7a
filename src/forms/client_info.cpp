#include "forms/client_info.h"

namespace OrvPLC {

namespace {

bool ReadText(TOrvAction& action, std::u16string_view name, const OrvWChar** text)
{
    TOrvParameter* value = action.Parameters().Find(name);
    *text = value ? Boundary(value->MakeWideText().c_str()) : nullptr;
    return value != nullptr;
}

bool ReadType(TOrvAction& action, const std::uint32_t** type)
{
    TOrvParameter* value = action.Parameters().Find(kClientType);
    *type = value ? reinterpret_cast<const std::uint32_t*>(value->Int32InPlace()) : nullptr;
    return value != nullptr;
}

}  // namespace

bool ReadClientInfo(TOrvAction& action, const OrvWChar** host, const std::uint32_t** type, const OrvWChar** account)
{
    return ReadText(action, kClientHost, host) && ReadType(action, type) && ReadText(action, kClientAccount, account);
}

void WriteClientInfo(TOrvAction& action, const OrvWChar* host, std::uint32_t type, const OrvWChar* account)
{
    action.SetString(Boundary(kClientHost.data()), host);
    action.SetEnum(Boundary(kClientType.data()), static_cast<std::int32_t>(type), kClientTypeEnum);
    action.SetString(Boundary(kClientAccount.data()), account);
}

}  // namespace OrvPLC
