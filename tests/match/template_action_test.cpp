#include <gtest/gtest.h>

#include "forms/describe.h"
#include "forms/read_text.h"
#include "objects/generic_action.h"

namespace OrvPLC {
namespace {

std::string Made(TOrvAction& match, TOrvAction* example)
{
    const ObjectPtr<TOrvAction> made(&ActionOf(reinterpret_cast<TOrvHandle>(match.CreateActionFromTemplate(example))));
    EXPECT_EQ(made->ReferenceCount(), 1u);
    return Describe(*made);
}

TEST(TemplateAction, TakesWhatTheMatchActionLeavesOpen)
{
    const struct {
        const char16_t* match;
        const char16_t* example;  // null for none
        const char* made;
    } cases[] = {
        {u"@ PanLeft (Comment: \"gone\", Speed: 3)", nullptr, "3 PanLeft; Speed i32 3"},
        {u"@ PanLeft (speed: 3)", u"PanLeft (CAMERA: 7, Speed: 4, Other: 1)",
         "3 PanLeft; CAMERA chan 0 7 ''; speed i32 3"},
        {u"@ PanLeft ()", u"TiltUp (Speed: \"fast\")", "3 PanLeft; Speed i32 0"},  // another action serves as well
        {u"@ NobodyKnows (x: 1)", u"NobodyKnows (y: 2)", "3 NobodyKnows; x i32 1"},
    };
    for (const auto& [match, example, made] : cases) {
        const ObjectPtr<TOrvAction> given = example ? Read(example) : nullptr;
        EXPECT_EQ(Made(*Read(match), given.get()), made);
    }
}

TEST(TemplateAction, TakesTheRolesOfAGenericAction)
{
    const TOrvChannelValue camera = {1, Boundary(u"cam"), 2};
    const TOrvChannelValue viewer = {3, Boundary(u"view"), 4};
    const TOrvChannelValue contact = {5, Boundary(u"in"), 6};
    const ObjectPtr<TOrvAction> generic(TOrvGenericAction::Create(
        {GenericChannel(&camera), GenericChannel(&viewer), GenericChannel(&contact), GenericChannel(nullptr), 77}));
    const struct {
        const char16_t* match;
        const char* made;
    } cases[] = {
        {u"@ PanLeft ()", "3 PanLeft; Camera chan 1 2 'cam'; Speed i32 77"},  // a PTZ head is a video input
        {u"@ PanLeft (Camera: 9, Speed: 3)", "3 PanLeft; Camera chan 0 9 ''; Speed i32 3"},
        {u"@ ViewerConnect (Viewer: 8)",
         "3 ViewerConnect; Channel chan 1 2 'cam'; PlayMode i32 77; Viewer chan 0 8 ''"},  // without the enum
        {u"@ ViewerConnect ()", "3 ViewerConnect; Channel chan 1 2 'cam'; PlayMode i32 77; Viewer chan 3 4 'view'"},
        {u"@ DigitalInput ()", "3 DigitalInput; Contact chan 5 6 'in'; State i32 77"},
        {u"@ SetDigitalOutput ()", "3 SetDigitalOutput; State i32 77"},  // the example has no output contact
        {u"@ NobodyKnows (x: 1)", "3 NobodyKnows; x i32 1"},
    };
    for (const auto& [match, made] : cases) EXPECT_EQ(Made(*Read(match), generic.get()), made);
    const ObjectPtr<TOrvAction> output(TOrvGenericAction::Create({{}, {}, {}, GenericChannel(&contact), 77}));
    EXPECT_EQ(Made(*Read(u"@ SetDigitalOutput ()"), output.get()),
              "3 SetDigitalOutput; Contact chan 5 6 'in'; State i32 77");
}

}  // namespace
}  // namespace OrvPLC
