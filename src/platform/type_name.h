// The readable name of a C++ type.
#pragma once

#include <string>
#include <typeinfo>

namespace Platform {

// For example "OrvPLC::OrvPLCException", the same on every system and compiler that we build with.
std::string TypeName(const std::type_info& type);

}  // namespace Platform
