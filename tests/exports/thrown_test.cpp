// What a function of the caller throws: every way in which the library calls one, with everything that can be thrown.
#include <OrvActions.h>
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>

#include "exports/boundary.h"

[[noreturn]] void RaiseForeign();  // in a file of the platform

namespace {

using namespace OrvTest;

std::function<void()> raise;  // what the functions of this caller do
int calls = 0;
std::optional<Failure> failure;  // what the last call has stored

void Outside()
{
    ++calls;
    raise();
}

template <class Base>
struct Sink : Base {
    std::int32_t QueryInterface(const TOrvGuid&, void**) override { return -1; }
    std::uint32_t AddRef() override { return 1; }
    std::uint32_t Release() override { return 1; }
};
struct ClassSink : Sink<ITalvecActionClassSink> {
    void OnActionClass(const TTalvecActionClassPlainInfo*) override { Outside(); }
};
struct ActionSink : Sink<ITalvecActionSink> {
    void OnAction(const TTalvecActionPlainInfo*) override { Outside(); }
};
struct ParameterSink : Sink<ITalvecParameterSink> {
    void OnParameter(const TTalvecParameterPlainInfo*) override { Outside(); }
};
struct EnumValueSink : Sink<ITalvecEnumValueSink> {
    void OnEnumValue(const TTalvecEnumValuePlainInfo*) override { Outside(); }
};
struct Enumerator : Sink<ITalvecParameterEnumerator> {
    void OnParameter(const OrvWChar*, std::uint32_t, std::uint32_t) override { Outside(); }
};

template <class... Rest>
OrvBool Refresh(OrvWord, Rest...)
{
    Outside();
    return 1;
}

template <class Callback>
OrvBool Update(Callback TOrvActionInfoUpdateCallbacks::*member, Callback callback, std::u16string_view text)
{
    const Handle action = Read(text);
    TOrvActionInfoUpdateCallbacks callbacks{};
    callbacks.*member = callback;
    OrvBool allKnown = 0;
    const OrvBool result = OrvAct_UpdateActionInfo(action.get(), 0, &callbacks, &allKnown);
    failure = LastError();  // closing the handle clears it
    return result;
}

template <class Describe, class... Rest>
OrvBool CallDescribe(Describe describe, void (*callback)(OrvWord, std::int32_t, const OrvWChar*, Rest...))
{
    TOrvEventData record{};
    record.size = sizeof record;
    record.code = ORV_ACTION_PanStop;
    const OrvBool result = describe(&record, 0, callback, 9);
    failure = LastError();
    return result;
}

template <class... Rest>
void Hear(OrvWord, std::int32_t, const OrvWChar*, Rest...)
{
    Outside();
}

using Callbacks = TOrvActionInfoUpdateCallbacks;
using Channel = TOrvChannelValue;

// Calls that go through the frame, and answer false when the function throws.
const std::function<OrvBool()> kFramed[] = {
    [] { return Update(&Callbacks::videoInput, &Refresh<Channel*>, u"PanLeft (Camera: 7)"); },
    [] { return Update(&Callbacks::videoOutput, &Refresh<Channel*>, u"ViewerConnect (Viewer: 7)"); },
    [] { return Update(&Callbacks::inputContact, &Refresh<Channel*>, u"DigitalInput (Contact: 7)"); },
    [] { return Update(&Callbacks::outputContact, &Refresh<Channel*>, u"SetDigitalOutput (Contact: 7)"); },
    [] { return Update(&Callbacks::eventType, &Refresh<TOrvEventTypeValue*>, u"BackupEvent (TypeID: \"a\")"); },
    [] {
        return Update(&Callbacks::resource, &Refresh<std::uint32_t, TOrvResourceValue*>,
                      u"BackupEvent (Destination: \"a\")");
    },
    [] {
        return Update(&Callbacks::resourceOfChannel, &Refresh<std::uint32_t, TOrvResourceValue*, const std::uint64_t*>,
                      u"ChangeVMDParameterSet (Channel: 7, ParameterSet: \"a\")");
    },
    [] { return CallDescribe(OrvAct_GetActionEventDescriptionEx, &Hear<const OrvWChar*>); },
    [] { return CallDescribe(Talvec_Action_GetActionEventDescription2, &Hear<const OrvWChar*, std::uint32_t>); },
};

// Calls without a frame, which keep the last error.
const std::function<OrvBool()> kSinks[] = {
    [] {
        ClassSink sink;
        return Talvec_Action_EnumerateActionClassesInterface(&sink);
    },
    [] {
        ActionSink sink;
        return Talvec_Action_EnumerateActionsInterface(&sink);
    },
    [] {
        ParameterSink sink;
        return Talvec_Action_EnumerateActionParametersInterface(&sink, ORV_ACTION_PanLeft);
    },
    [] {
        EnumValueSink sink;
        return Talvec_Action_EnumerateEnumValuesInterface(&sink, ORV_ENUM_KIND_BOOLEAN, 0);
    },
    [] {
        Enumerator enumerator;
        Read(u"PanLeft (Camera: 7, Speed: 3)")->EnumerateParameters(&enumerator);
        return OrvBool{0};
    },
};

// A function of the caller runs once a call: what it throws ends the walk.
OrvBool Throwing(const std::function<OrvBool()>& call, const std::function<void()>& thrown)
{
    calls = 0;
    raise = thrown;
    const OrvBool result = call();
    EXPECT_EQ(calls, 1);
    return result;
}

TEST(Thrown, ByACallbackIsStored)
{
    const struct {
        std::function<void()> thrown;
        std::uint32_t code;
        std::u16string message;
    } cases[] = {
        {[] { throw std::runtime_error("standard"); }, 0, u"standard"},
        {[] { throw "narrow"; }, 0, u"narrow"},
        {[] { throw W(u"wide"); }, 0, u"wide"},
        {[] { throw L"the system's"; }, 0, u"the system's"},
        {[] { throw nullptr; }, 0, u""},
        {[] { throw 42; }, 0xFFFFFFFF, u"Ulmo::UnknownException"},
        {RaiseForeign, 0xFFFFFFFF, u"Ulmo::UnknownException"},
    };
    for (const auto& call : kFramed) {
        SCOPED_TRACE(&call - kFramed);
        for (const auto& c : cases) {
            EXPECT_FALSE(Throwing(call, c.thrown));
            ASSERT_TRUE(failure);
            EXPECT_EQ(failure->code, c.code);
            EXPECT_EQ(failure->message, c.message);
        }
        raise = [] {};
        EXPECT_TRUE(call());
    }
}

TEST(Thrown, ByASinkEndsTheEnumeration)
{
    OrvAct_CloseHandle(nullptr);
    for (const auto& call : kSinks) {
        SCOPED_TRACE(&call - kSinks);
        for (void (*const thrown)() : {+[] { throw std::runtime_error("enough"); }, +[] { RaiseForeign(); }}) {
            EXPECT_FALSE(Throwing(call, thrown));
            EXPECT_FALSE(LastError());
        }
    }
    Enumerator enumerator;
    raise = [] { throw std::bad_alloc(); };
    EXPECT_THROW(Read(u"PanLeft (Camera: 7)")->EnumerateParameters(&enumerator), std::bad_alloc);
    raise = [] {};
    ActionSink next;  // the lock is free again
    EXPECT_TRUE(Talvec_Action_EnumerateActionsInterface(&next));
}

}  // namespace
