#include "platform/module.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/text.h"

namespace Platform {

namespace {

constexpr std::size_t kLongestPath = 1024;

// Empty when the executable cannot be told or its path is too long.
std::string PathBesideExecutable(std::u16string_view fileName)
{
    char path[kLongestPath];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    if (length <= 0 || static_cast<std::size_t>(length) == sizeof path) return {};
    const std::string_view executable(path, static_cast<std::size_t>(length));
    std::string name;
    if (!ToNarrow(CodePage::Utf8, fileName, name)) return {};
    return std::string(executable.substr(0, executable.rfind('/') + 1)) + name;
}

}  // namespace

std::u16string ModuleFileName(std::u16string_view library)
{
    return std::u16string(u"lib").append(library).append(u".so");
}

bool StandsBesideExecutable(std::u16string_view fileName)
{
    struct stat status;
    const std::string path = PathBesideExecutable(fileName);
    return !path.empty() && stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

ModuleHandle LoadModule(std::u16string_view fileName)
{
    const std::string path = PathBesideExecutable(fileName);
    return path.empty() ? nullptr : dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* FindFunction(ModuleHandle module, const char* name)
{
    return dlsym(module, name);
}

void FreeModule(ModuleHandle module)
{
    dlclose(module);
}

}  // namespace Platform
