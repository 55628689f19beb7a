// Lookups by name, code and position, and the switches of the process. They have no exception frame and leave the last
// error alone, since nothing found is no fault; only the priority level has the frame of the other functions.
#include <array>
#include <string>
#include <string_view>

#include "OrvActions/OrvCatalogue.h"
#include "catalogue/catalogue.h"
#include "catalogue/settings.h"
#include "exports/export_alias.h"
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

std::uint32_t OrvAct_GetActionCodeByNameW(const OrvWChar* name)
{
    return Code(ActionCode, name);
}
ORV_ALIAS(Talvec_Action_GetActionCodeByNameW, OrvAct_GetActionCodeByNameW);

std::uint32_t OrvAct_GetActionCodeByNameA(const char* name)
{
    return Code(ActionCode, name);
}
ORV_ALIAS(Talvec_Action_GetActionCodeByNameA, OrvAct_GetActionCodeByNameA);

std::uint32_t OrvAct_GetActionClassByNameW(const OrvWChar* name)
{
    return Code(ClassCode, name);
}
ORV_ALIAS(Talvec_Action_GetActionClassByNameW, OrvAct_GetActionClassByNameW);

std::uint32_t OrvAct_GetActionClassByNameA(const char* name)
{
    return Code(ClassCode, name);
}
ORV_ALIAS(Talvec_Action_GetActionClassByNameA, OrvAct_GetActionClassByNameA);

std::uint32_t OrvAct_GetActionCodeByIndex(std::uint32_t index)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByIndex(index);
    return entry ? entry->Code : 0;
}
ORV_ALIAS(Talvec_Action_GetActionCodeByIndex, OrvAct_GetActionCodeByIndex);

std::uint32_t OrvAct_GetInternalIndexByCode(std::uint32_t code)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByCode(code);
    return entry ? entry->InternalIndex : 0;
}
ORV_ALIAS(Talvec_Action_GetInternalIndexByCode, OrvAct_GetInternalIndexByCode);

OrvBool OrvAct_SetNativeTranslation(OrvBool native)
{
    Settings::NativeTranslation = native != 0;
    return true;
}
ORV_ALIAS(Talvec_Action_SetNativeTranslation, OrvAct_SetNativeTranslation);

OrvBool OrvAct_GetNativeTranslation(OrvBool* native)
{
    *native = Settings::NativeTranslation;
    return true;
}
ORV_ALIAS(Talvec_Action_GetNativeTranslation, OrvAct_GetNativeTranslation);

OrvBool Talvec_Action_SetPriorityLevel(std::uint32_t level)
{
    return Succeeds([&] { Settings::PriorityLevel = level; });
}

OrvBool Talvec_Action_GetPriorityLevel(std::uint32_t* level)
{
    return Succeeds([&] { *level = Settings::PriorityLevel; });
}
