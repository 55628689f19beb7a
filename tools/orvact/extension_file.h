// An extension file as bytes.
#pragma once

#include <string>

// Standard input for "-". Reports what cannot be read and gives false.
bool ReadExtensionFile(const std::string& path, std::string& bytes);
