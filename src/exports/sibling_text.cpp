#include <string>

#include "OrvActions/OrvErrors.h"
#include "OrvActions/OrvText.h"
#include "bridge/action_text_parser.h"
#include "bridge/action_text_writer.h"
#include "exports/frame.h"
#include "forms/technical_text_writer.h"
#include "objects/action.h"
#include "objects/orv_plc_exception.h"
#include "platform/system_string.h"

using namespace OrvPLC;

namespace {

void HandOut(const std::u16string& text, OrvBStr* output)
{
    if (output) *output = reinterpret_cast<OrvBStr>(Platform::NewSystemString(text));
}

std::u16string OrvText(std::u16string_view heskText)
{
    const ObjectPtr<TOrvAction> action = HeskPLC::ActionTextParser(heskText).Parse();
    if (!action) throw OrvPLCException(u"Action doesn't exist in ORV", ORV_SUBERROR_NO_COUNTERPART);
    return TechnicalText(*action);
}

// A text that does not read, for whatever reason, and an action without a counterpart get the same answer.
std::u16string HeskText(const OrvWChar* orvText)
{
    const TOrvHandle handle =
        OrvAct_CreateFromTextBufferW(orvText, ORV_LENGTH_TERMINATED, ORV_MESSAGE_SIBLING_ACTION, 1, nullptr);
    const ObjectPtr<TOrvAction> action(handle ? &ActionOf(handle) : nullptr);
    if (!action || !HeskPLC::FindWritingConverter(TerminatedView(action->GetActionName()))) {
        throw OrvPLCException(u"Action doesn't exist in HESK", ORV_SUBERROR_NO_COUNTERPART);
    }
    return HeskPLC::ActionTextWriter().Write(*action);
}

}  // namespace

extern "C" OrvBool Talvec_Action_ConvertHeskActionTextToOrvActionText(const OrvWChar* text, OrvBStr* converted)
{
    return Framed<OrvBool>(0, [&] {
        HandOut(OrvText(TerminatedView(text)), converted);
        return OrvBool{1};
    });
}

extern "C" OrvBool Talvec_Action_ConvertOrvActionTextToHeskActionText(const OrvWChar* text, OrvBStr* converted)
{
    return Framed<OrvBool>(0, [&] {
        HandOut(HeskText(text), converted);
        return OrvBool{1};
    });
}
