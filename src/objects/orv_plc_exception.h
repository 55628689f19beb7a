// The exception of this library: the code ORV_ERROR with a sub-code that says what went wrong.
#pragma once

#include <cstdint>
#include <string>

#include "OrvActions/OrvErrors.h"
#include "ulmo/exceptions.h"

namespace OrvPLC {

class OrvPLCException : public Ulmo::UlmoException {
public:
    OrvPLCException(std::u16string message, std::uint32_t subCode)
        : UlmoException(std::move(message), ORV_ERROR, subCode)
    {}
};

}  // namespace OrvPLC
