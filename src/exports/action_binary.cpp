#include "OrvActions/OrvBinary.h"

#include "exports/export_alias.h"
#include "exports/frame.h"
#include "forms/binary_reader.h"
#include "forms/binary_writer.h"

using namespace OrvPLC;

namespace {

// What fits of the fields is written even when not all does.
OrvBool StoreInto(TOrvHandle handle, void* buffer, std::uint32_t size, std::uint32_t* required,
                  const char* function = ORV_CALLING_FUNCTION)
{
    return IntoBuffer([&] {
        // A size that a signed number does not hold is no room at all.
        TOrvBinaryCursor cursor(buffer, buffer ? static_cast<std::int32_t>(size) : 0);
        ObjectOf(handle, function).WriteBinary(cursor);
        if (required) *required = static_cast<std::uint32_t>(cursor.Required());
        return cursor.Fits();
    });
}

}  // namespace

OrvBool OrvAct_StoreToBinBuffer(TOrvHandle handle, void* buffer, std::uint32_t size, std::uint32_t* required)
{
    return StoreInto(handle, buffer, size, required);
}
ORV_ALIAS(Talvec_Action_StoreToBinBuffer, OrvAct_StoreToBinBuffer);

TOrvHandle OrvAct_CreateFromBinBuffer(const void* data, std::uint32_t size, std::uint32_t expectedKind,
                                      std::uint32_t* consumed)
{
    return NewHandle([&] {
        const BinaryReadResult read = ReadActionBinary(data, size, expectedKind);
        if (consumed) *consumed = read.consumed;
        return read.object;
    });
}
ORV_ALIAS(Talvec_Action_CreateFromBinBuffer, OrvAct_CreateFromBinBuffer);
