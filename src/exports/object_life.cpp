#include "OrvActions/OrvObjects.h"
#include "exports/export_twin.h"
#include "exports/frame.h"
#include "objects/generic_action.h"
#include "objects/match_action.h"

using namespace OrvPLC;

extern "C" TOrvHandle Talvec_Action_CreateActionByName(const OrvWChar* name)
{
    return Framed<TOrvHandle>(nullptr,
                              [&] { return name ? HandleOf(TOrvAction::Create(TerminatedView(name))) : nullptr; });
}

extern "C" TOrvHandle Talvec_Action_CreateActionByCode(std::uint32_t code)
{
    return Framed<TOrvHandle>(nullptr, [&] {
        const TOrvActionInternalInfo* entry = Catalogue().FindActionByCode(code);
        return entry ? HandleOf(TOrvAction::Create(*entry)) : nullptr;
    });
}

extern "C" TOrvHandle OrvAct_CreateGenericAction(const TOrvChannelValue* videoInput,
                                                 const TOrvChannelValue* videoOutput,
                                                 const TOrvChannelValue* inputContact,
                                                 const TOrvChannelValue* outputContact, std::uint32_t genericValue)
{
    return Framed<TOrvHandle>(nullptr, [&] {
        return HandleOf(
            TOrvGenericAction::Create({GenericChannel(videoInput), GenericChannel(videoOutput),
                                       GenericChannel(inputContact), GenericChannel(outputContact), genericValue}));
    });
}

ORV_EXPORT_TWIN(OrvBool, CreateMatchActionFromTemplate, (TOrvHandle action, TOrvHandle* matchAction),
                (action, matchAction))
{
    return OnObject(action, [&](TOrvMessage& object) {
        *matchAction = HandleOf(TOrvMatchAction::CreateFrom(static_cast<TOrvAction&>(object), 1));
    });
}

// A null handle leaves the last error as it was.
ORV_EXPORT_TWIN(OrvBool, DuplicateHandle, (TOrvHandle handle), (handle))
{
    if (!handle) return 0;
    return OnObject(handle, [](TOrvMessage& object) { object.AddRef(); });
}

ORV_EXPORT_TWIN(OrvBool, CloseHandle, (TOrvHandle handle), (handle))
{
    return Framed<OrvBool>(0, [&] {
        if (handle) MessageOf(handle)->Release();
        return OrvBool{1};
    });
}

ORV_EXPORT_TWIN(OrvBool, CloneHandle, (TOrvHandle handle, TOrvHandle* clone), (handle, clone))
{
    return OnObject(handle, [&](TOrvMessage& object) { *clone = HandleOf(object.Clone()); });
}

ORV_EXPORT_TWIN(OrvBool, GetReferenceCounter, (TOrvHandle handle, std::uint32_t* count), (handle, count))
{
    return OnObject(handle, [&](TOrvMessage& object) { *count = object.ReferenceCount(); });
}

ORV_EXPORT_TWIN(OrvBool, Equal, (TOrvHandle first, TOrvHandle second, OrvBool* equal), (first, second, equal))
{
    return OnObject(first, [&, &other = ObjectOf(second)](TOrvMessage& object) {
        *equal = object.GetMessageKind() == other.GetMessageKind() && object.Equals(other);
    });
}

ORV_EXPORT_TWIN(OrvBool, GetInternalIndex, (TOrvHandle handle, std::uint32_t* index), (handle, index))
{
    return OnObject(handle, [&](TOrvMessage& object) { *index = object.GetInternalIndex(); });
}
