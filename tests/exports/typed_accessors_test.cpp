#include <gtest/gtest.h>
#include <OrvActions.hpp>

#include <cstring>
#include <string>
#include <vector>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

Handle Named(const char16_t* name)
{
    return Handle(Talvec_Action_CreateActionByName(W(name)));
}

using ReadRole = OrvBool (*)(TOrvHandle, const TOrvChannelValue**);
using WriteRole = OrvBool (*)(TOrvHandle, const TOrvChannelValue*);

const TOrvChannelValue* Channel(ReadRole read, const Handle& handle)
{
    const TOrvChannelValue* channel = nullptr;
    EXPECT_TRUE(read(handle.get(), &channel));
    return channel;
}

struct Role {
    const char16_t* action;
    const char16_t* parameter;
    ReadRole read;
    WriteRole write;
    WriteRole quietWrite;
    const char16_t* failure;
};

const Role kRoles[] = {
    {u"VideoSyncFailed", u"Channel", OrvAct_GetVideoInput, OrvAct_SetVideoInput, Talvec_Action_SetVideoInput,
     u"SetVideoInput failed"},
    {u"CameraOn", u"Camera", Talvec_Action_GetVideoInput, OrvAct_SetVideoInput, Talvec_Action_SetVideoInput,
     u"SetVideoInput failed"},
    {u"ViewerConnectLive", u"Viewer", OrvAct_GetVideoOutput, OrvAct_SetVideoOutput, Talvec_Action_SetVideoOutput,
     u"SetVideoOutput failed"},
    {u"DigitalInput", u"Contact", OrvAct_GetInputContact, OrvAct_SetInputContact, Talvec_Action_SetInputContact,
     u"SetInputContact failed"},
    {u"SetDigitalOutput", u"Contact", OrvAct_GetOutputContact, OrvAct_SetOutputContact, Talvec_Action_SetOutputContact,
     u"SetOutputContact failed"},
};

TEST(TypedAccessors, RolesFindTheParameter)
{
    const TOrvChannelValue given = {70, W(u"gate"), 7};
    for (const Role& role : kRoles) {
        const Handle handle = Named(role.action);
        EXPECT_EQ(Channel(role.read, handle), nullptr);
        ASSERT_TRUE(role.write(handle.get(), &given));
        TOrvChannelValue stored{};
        EXPECT_TRUE(handle->GetMediaChannel(W(role.parameter), &stored));
        EXPECT_EQ(stored.number, 7u);
        const TOrvChannelValue* read = Channel(role.read, handle);
        ASSERT_NE(read, nullptr);
        EXPECT_EQ(read->id, 70u);
        EXPECT_EQ(Text(read->name), u"gate");
        EXPECT_EQ(handle->GetParameterCount(), 1u);
        EXPECT_TRUE(role.quietWrite(handle.get(), read));  // its own record, which points into the value
        EXPECT_EQ(Text(Channel(role.read, handle)->name), u"gate");
    }
}

TEST(TypedAccessors, AMissingRoleIsReportedByOneFamily)
{
    const TOrvChannelValue given = {1, nullptr, 1};
    for (const char16_t* name : {u"SystemStarted", u"NobodyKnows"}) {
        const Handle handle = Named(name);
        for (const Role& role : kRoles) {
            EXPECT_EQ(Channel(role.read, handle), nullptr);
            EXPECT_FALSE(role.write(handle.get(), &given));
            const auto failure = LastError();
            ASSERT_TRUE(failure.has_value());
            EXPECT_EQ(failure->code, static_cast<std::uint32_t>(ORV_ERROR));
            EXPECT_EQ(failure->subCode, static_cast<std::uint32_t>(ORV_SUBERROR_NO_SUCH_ROLE));
            EXPECT_EQ(failure->message, role.failure);
            EXPECT_TRUE(role.quietWrite(handle.get(), &given));
            EXPECT_FALSE(LastError().has_value());
            EXPECT_EQ(handle->GetParameterCount(), 0u);
        }
    }
}

