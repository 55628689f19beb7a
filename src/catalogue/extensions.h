// Extensions of the catalogue: files plc*.xml beside the host program, read once while the library loads. Their format
// stands in docs/extensions.md.
//
// No failure reaches the host: a file that cannot be read is reported in the log, and all others are loaded.
#pragma once

#include <filesystem>

#include "catalogue/catalogue.h"

namespace OrvPLC {

// Reads all files beside the host program into the catalogue of the process, in the order in which the system lists
// them. To be called once, before anything else uses the catalogue.
void LoadXMLExtensions() noexcept;

// Reads one file. What comes before a fault stays registered.
void LoadXMLExtension(TOrvActionCatalogue& catalogue, const std::filesystem::path& path) noexcept;

}  // namespace OrvPLC
