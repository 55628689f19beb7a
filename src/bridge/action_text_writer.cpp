#include "bridge/action_text_writer.h"

#include "bridge/odd_actions.h"
#include "catalogue/value_kind.h"
#include "forms/text_pieces.h"
#include "ulmo/guid_tools.h"
#include "ulmo/number_text.h"

namespace HeskPLC {

using OrvPLC::TOrvAction;
using OrvPLC::TOrvParameter;
using OrvPLC::ValueKind;

namespace {

// Each reads what the value converts to. Without a value, or if it does not convert: 0, or an empty text.
class ValueText {
public:
    ValueText(std::u16string& output, TOrvParameter* value) : output_(output), value_(value) {}

    void Append(std::uint32_t kind)
    {
        switch (ValueKind{kind}) {
        case ValueKind::Boolean: output_ += Read<bool>(&TOrvParameter::ReadBoolean) ? u'1' : u'0'; break;
        case ValueKind::Numeric32Bit:
            Ulmo::AppendDecimal(output_, Read<std::int32_t>(&TOrvParameter::ReadInt32));
            break;
        case ValueKind::Numeric64Bit:
            Ulmo::AppendDecimal(output_, Read<std::int64_t>(&TOrvParameter::ReadInt64));
            break;
        case ValueKind::NumericDouble: Ulmo::AppendDouble(output_, Read<double>(&TOrvParameter::ReadDouble)); break;
        case ValueKind::String: AppendQuoted(value_ ? value_->MakeWideText() : std::u16string_view()); break;
        case ValueKind::DateTime: AppendDate(Read<TUlmoDateTime>(&TOrvParameter::ReadDateTime)); break;
        case ValueKind::Guid: AppendGuid(Read<TOrvGuid>(&TOrvParameter::ReadGuid)); break;
        case ValueKind::EventType: AppendEventType(Read<TOrvEventTypeValue>(&TOrvParameter::ReadEventType)); break;
        case ValueKind::MediaChannel: AppendChannel(Read<TOrvChannelValue>(&TOrvParameter::ReadMediaChannel)); break;
        case ValueKind::Resource: AppendResource(Read<TOrvResourceValue>(&TOrvParameter::ReadResource)); break;
        case ValueKind::Rect:
            OrvPLC::AppendRect(output_, Read<std::int64_t>(&TOrvParameter::ReadRect), u"{ ", u" }");
            break;
        case ValueKind::None:
        case ValueKind::ResultDataSet: break;  // the sibling has none
        }
    }

private:
    template <class Value>
    Value Read(bool (TOrvParameter::*read)(Value&) const) const
    {
        Value result{};
        if (value_) (value_->*read)(result);
        return result;
    }

    void AppendQuoted(std::u16string_view text) { OrvPLC::AppendQuoted(output_, text); }
    void AppendQuoted(const OrvWChar* text) { AppendQuoted(OrvPLC::TerminatedView(text)); }
    void AppendDate(TUlmoDateTime value)
    {
        output_ += u'"';
        OrvPLC::AppendDateTime(output_, value);
        output_ += u'"';
    }
    void AppendGuid(const TOrvGuid& guid)
    {
        output_ += u'"';
        OrvPLC::AppendGuid(output_, guid);
        output_ += u'"';
    }
    void AppendEventType(const TOrvEventTypeValue& value)
    {
        if (value.id == 0) return AppendQuoted(value.name);
        output_ += u"{ ";
        Ulmo::AppendUnsigned(output_, value.id);
        output_ += u", ";
        AppendQuoted(value.name);
        output_ += u" }";
    }
    void AppendChannel(const TOrvChannelValue& value)
    {
        const std::u16string_view name = OrvPLC::TerminatedView(value.name);
        if (value.id == 0 && name.empty()) return Ulmo::AppendUnsigned(output_, value.number);
        output_ += u"{ ";
        Ulmo::AppendUnsigned(output_, value.id);
        output_ += u", ";
        Ulmo::AppendUnsigned(output_, value.number);
        output_ += u", ";
        AppendQuoted(name);
        output_ += u" }";
    }
    void AppendResource(const TOrvResourceValue& value)
    {
        if (Ulmo::GuidTools::IsZero(value.guid)) return AppendQuoted(value.name);
        output_ += u"{ ";
        AppendGuid(value.guid);
        output_ += u", ";
        AppendQuoted(value.name);
        output_ += u" }";
    }

    std::u16string& output_;
    TOrvParameter* value_;
};

}  // namespace

const Converter* FindWritingConverter(std::u16string_view actionName)
{
    const Converter* converter = FindConverter(actionName);
    return converter && converter->written ? converter : nullptr;
}

std::u16string ActionTextWriter::Write(TOrvAction& action)
{
    const Converter* converter = FindWritingConverter(OrvPLC::TerminatedView(action.GetActionName()));
    if (!converter) return {};
    const OddAction* odd = FindOddAction(*converter);
    if (odd && odd->write) {
        odd->write(*this, action, *converter);
    } else {
        Begin(converter->name);
        WriteFields(action, converter->Fields());
    }
    return Finish();
}

void ActionTextWriter::Begin(std::u16string_view name)
{
    output_.assign(name);
    output_ += u" (";
    first_ = true;
}

void ActionTextWriter::WriteFields(TOrvAction& action, std::span<const FieldRow> fields)
{
    for (const Field field : fields) WriteField(action, field);
}

void ActionTextWriter::WriteField(TOrvAction& action, const Field& field)
{
    TOrvParameter* value = action.Parameters().Find(field.parameter);
    if (!field.key.empty() && !value) return;
    Separate();
    if (!field.key.empty()) {
        output_ += field.key;
        output_ += u": ";
    }
    ValueText(output_, value).Append(field.kind);
}

void ActionTextWriter::WriteLiteral(std::u16string_view field)
{
    Separate();
    output_ += field;
}

std::u16string ActionTextWriter::Finish()
{
    output_ += u')';
    return std::move(output_);
}

void ActionTextWriter::Separate()
{
    if (!first_) output_ += u", ";
    first_ = false;
}

}  // namespace HeskPLC