TEST(TypedAccessors, ReadsSkipWhatIsNotSetAndWritesDoNot)
{
    const Handle handle = Named(u"IPCamFailoverRestore");
    const TOrvChannelValue second = {2, W(u"second"), 2};
    handle->SetMediaChannel(W(u"SecondaryChannel"), &second);
    const TOrvChannelValue* read = Channel(OrvAct_GetVideoInput, handle);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->id, 2u);

    const TOrvChannelValue first = {1, nullptr, 1};
    EXPECT_TRUE(OrvAct_SetVideoInput(handle.get(), &first));
    EXPECT_TRUE(handle->HasParameter(W(u"PrimaryChannel")));
    const TOrvChannelValue* again = Channel(OrvAct_GetVideoInput, handle);
    EXPECT_EQ(again, read);  // one record an object, overwritten
    EXPECT_EQ(read->id, 1u);
    EXPECT_EQ(Text(read->name), u"");

    // A value of another kind leaves the record alone and is replaced by a write.
    handle->SetInt32(W(u"PrimaryChannel"), 99);
    EXPECT_EQ(Channel(OrvAct_GetVideoInput, handle)->id, 1u);
    EXPECT_TRUE(OrvAct_SetVideoInput(handle.get(), &second));
    EXPECT_EQ(handle->GetParameterType(W(u"PrimaryChannel")), static_cast<std::uint32_t>(ORV_KIND_MediaChannel));
}

TEST(TypedAccessors, ForeignKeyAndGenericNumber)
{
    const Handle event = Named(u"StartEvent");
    const std::int64_t* key = nullptr;
    EXPECT_TRUE(OrvAct_GetForeignKey(event.get(), &key));
    EXPECT_EQ(key, nullptr);
    event->SetInt32(W(u"ForeignKey"), -5);  // read through the conversion to 64 bits
    EXPECT_TRUE(Talvec_Action_GetForeignKey(event.get(), &key));
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(*key, -5);

    const Handle camera = Named(u"ViewerConnect");
    std::int32_t number = 77;
    EXPECT_TRUE(OrvAct_GetGenericInt32Parameter(camera.get(), &number));
    EXPECT_EQ(number, 0);                         // not set
    camera->SetString(W(u"PlayMode"), W(u"11"));  // an enum parameter that holds a text
    EXPECT_TRUE(OrvAct_GetGenericInt32Parameter(camera.get(), &number));
    EXPECT_EQ(number, 11);
    const TOrvGuid guid = {1, 2, 3, {}};
    camera->SetGuid(W(u"PlayMode"), &guid);
    EXPECT_TRUE(OrvAct_GetGenericInt32Parameter(camera.get(), &number));
    EXPECT_EQ(number, 0);
    number = 77;
    const Handle foreign = Read(u"SystemTerminating (TimerID: \"5\")");  // of the next action in the catalogue
    EXPECT_TRUE(OrvAct_GetGenericInt32Parameter(foreign.get(), &number));
    EXPECT_EQ(number, 0);
    EXPECT_EQ(foreign->GetParameterType(W(u"TimerID")), std::uint32_t{ORV_KIND_String});
    EXPECT_TRUE(OrvAct_GetGenericInt32Parameter(Read(u"SystemTimerStart (TimerID: 5)").get(), &number));
    EXPECT_EQ(number, 5);
}

TEST(TypedAccessors, WhatAnActionIs)
{
    const Handle known = Named(u"cameraON");
    const Handle unknown = Named(u"nobodyKnows");
    TOrvHandle made = nullptr;
    ASSERT_TRUE(OrvAct_CreateMatchActionFromTemplate(known.get(), &made));
    const Handle match(made);
    struct {
        const Handle& handle;
        std::uint32_t code, classCode, messageClass, kind;
        const char16_t* name;
    } cases[] = {
        {known, ORV_ACTION_CameraOn, ORV_CLASS_CameraControl, 1, 3, u"CameraOn"},
        {unknown, 0, 0, 1, 3, u"nobodyKnows"},
        {match, ORV_ACTION_CameraOn, ORV_CLASS_CameraControl, 2, 4, u"CameraOn"},
    };
    for (const auto& c : cases) {
        const TOrvHandle handle = c.handle.get();
        std::uint32_t number = 999;
        EXPECT_TRUE(OrvAct_GetActionCode(handle, &number));
        EXPECT_EQ(number, c.code);
        EXPECT_TRUE(OrvMatchAct_GetActionClass(handle, &number));
        EXPECT_EQ(number, c.classCode);
        EXPECT_TRUE(OrvAct_GetMessageClass(handle, &number));
        EXPECT_EQ(number, c.messageClass);
        EXPECT_TRUE(Talvec_Action_GetMessageClass(handle, &number));
        EXPECT_EQ(number, c.kind);
        const OrvWChar* wide = nullptr;
        const char* narrow = nullptr;
        TTalvecActionPlainInfo info{};
        Talvec_Action_GetActionInfo(&info, c.code);
        EXPECT_EQ(Text(OrvInterfaceOf(handle)->GetActionDescription()), Text(info.DescriptionW));
        EXPECT_TRUE(TalvecMatchAct_GetActionNameW(handle, &wide));
        EXPECT_EQ(Text(wide), c.name);
        EXPECT_TRUE(Talvec_Action_GetActionNameA(handle, &narrow));
        EXPECT_EQ(std::u16string(narrow, narrow + std::strlen(narrow)), c.name);
        EXPECT_TRUE(OrvAct_GetActionPlainNameW(handle, &wide));
        EXPECT_EQ(Text(wide), Text(info.PlainNameW));
        EXPECT_TRUE(OrvMatchAct_GetActionPlainNameA(handle, &narrow));
        EXPECT_STREQ(narrow, info.PlainNameA ? info.PlainNameA : "");
    }
    std::uint32_t number = 999;
    EXPECT_TRUE(Talvec_Action_GetActionPriority(Named(u"SystemStarted").get(), &number));
    EXPECT_EQ(number, 1u);
    EXPECT_TRUE(TalvecMatchAct_GetActionFlags(unknown.get(), &number));
    EXPECT_EQ(number, 0u);
}

