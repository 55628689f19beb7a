#include "sibling_forms.h"

#include <algorithm>
#include <optional>

#include "forms.h"
#include "remarks.h"
#include "text.h"

namespace {

using Conversion = std::u16string (*)(const orv::TextArg& text);

// The text of the other side, or why there is none: "" means that there is no counterpart.
struct Converted {
    std::optional<std::u16string> text;
    std::string failure;

    Converted(Conversion conversion, const orv::TextArg& given)
    {
        try {
            text = conversion(given);
        } catch (const orv::Error& error) {
            // This code says that there is no counterpart, which is an answer and no failure.
            if (error.Code() != ORV_ERROR) failure = error.what();
        }
    }
};

std::string WithoutLeadingSpace(const std::string& text)
{
    return text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

// The library tells no reason, so the likely ones are tried one after the other.
std::string WhyNotRead(const Converted& converted, const std::string& record)
{
    if (!converted.failure.empty()) return converted.failure;
    const std::string text = WithoutLeadingSpace(record);
    if (text.find('(') == std::string::npos || text.front() == '(') return "no name with an opening bracket";
    if (text.find_first_of("@!?") == 0) return std::string("texts with the prefix ") + text[0] + " are not converted";
    const std::string name = text.substr(0, text.find_first_of(" \t("));
    if (ActionFromSibling(name).empty()) return "no action of ours is called " + Visible(name) + " there";
    return "some field cannot be read, or the closing bracket is missing";
}

std::string WhyNotWritten(const Converted& converted, const Action& action)
{
    if (!converted.failure.empty()) return converted.failure;
    if (action.IsMatchAction()) return "a match action has no counterpart there";
    const std::string name = orv::ToUtf8(action.Name());
    if (!Converted(orv::ToSiblingText, name + " ()").text) return Visible(name) + " has no counterpart there";
    return "its technical text does not read back; a double quote in a string does that";
}

}  // namespace

Decoded ReadHesk(const std::string& record)
{
    Decoded decoded;
    decoded.problem.code = "not-an-action";
    const Converted converted(orv::FromSiblingText, record);
    if (!converted.text) {
        decoded.problem.message = WhyNotRead(converted, record);
        return decoded;
    }
    std::size_t consumed = 0;
    std::string error;
    decoded.action = ReadText(*converted.text, consumed, error);
    if (!decoded.action) {
        decoded.problem.message = "what it gives cannot be read: " + Visible(orv::ToUtf8(*converted.text));
        return decoded;
    }
    if (!IsUtf8(record)) decoded.remarks.push_back({"encoding", kNotUtf8, {}, 0, 0, {}});
    AddRemarks(decoded.action, decoded.remarks);
    return decoded;
}

Encoded WriteHesk(const Action& action)
{
    const Encoded text = WriteText(action, false);
    if (!text.problem.empty()) return text;
    const Converted converted(orv::ToSiblingText, text.record);
    if (converted.text) return {orv::ToUtf8(*converted.text), {}};
    return {{}, WhyNotWritten(converted, action)};
}

std::string ActionFromSibling(const std::string& name)
{
    const Converted converted(orv::FromSiblingText, name + " ()");
    return converted.text ? orv::ToUtf8(converted.text->substr(0, converted.text->find(u' '))) : std::string();
}
