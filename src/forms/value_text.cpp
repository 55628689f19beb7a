// The bare text of a value, which reading as a string, retyping to String and the property forms use.
#include "catalogue/value_kind.h"
#include "forms/text_pieces.h"
#include "objects/parameter.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

// The kinds whose text is the wide value as it stands.
bool TextIsWide(ValueKind kind)
{
    switch (kind) {
    case ValueKind::String:
    case ValueKind::EventType:
    case ValueKind::MediaChannel:
    case ValueKind::Resource:
    case ValueKind::ResultDataSet: return true;
    case ValueKind::None:
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit:
    case ValueKind::Numeric64Bit:
    case ValueKind::NumericDouble:
    case ValueKind::DateTime:
    case ValueKind::Guid:
    case ValueKind::Rect: break;
    }
    return false;
}

}  // namespace

bool TOrvParameter::AppendText(std::u16string& output) const
{
    switch (ValueKind{kind_}) {
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit: Ulmo::AppendDecimal(output, small_); return true;
    case ValueKind::Numeric64Bit: Ulmo::AppendDecimal(output, numbers_.large); return true;
    case ValueKind::NumericDouble: Ulmo::AppendDouble(output, numbers_.real); return true;
    case ValueKind::String:
    case ValueKind::EventType:
    case ValueKind::MediaChannel:
    case ValueKind::Resource:
    case ValueKind::ResultDataSet: output += Wide(); return true;
    case ValueKind::DateTime: AppendDateTime(output, DateTime()); return true;
    case ValueKind::Guid: AppendGuid(output, guid_); return true;
    case ValueKind::Rect: AppendRect(output, numbers_.large, u"{", u"}"); return true;
    case ValueKind::None: break;
    }
    return false;
}

// Callers keep pointers into these texts: while the value is the same, its text is not made anew.
std::u16string_view TOrvParameter::MakeWideText()
{
    if (TextIsWide(ValueKind{kind_})) return Wide();
    std::u16string text;
    if (AppendText(text) && !Ulmo::SameText(text, Wide())) SetText(text);
    return Wide();
}

const char* TOrvParameter::MakeNarrowText()
{
    std::u16string text;
    // The text is made outside the lock, which other values share.
    const bool written = AppendText(text);
    std::string narrow = Ulmo::Utf8FromWide(text);
    const Ulmo::CriticalSectionGuard guard(Lock());
    Side& side = MakeSide();
    if (written && side.narrow != narrow) side.narrow = std::move(narrow);
    return side.narrow.c_str();
}

}  // namespace OrvPLC
