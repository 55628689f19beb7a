// Reads arbitrary UTF-16 as action text and writes back what came out, in both forms.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "forms/plain_text_writer.h"
#include "forms/technical_text_writer.h"
#include "forms/text_reader.h"
#include "platform/living_count.h"

using namespace OrvPLC;

namespace {

void ReadAndWrite(std::u16string_view text, std::uint32_t expectedKind, bool narrow)
{
    const TextReadResult read = ReadActionText(text, expectedKind, narrow);
    const ObjectPtr<TOrvAction> object(read.object);
    if (read.consumed > text.size()) std::abort();
    if (!object) return;
    const std::u16string written = TechnicalText(*object);
    PlainText(*object);
    // Nothing is escaped, so what was written need not read the same; but it reads or fails like any other text.
    const ObjectPtr<TOrvAction> again(ReadActionText(written, ORV_EXPECT_ANY, false).object);
}

}  // namespace

// The first byte selects the expected kind and whether the text was narrow; the rest is the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    std::u16string text((size - 1) / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), data + 1, text.size() * sizeof(char16_t));
    const std::uint32_t before = Platform::LivingCount::Read();
    try {
        ReadAndWrite(text, data[0] & 7u, (data[0] & 8u) != 0);
    } catch (const std::exception&) {
        // A failure is an answer.
    }
    if (Platform::LivingCount::Read() != before) std::abort();
    return 0;
}
