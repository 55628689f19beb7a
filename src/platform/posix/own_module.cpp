#include "platform/own_module.h"

#include <dlfcn.h>
#include <unistd.h>
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/text.h"

namespace Platform {

namespace {

constexpr const char* kProgram = "/proc/self/exe";

// A library may have version numbers after its extension.
std::u16string BaseName(const std::filesystem::path& path, std::string_view extension)
{
    std::string name = path.filename().native();
    name.resize(std::min(name.size(), name.find(extension)));
    std::u16string wide;
    return ToWide(CodePage::Utf8, name, wide) ? wide : std::u16string();
}

}  // namespace

std::u16string OwnModuleName()
{
    Dl_info module;
    if (!dladdr(reinterpret_cast<const void*>(&OwnModuleName), &module) || !module.dli_fname) return {};
    // The loader knows a program by the name that it was started by, which need not be a path. So the files are
    // compared; if that fails, the module counts as the program.
    std::error_code failure;
    const bool isProgram = std::filesystem::equivalent(module.dli_fname, kProgram, failure) || failure;
    return isProgram ? ProgramName() + u"_exe" : BaseName(module.dli_fname, ".so");
}

std::u16string ProgramName()
{
    std::error_code failure;
    return BaseName(std::filesystem::read_symlink(kProgram, failure), ".");
}

std::uint32_t CurrentThreadId()
{
    return static_cast<std::uint32_t>(gettid());
}

}  // namespace Platform
