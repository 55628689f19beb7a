#include "OrvActions/OrvAccess.h"

#include "OrvActions/OrvErrors.h"
#include "exports/export_twin.h"
#include "exports/frame.h"
#include "objects/action.h"
#include "objects/info_update.h"
#include "objects/orv_plc_exception.h"
#include "objects/parameter_record.h"
#include "objects/roles.h"

using namespace OrvPLC;

namespace {

template <class Work>
OrvBool OnAction(TOrvHandle handle, Work&& work, const char* function = ORV_CALLING_FUNCTION)
{
    return OnObject(
        handle, [&](TOrvMessage&) { work(ActionOf(handle)); }, function);
}

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

ORV_EXPORT_EVERY_TWIN(OrvBool, GetActionCode, (TOrvHandle handle, std::uint32_t* code), (handle, code))
{
    return OnAction(handle, [&](TOrvAction& action) { *code = action.GetActionCode(); });
}

ORV_EXPORT_EVERY_TWIN(OrvBool, GetActionClass, (TOrvHandle handle, std::uint32_t* classCode), (handle, classCode))
{
    return OnAction(handle, [&](TOrvAction& action) { *classCode = action.GetActionClassCode(); });
}

ORV_EXPORT_EVERY_TWIN(OrvBool, GetActionNameW, (TOrvHandle handle, const OrvWChar** name), (handle, name))
{
    return OnAction(handle, [&](TOrvAction& action) { *name = action.GetActionName(); });
}

ORV_EXPORT_EVERY_TWIN(OrvBool, GetActionNameA, (TOrvHandle handle, const char** name), (handle, name))
{
    return OnAction(handle, [&](TOrvAction& action) {
        *name = action.Entry() ? action.Entry()->NameA.c_str() : action.NarrowName();
    });
}

ORV_EXPORT_EVERY_TWIN(OrvBool, GetActionPlainNameW, (TOrvHandle handle, const OrvWChar** name), (handle, name))
{
    return OnAction(handle, [&](TOrvAction& action) { *name = action.GetActionPlainName(); });
}

ORV_EXPORT_EVERY_TWIN(OrvBool, GetActionPlainNameA, (TOrvHandle handle, const char** name), (handle, name))
{
    return OnAction(handle,
                    [&](TOrvAction& action) { *name = action.Entry() ? action.Entry()->Plain().A.c_str() : ""; });
}

ORV_EXPORT_TALVEC_TWIN(OrvBool, GetActionFlags, (TOrvHandle handle, std::uint32_t* flags), (handle, flags))
{
    return OnAction(handle, [&](TOrvAction& action) { *flags = action.GetActionFlags(); });
}

ORV_EXPORT_TALVEC_TWIN(OrvBool, GetActionPriority, (TOrvHandle handle, std::uint32_t* priority), (handle, priority))
{
    return OnAction(handle, [&](TOrvAction& action) { *priority = action.GetActionPriority(); });
}

// The families differ deliberately: one tells what an object is, the other its kind.
OrvBool OrvAct_GetMessageClass(TOrvHandle handle, std::uint32_t* messageClass)
{
    return OnObject(handle, [&](TOrvMessage& object) {
        switch (object.GetMessageKind()) {
        case ORV_MESSAGE_SIBLING_ACTION:
        case ORV_MESSAGE_ACTION: *messageClass = 1; break;
        case ORV_MESSAGE_SIBLING_MATCH_ACTION:
        case ORV_MESSAGE_MATCH_ACTION: *messageClass = 2; break;
        default: *messageClass = 0x7FFFFFFF; break;
        }
    });
}

OrvBool Talvec_Action_GetMessageClass(TOrvHandle handle, std::uint32_t* messageClass)
{
    return OnObject(handle, [&](TOrvMessage& object) { *messageClass = object.GetMessageKind(); });
}

ORV_EXPORT_TWIN(OrvBool, SetMessageFlags, (TOrvHandle handle, std::uint32_t flags), (handle, flags))
{
    return OnObject(handle, [&](TOrvMessage& object) { object.messageFlags = flags; });
}

ORV_EXPORT_TWIN(OrvBool, GetMessageFlags, (TOrvHandle handle, std::uint32_t* flags), (handle, flags))
{
    return OnObject(handle, [&](TOrvMessage& object) { *flags = object.messageFlags; });
}

ORV_EXPORT_TWIN(OrvBool, SetInternalData, (TOrvHandle handle, std::uint64_t data), (handle, data))
{
    return OnObject(handle, [&](TOrvMessage& object) { object.internalData = data; });
}

ORV_EXPORT_TWIN(OrvBool, GetInternalData, (TOrvHandle handle, std::uint64_t* data), (handle, data))
{
    return OnObject(handle, [&](TOrvMessage& object) { *data = object.internalData; });
}

// The accessors of one role. The families differ deliberately where an action has no such role: one reports it, the
// other lets it pass.
#define ORV_EXPORT_ROLE(Name)                                                                                     \
    ORV_EXPORT_TWIN(OrvBool, Get##Name, (TOrvHandle handle, const TOrvChannelValue** channel), (handle, channel)) \
    {                                                                                                             \
        return ReadRole(handle, Roles::k##Name, channel);                                                         \
    }                                                                                                             \
    OrvBool OrvAct_Set##Name(TOrvHandle handle, const TOrvChannelValue* channel)                                  \
    {                                                                                                             \
        return WriteRole(handle, Roles::k##Name, channel, u"Set" #Name " failed");                                \
    }                                                                                                             \
    OrvBool Talvec_Action_Set##Name(TOrvHandle handle, const TOrvChannelValue* channel)                           \
    {                                                                                                             \
        return WriteRole(handle, Roles::k##Name, channel, nullptr);                                               \
    }

ORV_EXPORT_ROLE(VideoInput)
ORV_EXPORT_ROLE(VideoOutput)
ORV_EXPORT_ROLE(InputContact)
ORV_EXPORT_ROLE(OutputContact)

ORV_EXPORT_TWIN(OrvBool, GetForeignKey, (TOrvHandle handle, const std::int64_t** foreignKey), (handle, foreignKey))
{
    return OnAction(handle, [&](TOrvAction& action) { *foreignKey = Roles::ReadForeignKey(action); });
}

OrvBool OrvAct_GetGenericInt32Parameter(TOrvHandle handle, std::int32_t* value)
{
    return OnAction(handle, [&](TOrvAction& action) { *value = Roles::ReadGenericInt32(action); });
}

ORV_EXPORT_TALVEC_TWIN(OrvBool, GetParameterByName,
                       (TOrvHandle handle, const OrvWChar* name, TOrvParameterValue* value), (handle, name, value))
{
    return Framed<OrvBool>(0, [&, &object = ObjectOf(handle)] {
        const auto& action = static_cast<const TOrvAction&>(object);
        const TOrvParameter* found = action.Parameters().FindTerminated(Units(name));
        if (found) FillRecord(*value, *found);
        return OrvBool{found != nullptr};
    });
}

ORV_EXPORT_TALVEC_TWIN(OrvBool, SetParameterByName,
                       (TOrvHandle handle, const OrvWChar* name, const TOrvParameterValue* value),
                       (handle, name, value))
{
    return OnAction(handle, [&](TOrvAction& action) {
        action.Parameters().StoreTerminated(Units(name), [&](TOrvParameter& stored) { SetFromRecord(stored, *value); });
    });
}

ORV_EXPORT_TWIN(OrvBool, UpdateActionInfo,
                (TOrvHandle handle, OrvWord context, const TOrvActionInfoUpdateCallbacks* callbacks, OrvBool* allKnown),
                (handle, context, callbacks, allKnown))
{
    return OnAction(handle, [&](TOrvAction& action) { *allKnown = UpdateActionInfo(action, context, *callbacks); });
}
