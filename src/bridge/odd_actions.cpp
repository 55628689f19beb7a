#include "bridge/odd_actions.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

#include "OrvActions/OrvEnums.h"
#include "bridge/action_text_parser.h"
#include "bridge/action_text_writer.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace HeskPLC {

using OrvPLC::TOrvAction;
using OrvPLC::TOrvParameter;

namespace {

// The sibling has two actions where we have one with more parameters; the zoom tells which of them is meant.
void WriteMove(ActionTextWriter& writer, TOrvAction& action, const Converter& converter)
{
    const bool zooms = action.Parameters().Find(u"Zoom") != nullptr;
    // The table has a row with "Ex" for each action that is written here.
    const Converter& meant = zooms ? *FindConverter(std::u16string(converter.name) + u"Ex") : converter;
    writer.Begin(meant.name);
    writer.WriteFields(action, meant.Fields());
}

// The sibling lacks this action but has an output that does the same. So the text does not come back as this action.
// Deliberate.
void WriteCameraPushAF(ActionTextWriter& writer, TOrvAction& action, const Converter& converter)
{
    writer.Begin(u"CameraRAWOutput");
    writer.WriteFields(action, converter.Fields());
    writer.WriteLiteral(u"\"FocusPushAF\"");
}

// The number of a VantikVMXAlarm is that of a zone or of a fence. The sibling tells which by the key, we by a
// parameter.
constexpr std::u16string_view kNumber = u"Number";
constexpr std::u16string_view kAlarmType = u"VantikVMXAlarmType";
constexpr std::u16string_view kZoneKey = u"SterileZoneNumber";
constexpr std::u16string_view kFenceKey = u"VirtualFenceNumber";
constexpr std::int32_t kZone = 0;
constexpr std::int32_t kFence = 1;

// By key, wherever among the fields it stands, unlike all other fields.
void ReadVantikNumber(ActionTextParser& parser, TOrvAction& action)
{
    std::optional<std::u16string_view> zone, fence;  // the last one of several counts
    parser.ForEachToken([&](const ActionTextToken& token) {
        if (SameName(token.Key(), kZoneKey)) zone = token.Integer();
        if (SameName(token.Key(), kFenceKey)) fence = token.Integer();
    });
    if (zone.has_value() == fence.has_value()) {
        // From an earlier form of the action. Deliberate: it stays.
        ReadField(parser, action, {kZoneKey, kZoneKey, ORV_KIND_Numeric32Bit, 0});
        ReadField(parser, action, {kFenceKey, kFenceKey, ORV_KIND_Numeric32Bit, 0});
        return;
    }
    const std::int32_t number = Ulmo::ScanInt32(zone ? *zone : *fence);
    action.Parameters().Store(kNumber, [&](TOrvParameter& value) { value.SetInt32(number); });
    action.Parameters().Store(
        kAlarmType, [&](TOrvParameter& value) { value.SetInt32(zone ? kZone : kFence, ORV_ENUM_VantikAlarmReason); });
    parser.Advance();  // wherever the key was found: deliberate
}

void ReadVantikAlarm(ActionTextParser& parser, TOrvAction& action, const Converter& converter)
{
    ReadField(parser, action, converter.Fields().front());
    ReadVantikNumber(parser, action);
    ReadFields(parser, action, converter.Fields().subspan(1));
}

void WriteVantikAlarm(ActionTextWriter& writer, TOrvAction& action, const Converter& converter)
{
    writer.Begin(converter.name);
    writer.WriteField(action, converter.Fields().front());
    if (const TOrvParameter* alarmType = action.Parameters().Find(kAlarmType)) {
        std::int32_t type = kZone;
        alarmType->ReadInt32(type);
        writer.WriteField(action, {kNumber, type == kZone ? kZoneKey : kFenceKey, ORV_KIND_Numeric32Bit, 0});
    }
    writer.WriteFields(action, converter.Fields().subspan(1));
}

constexpr OddAction kOddActions[] = {
    {u"CameraPushAF", nullptr, WriteCameraPushAF},
    {u"MoveToAbsolutePosition", nullptr, WriteMove},
    {u"MoveToRelativePosition", nullptr, WriteMove},
    {u"VantikVMXAlarm", ReadVantikAlarm, WriteVantikAlarm},
};

}  // namespace

const OddAction* FindOddAction(const Converter& converter)
{
    const auto found = std::find_if(std::begin(kOddActions), std::end(kOddActions),
                                    [&](const OddAction& odd) { return Ulmo::SameText(odd.name, converter.name); });
    return found == std::end(kOddActions) ? nullptr : &*found;
}

}  // namespace HeskPLC
