#include "OrvActions/OrvMatch.h"

#include "OrvActions/OrvEvents.h"
#include "events/event_restore.h"
#include "exports/export_twin.h"
#include "exports/frame.h"
#include "objects/match_action.h"
#include "ulmo/string_conversion.h"

using namespace OrvPLC;

namespace {

// Runs the work on a match action. An action that is none has no description to work on, which is no failure.
template <class Work>
OrvBool OnMatchAction(TOrvHandle handle, Work&& work, const char* function = ORV_CALLING_FUNCTION)
{
    const auto onMatch = [&](TOrvMessage& object) {
        if (object.Kind() == ORV_MESSAGE_MATCH_ACTION) work(static_cast<TOrvMatchAction&>(object));
    };
    return OnObject(handle, onMatch, function);
}

}  // namespace

ORV_EXPORT_MATCH_TWIN(OrvBool, Matches, (TOrvHandle matchAction, TOrvHandle action, OrvBool* matches),
                      (matchAction, action, matches))
{
    return OnObject(matchAction, [&](TOrvMessage& object) { *matches = object.Matches(OrvInterfaceOf(action)); });
}

ORV_EXPORT_MATCH_TWIN(OrvBool, CreateActionFromTemplate,
                      (TOrvHandle matchAction, TOrvHandle templateAction, TOrvHandle* action),
                      (matchAction, templateAction, action))
{
    return OnObject(matchAction, [&](TOrvMessage& object) {
        *action = reinterpret_cast<TOrvHandle>(object.CreateActionFromTemplate(OrvInterfaceOf(templateAction)));
    });
}

ORV_EXPORT_MATCH_TWIN(TOrvHandle, RestoreActionFromEventData, (const TOrvEventData* record), (record))
{
    return Framed<TOrvHandle>(nullptr, [&] {
        TOrvMatchAction* restored = RestoreMatchAction(*record);
        return restored ? HandleOf(restored) : nullptr;
    });
}

ORV_EXPORT_MATCH_TWIN(OrvBool, SetDescriptionW, (TOrvHandle matchAction, const OrvWChar* text), (matchAction, text))
{
    return OnMatchAction(matchAction,
                         [&](TOrvMatchAction& match) { match.Description().SetString(TerminatedView(text)); });
}

ORV_EXPORT_MATCH_TWIN(OrvBool, SetDescriptionA, (TOrvHandle matchAction, const char* text), (matchAction, text))
{
    return OnMatchAction(matchAction, [&](TOrvMatchAction& match) {
        match.Description().SetString(text ? Ulmo::WideFromAnsi(text) : std::u16string());
    });
}

ORV_EXPORT_MATCH_TWIN(OrvBool, GetDescriptionW, (TOrvHandle matchAction, const OrvWChar** text), (matchAction, text))
{
    return OnObject(matchAction, [&](TOrvMessage& object) {
        const TOrvParameter* description = static_cast<TOrvAction&>(object).DescriptionParameter();
        *text = Boundary(description ? description->Wide().data() : u"");
    });
}

ORV_EXPORT_MATCH_TWIN(OrvBool, GetDescriptionA, (TOrvHandle matchAction, const char** text), (matchAction, text))
{
    return OnObject(matchAction, [&](TOrvMessage& object) {
        const bool match = object.Kind() == ORV_MESSAGE_MATCH_ACTION;
        *text = match ? static_cast<TOrvMatchAction&>(object).NarrowDescription() : "";
    });
}

ORV_EXPORT_MATCH_TWIN(OrvBool, HasDescription, (TOrvHandle matchAction, OrvBool* has), (matchAction, has))
{
    return OnObject(matchAction, [&](TOrvMessage& object) {
        const TOrvParameter* description = static_cast<TOrvAction&>(object).DescriptionParameter();
        *has = description && !description->Wide().empty();
    });
}
