// What a Variant does with its value: one constant table of operations for each kind.
//
// The operations get the address of the value. FromString, LoadFromBuffer and ReadFromStream need a living value there,
// which stays as it was when they raise; after Destroy it is one that owns nothing, so destroying it again is harmless.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <typeinfo>

#include "OrvActions/OrvTypes.h"
#include "ulmo/binary_data.h"
#include "ulmo/blob_ptr.h"
#include "ulmo/byte_stream.h"
#include "ulmo/variant_reference_pointer.h"

namespace Ulmo {

// A Windows file time: 100 ns since 1601-01-01 UTC.
struct TFileTime {
    std::uint64_t ticks;
};

// A long of the Windows compilers, which has 32 bits on every system.
struct TLong {
    std::int32_t value;
};

struct VariantOperations {
    const std::type_info& (*GetTypeInfo)();
    void (*Destroy)(void* value) noexcept;
    int (*GetKind)();
    // Raises VariantStringConversionException in place of whatever failed, but for texts and references.
    std::string (*ToString)(const void* value);
    void (*FromString)(void* value, std::string_view text);
    std::size_t (*GetSize)(const void* value);  // the bytes that StoreToBuffer writes
    int (*GetFixedSize)();                      // -1 when it depends on the value
    // Any size is allowed: a small one cuts the value, what a large one leaves is zeroed. Texts end in a zero.
    void (*StoreToBuffer)(void* destination, const void* value, std::size_t size);
    void (*LoadFromBuffer)(void* value, const void* source, std::size_t size);
    void (*ReadFromStream)(IByteStream& stream, void* value);
    void (*WriteToStream)(IByteStream& stream, const void* value);
    void (*CopyConstruct)(void* destination, const void* source);
};

// The code of the kind that a type belongs to.
template <class T>
inline constexpr int kVariantKind = -1;

template <class T>
concept VariantValue = (kVariantKind<T> != -1);

template <VariantValue T>
const VariantOperations& OperationsOf();

#define ORV_VARIANT_TYPE(Type, code)                \
    template <>                                     \
    inline constexpr int kVariantKind<Type> = code; \
    template <>                                     \
    const VariantOperations& OperationsOf<Type>();

// The 64-bit integers deliberately share 8, and 20 belongs to nobody.
ORV_VARIANT_TYPE(bool, 0)
ORV_VARIANT_TYPE(char, 1)
ORV_VARIANT_TYPE(unsigned char, 2)
ORV_VARIANT_TYPE(signed char, 3)
ORV_VARIANT_TYPE(short, 4)
ORV_VARIANT_TYPE(unsigned short, 5)
ORV_VARIANT_TYPE(unsigned int, 6)
ORV_VARIANT_TYPE(int, 7)
ORV_VARIANT_TYPE(std::int64_t, 8)
ORV_VARIANT_TYPE(std::uint64_t, 8)
ORV_VARIANT_TYPE(float, 9)
ORV_VARIANT_TYPE(double, 10)
ORV_VARIANT_TYPE(std::string, 11)  // UTF-8
ORV_VARIANT_TYPE(std::u16string, 12)
ORV_VARIANT_TYPE(BinaryData, 13)
ORV_VARIANT_TYPE(BlobPtr, 14)
ORV_VARIANT_TYPE(TFileTime, 15)
ORV_VARIANT_TYPE(TUlmoDateTime, 16)
ORV_VARIANT_TYPE(VariantReferencePointer, 17)
ORV_VARIANT_TYPE(TOrvGuid, 18)
ORV_VARIANT_TYPE(TLong, 19)

#undef ORV_VARIANT_TYPE

}  // namespace Ulmo
