// The way to the sibling product's text and buffers: whoever knows how to rewrite them into our grammar registers here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace OrvPLC {

enum class SiblingAnswer {
    NotAvailable,  // the sibling's library is not there
    Refused,       // it does not understand the text
    Converted,     // the rewritten text, which may be empty
};

class SiblingTextConverter {
public:
    // Sets `converted` only with the answer Converted. Does not raise.
    virtual SiblingAnswer Convert(std::u16string_view text, std::u16string& converted) = 0;
    // The same for a buffer in the sibling's binary form; `kind` is its first word, 1 or 2.
    virtual SiblingAnswer ConvertBinary(std::span<const std::byte> buffer, std::uint32_t kind,
                                        std::u16string& converted)
    {
        static_cast<void>(buffer), static_cast<void>(kind), static_cast<void>(converted);
        return SiblingAnswer::NotAvailable;
    }

protected:
    ~SiblingTextConverter() = default;
};

// The process-wide converter; before one is set, one that answers NotAvailable.
SiblingTextConverter& SiblingText();

// The converter stays the caller's and outlives all readings; null goes back to the first one. For the start and the
// end of the library and for tests.
void SetSiblingText(SiblingTextConverter* converter);

}  // namespace OrvPLC
