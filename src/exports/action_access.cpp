#include "OrvActions/OrvAccess.h"

#include "OrvActions/OrvErrors.h"
#include "exports/export_alias.h"
#include "exports/frame.h"
#include "forms/message_kinds.h"
#include "objects/action.h"
#include "objects/name_refresh.h"
#include "objects/orv_plc_exception.h"
#include "objects/parameter_record.h"
#include "objects/roles.h"

using namespace OrvPLC;

namespace {

// The last argument becomes the name of the export that calls, for the report of a null handle. So it does in each
// helper of this folder.
OrvBool ReadRole(TOrvHandle handle, Roles::Views views, const TOrvChannelValue** channel,
                 const char* function = ORV_CALLING_FUNCTION)
{
    return OnAction(
        handle, [&](TOrvAction& action) { *channel = Roles::ReadChannel(action, views); }, function);
}

OrvBool WriteRole(TOrvHandle handle, Roles::Views views, const TOrvChannelValue* channel, const char16_t* failure,
                  const char* function = ORV_CALLING_FUNCTION)
{
    const auto write = [&](TOrvAction& action) {
        if (!Roles::WriteChannel(action, views, *channel) && failure) {
            throw OrvPLCException(failure, ORV_SUBERROR_NO_SUCH_ROLE);
        }
    };
    return OnAction(handle, write, function);
}

}  // namespace

OrvBool OrvAct_GetActionCode(TOrvHandle handle, std::uint32_t* code)
{
    return OnAction(handle, [&](TOrvAction& action) { *code = action.GetActionCode(); });
}
ORV_ALIAS(Talvec_Action_GetActionCode, OrvAct_GetActionCode);
ORV_ALIAS(OrvMatchAct_GetActionCode, OrvAct_GetActionCode);
ORV_ALIAS(TalvecMatchAct_GetActionCode, OrvAct_GetActionCode);

OrvBool OrvAct_GetActionClass(TOrvHandle handle, std::uint32_t* classCode)
{
    return OnAction(handle, [&](TOrvAction& action) { *classCode = action.GetActionClassCode(); });
}
ORV_ALIAS(Talvec_Action_GetActionClass, OrvAct_GetActionClass);
ORV_ALIAS(OrvMatchAct_GetActionClass, OrvAct_GetActionClass);
ORV_ALIAS(TalvecMatchAct_GetActionClass, OrvAct_GetActionClass);

OrvBool OrvAct_GetActionNameW(TOrvHandle handle, const OrvWChar** name)
{
    return OnAction(handle, [&](TOrvAction& action) { *name = action.GetActionName(); });
}
ORV_ALIAS(Talvec_Action_GetActionNameW, OrvAct_GetActionNameW);
ORV_ALIAS(OrvMatchAct_GetActionNameW, OrvAct_GetActionNameW);
ORV_ALIAS(TalvecMatchAct_GetActionNameW, OrvAct_GetActionNameW);

OrvBool OrvAct_GetActionNameA(TOrvHandle handle, const char** name)
{
    return OnAction(handle, [&](TOrvAction& action) {
        *name = action.Entry() ? action.Entry()->NameA.c_str() : action.NarrowName();
    });
}
ORV_ALIAS(Talvec_Action_GetActionNameA, OrvAct_GetActionNameA);
ORV_ALIAS(OrvMatchAct_GetActionNameA, OrvAct_GetActionNameA);
ORV_ALIAS(TalvecMatchAct_GetActionNameA, OrvAct_GetActionNameA);

OrvBool OrvAct_GetActionPlainNameW(TOrvHandle handle, const OrvWChar** name)
{
    return OnAction(handle, [&](TOrvAction& action) { *name = action.GetActionPlainName(); });
}
ORV_ALIAS(Talvec_Action_GetActionPlainNameW, OrvAct_GetActionPlainNameW);
ORV_ALIAS(OrvMatchAct_GetActionPlainNameW, OrvAct_GetActionPlainNameW);
ORV_ALIAS(TalvecMatchAct_GetActionPlainNameW, OrvAct_GetActionPlainNameW);

