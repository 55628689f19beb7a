// The creation family: what is built (Action, MatchAction, Message) x where it comes from (a source below) x how it is
// handed out (handle, bare object, counted pointer).
#include "OrvActions/OrvPointers.h"

#include "events/event_restore.h"
#include "exports/frame.h"
#include "forms/binary_reader.h"
#include "forms/text_reader.h"
#include "objects/match_action.h"

using namespace OrvPLC;

namespace {

// What is built.
struct Action {
    static constexpr std::uint32_t kTextKind = ORV_MESSAGE_ACTION;
    static constexpr std::uint32_t kBinaryKind = ORV_MESSAGE_ACTION;
    static TOrvMessage* Make(std::u16string_view name) { return TOrvAction::Create(name); }
    static TOrvMessage* Restore(const TOrvEventData& record) { return RestoreAction(record); }
};

struct MatchAction {
    static constexpr std::uint32_t kTextKind = ORV_MESSAGE_MATCH_ACTION;
    // Unlike a text, a buffer may hold either. Deliberate: a buffer with an action gives the action.
    static constexpr std::uint32_t kBinaryKind = ORV_EXPECT_ANY;
    static TOrvMessage* Make(std::u16string_view name) { return TOrvMatchAction::Create(name); }
    static TOrvMessage* Restore(const TOrvEventData& record) { return RestoreMatchAction(record); }
};

struct Message {
    static constexpr std::uint32_t kTextKind = ORV_EXPECT_ANY;
    static constexpr std::uint32_t kBinaryKind = ORV_EXPECT_ANY;
};

// Where it comes from. Each gives an object with one reference, or null.
template <class Object>
TOrvMessage* ByCode(std::uint32_t code)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByCode(code);
    return entry ? Object::Make(entry->NameW.view()) : nullptr;
}

template <class Object>
TOrvMessage* ByName(const OrvWChar* name)
{
    return name ? Object::Make(TerminatedView(name)) : nullptr;
}

// Unlike the handle forms, these take a length of 0 for a terminated text. Deliberate.
template <class Object>
TOrvMessage* FromTextBuffer(const OrvWChar* text, std::uint32_t length)
{
    const bool terminated = length == 0 || length >= ORV_LENGTH_TERMINATED;
    const std::u16string_view given = terminated ? TerminatedView(text) : std::u16string_view(Units(text), length);
    return ReadActionText(given, Object::kTextKind, false).object;
}

template <class Object>
TOrvMessage* FromBinBuffer(const void* data, std::uint32_t size)
{
    return ReadActionBinary(data, size, Object::kBinaryKind).object;
}

template <class Object>
TOrvMessage* FromEventData(const TOrvEventData* record)
{
    return Object::Restore(*record);
}

// How it is handed out, beside NewHandle.
template <class Interface, class Source>
Interface* AsBare(Source&& source)
{
    return Framed<Interface*>(nullptr, [&]() -> Interface* {
        TOrvMessage* object = source();
        // The caller's smart pointer takes the first reference.
        if (object) object->SetReferenceCount(0);
        return object;
    });
}

// The object is made before the out pointer is looked at, as a caller that counts open handles can tell.
template <class Interface, class Source>
std::uint32_t AsPointer(Interface** out, Source&& source)
{
    return Framed<std::uint32_t>(ORV_STATUS_FAIL, [&] {
        TOrvMessage* object = source();
        if (!object) return ORV_STATUS_FAIL;
        if (!out) {
            object->Release();
            return ORV_STATUS_POINTER;
        }
        *out = object;
        return ORV_STATUS_OK;
    });
}

// Null stays null.
TOrvHandle TakeReference(ITalvecMessage* object)
{
    if (object) object->AddRef();
    return reinterpret_cast<TOrvHandle>(object);
}

}  // namespace

// Actions

ITalvecAction* Talvec_Action_CreateIOrvActionByCode(std::uint32_t code)
{
    return AsBare<ITalvecAction>([&] { return ByCode<Action>(code); });
}

std::uint32_t Talvec_Action_CreateIOrvActionPointerByCode(ITalvecAction** object, std::uint32_t code)
{
    return AsPointer(object, [&] { return ByCode<Action>(code); });
}

ITalvecAction* Talvec_Action_CreateIOrvActionByName(const OrvWChar* name)
{
    return AsBare<ITalvecAction>([&] { return ByName<Action>(name); });
}

std::uint32_t Talvec_Action_CreateIOrvActionPointerByName(ITalvecAction** object, const OrvWChar* name)
{
    return AsPointer(object, [&] { return ByName<Action>(name); });
}

ITalvecAction* Talvec_Action_CreateIOrvActionFromTextBuffer(const OrvWChar* text, std::uint32_t length)
{
    return AsBare<ITalvecAction>([&] { return FromTextBuffer<Action>(text, length); });
}

std::uint32_t Talvec_Action_CreateIOrvActionPointerFromTextBuffer(ITalvecAction** object, const OrvWChar* text,
                                                                  std::uint32_t length)
{
    return AsPointer(object, [&] { return FromTextBuffer<Action>(text, length); });
}

ITalvecAction* Talvec_Action_CreateIOrvActionFromBinBuffer(const void* data, std::uint32_t size)
{
    return AsBare<ITalvecAction>([&] { return FromBinBuffer<Action>(data, size); });
}

std::uint32_t Talvec_Action_CreateIOrvActionPointerFromBinBuffer(ITalvecAction** object, const void* data,
                                                                 std::uint32_t size)
{
    return AsPointer(object, [&] { return FromBinBuffer<Action>(data, size); });
}

