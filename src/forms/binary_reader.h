// Reads one action from its binary form.
//
// The catalogue changes nothing that is read: names, kinds and enums are taken from the buffer as they are. It only
// gives a declared parameter its slot. No length in the buffer is trusted, and nothing is allocated that the bytes
// present do not pay for.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "objects/action.h"

namespace OrvPLC {

// The reading state. The bytes begin at an even address and outlive the reader and its texts.
//
// A failure takes two steps. The first field that does not fit stores the bytes left as the error and sets the room to
// -1. If no bytes were left the error is still 0, which means no error, and only the next field sets it, to -1. So a
// buffer that ends exactly between two fields reads one more field, an empty one, before it fails. Deliberate: callers
// see the error as the number of bytes consumed.
class TOrvBinaryReader {
public:
    // A size that a signed number does not hold is no room at all.
    TOrvBinaryReader(const void* bytes, std::uint32_t size)
        : position_(static_cast<const std::byte*>(bytes)),
          size_(static_cast<std::int32_t>(size)),
          room_(static_cast<std::int32_t>(size))
    {}

    // False when there is too little; the output then stays as it was.
    template <class Value>
    bool ReadField(Value& value)
    {
        const std::byte* field = Take(sizeof value);
        if (field) std::memcpy(&value, field, sizeof value);
        return field != nullptr;
    }
    // The text refers to the buffer; one that the buffer cuts leaves it as it was. What stands in place of its terminator
    // is not looked at.
    void ReadText(std::u16string_view& text);

    bool Failed() const { return error_ != 0; }
    // The bytes read, or the error of a reader that failed.
    std::uint32_t Consumed() const;

    // Takes several fields as one, which are all there or none of which counts.
    class Ahead {
    public:
        explicit Ahead(TOrvBinaryReader& reader) : reader_(reader), position_(reader.position_), room_(reader.room_) {}

        const std::byte* TakeBytes(std::int64_t size)
        {
            if (room_ < size) return nullptr;
            const std::byte* field = position_;
            position_ += size;
            room_ -= size;
            return field;
        }
        template <class Value>
        bool Take(Value& value)
        {
            const std::byte* field = TakeBytes(sizeof value);
            if (field) std::memcpy(&value, field, sizeof value);
            return field != nullptr;
        }
        bool TakeText(std::u16string_view& text)
        {
            std::uint32_t count = 0;
            if (!Take(count)) return false;
            const std::byte* units = TakeBytes(std::int64_t{count} * static_cast<std::int64_t>(sizeof(char16_t)));
            text = {reinterpret_cast<const char16_t*>(units), count - (count != 0)};
            return units != nullptr;
        }
        void Commit()
        {
            reader_.position_ = position_;
            reader_.room_ = static_cast<std::int32_t>(room_);
        }

    private:
        TOrvBinaryReader& reader_;
        const std::byte* position_;
        std::int64_t room_;
    };

private:
    const std::byte* Take(std::int64_t size)
    {
        if (room_ < size) return Fail();
        const std::byte* field = position_;
        position_ += size;
        room_ -= static_cast<std::int32_t>(size);
        return field;
    }
    const std::byte* Fail();

    const std::byte* position_;
    std::int32_t size_;
    std::int32_t room_;
    std::int32_t error_ = 0;
};

struct BinaryReadResult {
    TOrvAction* object;      // with one reference that the caller owns, or null
    std::uint32_t consumed;  // bytes, or the error when the buffer ended too early
};

// A buffer that ends too early gives the object with the records that were whole. One of the sibling product goes
// through Sibling() and what comes back is read instead; `consumed` then counts its characters. Null bytes are an
// empty buffer. Raises std::bad_alloc, and what the text reader raises for a rewritten text.
BinaryReadResult ReadActionBinary(const void* bytes, std::uint32_t size, std::uint32_t expectedKind);

}  // namespace OrvPLC
