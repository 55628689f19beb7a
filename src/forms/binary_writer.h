// The binary form: how an action travels between processes and rides inside an event record. Flat, little-endian,
// without padding; every field is named and typed in the buffer, so that it survives a change of the catalogue.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "objects/action.h"

namespace OrvPLC {

static_assert(std::endian::native == std::endian::little);

// Writes into the caller's memory and counts on when that is full, so the same walk measures and writes. Allocates
// nothing.
class TOrvBinaryCursor {
public:
    // `room` in bytes; with 0 or less the buffer is not touched and may be null.
    TOrvBinaryCursor(void* buffer, std::int64_t room) : given_(room), output_{static_cast<std::byte*>(buffer), room} {}

    void Write(const TOrvAction& action);

    bool Fits() const { return output_.room >= 0; }
    std::int64_t Required() const { return given_ - output_.room; }  // bytes, whether there was room for them or not

    // Where the next field goes, and the bytes left there: 64 bits, so that no content can wrap it. Passed by value
    // through the writing, because it then stays in registers.
    struct Output {
        std::byte* position;
        std::int64_t room;
    };

private:
    std::int64_t given_;
    Output output_;
};

}  // namespace OrvPLC
