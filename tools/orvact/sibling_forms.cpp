#include "sibling_forms.h"

#include <algorithm>

#include "forms.h"
#include "remarks.h"
#include "text.h"

namespace {

using Conversion = OrvBool (*)(const OrvWChar* text, OrvBStr* converted);

// The text of the other side; without one the last error tells why, if anything does.
bool Convert(Conversion conversion, const orv::TextArg& text, std::u16string& converted)
{
    try {
        converted = orv::detail::TakenText([&](OrvBStr* answer) { return conversion(text.c_str(), answer); });
        return true;
    } catch (const orv::Error&) {
        return false;
    }
}

bool FromSibling(const orv::TextArg& text, std::u16string& converted)
{
    return Convert(Talvec_Action_ConvertHeskActionTextToOrvActionText, text, converted);
}

bool ToSibling(const orv::TextArg& text, std::u16string& converted)
{
    return Convert(Talvec_Action_ConvertOrvActionTextToHeskActionText, text, converted);
}

// What a failed conversion left, unless it is the plain answer that there is no counterpart.
std::string OtherFailure()
{
    const orv::Error error = orv::Error::Last("");
    return error.Code() == ORV_ERROR ? std::string() : error.what();
}

std::string WithoutLeadingSpace(const std::string& text)
{
    return text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

std::string WhyNotRead(const std::u16string& wide)
{
    const std::string failure = OtherFailure();
    if (!failure.empty()) return failure;
    const std::string text = WithoutLeadingSpace(orv::ToUtf8(wide));
    if (text.find('(') == std::string::npos || text.front() == '(') return "no name with an opening bracket";
    if (text.find_first_of("@!?") == 0) return std::string("texts with the prefix ") + text[0] + " are not converted";
    const std::string name = text.substr(0, text.find_first_of(" \t("));
    if (ActionFromSibling(name).empty()) return "no action of ours is called " + Visible(name) + " there";
    return "some field cannot be read, or the closing bracket is missing";
}

std::string WhyNotWritten(const Action& action)
{
    const std::string failure = OtherFailure();
    if (!failure.empty()) return failure;
    if (action.IsMatchAction()) return "a match action has no counterpart there";
    const std::string name = orv::ToUtf8(action.Name());
    std::u16string converted;
    if (!ToSibling(name + " ()", converted)) return Visible(name) + " has no counterpart there";
    return "its technical text does not read back; a double quote in a string does that";
}

}  // namespace

Decoded ReadHesk(const std::string& record)
{
    Decoded decoded;
    std::u16string converted;
    decoded.problem.code = "not-an-action";
    if (!FromSibling(record, converted)) {
        decoded.problem.message = WhyNotRead(orv::ToUtf16(record));
        return decoded;
    }
    std::size_t consumed = 0;
    std::string error;
    decoded.action = ReadText(converted, consumed, error);
    if (!decoded.action) {
        decoded.problem.message = "what it gives cannot be read: " + Visible(orv::ToUtf8(converted));
        return decoded;
    }
    if (!IsUtf8(record)) {
        decoded.remarks.push_back({"encoding", "not valid in its encoding everywhere; what is not became U+FFFD", {}, 0,
                                   0, {}});
    }
    AddRemarks(decoded.action, decoded.remarks);
    return decoded;
}

Encoded WriteHesk(const Action& action)
{
    std::u16string converted;
    if (ToSibling(action.Text(), converted)) return {orv::ToUtf8(converted), {}};
    return {{}, WhyNotWritten(action)};
}

std::string ActionFromSibling(const std::string& name)
{
    std::u16string converted;
    if (!FromSibling(name + " ()", converted)) return {};
    return orv::ToUtf8(std::u16string_view(converted).substr(0, converted.find(u' ')));
}
