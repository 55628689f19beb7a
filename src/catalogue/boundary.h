// The boundary casts. The interface speaks OrvWChar and OrvBStr, the library char16_t; both have the same 16-bit units.
#pragma once

#include <string_view>

#include "OrvActions/OrvTypes.h"
#include "platform/system_string.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

inline const char16_t* Units(const OrvWChar* text)
{
    return reinterpret_cast<const char16_t*>(text);
}
inline const OrvWChar* Boundary(const char16_t* text)
{
    return reinterpret_cast<const OrvWChar*>(text);
}
inline std::u16string_view TerminatedView(const OrvWChar* text)  // null reads as ""
{
    return Ulmo::TerminatedView(Units(text));
}

// System strings. A new one belongs to whoever gets it; making it raises std::bad_alloc.
inline OrvBStr NewBStr(std::u16string_view text)
{
    return reinterpret_cast<OrvBStr>(Platform::NewSystemString(text));
}
inline void FreeBStr(OrvBStr text)  // null is allowed
{
    Platform::FreeSystemString(reinterpret_cast<char16_t*>(text));
}
inline std::u16string_view ViewOf(OrvBStr text)  // zero units inside belong to it; null reads as ""
{
    return {Units(text), Platform::SystemStringLength(Units(text))};
}

}  // namespace OrvPLC
