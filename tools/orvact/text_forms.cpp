// Action text, and the forms that are only written.
#include "fault.h"
#include "forms.h"
#include "names.h"
#include "remarks.h"
#include "settings.h"
#include "text.h"

namespace {

// The remark about bytes that are not text, at the first such place.
void AddEncoding(const std::u16string& text, std::vector<Remark>& remarks)
{
    Remark& remark = remarks.emplace_back(Remark{"encoding", kNotUtf8, {}, 0, 0, {}});
    const std::size_t place = text.find(u'\uFFFD');
    if (place != std::u16string::npos) Locate(text, place, remark);
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
}

}  // namespace

Decoded ReadTechnical(const std::string& record)
{
    Decoded decoded;
    const std::u16string text = orv::ToUtf16(record);
    // Over the text as it came, so that places in remarks are the user's.
    TextWalk walk = WalkText(text);
    Numbered numbered{text, {{0, 0}}};
    if (settings.names && !NumberNames(text, walk, numbered, decoded.problem)) return decoded;
    std::size_t consumed = 0;
    std::string error;
    decoded.action = ReadText(numbered.text, consumed, error);
    if (!IsUtf8(record)) AddEncoding(text, decoded.remarks);
    if (decoded.action) {
        AddRemarks(decoded.action, text, walk, decoded.remarks);
        return decoded;
    }
    decoded.problem.code = "not-an-action";
    decoded.problem.message = error.empty() ? ReasonFor(numbered.text, consumed) : error;
    Locate(text, numbered.Original(consumed), decoded.problem);
    return decoded;
}

Encoded WriteText(const Action& action, bool plain)
{
    try {
        const std::u16string text = plain ? action.PlainText() : action.Text();
        Encoded encoded{orv::ToUtf8(text), {}};
        if (orv::ToUtf16(encoded.record) != text) {
            encoded.problem = "holds half a character, which no text in UTF-8 can; binary, raw and hex can";
        }
        return encoded;
    } catch (const orv::Error& failure) {
        return {{}, Visible(failure.what())};
    }
}

Encoded WriteTechnical(const Action& action)
{
    Encoded encoded = WriteText(action, false);
    if (settings.names && encoded.problem.empty()) {
        encoded.record = orv::ToUtf8(NameNumbers(orv::ToUtf16(encoded.record)));
    }
    return encoded;
}

Encoded WritePlain(const Action& action)
{
    Encoded encoded = WriteText(action, true);
    encoded.record = Visible(encoded.record);
    return {encoded.record, encoded.record.empty() ? encoded.problem : ""};
}

Encoded WriteProperties(const Action& action)
{
    try {
        return {orv::ToUtf8(action.Properties()), {}};
    } catch (const orv::Error& failure) {
        return {{}, Visible(failure.what())};
    }
}

Encoded WriteFlatXml(const Action& action)
{
    try {
        Encoded encoded{orv::ToUtf8(action.FlatXml()), {}};
        // A reference cannot be mistaken: an ampersand of the value itself is "&amp;".
        ReplaceAll(encoded.record, "\r", "&#13;");
        ReplaceAll(encoded.record, "\n", "&#10;");
        return encoded;
    } catch (const orv::Error& failure) {
        return {{}, Visible(failure.what())};
    }
}
