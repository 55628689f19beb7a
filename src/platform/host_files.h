// The folder of the program that has loaded the library, and the files in it.
//
// False means that the system refused: the reason is in LastError().
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace Platform {

// The folder of the program's own file, not that of the library. A path of 1024 characters or more is refused.
bool GetHostFolder(std::filesystem::path& folder);

// Appends the files of a folder whose names begin and end with ASCII words in any case, in the order in which the
// system lists them. Only ordinary files: no folders, on Windows no system and offline files, elsewhere no pipes and
// devices, which a reader would wait for.
bool FindFiles(const std::filesystem::path& folder, std::string_view begin, std::string_view end,
               std::vector<std::filesystem::path>& found);

}  // namespace Platform
