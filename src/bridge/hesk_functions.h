// The functions that the sibling product's library exports for us. The library is closed: this is all that we rely on.
#pragma once

#include <cstddef>
#include <cstdint>

namespace HeskPLC {

using HeskHandle = void*;

// What its event function takes. Whatever is not named here is not read.
struct HeskEventData {
    std::uint32_t size;  // 176
    std::uint32_t code;
    std::uint64_t unused1[2];
    std::uint64_t zero;
    std::uint64_t unused2[16];
    std::uint64_t imageSize;
    const void* image;
};
static_assert(offsetof(HeskEventData, code) == 4 && offsetof(HeskEventData, zero) == 24);
static_assert(offsetof(HeskEventData, imageSize) == 160 && offsetof(HeskEventData, image) == 168);
static_assert(sizeof(HeskEventData) == 176);

// Arguments without a name are always 0; they are passed as whole words, which fits whatever width they have there.
struct HeskFunctions {
    HeskHandle (*createFromBinBuffer)(const void* buffer, std::uint32_t size, std::uint32_t version, std::uintptr_t);
    // Not 0 for success. The length is that of the text written, or that needed.
    std::uint8_t (*storeToTextBuffer)(HeskHandle action, char16_t* buffer, std::uint32_t capacity, std::uintptr_t,
                                      std::uintptr_t, std::uint32_t* length);
    HeskHandle (*createFromTextBuffer)(const char16_t* text, std::uint32_t length, std::uint32_t version,
                                       std::uintptr_t, std::uintptr_t flag);
    void (*closeHandle)(HeskHandle action);
    HeskHandle (*restoreFromEventData)(const HeskEventData* record);
};

}  // namespace HeskPLC
