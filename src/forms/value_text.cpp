// The bare text of a value, which reading as a string, retyping to String and the property forms use.
#include "forms/text_pieces.h"
#include "objects/parameter.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

// The kinds whose text is the wide value as it stands.
bool TextIsWide(std::uint32_t kind)
{
    return kind == ORV_KIND_String || (kind >= ORV_KIND_EventType && kind <= ORV_KIND_Resource) ||
           kind == ORV_KIND_ResultDataSet;
}

}  // namespace

bool TOrvParameter::AppendText(std::u16string& output) const
{
    switch (kind_) {
    case ORV_KIND_Boolean:
    case ORV_KIND_Numeric32Bit: Ulmo::AppendDecimal(output, small_); return true;
    case ORV_KIND_Numeric64Bit: Ulmo::AppendDecimal(output, numbers_.large); return true;
    case ORV_KIND_NumericDouble: Ulmo::AppendDouble(output, numbers_.real); return true;
    case ORV_KIND_String:
    case ORV_KIND_EventType:
    case ORV_KIND_MediaChannel:
    case ORV_KIND_Resource:
    case ORV_KIND_ResultDataSet: output += Wide(); return true;
    case ORV_KIND_DateTime: AppendDateTime(output, DateTime()); return true;
    case ORV_KIND_Guid: AppendGuid(output, guid_); return true;
    case ORV_KIND_Rect: AppendRect(output, numbers_.large, u"{", u"}"); return true;
    default: return false;
    }
}

// Callers keep pointers into these texts: while the value is the same, its text is not made anew.
std::u16string_view TOrvParameter::MakeWideText()
{
    if (TextIsWide(kind_)) return Wide();
    std::u16string text;
    if (AppendText(text) && !Ulmo::SameText(text, Wide())) SetText(text);
    return Wide();
}

const char* TOrvParameter::MakeNarrowText()
{
    std::u16string text;
    const bool written = AppendText(text);
    std::string narrow = Ulmo::Utf8FromWide(text);
    const Ulmo::CriticalSectionGuard guard(Lock());
    Side& side = MakeSide();
    if (written && side.narrow != narrow) side.narrow = std::move(narrow);
    return side.narrow.c_str();
}

}  // namespace OrvPLC
