#include "forms/plain_text_writer.h"

#include "OrvActions/OrvEnums.h"
#include "catalogue/catalogue.h"
#include "catalogue/name_tables.h"
#include "catalogue/settings.h"
#include "catalogue/value_kind.h"
#include "forms/message_kinds.h"
#include "forms/stored_form.h"
#include "forms/text_pieces.h"
#include "ulmo/date_time.h"
#include "ulmo/guid_tools.h"
#include "ulmo/number_text.h"

namespace OrvPLC {

namespace {

constexpr std::size_t kUsualLength = 200;

// The time range that stands for "all the rest of the time" and reads by its enum name.
constexpr TOrvGuid kRestOfTime = {0xBAA41E7C, 0x9328, 0x427E, {0x94, 0x3D, 0xA6, 0x6B, 0x44, 0xEF, 0x2F, 0xDB}};

// As the action declares it, else as a general parameter; null for what the catalogue does not know.
const TOrvParameterInternalInfo* FindInfo(const TOrvActionInternalInfo* entry, std::size_t position,
                                          std::u16string_view name)
{
    if (entry && position != TOrvActionInternalInfo::kNotFound) return &entry->Parameters[position];
    return Catalogue().FindGeneralParameter(name);
}

}  // namespace

void TOrvPlainTextWriter::Write(const TOrvAction& action)
{
    const TOrvActionInternalInfo* entry = action.Entry();
    WriteHeader(action);
    if (const TOrvParameter* description = action.DescriptionParameter()) {
        const std::u16string_view name = action.DescriptionName();
        const std::size_t position = entry ? entry->FindParameter(name) : TOrvActionInternalInfo::kNotFound;
        WriteParameter(name, *description, FindInfo(entry, position, name), Settings::PriorityLevel);
    }
    action.Parameters().ForEachDeclaredFirst(
        [&](std::u16string_view name, const TOrvParameter& value, std::size_t position) {
            WriteParameter(name, value, FindInfo(entry, position, name), Settings::PriorityLevel);
        });
}

void TOrvPlainTextWriter::WriteHeader(const TOrvAction& action)
{
    output_.reserve(kUsualLength);
    // Plain text has no mark for a match action, unlike technical text.
    if (action.Kind() != ORV_MESSAGE_MATCH_ACTION) output_ += PrefixOf(action.Kind());
    output_ += action.Entry() ? action.Entry()->Plain().W.Whole(copy_) : action.Name();
    output_ += u';';
}

std::optional<TOrvPlainTextWriter::Shown> TOrvPlainTextWriter::WriteParameter(std::u16string_view name,
                                                                              const TOrvParameter& parameter,
                                                                              const TOrvParameterInternalInfo* info,
                                                                              std::uint32_t level)
{
    if (info && info->Priority > level) return std::nullopt;
    const std::u16string_view label = info ? info->Plain().W.Whole(label_) : name;
    output_ += u' ';
    output_ += label;
    output_ += u": ";
    const std::size_t start = output_.size();
    WriteValue(parameter);
    const std::size_t length = output_.size() - start;
    output_ += u';';
    // The label ends in a zero unit, whether it is a name, a constant or the copy.
    return Shown{label.data(), Text().substr(start, length)};
}

void TOrvPlainTextWriter::WriteValue(const TOrvParameter& value)
{
    switch (ValueKind{value.Kind()}) {
    case ValueKind::Boolean:
        if (!WriteEnumName(kBooleanEnum, value.Small() ? 1 : 0)) output_ += value.Small() ? u'1' : u'0';
        return;
    case ValueKind::Numeric32Bit: WriteNumber(value); return;
    case ValueKind::Numeric64Bit: Ulmo::AppendDecimal(output_, value.Large()); return;
    case ValueKind::NumericDouble: Ulmo::AppendDouble(output_, value.Real()); return;
    case ValueKind::String: AppendQuoted(output_, value.Wide()); return;
    case ValueKind::DateTime: {
        Ulmo::DateText text;
        AppendQuoted(output_, Ulmo::ToLocaleText(value.DateTime(), text));
        return;
    }
    case ValueKind::Guid: AppendQuotedGuid(output_, value.Guid()); return;
    case ValueKind::EventType:
        if (value.Wide().empty()) {
            Ulmo::AppendDecimal(output_, value.Large());
        } else {
            AppendQuoted(output_, value.Wide());
        }
        return;
    case ValueKind::MediaChannel: WriteMediaChannel(value); return;
    case ValueKind::Resource: WriteResource(value); return;
    case ValueKind::Rect: WriteRect(value.Large()); return;
    case ValueKind::ResultDataSet: output_ += value.Wide(); return;
    case ValueKind::None: break;
    }
    output_ += u"unknown";
}

void TOrvPlainTextWriter::WriteNumber(const TOrvParameter& value)
{
    if ((value.EnumType() & kEnumIdBit) != 0 &&
        WriteEnumName(value.EnumType(), static_cast<std::uint32_t>(value.Small()))) {
        return;
    }
    Ulmo::AppendDecimal(output_, value.Small());
}

// By name and number, by the number alone, or by the id.
void TOrvPlainTextWriter::WriteMediaChannel(const TOrvParameter& value)
{
    if (!value.Wide().empty()) {
        output_ += value.Wide();
        output_ += u" (";
        Ulmo::AppendDecimal(output_, value.Small());
        output_ += u')';
    } else if (value.Small() != 0) {
        Ulmo::AppendDecimal(output_, value.Small());
    } else {
        output_ += u"#: ";
        Ulmo::AppendDecimal(output_, value.Large());
    }
}

void TOrvPlainTextWriter::WriteResource(const TOrvParameter& value)
{
    if (Ulmo::GuidTools::Equal(value.Guid(), kRestOfTime)) {
        if (!WriteEnumName(ORV_ENUM_PlcSpecialConstants, 0)) output_ += u'0';
        return;
    }
    output_ += u'"';
    if (value.Wide().empty()) {
        AppendGuid(output_, value.Guid());
    } else {
        output_ += value.Wide();
    }
    output_ += u'"';
}

// The second word comes first: (left,top)-(right,bottom).
void TOrvPlainTextWriter::WriteRect(std::int64_t packed)
{
    output_ += u'(';
    Ulmo::AppendDecimal(output_, RectWord(packed, 1));
    output_ += u',';
    Ulmo::AppendDecimal(output_, RectWord(packed, 0));
    output_ += u")-(";
    Ulmo::AppendDecimal(output_, RectWord(packed, 3));
    output_ += u',';
    Ulmo::AppendDecimal(output_, RectWord(packed, 2));
    output_ += u')';
}

bool TOrvPlainTextWriter::WriteEnumName(std::uint32_t enumType, std::uint32_t value)
{
    const TOrvEnumInternalInfo* info = Catalogue().FindEnumValue(enumType, value);
    if (info) output_ += info->Plain().W.Whole(copy_);
    return info != nullptr;
}

void TOrvAction::WritePlainText(TOrvPlainTextWriter& writer) const
{
    writer.Write(*this);
}

std::u16string PlainText(const TOrvMessage& message)
{
    TOrvPlainTextWriter writer;
    message.WritePlainText(writer);
    return writer.Take();
}

void ORV_CALL TOrvMessage::StoreToTextPlain(OrvBStr* text)
{
    StoreInOperation(text, [this] { return PlainText(*this); });
}

}  // namespace OrvPLC
