// Lookups by name, code and position, and the switches of the process. They have no exception frame and leave the last
// error alone, since nothing found is no fault; only the priority level has the frame of the other functions.
#include <array>
#include <string>
#include <string_view>

#include "OrvActions/OrvCatalogue.h"
#include "catalogue/catalogue.h"
#include "catalogue/settings.h"
#include "exports/export_twin.h"
#include "exports/frame.h"
#include "ulmo/string_conversion.h"

using namespace OrvPLC;

namespace {

std::uint32_t ActionCode(std::u16string_view name)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByName(name);
    return entry ? entry->Code : 0;
}

std::uint32_t ClassCode(std::u16string_view name)
{
    const TOrvActionClassInternalInfo* entry = Catalogue().FindActionClassByName(name);
    return entry ? entry->Code : 0;
}

// A name that cannot be looked up for want of memory, or that the system refuses to convert, is an unknown name.
template <class Lookup>
std::uint32_t Code(Lookup lookup, const OrvWChar* name) noexcept
try {
    return lookup(TerminatedView(name));
} catch (...) {
    return 0;
}

// Widens ASCII, which is the same in every ANSI code page, without a system call and on the stack.
template <class Lookup>
std::uint32_t Code(Lookup lookup, const char* name) noexcept
try {
    const std::string_view narrow = name ? name : "";
    std::array<char16_t, 64> wide;
    std::size_t length = 0;
    while (length < narrow.size() && length < wide.size() && static_cast<unsigned char>(narrow[length]) < 0x80) {
        wide[length] = static_cast<char16_t>(narrow[length]);
        ++length;
    }
    if (length == narrow.size()) return lookup(std::u16string_view(wide.data(), length));
    return lookup(Ulmo::WideFromAnsi(narrow));
} catch (...) {
    return 0;
}

}  // namespace

ORV_EXPORT_TWIN(std::uint32_t, GetActionCodeByNameW, (const OrvWChar* name), (name))
{
    return Code(ActionCode, name);
}

ORV_EXPORT_TWIN(std::uint32_t, GetActionCodeByNameA, (const char* name), (name))
{
    return Code(ActionCode, name);
}

ORV_EXPORT_TWIN(std::uint32_t, GetActionClassByNameW, (const OrvWChar* name), (name))
{
    return Code(ClassCode, name);
}

ORV_EXPORT_TWIN(std::uint32_t, GetActionClassByNameA, (const char* name), (name))
{
    return Code(ClassCode, name);
}

ORV_EXPORT_TWIN(std::uint32_t, GetActionCodeByIndex, (std::uint32_t index), (index))
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByIndex(index);
    return entry ? entry->Code : 0;
}

ORV_EXPORT_TWIN(std::uint32_t, GetInternalIndexByCode, (std::uint32_t code), (code))
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByCode(code);
    return entry ? entry->InternalIndex : 0;
}

ORV_EXPORT_TWIN(OrvBool, SetNativeTranslation, (OrvBool native), (native))
{
    Settings::NativeTranslation = native != 0;
    return true;
}

ORV_EXPORT_TWIN(OrvBool, GetNativeTranslation, (OrvBool * native), (native))
{
    *native = Settings::NativeTranslation;
    return true;
}

OrvBool Talvec_Action_SetPriorityLevel(std::uint32_t level)
{
    return Framed<OrvBool>(0, [&] {
        Settings::PriorityLevel = level;
        return OrvBool{1};
    });
}

OrvBool Talvec_Action_GetPriorityLevel(std::uint32_t* level)
{
    return Framed<OrvBool>(0, [&] {
        *level = Settings::PriorityLevel;
        return OrvBool{1};
    });
}
