#include "OrvActions/OrvMatch.h"

#include "OrvActions/OrvEvents.h"
#include "events/event_restore.h"
#include "exports/export_alias.h"
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

OrvBool OrvMatchAct_Matches(TOrvHandle matchAction, TOrvHandle action, OrvBool* matches)
{
    return OnObject(matchAction, [&](TOrvMessage& object) { *matches = object.Matches(OrvInterfaceOf(action)); });
}
ORV_ALIAS(TalvecMatchAct_Matches, OrvMatchAct_Matches);

OrvBool OrvMatchAct_CreateActionFromTemplate(TOrvHandle matchAction, TOrvHandle templateAction, TOrvHandle* action)
{
    return OnObject(matchAction, [&](TOrvMessage& object) {
        *action = reinterpret_cast<TOrvHandle>(object.CreateActionFromTemplate(OrvInterfaceOf(templateAction)));
    });
}
ORV_ALIAS(TalvecMatchAct_CreateActionFromTemplate, OrvMatchAct_CreateActionFromTemplate);

TOrvHandle OrvMatchAct_RestoreActionFromEventData(const TOrvEventData* record)
{
    return NewHandle([&] { return RestoreMatchAction(*record); });
}
ORV_ALIAS(TalvecMatchAct_RestoreActionFromEventData, OrvMatchAct_RestoreActionFromEventData);

OrvBool OrvMatchAct_SetDescriptionW(TOrvHandle matchAction, const OrvWChar* text)
{
    return OnMatchAction(matchAction,
                         [&](TOrvMatchAction& match) { match.Description().SetString(TerminatedView(text)); });
}
ORV_ALIAS(TalvecMatchAct_SetDescriptionW, OrvMatchAct_SetDescriptionW);

OrvBool OrvMatchAct_SetDescriptionA(TOrvHandle matchAction, const char* text)
{
    return OnMatchAction(matchAction, [&](TOrvMatchAction& match) {
        match.Description().SetString(text ? Ulmo::WideFromAnsi(text) : std::u16string());
    });
}
ORV_ALIAS(TalvecMatchAct_SetDescriptionA, OrvMatchAct_SetDescriptionA);

OrvBool OrvMatchAct_GetDescriptionW(TOrvHandle matchAction, const OrvWChar** text)
{
    return OnAction(matchAction, [&](const TOrvAction& action) {
        const TOrvParameter* description = action.DescriptionParameter();
        *text = Boundary(description ? description->Wide().data() : u"");
    });
}
ORV_ALIAS(TalvecMatchAct_GetDescriptionW, OrvMatchAct_GetDescriptionW);

OrvBool OrvMatchAct_GetDescriptionA(TOrvHandle matchAction, const char** text)
{
    return OnObject(matchAction, [&](TOrvMessage& object) {
        // The kind is enough: only this class has it.
        const bool match = object.Kind() == ORV_MESSAGE_MATCH_ACTION;
        *text = match ? static_cast<TOrvMatchAction&>(object).NarrowDescription() : "";
    });
}
ORV_ALIAS(TalvecMatchAct_GetDescriptionA, OrvMatchAct_GetDescriptionA);

OrvBool OrvMatchAct_HasDescription(TOrvHandle matchAction, OrvBool* has)
{
    return OnAction(matchAction, [&](const TOrvAction& action) {
        const TOrvParameter* description = action.DescriptionParameter();
        *has = description && !description->Wide().empty();
    });
}
ORV_ALIAS(TalvecMatchAct_HasDescription, OrvMatchAct_HasDescription);