TEST(TypedAccessors, MarksStayWithTheObject)
{
    const Handle handle = Named(u"CameraOn");
    EXPECT_TRUE(OrvAct_SetMessageFlags(handle.get(), 0x80000001u));
    EXPECT_TRUE(OrvAct_SetInternalData(handle.get(), 0x123456789ABCDEF0u));
    std::uint32_t flags = 0;
    std::uint64_t data = 0;
    EXPECT_TRUE(Talvec_Action_GetMessageFlags(handle.get(), &flags));
    EXPECT_TRUE(Talvec_Action_GetInternalData(handle.get(), &data));
    EXPECT_EQ(flags, 0x80000001u);
    EXPECT_EQ(data, 0x123456789ABCDEF0u);
    TOrvHandle copy = nullptr;
    ASSERT_TRUE(OrvAct_CloneHandle(handle.get(), &copy));
    const Handle clone(copy);
    EXPECT_TRUE(Equal(handle, clone));
    EXPECT_TRUE(OrvAct_GetMessageFlags(clone.get(), &flags));
    EXPECT_TRUE(OrvAct_GetInternalData(clone.get(), &data));
    EXPECT_EQ(flags, 0u);
    EXPECT_EQ(data, 0u);
}

TEST(TypedAccessors, ParametersByNameAtTheEdges)
{
    const Handle handle = Named(u"CustomAction");
    TOrvParameterValue record{};
    record.kind = 4711;
    EXPECT_FALSE(Talvec_Action_GetParameterByName(handle.get(), W(u"String"), &record));
    EXPECT_FALSE(LastError().has_value());
    EXPECT_EQ(record.kind, 4711u);

    // One record for many reads: its text is replaced, other kinds leave it alone, and null names are "".
    handle->SetString(W(u""), W(u"one"));
    handle->SetString(W(u"String"), W(u"two"));
    handle->SetInt32(W(u"Int"), 5);
    EXPECT_TRUE(Talvec_Action_GetParameterByName(handle.get(), nullptr, &record));
    EXPECT_EQ(Text(record.text), u"one");
    EXPECT_TRUE(Talvec_Action_GetParameterByName(handle.get(), W(u"String"), &record));
    EXPECT_EQ(Text(record.text), u"two");
    EXPECT_TRUE(Talvec_Action_GetParameterByName(handle.get(), W(u"Int"), &record));
    EXPECT_EQ(Text(record.text), u"two");
    EXPECT_EQ(record.payload.int32, 5);
    handle->SetBoolean(W(u"Truth"), 1);
    EXPECT_TRUE(Talvec_Action_GetParameterByName(handle.get(), W(u"Truth"), &record));
    EXPECT_EQ(record.payload.boolean, 1);
    SysFreeString(record.text);

    record = {};
    record.kind = ORV_KIND_String;  // with a null text
    EXPECT_TRUE(TalvecMatchAct_SetParameterByName(handle.get(), nullptr, &record));
    EXPECT_EQ(handle->GetParameterCount(), 4u);
    record.text = SysAllocStringLen(W(u"a\0b"), 3);  // a zero unit inside belongs to the text
    EXPECT_TRUE(Talvec_Action_SetParameterByName(handle.get(), W(u"String"), &record));
    EXPECT_TRUE(Talvec_Action_GetParameterByName(handle.get(), W(u"String"), &record));
    EXPECT_EQ(SysStringLen(record.text), 3u);
    EXPECT_TRUE(Talvec_Action_GetParameterByName(handle.get(), nullptr, &record));
    EXPECT_EQ(SysStringLen(record.text), 0u);
    SysFreeString(record.text);

    for (const std::uint32_t kind : {0u, 13u, 0xFFFFFFFFu}) {
        record = {kind, 7, {}, nullptr};
        EXPECT_TRUE(Talvec_Action_SetParameterByName(handle.get(), W(u"Int"), &record));
        EXPECT_EQ(handle->GetParameterEnum(W(u"Int")), 7u);
        EXPECT_TRUE(handle->HasParameter(W(u"Int")));
        EXPECT_EQ(handle->GetParameterType(W(u"Int")), 0u);
    }
}

