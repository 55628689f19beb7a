#include "OrvActions/OrvBinary.h"

#include "exports/export_twin.h"
#include "exports/frame.h"
#include "forms/binary_reader.h"
#include "forms/binary_writer.h"

using namespace OrvPLC;

ORV_EXPORT_TWIN(OrvBool, StoreToBinBuffer,
                (TOrvHandle handle, void* buffer, std::uint32_t size, std::uint32_t* required),
                (handle, buffer, size, required))
{
    try {
        // A size that a signed number does not hold is no room at all.
        TOrvBinaryCursor cursor(buffer, buffer ? static_cast<std::int32_t>(size) : 0);
        ObjectOf(handle).WriteBinary(cursor);
        if (required) *required = static_cast<std::uint32_t>(cursor.Required());
        if (!cursor.Fits()) {
            LastError::StoreBufferTooSmall();
            return 0;
        }
        LastError::Clear();
        return 1;
    } catch (...) {
        StoreCurrentException();
        return 0;
    }
}

ORV_EXPORT_TWIN(TOrvHandle, CreateFromBinBuffer,
                (const void* data, std::uint32_t size, std::uint32_t expectedKind, std::uint32_t* consumed),
                (data, size, expectedKind, consumed))
{
    return Framed<TOrvHandle>(nullptr, [&] {
        const BinaryReadResult read = ReadActionBinary(data, size, expectedKind);
        if (consumed) *consumed = read.consumed;
        return read.object ? HandleOf(read.object) : nullptr;
    });
}
