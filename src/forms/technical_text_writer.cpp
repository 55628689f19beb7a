#include "forms/technical_text_writer.h"

#include <algorithm>

#include "catalogue/value_kind.h"
#include "forms/message_kinds.h"
#include "forms/result_data.h"
#include "forms/stored_form.h"
#include "forms/text_pieces.h"
#include "ulmo/number_text.h"

namespace OrvPLC {

namespace {

// Room for most actions, so that the text rarely moves while it grows.
constexpr std::size_t kUsualLength = 200;
constexpr std::size_t kUsualParameterLength = 48;

}  // namespace

void TOrvTechnicalTextWriter::Write(const TOrvAction& action)
{
    const ParameterMap& parameters = action.Parameters();
    output_.reserve(std::max(kUsualLength, kUsualParameterLength * (1 + parameters.Size())));
    output_ += PrefixOf(action.Kind());
    WriteName(action.Name());
    output_ += u" (";
    if (const TOrvParameter* description = action.DescriptionParameter()) {
        WriteParameter(action.DescriptionName(), *description);
    }
    parameters.ForEachDeclaredFirst(
        [this](std::u16string_view name, const TOrvParameter& value, std::size_t) { WriteParameter(name, value); });
    output_ += u')';
}

// Bare where the reader takes it bare, else in quotes.
void TOrvTechnicalTextWriter::WriteName(std::u16string_view name)
{
    if (IsActionIdentifier(name)) {
        output_ += name;
    } else {
        AppendQuoted(output_, name);
    }
}

void TOrvTechnicalTextWriter::WriteParameter(std::u16string_view name, const TOrvParameter& parameter)
{
    if (!first_) output_ += u", ";
    first_ = false;
    WriteName(name);
    output_ += u": ";
    WriteValue(parameter);
}

void TOrvTechnicalTextWriter::WriteValue(const TOrvParameter& value)
{
    switch (ValueKind{value.Kind()}) {
    case ValueKind::Boolean: output_ += value.Small() ? u'1' : u'0'; return;
    case ValueKind::Numeric32Bit: Ulmo::AppendDecimal(output_, value.Small()); return;
    case ValueKind::Numeric64Bit: Ulmo::AppendDecimal(output_, value.Large()); return;
    case ValueKind::NumericDouble: Ulmo::AppendDouble(output_, value.Real()); return;
    case ValueKind::String: AppendQuoted(output_, value.Wide()); return;
    case ValueKind::DateTime: AppendQuotedDateTime(output_, value.DateTime()); return;
    case ValueKind::Guid: AppendQuotedGuid(output_, value.Guid()); return;
    case ValueKind::EventType: AppendEventType(output_, value.Large(), value.Wide()); return;
    case ValueKind::MediaChannel: AppendMediaChannel(output_, value.Large(), value.Small(), value.Wide()); return;
    case ValueKind::Resource: AppendResource(output_, value.Guid(), value.Wide()); return;
    case ValueKind::Rect: AppendRect(output_, value.Large(), u"{ ", u" }"); return;
    case ValueKind::ResultDataSet: AppendLiteralList(output_, value.Wide()); return;
    case ValueKind::None: break;
    }
    // The reader takes this word for no value, so the parameter does not come back.
    output_ += u"unknown";
}

void TOrvAction::WriteTechnicalText(TOrvTechnicalTextWriter& writer) const
{
    writer.Write(*this);
}

std::u16string TechnicalText(const TOrvMessage& message)
{
    TOrvTechnicalTextWriter writer;
    message.WriteTechnicalText(writer);
    return writer.Take();
}

void ORV_CALL TOrvMessage::StoreToTextTechnical(OrvBStr* text)
{
    StoreInOperation(text, [this] { return TechnicalText(*this); });
}

}  // namespace OrvPLC
