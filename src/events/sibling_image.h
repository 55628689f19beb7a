// The way to the images that the sibling product wrote into event records: whoever has its library registers here.
#pragma once

#include <string>

#include "OrvActions/OrvEvents.h"

namespace OrvPLC {

// The codes of this library's actions begin here; a record with a lower one is the sibling's.
inline constexpr std::uint32_t kFirstOwnEventCode = 1001;

class SiblingImageConverter {
public:
    // The action of the record's code and image as text in our own grammar. False, with an untouched output, when the
    // sibling's library is not there or does not understand the image. Does not raise.
    virtual bool Convert(const TOrvEventData& record, std::u16string& text) = 0;

protected:
    ~SiblingImageConverter() = default;
};

// The process-wide converter; before one is set, one that answers false.
SiblingImageConverter& SiblingImage();

// The converter stays the caller's and outlives all restores; null goes back to the first one. For the start and the
// end of the library and for tests.
void SetSiblingImage(SiblingImageConverter* converter);

}  // namespace OrvPLC
