// Shared libraries that are loaded while the process runs.
#pragma once

#include <string>
#include <string_view>

namespace Platform {

using ModuleHandle = void*;

// The system's name for a library: HeskActions is HeskActions.dll on Windows and libHeskActions.so elsewhere.
std::u16string ModuleFileName(std::u16string_view library);

// Whether a file of that name, not a folder, lies beside the executable of the process. One query, nothing is
// opened.
bool StandsBesideExecutable(std::u16string_view fileName);

// Loads a library by its file name; null when that fails. On Windows the system's search path finds it, which begins
// in the folder of the executable. Elsewhere it is the file in that folder and no other.
ModuleHandle LoadModule(std::u16string_view fileName);
void* FindFunction(ModuleHandle module, const char* name);  // null if the library lacks it
void UnloadModule(ModuleHandle module);

}  // namespace Platform