// A configuration that knows everything but the channels of one id, and notes what it is asked for.
struct Configuration {
    std::vector<std::u16string> asked;
    std::uint64_t unknownId = 0;
    OrvBool knowsSets = 1;

    static Configuration& Of(OrvWord context) { return *reinterpret_cast<Configuration*>(context); }
    template <int Entry>
    static OrvBool AskChannel(OrvWord context, TOrvChannelValue* channel)
    {
        Of(context).asked.push_back(u"channel " + std::u16string(1, u'0' + Entry) + u" " + Text(channel->name));
        if (channel->id == Of(context).unknownId) return 0;
        *channel = {channel->id + 1000, W(u"new channel"), channel->number + 1000};
        return 2;  // any non-zero byte
    }
    static OrvBool AskEventType(OrvWord context, TOrvEventTypeValue* eventType)
    {
        Of(context).asked.push_back(u"event " + Text(eventType->name));
        eventType->name = nullptr;
        return 1;
    }
    static OrvBool AskResource(OrvWord context, std::uint32_t view, TOrvResourceValue* resource)
    {
        Of(context).asked.push_back((view == ORV_VIEW_ABDestination ? u"destination " : u"other ") +
                                    Text(resource->name));
        resource->name = W(u"new resource");
        return 1;
    }
    static OrvBool AskParameterSet(OrvWord context, std::uint32_t view, TOrvResourceValue* resource,
                                   const std::uint64_t* channelId)
    {
        Of(context).asked.push_back((view == ORV_VIEW_VMDParameterSet ? u"set of " : u"other of ") +
                                    std::u16string(*channelId == 1007 ? u"new" : u"old"));
        resource->guid.Data1 = 55;
        return Of(context).knowsSets;
    }
};

const TOrvActionInfoUpdateCallbacks kCallbacks = {
    0,       Configuration::AskChannel<1>, Configuration::AskChannel<2>, Configuration::AskChannel<3>,
    nullptr, Configuration::AskEventType,  Configuration::AskResource,   Configuration::AskParameterSet};

bool Update(const Handle& handle, Configuration& configuration)
{
    OrvBool allKnown = 2;
    EXPECT_TRUE(
        OrvAct_UpdateActionInfo(handle.get(), reinterpret_cast<OrvWord>(&configuration), &kCallbacks, &allKnown));
    return allKnown != 0;
}

