// The module that holds this code, the program that loaded it and the thread that runs it.
#pragma once

#include <cstdint>
#include <string>

namespace Platform {

// The file name without folder and extension. Behind that of an executable stands "_exe", so that two modules of the
// same name stay distinct. Empty when the system does not tell it.
std::u16string OwnModuleName();

// The file name of the program that runs, without folder and extension.
std::u16string ProgramName();

std::uint32_t CurrentThreadId();  // as the system's tools show it

}  // namespace Platform
