#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>

#include "catalogue/extension_reader.h"
#include "events/describe_record.h"
#include "events/event_fill.h"
#include "events/event_settings.h"
#include "forms/text_reader.h"
#include "objects/match_action.h"

namespace OrvPLC {
namespace {

std::string Filled(TOrvAction& action)
{
    TOrvEventData record{};
    EXPECT_FALSE(action.GetEventData(&record));
    return Describe(record);
}

TEST(EventFill, DeclaredParametersAndUsers)
{
    const struct {
        const char16_t* action;
        const char* record;
    } cases[] = {
        {u"PanLeft (Camera: { 7, 5, \"x\" }, Speed: 3)",
         "1102; Int32FieldA 5; Int32FieldB 3; Int64FieldA 7; StringFieldA 'x'"},
        {u"@ PanLeft (Comment: \"c\", Speed: 0)", "1102; Int32FieldB 0"},
        {u"PanLeft (Camera: { 7, 0, \"x\" })", "1102; Int64FieldA 7; StringFieldA 'x'"},
        {u"PanLeft (Camera: 0)", "1102"},
        {u"CrossingLine (Channel: { 7, 5, \"x\" }, Type: 2)", "1662; Int32FieldA 5; Int64FieldA 7; StringFieldA 'x'"},
        {u"CrossingLine (Channel: { 7, 0, \"x\" }, Type: 2)", "1662; Int32FieldA 2; Int64FieldA 7; StringFieldA 'x'"},
        {u"EventStarted (EventID: 9, TypeID: { 4, \"door\" })",
         "1059; Int64FieldA 9; Int64FieldB 4; StringFieldA 'door'"},
        {u"EventStarted (EventID: 0, TypeID: \"\")", "1059; Int64FieldA 0"},
        {u"CustomAction (String: \"\", Int64FieldA: 9)", "1008; StringFieldA ''"},
        {u"FaceRecEvent (Smile: 1, LivenessConfirmed: 0)", "1700; Int32FieldD 1; Int64FieldB 0"},
        {u"VantikVMDAlarm (AlarmArea: { 1, 0, 0, 0 }, VMDZone: 3)", "2030; Int64FieldB 1"},
        {u"UserLogin (User1: \"a\", ClientAccount: \"b\", Host: \"c\")",
         "1003; StringFieldFirstUser 'a'; StringFieldWindowsUser 'b'"},
        {u"PanLeft (user2: \"u\", ClientHost: 5, StringFieldC: \"no\")",
         "1102; StringFieldSecondUser 'u'; StringFieldWindowsHost '5'"},
        {u"NobodyKnows (x: 1, User1: \"a\")", "0"},
    };
    for (const auto& [text, record] : cases) {
        const ObjectPtr<TOrvAction> action(ReadActionText(text, ORV_EXPECT_ANY, false).object);
        EXPECT_EQ(Filled(*action), record);
    }
}

// An extension may declare fewer columns than a value has parts: the others have no place to go.
TEST(EventFill, AMaskThatLacksASort)
{
    TOrvActionCatalogue catalogue(TOrvActionCatalogue::Content::BuiltIn);
    ExtensionReader(catalogue).Read(
        "<PLC><actions><action name='Gate' code='10000' class='1'><params>"
        "<parameter name='Door' type='MediaChannel' dbfield='Int32_A'/>"
        "<parameter name='Card' type='Guid' dbfield='Int64_A'/></params></action></actions></PLC>");
    const auto* entry = catalogue.FindActionByName(u"Gate");
    ASSERT_NE(entry, nullptr);
    ASSERT_EQ(entry->Parameters[0].DbField, std::uint32_t{ORV_COLUMN_Int32_A});
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(*entry));
    action->Parameters().StoreDeclared(0, [](TOrvParameter& value) { value.SetMediaChannel(7, 5, u"x"); });
    action->Parameters().StoreDeclared(1, [](TOrvParameter& value) { value.SetGuid({1, 2, 3, {}}); });
    // A column that does not exist would lie after the record.
    struct {
        TOrvEventData record{};
        unsigned char behind[1024]{};
    } guarded;
    FillEventRecord(guarded.record, *action);
    EXPECT_EQ(Describe(guarded.record), "10000; Int32FieldA 5");
    EXPECT_TRUE(std::all_of(std::begin(guarded.behind), std::end(guarded.behind), [](auto byte) { return byte == 0; }));
}

constexpr TOrvGuid kGuid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

// Values of the declared kind and of others, which are converted in place.
TEST(EventFill, KindsOfValues)
{
    const struct {
        const char16_t* action;
        const char16_t* parameter;
        void (*set)(TOrvParameter& value);
        const char* record;
    } cases[] = {
        {u"CustomAction", u"Int", [](auto& v) { v.SetString(u"12"); }, "1008; Int64FieldA 12"},
        {u"CustomAction", u"Int", [](auto& v) { v.SetMediaChannel(7, 5, u"x"); }, "1008; Int64FieldA 7"},
        {u"CustomAction", u"Int", [](auto& v) { v.SetGuid(kGuid); }, "1008"},
        {u"CustomAction", u"String", [](auto& v) { v.SetInt64(-123456789012); }, "1008; StringFieldA '-123456789012'"},
        {u"VantikAIAlarm", u"Confidence", [](auto& v) { v.SetInt32(2); }, "2170; DoubleFieldA 2"},
        {u"InitializeRemoteExport", u"Device", [](auto& v) { v.SetGuid(kGuid); },
         "1451; Int64FieldB 844433520066561; Int64FieldC 795458214266537220"},
        {u"InitializeRemoteExport", u"Device", [](auto& v) { v.SetResource(kGuid, u"n"); },
         "1451; Int64FieldB 844433520066561; Int64FieldC 795458214266537220"},
        {u"InitializeRemoteExport", u"Device", [](auto& v) { v.SetInt64(5); }, "1451"},
        {u"VantikAIAlarm", u"Rule", [](auto& v) { v.SetResource(kGuid, u"r"); },
         "2170; Int64FieldA 844433520066561; Int64FieldB 795458214266537220; StringFieldA 'r'"},
        {u"VantikAIAlarm", u"Rule", [](auto& v) { v.SetResource({}, u""); }, "2170; Int64FieldA 0; Int64FieldB 0"},
        {u"VantikAIAlarm", u"Rule", [](auto& v) { v.SetString(u"r"); }, "2170; StringFieldA 'r'"},
        {u"VantikAIAlarm", u"ObjectCount", [](auto& v) { v.SetResource(kGuid, u"r"); }, "2170"},
        {u"PanLeft", u"Camera", [](auto& v) { v.SetInt32(5); }, "1102; Int32FieldA 5; Int64FieldA 5; StringFieldA '5'"},
        {u"PanLeft", u"Camera", [](auto& v) { v.SetDateTime({5}); },
         "1102; Int32FieldA 1; Int64FieldA 1; StringFieldA '1'"},
    };
    for (const auto& [name, parameter, set, record] : cases) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(name));
        action->Parameters().Store(parameter, set);
        EXPECT_EQ(Filled(*action), record);
        EXPECT_EQ(action->GetParameterEnum(Boundary(parameter)), 0u);
    }
}