TEST(TypedAccessors, UpdateAsksForEverythingThatIsSet)
{
    Configuration configuration;
    const Handle backup = Named(u"BackupEvent");
    const TOrvEventTypeValue event = {3, W(u"old event"), 0};
    const TOrvParameterValue destination = {
        ORV_KIND_Resource, 4711, {.resource = {{1, 0, 0, {}}, W(u"old place")}}, nullptr};
    backup->SetEventType(W(u"TypeID"), &event);
    Talvec_Action_SetParameterByName(backup.get(), W(u"Destination"), &destination);
    EXPECT_TRUE(Update(backup, configuration));
    EXPECT_EQ(backup->GetParameterEnum(W(u"Destination")), 4711u);
    EXPECT_EQ(configuration.asked, (std::vector<std::u16string>{u"event old event", u"destination old place"}));
    EXPECT_EQ(StoredText(backup.get()).find(u"old"), std::u16string::npos);
    EXPECT_NE(StoredText(backup.get()).find(u"new resource"), std::u16string::npos);

    const Handle viewer = Named(u"ViewerConnectLive");
    const TOrvChannelValue channel = {7, W(u"old"), 1};
    viewer->SetMediaChannel(W(u"Channel"), &channel);
    viewer->SetMediaChannel(W(u"Viewer"), &channel);
    configuration.asked.clear();
    EXPECT_TRUE(Update(viewer, configuration));
    EXPECT_EQ(configuration.asked, (std::vector<std::u16string>{u"channel 2 old", u"channel 1 old"}));
    EXPECT_EQ(Channel(OrvAct_GetVideoOutput, viewer)->number, 1001u);

    const Handle output = Named(u"SetDigitalOutput");  // nobody to ask
    output->SetMediaChannel(W(u"Contact"), &channel);
    const Handle unknown = Named(u"NobodyKnows");
    unknown->SetMediaChannel(W(u"Channel"), &channel);
    configuration.asked.clear();
    EXPECT_TRUE(Update(output, configuration));
    EXPECT_TRUE(Update(unknown, configuration));
    EXPECT_TRUE(configuration.asked.empty());
}

// Whoever is not there to be asked, and a value of another kind than the declared one, count as known.
TEST(TypedAccessors, UpdateLeavesWhatNobodyKnows)
{
    for (const char16_t* text :
         {u"BackupEvent (TypeID: \"a\", Destination: \"b\")", u"PanLeft (Camera: 7)", u"ViewerConnect (Viewer: 7)",
          u"DigitalInput (Contact: 7)", u"SetDigitalOutput (Contact: 7)",
          u"ChangeVMDParameterSet (Channel: 7, ParameterSet: \"a\")"}) {
        const Handle handle = Read(text);
        const std::u16string before = StoredText(handle.get());
        const TOrvActionInfoUpdateCallbacks nobody{};
        OrvBool allKnown = 0;
        EXPECT_TRUE(OrvAct_UpdateActionInfo(handle.get(), 0, &nobody, &allKnown));
        EXPECT_TRUE(allKnown);
        EXPECT_EQ(StoredText(handle.get()), before);
    }
    Configuration configuration;
    const Handle texts = Named(u"BackupEvent");
    for (const char16_t* name : {u"TypeID", u"Destination"}) texts->SetString(W(name), W(u"a text"));
    const Handle channel = Named(u"PanLeft");
    channel->SetString(W(u"Camera"), W(u"a text"));
    EXPECT_TRUE(Update(texts, configuration));
    EXPECT_TRUE(Update(channel, configuration));
    EXPECT_TRUE(configuration.asked.empty());
}

TEST(TypedAccessors, UpdateAsksForParameterSetsWithTheirChannel)
{
    const TOrvChannelValue channel = {7, W(u"old"), 1};
    const TOrvResourceValue set = {{1, 0, 0, {}}, W(u"set")};
    const auto make = [&](bool withChannel) {
        Handle handle = Named(u"ChangeVMDParameterSet");
        handle->SetResource(W(u"ParameterSet"), &set);
        if (withChannel) handle->SetMediaChannel(W(u"Channel"), &channel);
        return handle;
    };
    Configuration configuration;
    const Handle alone = make(false);
    EXPECT_TRUE(Update(alone, configuration));
    EXPECT_TRUE(configuration.asked.empty());

    const Handle both = make(true);
    EXPECT_TRUE(Update(both, configuration));
    EXPECT_EQ(configuration.asked, (std::vector<std::u16string>{u"channel 1 old", u"set of new"}));
    TOrvResourceValue stored{};
    EXPECT_TRUE(both->GetResource(W(u"ParameterSet"), &stored));
    EXPECT_EQ(stored.guid.Data1, 55u);
    EXPECT_EQ(Text(stored.name), u"set");

    configuration = {{}, 7, 1};  // an unknown channel keeps its old id, and the set is asked for all the same
    const Handle unknownChannel = make(true);
    EXPECT_FALSE(Update(unknownChannel, configuration));
    EXPECT_EQ(configuration.asked, (std::vector<std::u16string>{u"channel 1 old", u"set of old"}));
    configuration = {{}, 0, 0};
    const Handle unknownSet = make(true);
    EXPECT_FALSE(Update(unknownSet, configuration));
    EXPECT_TRUE(unknownSet->GetResource(W(u"ParameterSet"), &stored));
    EXPECT_EQ(stored.guid.Data1, 1u);
}

}  // namespace
