// The kinds that refer to bytes or objects elsewhere.
#include "ulmo/variant_families.h"

namespace Ulmo {

namespace {

using namespace VariantFamilies;

template <class T>
std::string TextOf(const void* value)
{
    return At<T>(value).ToText();
}

// What both kinds of bytes share; each brings how it is loaded and ended.
template <class T>
struct Bytes {
    using Value = T;
    static constexpr int kFixedSize = -1;

    static std::string ToString(const void* value) { return Guarded<TextOf<T>>(value); }
    static void FromString(void* value, std::string_view text) { At<T>(value).FromText(text); }
    static std::size_t GetSize(const void* value) { return At<T>(value).Size(); }
    static void StoreToBuffer(void* destination, const void* value, std::size_t size)
    {
        StoreBytes(destination, size, At<T>(value).Data(), At<T>(value).Size());
    }
    static void WriteToStream(IByteStream& stream, const void* value)
    {
        const std::size_t size = At<T>(value).Data() ? At<T>(value).Size() : 0;
        // A blob may have a size and no bytes.
        WriteCount(stream, size);
        if (size != 0) stream.Write(At<T>(value).Data(), size);
    }
    static void CopyConstruct(void* destination, const void* source) { new (destination) T(At<T>(source)); }
};

struct Binary : Bytes<BinaryData> {
    static void Destroy(void* value) noexcept { At<BinaryData>(value) = BinaryData(); }
    static void LoadFromBuffer(void* value, const void* source, std::size_t size)
    {
        At<BinaryData>(value).Assign(source, size);
    }
    static void ReadFromStream(IByteStream& stream, void* value)
    {
        const std::string bytes = ReadBytes(stream, ReadCount(stream));
        LoadFromBuffer(value, bytes.data(), bytes.size());
    }
};

struct Blob : Bytes<BlobPtr> {
    static void Destroy(void* value) noexcept { At<BlobPtr>(value).Release(); }
    // Points at the source; nothing is copied.
    static void LoadFromBuffer(void* value, const void* source, std::size_t size)
    {
        // A blob counts its bytes in 32 bits.
        const auto counted = static_cast<std::uint32_t>(size);
        if (counted != size) ThrowSystemError(Platform::kInvalidParameter, u"Ulmo::Variant::LoadFromBuffer");
        At<BlobPtr>(value) = BlobPtr(source, counted);
    }
    static void ReadFromStream(IByteStream& stream, void* value)
    {
        const std::string bytes = ReadBytes(stream, ReadCount(stream));
        BlobPtr blob = BlobPtr::Allocate(static_cast<std::uint32_t>(bytes.size()));
        StoreBytes(blob.Data(), bytes.size(), bytes.data(), bytes.size());
        At<BlobPtr>(value) = std::move(blob);
    }
};

// Buffers and streams hold the object's address, so they are good only within the process.
struct Reference {
    using Value = VariantReferencePointer;
    using Object = VirtualReferenceCountBaseClass;
    static constexpr int kFixedSize = sizeof(Object*);
    static_assert(sizeof(Value) == sizeof(Object*));

    static void Destroy(void* value) noexcept { At<Value>(value).Clear(); }
    static std::string ToString(const void* value) { return At<Value>(value).ToText(); }
    [[noreturn]] static void FromString(void*, std::string_view text)
    {
        throw VariantExceptions::VariantStringToValueConversionException(
            std::string("Tried to read VariantReferencePointer from string").append(text));
    }
    static std::size_t GetSize(const void*) { return sizeof(Object*); }
    static void StoreToBuffer(void* destination, const void* value, std::size_t size)
    {
        Object* const object = At<Value>(value).Get();
        StoreBytes(destination, size, &object, sizeof object);
    }
    static void LoadFromBuffer(void* value, const void* source, std::size_t size)
    {
        Object* object = nullptr;
        if (size < sizeof object) ThrowSystemError(Platform::kInvalidParameter, u"Ulmo::Variant::LoadFromBuffer");
        // The bytes may stand at any address.
        std::memcpy(&object, source, sizeof object);
        At<Value>(value).Assign(object);
    }
    // Unlike LoadFromBuffer this releases the old object first, unless it is the new one too: the release could end it.
    static void ReadFromStream(IByteStream& stream, void* value)
    {
        Object* object = nullptr;
        ReadExactly(stream, &object, sizeof object);
        if (object != At<Value>(value).Get()) At<Value>(value).Clear();
        At<Value>(value).Assign(object);
    }
    static void WriteToStream(IByteStream& stream, const void* value)
    {
        Object* const object = At<Value>(value).Get();
        stream.Write(&object, sizeof object);
    }
    static void CopyConstruct(void* destination, const void* source) { new (destination) Value(At<Value>(source)); }
};

}  // namespace

ORV_VARIANT_KIND(Binary)
ORV_VARIANT_KIND(Blob)
ORV_VARIANT_KIND(Reference)

}  // namespace Ulmo
