// The readable name of a C++ type.
#pragma once

#include <string>
#include <typeinfo>

namespace Ulmo {

// For example "OrvPLC::OrvPLCException", the same on every system and compiler that we build with.
std::string TypeName(const std::type_info& type);

}  // namespace Ulmo