OrvBool OrvAct_GetActionPlainNameA(TOrvHandle handle, const char** name)
{
    return OnAction(handle,
                    [&](TOrvAction& action) { *name = action.Entry() ? action.Entry()->Plain().A.c_str() : ""; });
}
ORV_ALIAS(Talvec_Action_GetActionPlainNameA, OrvAct_GetActionPlainNameA);
ORV_ALIAS(OrvMatchAct_GetActionPlainNameA, OrvAct_GetActionPlainNameA);
ORV_ALIAS(TalvecMatchAct_GetActionPlainNameA, OrvAct_GetActionPlainNameA);

OrvBool Talvec_Action_GetActionFlags(TOrvHandle handle, std::uint32_t* flags)
{
    return OnAction(handle, [&](TOrvAction& action) { *flags = action.GetActionFlags(); });
}
ORV_ALIAS(TalvecMatchAct_GetActionFlags, Talvec_Action_GetActionFlags);

OrvBool Talvec_Action_GetActionPriority(TOrvHandle handle, std::uint32_t* priority)
{
    return OnAction(handle, [&](TOrvAction& action) { *priority = action.GetActionPriority(); });
}
ORV_ALIAS(TalvecMatchAct_GetActionPriority, Talvec_Action_GetActionPriority);

// The families differ deliberately: one tells what an object is, the other its kind.
OrvBool OrvAct_GetMessageClass(TOrvHandle handle, std::uint32_t* messageClass)
{
    return OnObject(handle, [&](TOrvMessage& object) { *messageClass = SiblingKindOf(object.GetMessageKind()); });
}

OrvBool Talvec_Action_GetMessageClass(TOrvHandle handle, std::uint32_t* messageClass)
{
    return OnObject(handle, [&](TOrvMessage& object) { *messageClass = object.GetMessageKind(); });
}

OrvBool OrvAct_SetMessageFlags(TOrvHandle handle, std::uint32_t flags)
{
    return OnObject(handle, [&](TOrvMessage& object) { object.messageFlags = flags; });
}
ORV_ALIAS(Talvec_Action_SetMessageFlags, OrvAct_SetMessageFlags);

OrvBool OrvAct_GetMessageFlags(TOrvHandle handle, std::uint32_t* flags)
{
    return OnObject(handle, [&](TOrvMessage& object) { *flags = object.messageFlags; });
}
ORV_ALIAS(Talvec_Action_GetMessageFlags, OrvAct_GetMessageFlags);

OrvBool OrvAct_SetInternalData(TOrvHandle handle, std::uint64_t data)
{
    return OnObject(handle, [&](TOrvMessage& object) { object.internalData = data; });
}
ORV_ALIAS(Talvec_Action_SetInternalData, OrvAct_SetInternalData);

OrvBool OrvAct_GetInternalData(TOrvHandle handle, std::uint64_t* data)
{
    return OnObject(handle, [&](TOrvMessage& object) { *data = object.internalData; });
}
ORV_ALIAS(Talvec_Action_GetInternalData, OrvAct_GetInternalData);

// The roles. The families differ deliberately where an action has none: one reports it, the other lets it pass.

OrvBool OrvAct_GetVideoInput(TOrvHandle handle, const TOrvChannelValue** channel)
{
    return ReadRole(handle, Roles::kVideoInput, channel);
}
ORV_ALIAS(Talvec_Action_GetVideoInput, OrvAct_GetVideoInput);

OrvBool OrvAct_SetVideoInput(TOrvHandle handle, const TOrvChannelValue* channel)
{
    return WriteRole(handle, Roles::kVideoInput, channel, u"SetVideoInput failed");
}

OrvBool Talvec_Action_SetVideoInput(TOrvHandle handle, const TOrvChannelValue* channel)
{
    return WriteRole(handle, Roles::kVideoInput, channel, nullptr);
}

