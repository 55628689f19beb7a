// The exception of this library: code 1008 with a sub-code that says what went wrong.
#pragma once

#include <cstdint>
#include <string>

#include "ulmo/exceptions.h"

namespace OrvPLC {

inline constexpr std::uint32_t kLibraryErrorCode = 1008;

class OrvPLCException : public Ulmo::UlmoException {
public:
    OrvPLCException(std::u16string message, std::uint32_t subCode)
        : UlmoException(std::move(message), kLibraryErrorCode, subCode)
    {}
};

}  // namespace OrvPLC
