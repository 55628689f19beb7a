#include <utility>

#include "OrvActions/OrvProperties.h"
#include "exports/frame.h"
#include "forms/client_info.h"
#include "forms/properties.h"

using namespace OrvPLC;

namespace {

// The slot's own string is freed once there is another.
void Replace(OrvBStr* slot, const std::u16string& text)
{
    FreeBStr(std::exchange(*slot, NewBStr(text)));
}

}  // namespace

OrvBool OrvAct_GetProperties(TOrvHandle handle, OrvBStr* text)
{
    return OnAction(handle, [&](TOrvAction& action) { Replace(text, PropertiesText(action)); });
}

OrvBool OrvAct_GetXML(TOrvHandle handle, OrvBStr* text)
{
    return OnAction(handle, [&](TOrvAction& action) { Replace(text, FlatXml(action)); });
}

OrvBool OrvAct_GetProperty(TOrvHandle handle, const OrvWChar* key, const OrvWChar** value)
{
    return OnAction(handle, [&](TOrvAction& action) { *value = Boundary(ReadProperty(action, TerminatedView(key))); });
}

// The text of the parameter is made even when nobody takes the copy.
OrvBool OrvAct_GetProperty__Q_NEW_Q__(TOrvHandle handle, const OrvWChar* key, OrvBStr* value)
{
    return OnAction(handle, [&](TOrvAction& action) {
        const OrvWChar* text = Boundary(ReadProperty(action, TerminatedView(key)));
        if (value) *value = text ? NewBStr(TerminatedView(text)) : nullptr;
    });
}

OrvBool OrvAct_SetProperty(TOrvHandle handle, const OrvWChar* key, const OrvWChar* value)
{
    return OnAction(handle,
                    [&](TOrvAction& action) { WriteProperty(action, TerminatedView(key), TerminatedView(value)); });
}

OrvBool OrvAct_GetWindowsClientInfo(TOrvHandle handle, const OrvWChar** host, const std::uint32_t** clientType,
                                    const OrvWChar** account)
{
    return OnAction(handle, [&](TOrvAction& action) { return ReadClientInfo(action, host, clientType, account); });
}

OrvBool OrvAct_UpdateWindowsClientInfo(TOrvHandle handle, const OrvWChar* host, std::uint32_t clientType,
                                       const OrvWChar* account)
{
    return OnAction(handle, [&](TOrvAction& action) { WriteClientInfo(action, host, clientType, account); });
}