ITalvecAction* Talvec_Action_CreateIOrvActionFromEventData(const TOrvEventData* record)
{
    return AsBare<ITalvecAction>([&] { return FromEventData<Action>(record); });
}

std::uint32_t Talvec_Action_CreateIOrvActionPointerFromEventData(ITalvecAction** object, const TOrvEventData* record)
{
    return AsPointer(object, [&] { return FromEventData<Action>(record); });
}

// Match actions

ITalvecMatchAction* Talvec_Action_CreateIOrvMatchActionByCode(std::uint32_t code)
{
    return AsBare<ITalvecMatchAction>([&] { return ByCode<MatchAction>(code); });
}

std::uint32_t Talvec_Action_CreateIOrvMatchActionPointerByCode(ITalvecMatchAction** object, std::uint32_t code)
{
    return AsPointer(object, [&] { return ByCode<MatchAction>(code); });
}

ITalvecMatchAction* Talvec_Action_CreateIOrvMatchActionByName(const OrvWChar* name)
{
    return AsBare<ITalvecMatchAction>([&] { return ByName<MatchAction>(name); });
}

std::uint32_t Talvec_Action_CreateIOrvMatchActionPointerByName(ITalvecMatchAction** object, const OrvWChar* name)
{
    return AsPointer(object, [&] { return ByName<MatchAction>(name); });
}

ITalvecMatchAction* Talvec_Action_CreateIOrvMatchActionFromTextBuffer(const OrvWChar* text, std::uint32_t length)
{
    return AsBare<ITalvecMatchAction>([&] { return FromTextBuffer<MatchAction>(text, length); });
}

std::uint32_t Talvec_Action_CreateIOrvMatchActionPointerFromTextBuffer(ITalvecMatchAction** object,
                                                                       const OrvWChar* text, std::uint32_t length)
{
    return AsPointer(object, [&] { return FromTextBuffer<MatchAction>(text, length); });
}

ITalvecMatchAction* Talvec_Action_CreateIOrvMatchActionFromBinBuffer(const void* data, std::uint32_t size)
{
    return AsBare<ITalvecMatchAction>([&] { return FromBinBuffer<MatchAction>(data, size); });
}

std::uint32_t Talvec_Action_CreateIOrvMatchActionPointerFromBinBuffer(ITalvecMatchAction** object, const void* data,
                                                                      std::uint32_t size)
{
    return AsPointer(object, [&] { return FromBinBuffer<MatchAction>(data, size); });
}

ITalvecMatchAction* Talvec_Action_CreateIOrvMatchActionFromEventData(const TOrvEventData* record)
{
    return AsBare<ITalvecMatchAction>([&] { return FromEventData<MatchAction>(record); });
}

std::uint32_t Talvec_Action_CreateIOrvMatchActionPointerFromEventData(ITalvecMatchAction** object,
                                                                      const TOrvEventData* record)
{
    return AsPointer(object, [&] { return FromEventData<MatchAction>(record); });
}

// Whatever the source holds

ITalvecMessage* Talvec_Action_CreateIOrvMessageFromTextBuffer(const OrvWChar* text, std::uint32_t length)
{
    return AsBare<ITalvecMessage>([&] { return FromTextBuffer<Message>(text, length); });
}

std::uint32_t Talvec_Action_CreateIOrvMessagePointerFromTextBuffer(ITalvecMessage** object, const OrvWChar* text,
                                                                   std::uint32_t length)
{
    return AsPointer(object, [&] { return FromTextBuffer<Message>(text, length); });
}

ITalvecMessage* Talvec_Action_CreateIOrvMessageFromBinBuffer(const void* data, std::uint32_t size)
{
    return AsBare<ITalvecMessage>([&] { return FromBinBuffer<Message>(data, size); });
}

std::uint32_t Talvec_Action_CreateIOrvMessagePointerFromBinBuffer(ITalvecMessage** object, const void* data,
                                                                  std::uint32_t size)
{
    return AsPointer(object, [&] { return FromBinBuffer<Message>(data, size); });
}

// Handles and pointers

TOrvHandle TalvecMatchAct_CreateActionByCode(std::uint32_t code)
{
    return NewHandle([&] { return ByCode<MatchAction>(code); });
}

TOrvHandle TalvecMatchAct_CreateActionByName(const OrvWChar* name)
{
    return NewHandle([&] { return ByName<MatchAction>(name); });
}

// No frame around the conversions: they cannot fail, and the last error stays as it is.
TOrvHandle Talvec_Action_ConvertFromIOrvMessage(ITalvecMessage* object)
{
    return TakeReference(object);
}

TOrvHandle Talvec_Action_ConvertFromIOrvAction(ITalvecAction* object)
{
    return TakeReference(object);
}

TOrvHandle Talvec_Action_ConvertFromIOrvMatchAction(ITalvecMatchAction* object)
{
    return TakeReference(object);
}

ITalvecMessage* Talvec_Action_ConvertToIOrvMessage(TOrvHandle handle)
{
    return OrvInterfaceOf(handle);
}

ITalvecAction* Talvec_Action_ConvertToIOrvAction(TOrvHandle handle)
{
    return OrvInterfaceOf(handle);
}

ITalvecMatchAction* Talvec_Action_ConvertToIOrvMatchAction(TOrvHandle handle)
{
    return OrvInterfaceOf(handle);
}
