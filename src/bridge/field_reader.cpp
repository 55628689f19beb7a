// From a token to the value of a parameter, kind by kind. Reading a number never fails; other text gives 0.
#include "bridge/action_text_parser.h"
#include "catalogue/value_kind.h"
#include "ulmo/date_time.h"
#include "ulmo/guid_tools.h"
#include "ulmo/number_text.h"

namespace HeskPLC {

using OrvPLC::TOrvAction;
using OrvPLC::TOrvParameter;
using OrvPLC::ValueKind;

namespace {

using Form = ActionTextToken::Form;

// An id is unsigned, yet scanned with a sign: text from 2^63 on gives the limit.
std::uint64_t Id(std::u16string_view text)
{
    return static_cast<std::uint64_t>(Ulmo::ScanInt64(text));
}

// An unsigned number is scanned with 64 bits and cut, so that all 32 bits of it arrive.
std::uint32_t Unsigned(std::u16string_view text)
{
    return static_cast<std::uint32_t>(Ulmo::ScanInt64(text));
}

// In braces id, number and name; a bare number is the channel's number.
void SetChannel(TOrvParameter& value, const ActionTextToken& token)
{
    const std::u16string_view number = token.Part(Form::Channel, 1);
    if (number.empty()) {
        value.SetMediaChannel(0, Unsigned(token.Integer()), {});
    } else {
        value.SetMediaChannel(Id(token.Part(Form::Channel, 0)), Unsigned(number), token.Part(Form::Channel, 2));
    }
}

// In braces id and name; a bare string is the name.
void SetEventType(TOrvParameter& value, const ActionTextToken& token)
{
    const std::u16string_view name = token.Part(Form::EventType, 1);
    if (name.empty()) {
        value.SetEventType(0, token.String());
    } else {
        value.SetEventType(Id(token.Part(Form::EventType, 0)), name);
    }
}

void SetRect(TOrvParameter& value, const ActionTextToken& token)
{
    std::uint64_t packed = 0;
    for (std::size_t word = 0; word < 4; ++word) {
        packed |= std::uint64_t{static_cast<std::uint16_t>(Ulmo::ScanInt32(token.Part(Form::Rect, word)))}
                  << (16 * word);
    }
    value.SetRect(static_cast<std::int64_t>(packed));
}

// A number without a point is a real number too.
double Real(const ActionTextToken& token)
{
    const std::u16string_view real = token.Part(Form::Float, 0);
    return Ulmo::ScanDouble(real.empty() ? token.Integer() : real);
}

// What the token does not hold reads as 0 or as an empty text, which raises where a date is wanted.
void SetValue(TOrvParameter& value, const Field& field, const ActionTextToken& token, const TOrvGuid& guid)
{
    switch (ValueKind{field.kind}) {
    case ValueKind::Boolean: value.SetBoolean(Ulmo::ScanInt32(token.Integer()) != 0); break;
    case ValueKind::Numeric32Bit: value.SetInt32(Ulmo::ScanInt32(token.Integer()), field.enumType); break;
    case ValueKind::Numeric64Bit: value.SetInt64(Ulmo::ScanInt64(token.Integer())); break;
    case ValueKind::NumericDouble: value.SetDouble(Real(token)); break;
    case ValueKind::String: value.SetString(token.String()); break;
    case ValueKind::DateTime: value.SetDateTime(Ulmo::FromText(token.String())); break;
    case ValueKind::Guid: value.SetGuid(guid); break;
    case ValueKind::EventType: SetEventType(value, token); break;
    case ValueKind::MediaChannel: SetChannel(value, token); break;
    case ValueKind::Resource:
        value.SetResource(guid, token.Part(Form::Resource, 0).empty() ? token.String() : token.Part(Form::Resource, 1));
        break;
    case ValueKind::Rect: SetRect(value, token); break;
    case ValueKind::None:
    case ValueKind::ResultDataSet: break;  // the sibling has none
    }
}

// The guid that the field needs. False for a text that is not a guid.
bool ReadGuid(const Field& field, const ActionTextToken& token, TOrvGuid& guid)
{
    if (field.kind == ORV_KIND_Guid) return Ulmo::GuidTools::StringToGuidW(token.String(), guid);
    const std::u16string_view text = token.Part(Form::Resource, 0);
    return field.kind != ORV_KIND_Resource || text.empty() || Ulmo::GuidTools::StringToGuidW(text, guid);
}

}  // namespace

void ReadField(ActionTextParser& parser, TOrvAction& action, const Field& field)
{
    const ActionTextToken* token = parser.Current();
    if (!token) return;
    // A keyed field may be absent: then the token waits for a later field. So an unknown key blocks all keyed fields
    // after it. A positional field takes a token with any key. Deliberate.
    if (!field.key.empty() && !SameName(token->Key(), field.key)) return;
    TOrvGuid guid{};
    if (ReadGuid(field, *token, guid)) {  // a bad one leaves the parameter unset, and its token is used up
        action.Parameters().Store(field.parameter, [&](TOrvParameter& value) { SetValue(value, field, *token, guid); });
    }
    parser.Advance();
}

void ReadFields(ActionTextParser& parser, TOrvAction& action, std::span<const FieldRow> fields)
{
    for (const Field field : fields) ReadField(parser, action, field);
}

}  // namespace HeskPLC
