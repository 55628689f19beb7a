#include "platform/system_string.h"

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>

#include "OrvActions/OrvSystemStrings.h"

#define ORV_EXPORTED __attribute__((visibility("default")))

namespace {

// The units stand after a word of eight bytes, so that they are aligned for any copy; the byte length is its second
// half, right before the units.
constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kLengthSize = sizeof(std::uint32_t);
constexpr std::size_t kMaximalBytes = std::numeric_limits<std::uint32_t>::max() - kHeaderSize - sizeof(OrvWChar);

unsigned char* HeaderOf(OrvBStr text)
{
    return reinterpret_cast<unsigned char*>(text) - kHeaderSize;
}

// A string with room for the bytes and a zero unit after them; null when there is no memory or the size is hostile.
OrvBStr Allocate(std::size_t bytes)
{
    if (bytes > kMaximalBytes) return nullptr;
    auto* block = static_cast<unsigned char*>(std::malloc(kHeaderSize + bytes + sizeof(OrvWChar)));
    if (!block) return nullptr;
    const auto length = static_cast<std::uint32_t>(bytes);
    std::memcpy(block + kHeaderSize - kLengthSize, &length, kLengthSize);
    std::memset(block + kHeaderSize + bytes, 0, sizeof(OrvWChar));
    return reinterpret_cast<OrvBStr>(block + kHeaderSize);
}

// Without a source the units stay as they are, for the caller to fill.
OrvBStr AllocateCopy(const void* source, std::size_t bytes)
{
    OrvBStr text = Allocate(bytes);
    if (text && source) std::memcpy(text, source, bytes);
    return text;
}

}  // namespace

extern "C" {

ORV_EXPORTED OrvBStr SysAllocString(const OrvWChar* text)
{
    return text ? AllocateCopy(text, std::char_traits<OrvWChar>::length(text) * sizeof(OrvWChar)) : nullptr;
}

ORV_EXPORTED OrvBStr SysAllocStringLen(const OrvWChar* text, uint32_t length)
{
    return AllocateCopy(text, std::size_t{length} * sizeof(OrvWChar));
}

ORV_EXPORTED OrvBStr SysAllocStringByteLen(const char* bytes, uint32_t size)
{
    return AllocateCopy(bytes, size);
}

ORV_EXPORTED uint32_t SysStringByteLen(OrvBStr text)
{
    if (!text) return 0;
    std::uint32_t length = 0;
    std::memcpy(&length, HeaderOf(text) + kHeaderSize - kLengthSize, kLengthSize);
    return length;
}

ORV_EXPORTED uint32_t SysStringLen(OrvBStr text)
{
    return SysStringByteLen(text) / static_cast<std::uint32_t>(sizeof(OrvWChar));
}

ORV_EXPORTED void SysFreeString(OrvBStr text)
{
    if (text) std::free(HeaderOf(text));
}

ORV_EXPORTED void* CoTaskMemAlloc(size_t size)
{
    return std::malloc(size);
}

ORV_EXPORTED void CoTaskMemFree(void* block)
{
    std::free(block);
}

}  // extern "C"

namespace Platform {

char16_t* NewSystemString(std::u16string_view text)
{
    if (text.size() > kMaximalBytes / sizeof(char16_t)) throw std::bad_alloc();
    char16_t* copy = AllocateCopy(text.data(), text.size() * sizeof(char16_t));
    if (!copy) throw std::bad_alloc();
    return copy;
}

void FreeSystemString(char16_t* text)
{
    SysFreeString(text);
}

std::size_t SystemStringLength(const char16_t* text)
{
    return SysStringLen(const_cast<char16_t*>(text));
}

void* AllocateTaskMemory(std::size_t size)
{
    return CoTaskMemAlloc(size);
}

void FreeTaskMemory(void* block)
{
    CoTaskMemFree(block);
}

}  // namespace Platform
