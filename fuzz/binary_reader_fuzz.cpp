// Reads arbitrary bytes as a binary form and writes back what came out, in all forms.
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <vector>

#include "forms/binary_reader.h"
#include "forms/binary_writer.h"
#include "forms/json_writer.h"
#include "forms/properties.h"
#include "platform/living_count.h"

using namespace OrvPLC;

namespace {

std::vector<std::byte> BinaryForm(const TOrvAction& action)
{
    TOrvBinaryCursor measure(nullptr, 0);
    action.WriteBinary(measure);
    std::vector<std::byte> form(static_cast<std::size_t>(measure.Required()));
    TOrvBinaryCursor cursor(form.data(), measure.Required());
    action.WriteBinary(cursor);
    if (!cursor.Fits() || cursor.Required() != measure.Required()) std::abort();
    return form;
}

void WriteOtherForms(const TOrvAction& action)
{
    try {
        TOrvJsonWriter writer(true);
        action.WriteJson(writer, nullptr);
        writer.Finish();
        FlatXml(action);
        PropertiesText(action);
    } catch (const std::exception&) {
        // An impossible date is a failure, which is an answer.
    }
}

void ReadAndWrite(const std::uint8_t* data, std::size_t size, std::uint32_t expectedKind)
{
    const BinaryReadResult read = ReadActionBinary(data, static_cast<std::uint32_t>(size), expectedKind);
    const ObjectPtr<TOrvAction> object(read.object);
    if (read.consumed > size + 1 && read.consumed != 0xFFFFFFFF) std::abort();
    if (!object) return;
    // What was written reads to the last byte and is written the same.
    const std::vector<std::byte> written = BinaryForm(*object);
    const BinaryReadResult second =
        ReadActionBinary(written.data(), static_cast<std::uint32_t>(written.size()), ORV_EXPECT_ANY);
    const ObjectPtr<TOrvAction> again(second.object);
    if (!again || second.consumed != written.size() || BinaryForm(*again) != written) std::abort();
    WriteOtherForms(*object);
}

}  // namespace

// The first byte selects the expected kind and whether the buffer begins at an odd address; the rest is the buffer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const std::uint32_t before = Platform::LivingCount::Read();
    const std::size_t shift = (data[0] & 8u) != 0 ? 1 : 2;
    std::vector<std::uint8_t> buffer(shift);
    buffer.insert(buffer.end(), data + 1, data + size);
    ReadAndWrite(buffer.data() + shift, size - 1, data[0] & 7u);
    if (Platform::LivingCount::Read() != before) std::abort();
    return 0;
}
