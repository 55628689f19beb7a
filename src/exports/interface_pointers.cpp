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
    using Interface = ITalvecAction;
    static constexpr std::uint32_t kTextKind = ORV_MESSAGE_ACTION;
    static constexpr std::uint32_t kBinaryKind = ORV_MESSAGE_ACTION;
    static TOrvMessage* Make(std::u16string_view name) { return TOrvAction::Create(name); }
    static TOrvMessage* Restore(const TOrvEventData& record) { return RestoreAction(record); }
};

struct MatchAction {
    using Interface = ITalvecMatchAction;
    static constexpr std::uint32_t kTextKind = ORV_MESSAGE_MATCH_ACTION;
    // Unlike a text, a buffer may hold either. Deliberate: a buffer with an action gives the action.
    static constexpr std::uint32_t kBinaryKind = ORV_EXPECT_ANY;
    static TOrvMessage* Make(std::u16string_view name) { return TOrvMatchAction::Create(name); }
    static TOrvMessage* Restore(const TOrvEventData& record) { return RestoreMatchAction(record); }
};

struct Message {
    using Interface = ITalvecMessage;
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

// How it is handed out.
template <class Source>
TOrvHandle AsHandle(Source&& source)
{
    return Framed<TOrvHandle>(nullptr, [&] {
        TOrvMessage* object = source();
        return object ? HandleOf(object) : nullptr;
    });
}

template <class Interface, class Source>
Interface* AsBare(Source&& source)
{
    return Framed<Interface*>(nullptr, [&]() -> Interface* {
        TOrvMessage* object = source();
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

TOrvHandle TakeReference(ITalvecMessage* object)
{
    if (object) object->AddRef();
    return reinterpret_cast<TOrvHandle>(object);
}

}  // namespace

// The bare and the counted form of one object from one source; the last argument holds the source's parameters.
#define ORV_EXPORT_CREATION(Object, Source, Arguments, ...)                                                  \
    Object::Interface* Talvec_Action_CreateIOrv##Object##Source(__VA_ARGS__)                                 \
    {                                                                                                        \
        return AsBare<Object::Interface>([&] { return Source<Object> Arguments; });                          \
    }                                                                                                        \
    std::uint32_t Talvec_Action_CreateIOrv##Object##Pointer##Source(Object::Interface** object, __VA_ARGS__) \
    {                                                                                                        \
        return AsPointer(object, [&] { return Source<Object> Arguments; });                                  \
    }

ORV_EXPORT_CREATION(Action, ByCode, (code), std::uint32_t code)
ORV_EXPORT_CREATION(Action, ByName, (name), const OrvWChar* name)
ORV_EXPORT_CREATION(Action, FromTextBuffer, (text, length), const OrvWChar* text, std::uint32_t length)
ORV_EXPORT_CREATION(Action, FromBinBuffer, (data, size), const void* data, std::uint32_t size)
ORV_EXPORT_CREATION(Action, FromEventData, (record), const TOrvEventData* record)
ORV_EXPORT_CREATION(MatchAction, ByCode, (code), std::uint32_t code)
ORV_EXPORT_CREATION(MatchAction, ByName, (name), const OrvWChar* name)
ORV_EXPORT_CREATION(MatchAction, FromTextBuffer, (text, length), const OrvWChar* text, std::uint32_t length)
ORV_EXPORT_CREATION(MatchAction, FromBinBuffer, (data, size), const void* data, std::uint32_t size)
ORV_EXPORT_CREATION(MatchAction, FromEventData, (record), const TOrvEventData* record)
ORV_EXPORT_CREATION(Message, FromTextBuffer, (text, length), const OrvWChar* text, std::uint32_t length)
ORV_EXPORT_CREATION(Message, FromBinBuffer, (data, size), const void* data, std::uint32_t size)

TOrvHandle TalvecMatchAct_CreateActionByCode(std::uint32_t code)
{
    return AsHandle([&] { return ByCode<MatchAction>(code); });
}

TOrvHandle TalvecMatchAct_CreateActionByName(const OrvWChar* name)
{
    return AsHandle([&] { return ByName<MatchAction>(name); });
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
