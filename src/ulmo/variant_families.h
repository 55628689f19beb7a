// What the operations of several kinds have in common; a kind's own struct adds ToString and FromString. Included by
// the files that define the tables, and by nobody else.
#pragma once

#include <algorithm>
#include <cstring>
#include <new>
#include <type_traits>

#include "platform/system_error.h"
#include "ulmo/exceptions.h"
#include "ulmo/variant_operations.h"

namespace Ulmo::VariantFamilies {

template <class T>
T& At(void* value)
{
    return *std::launder(static_cast<T*>(value));
}

template <class T>
const T& At(const void* value)
{
    return *std::launder(static_cast<const T*>(value));
}

// Whatever fails while a value is made a text, the caller sees this one exception.
template <auto ToText>
std::string Guarded(const void* value)
{
    try {
        return ToText(value);
    } catch (...) {
        throw VariantExceptions::VariantStringConversionException();
    }
}

// As much of the bytes as there is room for; the rest of the room is zeroed.
inline void StoreBytes(void* destination, std::size_t room, const void* bytes, std::size_t count)
{
    const std::size_t stored = std::min(room, bytes ? count : 0);
    if (stored != 0) std::memcpy(destination, bytes, stored);
    if (stored != room) std::memset(static_cast<std::byte*>(destination) + stored, 0, room - stored);
}

inline void WriteCount(IByteStream& stream, std::size_t count)
{
    const auto written = static_cast<std::uint32_t>(count);
    if (written != count) ThrowSystemError(Platform::kInvalidParameter, u"Ulmo::Variant::WriteToStream");
    stream.Write(&written, sizeof written);
}

inline std::size_t ReadCount(IByteStream& stream)
{
    std::uint32_t count = 0;
    ReadExactly(stream, &count, sizeof count);
    return count;
}

// A value that is its bytes.
template <class T>
struct PlainValue {
    static_assert(std::is_trivially_copyable_v<T>);
    using Value = T;
    static constexpr int kFixedSize = sizeof(T);

    static void Destroy(void*) noexcept {}
    static std::size_t GetSize(const void*) { return sizeof(T); }
    static void StoreToBuffer(void* destination, const void* value, std::size_t size)
    {
        StoreBytes(destination, size, value, sizeof(T));
    }
    static void LoadFromBuffer(void* value, const void* source, std::size_t size)
    {
        unsigned char bytes[sizeof(T)];
        std::memcpy(bytes, value, sizeof bytes);
        if (size != 0) std::memcpy(bytes, source, std::min(size, sizeof bytes));
        SetBytes(value, bytes);
    }
    static void ReadFromStream(IByteStream& stream, void* value)
    {
        unsigned char bytes[sizeof(T)];
        ReadExactly(stream, bytes, sizeof bytes);
        SetBytes(value, bytes);
    }
    static void WriteToStream(IByteStream& stream, const void* value) { stream.Write(value, sizeof(T)); }
    static void CopyConstruct(void* destination, const void* source) { new (destination) T(At<T>(source)); }

private:
    // A byte from outside that is neither 0 nor 1 is a true bool, but must not become its representation.
    static void SetBytes(void* value, const unsigned char* bytes)
    {
        if constexpr (std::is_same_v<T, bool>) {
            At<bool>(value) = *bytes != 0;
        } else {
            std::memcpy(value, bytes, sizeof(T));
        }
    }
};

// A text of either width with a terminating zero unit behind it.
template <class T>
struct TextValue {
    using Value = T;
    static constexpr int kFixedSize = -1;
    static constexpr std::size_t kUnit = sizeof(typename T::value_type);

    static void Destroy(void* value) noexcept
    {
        At<T>(value).~T();
        new (value) T;
    }
    static std::size_t GetSize(const void* value) { return (At<T>(value).size() + 1) * kUnit; }
    static void StoreToBuffer(void* destination, const void* value, std::size_t size)
    {
        const std::size_t room = UnitsBefore(size) * kUnit;
        StoreBytes(destination, room, At<T>(value).data(), At<T>(value).size() * kUnit);
        if (size != room) std::memset(static_cast<std::byte*>(destination) + room, 0, size - room);
    }
    // The size counts the terminating unit.
    static void LoadFromBuffer(void* value, const void* source, std::size_t size)
    {
        T text;
        text.resize(UnitsBefore(size));
        if (!text.empty()) std::memcpy(text.data(), source, text.size() * kUnit);
        At<T>(value) = std::move(text);
    }
    // Deliberately not the inverse of WriteToStream: the reader takes the count to include the terminating unit, which
    // the writer leaves out. So a text comes back without its last character, and its zero stays in the stream.
    static void ReadFromStream(IByteStream& stream, void* value)
    {
        const std::string bytes = ReadBytes(stream, ReadCount(stream));
        LoadFromBuffer(value, bytes.data(), bytes.size());
    }
    static void WriteToStream(IByteStream& stream, const void* value)
    {
        const T& text = At<T>(value);
        WriteCount(stream, text.size() * kUnit);
        stream.Write(text.c_str(), GetSize(value));
    }
    static void CopyConstruct(void* destination, const void* source) { new (destination) T(At<T>(source)); }

private:
    // The whole units before the terminating one.
    static std::size_t UnitsBefore(std::size_t size) { return size < kUnit ? 0 : size / kUnit - 1; }
};

// The table of a kind from the struct that holds its operations.
template <class Kind>
constexpr VariantOperations MakeTable()
{
    using T = typename Kind::Value;
    return {[]() -> const std::type_info& { return typeid(T); },
            &Kind::Destroy,
            []() { return kVariantKind<T>; },
            &Kind::ToString,
            &Kind::FromString,
            &Kind::GetSize,
            []() { return Kind::kFixedSize; },
            &Kind::StoreToBuffer,
            &Kind::LoadFromBuffer,
            &Kind::ReadFromStream,
            &Kind::WriteToStream,
            &Kind::CopyConstruct};
}

template <class Kind>
inline constexpr VariantOperations kTable = MakeTable<Kind>();

}  // namespace Ulmo::VariantFamilies

// Defines the table of a kind.
#define ORV_VARIANT_KIND(Kind)                                    \
    template <>                                                   \
    const VariantOperations& OperationsOf<typename Kind::Value>() \
    {                                                             \
        return VariantFamilies::kTable<Kind>;                     \
    }
