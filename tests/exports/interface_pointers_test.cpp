#include <OrvActions.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

std::uint32_t CountOf(ITalvecMessage* object)
{
    std::uint32_t count = 999;
    EXPECT_TRUE(Talvec_Action_GetReferenceCounter(reinterpret_cast<TOrvHandle>(object), &count));
    return count;
}

const std::vector<std::byte>& Image(bool match)
{
    static const auto make = [](const char16_t* text) {
        const Handle handle = Read(text);
        std::uint32_t size = 0;
        OrvAct_StoreToBinBuffer(handle.get(), nullptr, 0, &size);
        std::vector<std::byte> image(size);
        EXPECT_TRUE(OrvAct_StoreToBinBuffer(handle.get(), image.data(), size, nullptr));
        return image;
    };
    static const std::vector<std::byte> images[] = {make(u"CameraOn (Camera: 7)"), make(u"@CameraOn (Camera: 7)")};
    return images[match];
}

#define IMAGE(match) Image(match).data(), static_cast<std::uint32_t>(Image(match).size())

// With an image, or with a code alone.
const TOrvEventData* Event(bool withImage)
{
    static TOrvEventData records[2]{};
    TOrvEventData& record = records[withImage];
    record.size = sizeof record;
    record.code = ORV_ACTION_CameraOn;
    record.image = withImage ? Image(false).data() : nullptr;
    record.imageSize = withImage ? Image(false).size() : 0;
    return &record;
}

// One way of creation in its two forms, on an input that gives an object and on one that gives none.
struct Creation {
    const char* what;
    std::uint32_t kind;  // 0: there is no object
    ITalvecMessage* (*bare)();
    std::uint32_t (*counted)(ITalvecMessage** object);
};

#define CREATION(kind, Object, Source, ...)                                                                  \
    Creation                                                                                                 \
    {                                                                                                        \
#Object #Source "(" #__VA_ARGS__ ")", kind,                                                                \
            []() -> ITalvecMessage* { return Talvec_Action_CreateIOrv##Object##Source(__VA_ARGS__); },             \
            [](ITalvecMessage** object) {                                                                          \
                ITalvec##Object* made = nullptr;                                                                   \
                const std::uint32_t status =                                                                       \
                    Talvec_Action_CreateIOrv##Object##Pointer##Source(object ? &made : nullptr, __VA_ARGS__);      \
                if (object) *object = made;                                                                        \
                return status;                                                                                     \
            } \
    }

const Creation kCreations[] = {
    CREATION(3, Action, ByCode, ORV_ACTION_CameraOn),
    CREATION(0, Action, ByCode, 999),
    CREATION(4, MatchAction, ByCode, ORV_ACTION_CameraOn),
    CREATION(0, MatchAction, ByCode, 0),
    CREATION(3, Action, ByName, W(u"NobodyKnows")),
    CREATION(0, Action, ByName, nullptr),
    CREATION(4, MatchAction, ByName, W(u"cameraon")),
    CREATION(0, MatchAction, ByName, nullptr),
    CREATION(3, Action, FromTextBuffer, W(u"CameraOn (Camera: 7)"), 0),
    CREATION(3, Action, FromTextBuffer, W(u"CameraOn (Camera: 7)"), 0x7FFFFFFF),
    CREATION(3, Action, FromTextBuffer, W(u"CameraOn (Camera: 7)"), 0xFFFFFFFF),
    CREATION(3, Action, FromTextBuffer, W(u"CameraOn (Camera: 7)###"), 20),
    CREATION(0, Action, FromTextBuffer, nullptr, 0),
    CREATION(0, Action, FromTextBuffer, W(u"?"), 0),
    CREATION(0, Action, FromTextBuffer, W(u"@CameraOn (Camera: 7)"), 0),
    CREATION(4, MatchAction, FromTextBuffer, W(u"@CameraOn (Camera: 7)"), 0),
    CREATION(0, MatchAction, FromTextBuffer, W(u"CameraOn (Camera: 7)"), 0),
    CREATION(3, Message, FromTextBuffer, W(u"CameraOn (Camera: 7)"), 0),
    CREATION(3, Action, FromBinBuffer, IMAGE(false)),
    CREATION(0, Action, FromBinBuffer, IMAGE(true)),
    CREATION(3, MatchAction, FromBinBuffer, IMAGE(false)),  // not restricted to match actions
    CREATION(4, MatchAction, FromBinBuffer, IMAGE(true)),
    CREATION(4, Message, FromBinBuffer, IMAGE(true)),
    CREATION(0, Message, FromBinBuffer, nullptr, 0),
    CREATION(3, Action, FromEventData, Event(true)),
    CREATION(3, Action, FromEventData, Event(false)),
    CREATION(4, MatchAction, FromEventData, Event(true)),
    CREATION(4, MatchAction, FromEventData, Event(false)),
};

TEST(InterfacePointers, CreationInBothForms)
{
    const Handle other(Talvec_Action_CreateActionByName(W(u"X")));
    const auto fail = [&] { OrvAct_StoreToTextBufferW(other.get(), nullptr, 0, 0, 0, nullptr); };
    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    for (const Creation& creation : kCreations) {
        SCOPED_TRACE(creation.what);
        fail();
        ITalvecMessage* bare = creation.bare();
        EXPECT_FALSE(LastError().has_value());
        EXPECT_EQ(bare != nullptr, creation.kind != 0);
        if (bare) {
            EXPECT_EQ(bare->GetMessageKind(), creation.kind);
            EXPECT_EQ(CountOf(bare), 0u);
            EXPECT_EQ(bare->AddRef(), 1u);
            EXPECT_EQ(bare->Release(), 0u);
        }
        fail();
        ITalvecMessage* counted = nullptr;
        EXPECT_EQ(creation.counted(&counted), creation.kind ? 0u : 0x80004005u);
        EXPECT_FALSE(LastError().has_value());
        EXPECT_EQ(counted != nullptr, creation.kind != 0);
        if (counted) {
            EXPECT_EQ(counted->GetMessageKind(), creation.kind);
            EXPECT_EQ(CountOf(counted), 1u);
            EXPECT_EQ(counted->Release(), 0u);
        }
        fail();
        EXPECT_EQ(creation.counted(nullptr), creation.kind ? 0x80004003u : 0x80004005u);
        EXPECT_FALSE(LastError().has_value());
        EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open);
    }
}

