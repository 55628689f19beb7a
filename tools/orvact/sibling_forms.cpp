#include "sibling_forms.h"

#include <algorithm>

#include "console.h"
#include "forms.h"
#include "text.h"

namespace {

using Conversion = OrvBool (*)(const OrvWChar* text, OrvBStr* converted);

bool Convert(Conversion conversion, const std::u16string& text, std::u16string& converted)
{
    OrvBStr answer = nullptr;
    if (!conversion(Boundary(text.c_str()), &answer)) return false;
    converted.assign(reinterpret_cast<const char16_t*>(answer));
    FreeSystemString(answer);
    return true;
}

bool FromSibling(const std::u16string& text, std::u16string& converted)
{
    return Convert(Talvec_Action_ConvertHeskActionTextToOrvActionText, text, converted);
}

bool ToSibling(const std::u16string& text, std::u16string& converted)
{
    return Convert(Talvec_Action_ConvertOrvActionTextToHeskActionText, text, converted);
}

// What a failed conversion left, unless it is the plain answer that there is no counterpart.
std::string OtherFailure()
{
    TOrvLastErrorInfo info{};
    if (!OrvAct_GetLastError(&info) || info.code == ORV_ERROR) return {};
    return info.messageW ? Utf8FromWide(info.messageW) : info.message;
}

std::string WithoutLeadingSpace(const std::string& text)
{
    return text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

std::string WhyNotRead(const std::u16string& wide)
{
    const std::string failure = OtherFailure();
    if (!failure.empty()) return failure;
    const std::string text = WithoutLeadingSpace(Utf8FromWide(wide));
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
    if (action->GetMessageKind() == ORV_MESSAGE_MATCH_ACTION) return "a match action has no counterpart there";
    const std::string name = Utf8FromWide(action->GetActionName());
    bool clean = true;
    std::u16string converted;
    if (!ToSibling(WideFromUtf8(name + " ()", clean), converted)) return Visible(name) + " has no counterpart there";
    return "its technical text does not read back; a double quote in a string does that";
}

}  // namespace

Decoded ReadHesk(const std::string& record)
{
    Decoded decoded;
    bool clean = true;
    const std::u16string text = WideFromUtf8(record, clean);
    std::u16string converted;
    if (!FromSibling(text, converted)) {
        decoded.problem = WhyNotRead(text);
        return decoded;
    }
    std::uint32_t consumed = 0;
    decoded.action = Action(ReadText(converted, consumed));
    if (!decoded.action) {
        decoded.problem = "what it gives cannot be read: " + Visible(Utf8FromWide(converted));
    } else if (!clean) {
        decoded.note = "not UTF-8 everywhere; what is not became U+FFFD";
    }
    return decoded;
}

Encoded WriteHesk(const Action& action)
{
    std::u16string converted;
    if (ToSibling(TextOf(action, false), converted)) return {Utf8FromWide(converted), {}};
    return {{}, WhyNotWritten(action)};
}

std::string ActionFromSibling(const std::string& name)
{
    bool clean = true;
    std::u16string converted;
    if (!FromSibling(WideFromUtf8(name + " ()", clean), converted)) return {};
    return Utf8FromWide(std::u16string_view(converted).substr(0, converted.find(u' ')));
}
