// Text to object to binary form to object to text: both objects and both texts are equal.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

#include "forms/binary_reader.h"
#include "forms/binary_writer.h"
#include "forms/technical_text_writer.h"
#include "forms/text_reader.h"
#include "platform/living_count.h"

using namespace OrvPLC;

namespace {

ObjectPtr<TOrvAction> ReadText(std::u16string_view text)
{
    try {
        return ObjectPtr<TOrvAction>(ReadActionText(text, ORV_EXPECT_ANY, false).object);
    } catch (const std::exception&) {
        return {};
    }
}

ObjectPtr<TOrvAction> ThroughBinary(const TOrvAction& action)
{
    TOrvBinaryCursor measure(nullptr, 0);
    action.WriteBinary(measure);
    std::vector<std::byte> form(static_cast<std::size_t>(measure.Required()));
    TOrvBinaryCursor cursor(form.data(), measure.Required());
    action.WriteBinary(cursor);
    const BinaryReadResult read =
        ReadActionBinary(form.data(), static_cast<std::uint32_t>(form.size()), ORV_EXPECT_ANY);
    if (!cursor.Fits() || read.consumed != form.size()) std::abort();
    return ObjectPtr<TOrvAction>(read.object);
}

// The text of an object that has one, with the failures of impossible dates.
std::u16string TextOf(const TOrvAction& action)
{
    try {
        return TechnicalText(action);
    } catch (const std::exception& failure) {
        const std::string message = failure.what();
        return {message.begin(), message.end()};
    }
}

}  // namespace

// The bytes are the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::u16string text(size / sizeof(char16_t), u'\0');
    if (!text.empty()) std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
    const std::uint32_t before = Platform::LivingCount::Read();
    if (const ObjectPtr<TOrvAction> object = ReadText(text)) {
        const ObjectPtr<TOrvAction> again = ThroughBinary(*object);
        if (!again || again->Kind() != object->Kind() || !again->Equals(*object)) std::abort();
        if (TextOf(*again) != TextOf(*object)) std::abort();
    }
    if (Platform::LivingCount::Read() != before) std::abort();
    return 0;
}
