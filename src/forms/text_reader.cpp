#include "forms/text_reader.h"

#include "forms/sibling.h"
#include "forms/text_parser.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

// By what our own grammar made of it: the sibling's actions have the codes below ours, its fields mostly have no names,
// and an unknown name without parameters may be one of its actions.
bool LooksLikeSiblingText(TOrvAction& action)
{
    const std::uint32_t code = action.GetActionCode();
    if (code >= kFirstExtensionActionCode) return false;
    if (action.Name().empty()) return true;
    if (action.Parameters().Find(u"")) return true;  // a value without a name
    if (code > 0) return code < kFirstActionCode;
    return action.Parameters().Size() == 0;
}

// False if the sibling's library is not there or does not know the text.
bool AskSibling(std::u16string_view text, bool narrow, std::u16string& converted)
{
    if (!narrow) return Sibling().ConvertText(text, converted);
    // Units that are no text (a lone surrogate) become replacement characters on this way. Deliberate.
    return Sibling().ConvertNarrowText(Ulmo::Utf8FromWide(text), converted);
}

// The rewritten text is taken as it comes: it gets no second check.
TextReadResult ReadRewritten(std::u16string_view text, std::uint32_t expectedKind)
{
    if (text.empty()) return {nullptr, 0};
    ParsedText parsed = ParseActionText(text, expectedKind);
    if (!parsed.object) return {nullptr, 0};
    return {parsed.object.release(), parsed.consumed};
}

}  // namespace

TextReadResult ReadActionText(std::u16string_view text, std::uint32_t expectedKind, bool narrow)
{
    ParsedText parsed = ParseActionText(text, expectedKind);
    if (!parsed.object || !LooksLikeSiblingText(*parsed.object)) return {parsed.object.release(), parsed.consumed};
    parsed.object.reset();
    std::u16string rewritten;
    if (!AskSibling(text, narrow, rewritten)) return {nullptr, parsed.consumed};
    return ReadRewritten(rewritten, expectedKind);
}

}  // namespace OrvPLC