// A bad guid is a failure, not a text without an action.
TEST(InterfacePointers, FailuresAreStored)
{
    const OrvWChar* text = W(u"A(x: \"zzzzzzzz-0000-0000-0000-000000000000\")");
    EXPECT_EQ(Talvec_Action_CreateIOrvMessageFromTextBuffer(text, 0), nullptr);
    EXPECT_TRUE(LastError().has_value());
    ITalvecAction* object = nullptr;
    EXPECT_EQ(Talvec_Action_CreateIOrvActionPointerFromTextBuffer(&object, text, 0), 0x80004005u);
    EXPECT_TRUE(LastError().has_value());
    EXPECT_EQ(object, nullptr);
}

TEST(InterfacePointers, MatchActionsByCodeAndName)
{
    const Handle byCode(TalvecMatchAct_CreateActionByCode(ORV_ACTION_CameraOn));
    const Handle byName(TalvecMatchAct_CreateActionByName(W(u"CAMERAON")));
    EXPECT_EQ(byCode->GetMessageKind(), static_cast<std::uint32_t>(ORV_MESSAGE_MATCH_ACTION));
    EXPECT_TRUE(Equal(byCode, byName));
    EXPECT_EQ(TalvecMatchAct_CreateActionByCode(999), nullptr);
    EXPECT_EQ(TalvecMatchAct_CreateActionByName(nullptr), nullptr);
    EXPECT_FALSE(LastError().has_value());
}

TEST(InterfacePointers, ConversionsBetweenHandlesAndPointers)
{
    EXPECT_EQ(Talvec_Action_ConvertFromIOrvMessage(nullptr), nullptr);
    EXPECT_EQ(Talvec_Action_ConvertFromIOrvAction(nullptr), nullptr);
    EXPECT_EQ(Talvec_Action_ConvertFromIOrvMatchAction(nullptr), nullptr);
    EXPECT_EQ(Talvec_Action_ConvertToIOrvAction(nullptr), nullptr);

    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    ITalvecMatchAction* bare = Talvec_Action_CreateIOrvMatchActionByName(W(u"CameraOn"));
    const TOrvHandle first = Talvec_Action_ConvertFromIOrvMatchAction(bare);  // takes the first reference
    EXPECT_EQ(Talvec_Action_ConvertFromIOrvAction(bare), first);
    EXPECT_EQ(Talvec_Action_ConvertFromIOrvMessage(bare), first);
    EXPECT_EQ(CountOf(bare), 3u);
    EXPECT_EQ(Talvec_Action_ConvertToIOrvMatchAction(first), bare);
    EXPECT_EQ(Talvec_Action_ConvertToIOrvMessage(first), static_cast<ITalvecMessage*>(bare));
    ITalvecAction* action = Talvec_Action_ConvertToIOrvAction(first);
    EXPECT_EQ(CountOf(action), 3u);  // no reference moved
    action->Release();
    action->Release();
    action->Release();  // closes the handle
    EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open);
}

}  // namespace
