// Binary forms in tests: bytes put together by hand, and objects written and read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "forms/binary_reader.h"
#include "forms/binary_writer.h"

namespace OrvPLC {

class Bytes {
public:
    template <class Value>
    Bytes& Put(Value value)
    {
        return Append(&value, sizeof value);
    }
    Bytes& U32(std::uint32_t value) { return Put(value); }
    Bytes& Text(std::u16string_view text)
    {
        U32(static_cast<std::uint32_t>(text.size() + 1));
        return Append(text.data(), text.size() * sizeof(char16_t)).Put(char16_t{0});
    }
    Bytes& Number(std::u16string_view name, std::int32_t value)
    {
        return Text(name).U32(ORV_KIND_Numeric32Bit).U32(0).Put(value);
    }
    const std::vector<std::byte>& Get() const { return bytes_; }

private:
    Bytes& Append(const void* data, std::size_t size)
    {
        bytes_.resize(bytes_.size() + size);
        if (size > 0) std::memcpy(bytes_.data() + bytes_.size() - size, data, size);
        return *this;
    }

    std::vector<std::byte> bytes_;
};

inline std::vector<std::byte> BinaryForm(const TOrvMessage& message)
{
    TOrvBinaryCursor measure(nullptr, 0);
    message.WriteBinary(measure);
    std::vector<std::byte> form(static_cast<std::size_t>(measure.Required()));
    TOrvBinaryCursor cursor(form.data(), measure.Required());
    message.WriteBinary(cursor);
    return form;
}

struct BinaryReading {
    ObjectPtr<TOrvAction> object;
    std::uint32_t consumed;
};

// From a block of exactly this size, so that a sanitizer sees every step beyond it.
inline BinaryReading ReadBytes(const std::vector<std::byte>& bytes, std::uint32_t expectedKind = ORV_EXPECT_ANY)
{
    const std::vector<std::byte> exact(bytes);
    const BinaryReadResult read =
        ReadActionBinary(exact.data(), static_cast<std::uint32_t>(exact.size()), expectedKind);
    return {ObjectPtr<TOrvAction>(read.object), read.consumed};
}

}  // namespace OrvPLC
