#include <new>
#include <string>

#include "OrvActions/OrvErrors.h"
#include "OrvActions/OrvText.h"
#include "bridge/action_text_parser.h"
#include "bridge/action_text_writer.h"
#include "exports/frame.h"
#include "forms/technical_text_writer.h"
#include "forms/text_reader.h"
#include "objects/action.h"
#include "objects/orv_plc_exception.h"

using namespace OrvPLC;

namespace {

void HandOut(const std::u16string& text, OrvBStr* output)
{
    // A caller that passes no output only asks whether the text converts.
    if (output) *output = NewBStr(text);
}

std::u16string OrvText(std::u16string_view heskText)
{
    const ObjectPtr<TOrvAction> action = HeskPLC::ActionTextParser(heskText).Parse();
    if (!action) throw OrvPLCException(u"Action doesn't exist in ORV", ORV_SUBERROR_NO_COUNTERPART);
    return TechnicalText(*action);
}

// Null for a text that does not read, whatever fails in it. That there is no memory says nothing about a text.
ObjectPtr<TOrvAction> ReadOrvText(std::u16string_view text)
try {
    return ObjectPtr<TOrvAction>(ReadActionText(text, ORV_MESSAGE_SIBLING_ACTION, false).object);
} catch (const std::bad_alloc&) {
    throw;
} catch (...) {
    return nullptr;
}

// A text that does not read and an action without a counterpart get the same answer.
std::u16string HeskText(std::u16string_view orvText)
{
    const ObjectPtr<TOrvAction> action = ReadOrvText(orvText);
    if (!action || !HeskPLC::FindWritingConverter(TerminatedView(action->GetActionName()))) {
        throw OrvPLCException(u"Action doesn't exist in HESK", ORV_SUBERROR_NO_COUNTERPART);
    }
    return HeskPLC::ActionTextWriter().Write(*action);
}

}  // namespace

OrvBool Talvec_Action_ConvertHeskActionTextToOrvActionText(const OrvWChar* text, OrvBStr* converted)
{
    return Succeeds([&] { HandOut(OrvText(TerminatedView(text)), converted); });
}

OrvBool Talvec_Action_ConvertOrvActionTextToHeskActionText(const OrvWChar* text, OrvBStr* converted)
{
    return Succeeds([&] { HandOut(HeskText(TerminatedView(text)), converted); });
}
