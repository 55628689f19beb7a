#include "bridge/action_text_writer.h"

#include "bridge/odd_actions.h"
#include "catalogue/value_kind.h"
#include "forms/text_pieces.h"
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
        case ValueKind::String:
            OrvPLC::AppendQuoted(output_, value_ ? value_->MakeWideText() : std::u16string_view());
            break;
        case ValueKind::DateTime:
            OrvPLC::AppendQuotedDateTime(output_, Read<TUlmoDateTime>(&TOrvParameter::ReadDateTime));
            break;
        case ValueKind::Guid: OrvPLC::AppendQuotedGuid(output_, Read<TOrvGuid>(&TOrvParameter::ReadGuid)); break;
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

    void AppendEventType(const TOrvEventTypeValue& value)
    {
        OrvPLC::AppendEventType(output_, value.id, OrvPLC::TerminatedView(value.name));
    }
    void AppendChannel(const TOrvChannelValue& value)
    {
        OrvPLC::AppendMediaChannel(output_, value.id, value.number, OrvPLC::TerminatedView(value.name));
    }
    void AppendResource(const TOrvResourceValue& value)
    {
        OrvPLC::AppendResource(output_, value.guid, OrvPLC::TerminatedView(value.name));
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
    // A positional field must not be missing, or all behind it would move up.
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
    // The writer is left empty, ready for the next action.
    return std::move(output_);
}

void ActionTextWriter::Separate()
{
    if (!first_) output_ += u", ";
    first_ = false;
}

}  // namespace HeskPLC
