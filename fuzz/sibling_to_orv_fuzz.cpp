// Reads arbitrary UTF-16 as text of the sibling product, and writes what came out in both grammars.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "bridge/action_text_parser.h"
#include "bridge/action_text_writer.h"
#include "forms/technical_text_writer.h"
#include "platform/living_count.h"

using namespace OrvPLC;

namespace {

void ReadAndWrite(std::u16string_view text)
{
    const ObjectPtr<TOrvAction> action = HeskPLC::ActionTextParser(text).Parse();
    if (!action) return;
    if (!action->Entry()) std::abort();  // every action of the table is the catalogue's
    TechnicalText(*action);
    const std::u16string written = HeskPLC::ActionTextWriter().Write(*action);
    // Numbers are written in forms that do not all read back, so the fields may differ and even fail.
    HeskPLC::ActionTextParser(written).Parse();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::u16string text(size / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
    const std::uint32_t before = Platform::LivingCount::Read();
    try {
        ReadAndWrite(text);
    } catch (const std::exception&) {
        // A failure is an answer.
    }
    if (Platform::LivingCount::Read() != before) std::abort();
    return 0;
}
