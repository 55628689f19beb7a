#include "platform/module.h"

#include "platform/host_files.h"
#include "platform/windows/windows_api.h"

namespace Platform {

namespace {

HMODULE AsModule(ModuleHandle module)
{
    return static_cast<HMODULE>(module);
}

}  // namespace

std::u16string ModuleFileName(std::u16string_view library)
{
    return std::u16string(library).append(u".dll");
}

bool StandsBesideExecutable(std::u16string_view fileName)
{
    std::filesystem::path path;
    if (!GetHostFolder(path)) return false;
    path /= fileName;
    WIN32_FILE_ATTRIBUTE_DATA data;
    return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) &&
           !(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
}

ModuleHandle LoadModule(std::u16string_view fileName)
{
    return LoadLibraryExW(AsWide(std::u16string(fileName).c_str()), nullptr, 0);
}

void* FindFunction(ModuleHandle module, const char* name)
{
    // A function's address fits a data pointer on this system.
    return reinterpret_cast<void*>(GetProcAddress(AsModule(module), name));
}

void UnloadModule(ModuleHandle module)
{
    FreeLibrary(AsModule(module));
}

}  // namespace Platform
