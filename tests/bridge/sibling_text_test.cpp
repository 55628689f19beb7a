// The conversion between the sibling product's text and actions, without its library.
#include <gtest/gtest.h>

#include <algorithm>

#include "bridge/action_text_parser.h"
#include "bridge/action_text_writer.h"
#include "forms/describe.h"
#include "forms/sample_action.h"
#include "forms/text_reader.h"
#include "ulmo/exceptions.h"

namespace HeskPLC {
namespace {

using namespace OrvPLC;

std::string ReadHesk(std::u16string_view text)
{
    const ObjectPtr<TOrvAction> action = ActionTextParser(text).Parse();
    return action ? Describe(*action) : "none";
}

std::u16string WriteHesk(std::u16string_view orvText)
{
    const ObjectPtr<TOrvAction> action(ReadActionText(orvText, ORV_EXPECT_ANY, false).object);
    return action ? ActionTextWriter().Write(*action) : u"no action";
}

TEST(HeskText, Reading)
{
    const struct {
        const char16_t* text;
        const char* action;
    } rows[] = {
        {u"CameraOn(5)", "3 CameraOn; Camera chan 0 5 ''"},
        {u"  cameraon ( 5 )  tail", "3 CameraOn; Camera chan 0 5 ''"},
        {u"CameraOn ({ 7, 5, \"front door\" })", "3 CameraOn; Camera chan 7 5 'front door'"},
        {u"CameraOn ()", "3 CameraOn"},
        {u"CameraOn (5, 6, 7)", "3 CameraOn; Camera chan 0 5 ''"},
        {u"CameraOn (anything Key: 5)", "3 CameraOn; Camera chan 0 5 ''"},  // a positional field looks at no key
        {u"CameraOn (4294967295)", "3 CameraOn; Camera chan 0 -1 ''"},
        {u"CameraOn (\"x\")", "3 CameraOn; Camera chan 0 0 ''"},
        {u"CameraOn ({99999999999999999999, 1, \"\"})", "3 CameraOn; Camera chan 9223372036854775807 1 ''"},
        {u"@ CameraOn (5)", "none"},
        {u"!CameraOn (5)", "none"},
        {u"CameraOn (5", "none"},
        {u"CameraOn (5 6", "none"},
        {u"CameraOn", "none"},
        {u"NoSuchAction (5)", "none"},
        {u"C\u00e4meraOn (5)", "none"},
        {u"", "none"},
        {u"PanLeft (1, -7)", "3 PanLeft; Camera chan 0 1 ''; Speed i32 -7"},
        {u"PanLeft (1, 99999999999)", "3 PanLeft; Camera chan 0 1 ''; Speed i32 2147483647"},
        {u"SetDigitalOutput (4)", "3 SetDigitalOutput; Contact chan 0 4 ''"},
        {u"SetDigitalOutput (4, 1)", "3 SetDigitalOutput; Contact chan 0 4 ''; State i32 1 of 4097"},
        {u"SystemError (3, 12, windowserror: 5, Description: \"di\\\"sk\\\\\")",
         "3 SystemError; Description str 'di\\\"sk\\\\'; Message i32 12 of 4110; Source i32 3 of 4107; "
         "WindowsError i32 5"},
        {u"SystemError (3, 12, Foo: 1, WindowsError: 5)",
         "3 SystemError; Message i32 12 of 4110; Source i32 3 of 4107"},
        {u"SystemError (3, 12, Description: \"d\", WindowsError: 5)",  // keys stand in the order of the table
         "3 SystemError; Description str 'd'; Message i32 12 of 4110; Source i32 3 of 4107"},
        {u"CustomAction (9223372036854775807, \"\")", "3 CustomAction; Int i64 9223372036854775807; String str ''"},
        {u"CustomAction (1, \"ends in \\\")", "none"},        // the string does not end there
        {u"MoveToAbsolutePosition (1, 1.5, -2, 3.25e2, .5)",  // .5 is no number, what follows the point is
         "3 MoveToAbsolutePosition; Alpha dbl 1.5; Beta dbl -2; Camera chan 0 1 ''; SpeedAlpha dbl 325; SpeedBeta dbl "
         "5"},
        {u"movetoAbsolutePositionEX (1, 2, 3, 4, 5)",
         "3 MoveToAbsolutePosition; Alpha dbl 2; Beta dbl 3; Camera chan 0 1 ''; Focus dbl 5; Zoom dbl 4"},
        {u"MoveToRelativePositionEx (1)", "3 MoveToRelativePosition; Camera chan 0 1 ''"},
        {u"SetTestPictureMode (1, 2)", "3 SetTestPictureMode; Channel chan 0 1 ''; Mode bool 1"},
        {u"StartEvent ({ 5, \"alarm\" }, ForeignKey: 7)", "3 StartEvent; ForeignKey i64 7; TypeID event 5 'alarm'"},
        {u"StartEvent (\"alarm\")", "3 StartEvent; TypeID event 0 'alarm'"},
        {u"StartEvent ({ 5, \"\" })", "3 StartEvent; TypeID event 0 ''"},
        {u"AbortAutoBackup ({ \"01020304-0506-0708-090a-0b0c0d0e0f10\", \"nightly\" })",
         "3 AbortAutoBackup; Schedule res 01020304-0506-0708-090a-0b0c0d0e0f10 'nightly'"},
        {u"AbortAutoBackup (\"nightly\")",
         "3 AbortAutoBackup; Schedule res 00000000-0000-0000-0000-000000000000 'nightly'"},
        {u"ChangeCameraProfile ({ \"no guid\", \"a\" }, \"b\")",  // unset, and its token is used up
         "3 ChangeCameraProfile; CameraProfile res 00000000-0000-0000-0000-000000000000 'b'"},
        {u"ExportProgress (\"no guid\", 7)", "3 ExportProgress; Progress i32 7"},
        {u"SetClock (\"2026/11/15 03:10:43,123 GMT+01:00\")",
         "3 SetClock; Date time 2026/11/15 03:10:43,123 GMT+01:00"},
        {u"SensorVideoAlarm (1, 2, AlarmArea: { 1, 2, 3, 65535 })",
         "3 SensorVideoAlarm; AlarmArea rect 1, 2, 3, -1; Channel chan 0 1 ''; SensorType i32 2 of 4104"},
        // The number of a zone or a fence, wherever it stands; the last one of a key counts.
        {u"VantikVMXAlarm (1, SterileZoneNumber: 3, AlarmGroup: 4)",
         "3 VantikVMXAlarm; Channel chan 0 1 ''; Group i32 4; Number i32 3; VantikVMXAlarmType i32 0 of 4165"},
        {u"VantikVMXAlarm (1, virtualfencenumber: 3, VirtualFenceNumber: 5)",
         "3 VantikVMXAlarm; Channel chan 0 1 ''; Number i32 5; VantikVMXAlarmType i32 1 of 4165"},
        {u"VantikVMXAlarm (VirtualFenceNumber: 3)",
         "3 VantikVMXAlarm; Channel chan 0 3 ''; Number i32 3; VantikVMXAlarmType i32 1 of 4165"},
        {u"VantikVMXAlarm (1, TrackID: 2, VirtualFenceNumber: 3)",  // the cursor moves on all the same
         "3 VantikVMXAlarm; Channel chan 0 1 ''; Number i32 3; VantikVMXAlarmType i32 1 of 4165"},
        {u"VantikVMXAlarm (1, SterileZoneNumber: 3, VirtualFenceNumber: 4, TrackID: 5)",
         "3 VantikVMXAlarm; Channel chan 0 1 ''; SterileZoneNumber i32 3; TrackID i32 5; VirtualFenceNumber i32 4"},
        {u"VantikVMXAlarm (1, SterileZoneNumber: 3) words 12 behind",  // the walk for the number begins anew
         "3 VantikVMXAlarm; Channel chan 0 1 ''; Number i32 3; VantikVMXAlarmType i32 0 of 4165"},
        {u"VantikVMXAlarm (1, AlarmGroup: 2, TrackID: 3, AlarmArea: {1, 2, 3, 4})",
         "3 VantikVMXAlarm; AlarmArea rect 1, 2, 3, 4; Channel chan 0 1 ''; Group i32 2; TrackID i32 3"},
        // Two names that are swapped.
        {u"CameraAreaZoom (1, 2.5, 3, 0, 5, 6, 7, 8)",
         "3 InfoEvent; Camera chan 0 1 ''; Height i32 8; RectangleHeight i32 6; RectangleWidth i32 5; Width i32 7; "
         "X dbl 2.5; Y dbl 3; ZoomDirection i32 0 of 4172"},
        {u"InfoEvent (1, 2, Note: \"n\")", "3 CameraAreaZoom; EventID i64 1; Note str 'n'; Status i64 2"},
        // Where the sibling's types differ from the catalogue's.
        {u"LenelFireEvent (ID: 1, SubType: 2)", "3 LenelFireEvent; ID i32 1 of 4185; SubType i32 2"},
    };
    for (const auto& row : rows) EXPECT_EQ(ReadHesk(row.text), row.action) << Ulmo::Utf8FromWide(row.text);
}

TEST(HeskText, Writing)
{
    const struct {
        const char16_t* orv;
        const char16_t* hesk;
    } rows[] = {
        {u"CameraOn (Camera: { 7, 5, \"front door\" })", u"CameraOn ({ 7, 5, \"front door\" })"},
        {u"cameraON (Camera: -1)", u"CameraOn (4294967295)"},
        {u"CameraOn (Camera: { 0, 5, \"x\" })", u"CameraOn ({ 0, 5, \"x\" })"},
        {u"StopAllEvents ()", u"StopAllEvents ()"},
        {u"SystemError (Source: 3, Message: 12, WindowsError: 5, Description: \"di\\\"sk\")",
         u"SystemError (3, 12, WindowsError: 5, Description: \"di\\\"sk\")"},
        // What is positional is written even when there is nothing.
        {u"PanLeft ()", u"PanLeft (0, 0)"},
        {u"SystemError (XMLInfo: \"x\")", u"SystemError (0, 0, XMLInfo: \"x\")"},
        {u"SetTestPictureMode (Mode: 7)", u"SetTestPictureMode (0, 1)"},
        {u"StartRemoteExport ()",
         u"StartRemoteExport (\"00000000-0000-0000-0000-000000000000\", \"00000000-0000-0000-0000-000000000000\", 0, "
         u"0, "
         u"\"1601/01/01 00:00:00,000 GMT+00:00\", \"1601/01/01 00:00:00,000 GMT+00:00\", \"\")"},
        {u"StartEvent ()", u"StartEvent (\"\")"},
        {u"StartEvent (TypeID: { 5, \"alarm\" })", u"StartEvent ({ 5, \"alarm\" })"},
        {u"NPRRawData (PlateNo: 5)",  // a number as text, too
         u"NPRRawData (\"5\", \"\", 0, \"1601/01/01 00:00:00,000 GMT+00:00\", { 0, 0, 0, 0 }, 0, 0, 0, 0, 0, 0, 0, 0, "
         u"0, 0, "
         u"0, \"\")"},
        {u"AbortAutoBackup (Schedule: { \"01020304-0506-0708-090A-0B0C0D0E0F10\", \"n\" })",
         u"AbortAutoBackup ({ \"01020304-0506-0708-090a-0b0c0d0e0f10\", \"n\" })"},
        {u"MoveToBySpeed (Camera: 1, SpeedAlpha: 1., SpeedBeta: -0.1)", u"MoveToBySpeed (1, 1, -0.1)"},
        {u"MoveToBySpeed (Camera: 1, SpeedAlpha: 1.5e300, SpeedBeta: 100000000000000000000.0)",
         u"MoveToBySpeed (1, 1.5e+300, 1e+20)"},
        // The odd ones.
        {u"MoveToAbsolutePosition (Camera: 1, Alpha: 2, SpeedBeta: 3)", u"MoveToAbsolutePosition (1, 2, 0, 0, 3)"},
        {u"MoveToAbsolutePosition (Camera: 1, Zoom: 2, SpeedBeta: 3)", u"MoveToAbsolutePositionEx (1, 0, 0, 2, 0)"},
        {u"MoveToRelativePosition (Zoom: 0)", u"MoveToRelativePositionEx (0, 0, 0, 0, 0)"},
        {u"CameraPushAF (Camera: 5)", u"CameraRAWOutput (5, \"FocusPushAF\")"},
        {u"VantikVMXAlarm (Channel: 1, Number: 2, Group: 3)", u"VantikVMXAlarm (1, AlarmGroup: 3)"},
        {u"VantikVMXAlarm (Channel: 1, Number: 2, VantikVMXAlarmType: 0, TrackID: 4)",
         u"VantikVMXAlarm (1, SterileZoneNumber: 2, TrackID: 4)"},
        {u"VantikVMXAlarm (Channel: 1, Number: 2, VantikVMXAlarmType: 7)",
         u"VantikVMXAlarm (1, VirtualFenceNumber: 2)"},
        {u"VantikVMXAlarm (VantikVMXAlarmType: 1)", u"VantikVMXAlarm (0)"},
        // What the sibling does not have.
        {u"CameraAreaZoom (Camera: 1)", u""},
        {u"InfoEvent (EventID: 1)", u""},
        {u"MoveToAbsolutePositionEx (Camera: 1)", u""},
        {u"VCAAlarm (Channel: 1)", u""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Ulmo::Utf8FromWide(WriteHesk(row.orv)), Ulmo::Utf8FromWide(row.hesk)) << Ulmo::Utf8FromWide(row.orv);
    }
}

TEST(HeskText, WhatFails)
{
    const std::uint32_t open = Platform::LivingCount::Read();
    EXPECT_THROW(ReadHesk(u"SetClock (\"2026/13/15 03:10:43,123 GMT+01:00\")"), Ulmo::EUlmoDateTime);
    EXPECT_THROW(ReadHesk(u"SetClock (5)"), Ulmo::EUlmoDateTime);
    // Each quote begins a string that goes on to the end of the text.
    std::u16string endless = u"CameraOn (";
    for (int i = 0; i < 500'000; ++i) endless += u"\\\"";
    EXPECT_EQ(ReadHesk(endless), "none");
    EXPECT_EQ(Platform::LivingCount::Read(), open);
}

// An action with a value of its own in each field of a text.
ObjectPtr<TOrvAction> SampleFor(const Converter& converter)
{
    ObjectPtr<TOrvAction> action(TOrvAction::Create(converter.action));
    int seed = 0;
    for (const Field field : converter.Fields()) {
        const TOrvParameterInternalInfo info(field.parameter, field.kind, 0, 0, field.enumType, 0);
        action->Parameters().Store(field.parameter, [&](TOrvParameter& value) { SetSampleValue(value, info, ++seed); });
    }
    return action;
}

std::u16string ByFields(const Converter& converter, TOrvAction& action)
{
    ActionTextWriter writer;
    writer.Begin(converter.name);
    writer.WriteFields(action, converter.Fields());
    return writer.Finish();
}

TEST(HeskConverters, EveryOneBothWays)
{
    for (const Converter& converter : Converters()) {
        ASSERT_LE(converter.Fields().size(), ActionTextParser::kMostTokens);
        const ObjectPtr<TOrvAction> action = SampleFor(converter);
        EXPECT_EQ(ReadHesk(ByFields(converter, *action)), Describe(*action));
        // Each keyed field may be missing, alone or with all others.
        for (const Field missing : converter.Fields()) {
            if (missing.key.empty()) continue;
            const ObjectPtr<TOrvAction> part = SampleFor(converter);
            part->Parameters().Remove(missing.parameter);
            EXPECT_EQ(ReadHesk(ByFields(converter, *part)), Describe(*part));
            action->Parameters().Remove(missing.parameter);
        }
        EXPECT_EQ(ReadHesk(ByFields(converter, *action)), Describe(*action));
        // The converter by the action's name writes the same, but for the odd ones.
        if (!converter.written || converter.name.view() == u"CameraPushAF") continue;
        EXPECT_EQ(ActionTextWriter().Write(*action), ByFields(converter, *action));
    }
}

TEST(HeskConverters, Reach)
{
    const auto all = Converters();
    EXPECT_EQ(all.size(), 332u);
    EXPECT_EQ(std::count_if(all.begin(), all.end(), [](const Converter& row) { return row.written; }), 328);
    std::size_t read = 0, written = 0;
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        read += FindConverter(entry->NameW.view()) != nullptr;
        written += FindWritingConverter(entry->NameW.view()) != nullptr;
    }
    EXPECT_EQ(read, 330u);
    EXPECT_EQ(written, 328u);
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end(), [](const Converter& a, const Converter& b) {
        return a.lowerName.view() < b.lowerName.view();
    }));
}

TEST(HeskConverters, NamesInAnyCase)
{
    EXPECT_TRUE(SameName(u"\u00c4rger1", u"\u00e4RGER1"));
    EXPECT_FALSE(SameName(u"\u00c4rger", u"Arger"));
    EXPECT_FALSE(SameName(u"", u"\u00e4"));
    EXPECT_FALSE(SameName(u"a", u"ab"));
    EXPECT_TRUE(SameName(u"AZaz@[", u"azAZ@["));
    EXPECT_FALSE(SameName(u"@[", u"`{"));
    ASSERT_NE(FindConverter(u"panLEFT"), nullptr);
    EXPECT_EQ(FindConverter(u"PanLeft\u00e4"), nullptr);
    EXPECT_EQ(FindConverter(std::u16string(70, u'a')), nullptr);
}

}  // namespace
}  // namespace HeskPLC
