// The module that holds this code, the program that loaded it and the thread that runs it.
#pragma once

#include <cstdint>
#include <string>

namespace Platform {

// The file name without folder and extension. That of an executable is followed by "_exe", so that two modules of the
// same name stay distinct. Empty if the system does not know it.
std::u16string OwnModuleName();

// The file name of the program that runs, without folder and extension.
std::u16string ProgramName();

std::uint32_t CurrentThreadId();  // as the system's tools show it

}  // namespace Platform
