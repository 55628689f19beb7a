#include "platform/own_module.h"

#include "platform/windows/windows_api.h"

namespace Platform {

namespace {

std::u16string BaseName(HMODULE module)
{
    std::u16string name(1024, u'\0');
    name.resize(GetModuleFileNameW(module, AsWide(name.data()), static_cast<DWORD>(name.size())));
    name.erase(0, name.find_last_of(u"\\/") + 1);
    const std::size_t extension = name.rfind(u'.');
    if (extension != std::u16string::npos) name.resize(extension);
    return name;
}

}  // namespace

std::u16string OwnModuleName()
{
    MEMORY_BASIC_INFORMATION region{};
    if (!VirtualQuery(reinterpret_cast<const void*>(&OwnModuleName), &region, sizeof region)) return {};
    // A module's handle is the address that it is mapped at.
    const auto module = static_cast<HMODULE>(region.AllocationBase);
    const std::u16string name = BaseName(module);
    return module == GetModuleHandleW(nullptr) ? name + u"_exe" : name;
}

std::u16string ProgramName()
{
    return BaseName(nullptr);
}

std::uint32_t CurrentThreadId()
{
    return GetCurrentThreadId();
}

}  // namespace Platform
