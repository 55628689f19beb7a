// Where the converter from the sibling product's texts, buffers and records to our own text is registered.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "OrvActions/OrvEvents.h"

namespace OrvPLC {

// Each gives action text in our own grammar, which may be empty, and is false when the sibling's library is not there
// or does not understand the input. None raises.
class SiblingConverter {
public:
    virtual bool ConvertText(std::u16string_view text, std::u16string& converted) = 0;
    virtual bool ConvertNarrowText(std::string_view utf8, std::u16string& converted) = 0;
    // A buffer in the sibling's binary form; `kind` is its first word, 1 or 2.
    virtual bool ConvertBinary(std::span<const std::byte> buffer, std::uint32_t kind, std::u16string& converted) = 0;
    // The image of an event record.
    virtual bool ConvertEvent(const TOrvEventData& record, std::u16string& converted) = 0;

protected:
    ~SiblingConverter() = default;
};

// The process-wide converter; before one is set, one that answers false.
SiblingConverter& Sibling();

// The converter stays the caller's and outlives all readings; null goes back to the first one. For the start and the
// end of the library and for tests. Returns the one that was set before, or null.
SiblingConverter* SetSibling(SiblingConverter* converter);

}  // namespace OrvPLC