OrvBool OrvAct_GetVideoOutput(TOrvHandle handle, const TOrvChannelValue** channel)
{
    return ReadRole(handle, Roles::kVideoOutput, channel);
}
ORV_ALIAS(Talvec_Action_GetVideoOutput, OrvAct_GetVideoOutput);

OrvBool OrvAct_SetVideoOutput(TOrvHandle handle, const TOrvChannelValue* channel)
{
    return WriteRole(handle, Roles::kVideoOutput, channel, u"SetVideoOutput failed");
}

OrvBool Talvec_Action_SetVideoOutput(TOrvHandle handle, const TOrvChannelValue* channel)
{
    return WriteRole(handle, Roles::kVideoOutput, channel, nullptr);
}

OrvBool OrvAct_GetInputContact(TOrvHandle handle, const TOrvChannelValue** channel)
{
    return ReadRole(handle, Roles::kInputContact, channel);
}
ORV_ALIAS(Talvec_Action_GetInputContact, OrvAct_GetInputContact);

OrvBool OrvAct_SetInputContact(TOrvHandle handle, const TOrvChannelValue* channel)
{
    return WriteRole(handle, Roles::kInputContact, channel, u"SetInputContact failed");
}

OrvBool Talvec_Action_SetInputContact(TOrvHandle handle, const TOrvChannelValue* channel)
{
    return WriteRole(handle, Roles::kInputContact, channel, nullptr);
}

OrvBool OrvAct_GetOutputContact(TOrvHandle handle, const TOrvChannelValue** channel)
{
    return ReadRole(handle, Roles::kOutputContact, channel);
}
ORV_ALIAS(Talvec_Action_GetOutputContact, OrvAct_GetOutputContact);

OrvBool OrvAct_SetOutputContact(TOrvHandle handle, const TOrvChannelValue* channel)
{
    return WriteRole(handle, Roles::kOutputContact, channel, u"SetOutputContact failed");
}

OrvBool Talvec_Action_SetOutputContact(TOrvHandle handle, const TOrvChannelValue* channel)
{
    return WriteRole(handle, Roles::kOutputContact, channel, nullptr);
}

OrvBool OrvAct_GetForeignKey(TOrvHandle handle, const std::int64_t** foreignKey)
{
    return OnAction(handle, [&](TOrvAction& action) { *foreignKey = Roles::ReadForeignKey(action); });
}
ORV_ALIAS(Talvec_Action_GetForeignKey, OrvAct_GetForeignKey);

OrvBool OrvAct_GetGenericInt32Parameter(TOrvHandle handle, std::int32_t* value)
{
    return OnAction(handle, [&](TOrvAction& action) { *value = Roles::ReadGenericInt32(action); });
}

OrvBool Talvec_Action_GetParameterByName(TOrvHandle handle, const OrvWChar* name, TOrvParameterValue* value)
{
    return OnAction(handle, [&](const TOrvAction& action) {
        // An absent parameter is an answer and no failure: false, with the last error cleared.
        const TOrvParameter* found = action.Parameters().FindTerminated(Units(name));
        if (found) FillRecord(*value, *found);
        return found != nullptr;
    });
}
ORV_ALIAS(TalvecMatchAct_GetParameterByName, Talvec_Action_GetParameterByName);

OrvBool Talvec_Action_SetParameterByName(TOrvHandle handle, const OrvWChar* name, const TOrvParameterValue* value)
{
    return OnAction(handle, [&](TOrvAction& action) {
        action.Parameters().StoreTerminated(Units(name),
                                            [value](TOrvParameter& stored) { SetFromRecord(stored, *value); });
    });
}
ORV_ALIAS(TalvecMatchAct_SetParameterByName, Talvec_Action_SetParameterByName);

OrvBool OrvAct_UpdateActionInfo(TOrvHandle handle, OrvWord context, const TOrvActionInfoUpdateCallbacks* callbacks,
                                OrvBool* allKnown)
{
    return OnAction(handle, [&](TOrvAction& action) { *allKnown = RefreshNames(action, context, *callbacks); });
}
ORV_ALIAS(Talvec_Action_UpdateActionInfo, OrvAct_UpdateActionInfo);
