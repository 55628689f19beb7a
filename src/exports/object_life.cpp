#include "OrvActions/OrvObjects.h"
#include "exports/export_alias.h"
#include "exports/frame.h"
#include "objects/generic_action.h"
#include "objects/match_action.h"

using namespace OrvPLC;

namespace {

// For functions of two objects; both are checked inside the frame.
template <class Work>
OrvBool OnBoth(TOrvHandle first, TOrvHandle second, Work&& work, const char* function = ORV_CALLING_FUNCTION)
{
    return OnObject(
        first, [&](TOrvMessage& object) { work(object, ObjectOf(second, function)); }, function);
}

}  // namespace

TOrvHandle Talvec_Action_CreateActionByName(const OrvWChar* name)
{
    return NewHandle([&] { return name ? TOrvAction::Create(TerminatedView(name)) : nullptr; });
}

TOrvHandle Talvec_Action_CreateActionByCode(std::uint32_t code)
{
    return NewHandle([&] {
        // An unknown code gives no handle, unlike an unknown name. Neither is a failure.
        const TOrvActionInternalInfo* entry = Catalogue().FindActionByCode(code);
        return entry ? TOrvAction::Create(*entry) : nullptr;
    });
}

TOrvHandle OrvAct_CreateGenericAction(const TOrvChannelValue* videoInput, const TOrvChannelValue* videoOutput,
                                      const TOrvChannelValue* inputContact, const TOrvChannelValue* outputContact,
                                      std::uint32_t genericValue)
{
    return NewHandle([&] {
        return TOrvGenericAction::Create({GenericChannel(videoInput), GenericChannel(videoOutput),
                                          GenericChannel(inputContact), GenericChannel(outputContact), genericValue});
    });
}

OrvBool OrvAct_CreateMatchActionFromTemplate(TOrvHandle action, TOrvHandle* matchAction)
{
    return OnAction(action,
                    [&](TOrvAction& original) { *matchAction = HandleOf(TOrvMatchAction::CreateFrom(original, 1)); });
}
ORV_ALIAS(Talvec_Action_CreateMatchActionFromTemplate, OrvAct_CreateMatchActionFromTemplate);

// A null handle leaves the last error as it was.
OrvBool OrvAct_DuplicateHandle(TOrvHandle handle)
{
    if (!handle) return 0;
    return OnObject(handle, [](TOrvMessage& object) { object.AddRef(); });
}
ORV_ALIAS(Talvec_Action_DuplicateHandle, OrvAct_DuplicateHandle);

OrvBool OrvAct_CloseHandle(TOrvHandle handle)
{
    return Succeeds([&] {
        if (handle) MessageOf(handle)->Release();
    });
}
ORV_ALIAS(Talvec_Action_CloseHandle, OrvAct_CloseHandle);

OrvBool OrvAct_CloneHandle(TOrvHandle handle, TOrvHandle* clone)
{
    return OnObject(handle, [&](TOrvMessage& object) { *clone = HandleOf(object.Clone()); });
}
ORV_ALIAS(Talvec_Action_CloneHandle, OrvAct_CloneHandle);

OrvBool OrvAct_GetReferenceCounter(TOrvHandle handle, std::uint32_t* count)
{
    return OnObject(handle, [&](TOrvMessage& object) { *count = object.ReferenceCount(); });
}
ORV_ALIAS(Talvec_Action_GetReferenceCounter, OrvAct_GetReferenceCounter);

OrvBool OrvAct_Equal(TOrvHandle first, TOrvHandle second, OrvBool* equal)
{
    return OnBoth(first, second, [&](TOrvMessage& one, TOrvMessage& other) {
        *equal = one.Kind() == other.Kind() && one.Equals(other);
    });
}
ORV_ALIAS(Talvec_Action_Equal, OrvAct_Equal);

OrvBool OrvAct_GetInternalIndex(TOrvHandle handle, std::uint32_t* index)
{
    return OnObject(handle, [&](TOrvMessage& object) { *index = object.GetInternalIndex(); });
}
ORV_ALIAS(Talvec_Action_GetInternalIndex, OrvAct_GetInternalIndex);
