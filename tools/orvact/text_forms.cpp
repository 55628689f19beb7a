// Action text, and the forms that are only written.
#include <algorithm>

#include "console.h"
#include "fault.h"
#include "forms.h"
#include "text.h"

namespace {

// UTF-8 of a text of the library; false when it holds half a character, which UTF-8 cannot hold.
bool ToUtf8(std::u16string_view text, std::string& narrow)
{
    narrow = Utf8FromWide(text);
    bool clean = true;
    return WideFromUtf8(narrow, clean) == text;
}

std::string WhyFailed(const std::string& otherwise)
{
    TOrvLastErrorInfo error{};
    return OrvAct_GetLastError(&error) ? Visible(Utf8FromWide(error.messageW)) : otherwise;
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
}

// A system string that a function of the library stores.
template <class Store>
Encoded FromSystemString(Store store)
{
    OrvBStr text = nullptr;
    Encoded encoded;
    if (store(&text)) {
        encoded.record =
            Utf8FromWide(std::u16string_view(reinterpret_cast<const char16_t*>(text), SystemStringLength(text)));
    } else {
        encoded.problem = WhyFailed("cannot be written");
    }
    FreeSystemString(text);
    return encoded;
}

}  // namespace

Decoded ReadTechnical(const std::string& record)
{
    Decoded decoded;
    bool clean = true;
    const std::u16string text = WideFromUtf8(record, clean);
    std::uint32_t consumed = 0;
    decoded.action = Action(ReadText(text, consumed));
    const std::size_t behind = text.find_first_not_of(u" \t", consumed);
    if (!decoded.action) {
        decoded.problem = ReasonFor(text, consumed);
    } else if (behind != std::u16string::npos) {
        decoded.note = "left out what stands behind the action";
        consumed = static_cast<std::uint32_t>(behind);
    } else {
        if (!clean) decoded.note = "not UTF-8 everywhere; what is not became U+FFFD";
        return decoded;
    }
    decoded.column = ColumnOf(text, consumed);
    decoded.context = WithCaret(text, consumed);
    return decoded;
}

Encoded WriteTechnical(const Action& action)
{
    Encoded encoded;
    const std::u16string text = TextOf(action, false);
    if (text.empty()) {
        encoded.problem = WhyFailed("has no technical text");
    } else if (!ToUtf8(text, encoded.record)) {
        encoded.problem = "holds half a character, which no text in UTF-8 can; binary, raw and hex can";
    } else if (text.find(u'\n') != std::u16string::npos) {
        encoded.problem = "holds a line break, which no line can; binary, raw and hex can";
    }
    return encoded;
}

Encoded WritePlain(const Action& action)
{
    Encoded encoded;
    encoded.record = Visible(Utf8FromWide(TextOf(action, true)));
    if (encoded.record.empty()) encoded.problem = WhyFailed("has no plain text");
    return encoded;
}

Encoded WriteJson(const Action& action)
{
    constexpr std::uint32_t kNoLimit = 0xFFFFFFFF;
    std::uint32_t size = 0;
    OrvAct_StoreToJson(action.get(), nullptr, 0, &size, 1, &kNoLimit);
    if (size == 0) return {"", WhyFailed("has no JSON form")};
    std::u16string text(size, u'\0');
    OrvAct_StoreToJson(action.get(), reinterpret_cast<OrvWChar*>(text.data()), size, nullptr, 1, &kNoLimit);
    text.pop_back();
    Encoded encoded{Utf8FromWide(text), ""};
    // The library leaves these raw. They stand in strings only, so an escape means the same and keeps the line whole.
    const std::pair<const char*, const char*> raw[] = {
        {"\b", "\\b"}, {"\t", "\\t"}, {"\n", "\\n"}, {"\f", "\\f"}, {"\r", "\\r"}};
    for (const auto& [character, escape] : raw) ReplaceAll(encoded.record, character, escape);
    return encoded;
}

Encoded WriteProperties(const Action& action)
{
    return FromSystemString([&](OrvBStr* text) { return OrvAct_GetProperties(action.get(), text); });
}

Encoded WriteFlatXml(const Action& action)
{
    Encoded encoded = FromSystemString([&](OrvBStr* text) { return OrvAct_GetXML(action.get(), text); });
    // A reference cannot be mistaken: an ampersand of the value itself is "&amp;".
    ReplaceAll(encoded.record, "\r", "&#13;");
    ReplaceAll(encoded.record, "\n", "&#10;");
    return encoded;
}
