#include "platform/module.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <filesystem>

#include "platform/host_files.h"
#include "platform/text.h"

namespace Platform {

namespace {

// Empty if the executable is not known or its path is too long.
std::string PathBesideExecutable(std::u16string_view fileName)
{
    std::filesystem::path folder;
    std::string name;
    if (!GetHostFolder(folder) || !ToNarrow(CodePage::Utf8, fileName, name)) return {};
    return folder.native() + name;  // the folder ends in a slash
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
    // By its whole path, so that no search path of the environment can put another library in its place.
    return path.empty() ? nullptr : dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* FindFunction(ModuleHandle module, const char* name)
{
    return dlsym(module, name);
}

void UnloadModule(ModuleHandle module)
{
    dlclose(module);
}

}  // namespace Platform