TEST(EventFill, DatesStayDates)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"ViewerPlayFromTime"));
    action->Parameters().Store(u"Time", [](TOrvParameter& value) { value.SetDateTime({5}); });
    EXPECT_EQ(Filled(*action), "1216; DateFieldA 5");
    action->Parameters().Store(u"Time", [](TOrvParameter& value) { value.SetInt64(5); });
    EXPECT_EQ(Filled(*action), "1216");
}

TEST(EventFill, ParametersUnderTheNamesOfColumns)
{
    const ObjectPtr<TOrvAction> action(
        ReadActionText(u"PanLeft (Speed: 3, Int32FieldB: 9, stringfieldc: \"c\", Int64FieldD: \"7\", DoubleFieldA: 2, "
                       u"DateFieldA: 5, StringFieldFirstUser: \"no\", User1: \"u\")",
                       ORV_EXPECT_ANY, false)
            .object);
    EXPECT_EQ(Filled(*action), "1102; Int32FieldB 3; StringFieldFirstUser 'u'");
    EventSettings::StoreGenericParameters = true;
    EXPECT_EQ(Filled(*action),
              "1102; Int32FieldB 3; Int64FieldD 7; StringFieldC 'c'; DoubleFieldA 2; "
              "StringFieldFirstUser 'u'");
    EventSettings::StoreGenericParameters = false;
}

TEST(EventFill, PointsIntoTheValues)
{
    const std::u16string text(100, u'x');
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"CustomAction"));
    action->SetString(Boundary(u"String"), Boundary(text.c_str()));
    TOrvEventData record;
    std::memset(&record, 0xEE, sizeof record);
    action->GetEventData(&record);
    EXPECT_EQ(Units(record.stringField[0].text), action->Parameters().Find(u"String")->Wide().data());
    EXPECT_EQ(record.stringField[0].length, 100u);
    EXPECT_EQ(record.size, 0xEEEEEEEEu);
    EXPECT_EQ(record.callerWord, 0xEEEEEEEEEEEEEEEEu);
    EXPECT_EQ(record.clearedWords[0] | record.clearedWords[1] | record.imageSize, 0u);
    EXPECT_EQ(record.image, nullptr);
}

}  // namespace
}  // namespace OrvPLC
