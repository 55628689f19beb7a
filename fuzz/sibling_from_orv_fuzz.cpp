// Converts arbitrary UTF-16, as technical text, to text of the sibling product, and that back.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "OrvActions/OrvText.h"
#include "objects/message.h"
#include "platform/living_count.h"
#include "platform/system_string.h"

using namespace OrvPLC;

namespace {

bool Convert(OrvBool (*conversion)(const OrvWChar*, OrvBStr*), const std::u16string& text, std::u16string& converted)
{
    OrvBStr answer = nullptr;
    if (!conversion(Boundary(text.c_str()), &answer)) {
        if (answer) std::abort();
        return false;
    }
    converted = Units(answer);
    Platform::FreeSystemString(reinterpret_cast<char16_t*>(answer));
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::u16string text(size / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
    const std::uint32_t before = Platform::LivingCount::Read();
    std::u16string hesk, back;
    if (Convert(Talvec_Action_ConvertOrvActionTextToHeskActionText, text, hesk)) {
        if (hesk.empty()) std::abort();
        Convert(Talvec_Action_ConvertHeskActionTextToOrvActionText, hesk, back);
    }
    if (Platform::LivingCount::Read() != before) std::abort();
    return 0;
}
