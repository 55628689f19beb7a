// Extensions of the catalogue: files plc*.xml beside the host program, read once while the library loads. Their format
// stands in docs/extensions.md.
//
// No failure reaches anyone: what cannot be read is told to the log, and everything else is loaded all the same.
#pragma once

#include <filesystem>

#include "catalogue/catalogue.h"

namespace OrvPLC {

// Reads all files beside the host program into the catalogue of the process, in the order in which the system tells
// them. To be called once, before anything else uses the catalogue.
void LoadXMLExtensions() noexcept;

// Reads one file. What stands in front of a fault stays registered.
void LoadXMLExtension(TOrvActionCatalogue& catalogue, const std::filesystem::path& path) noexcept;

}  // namespace OrvPLC
