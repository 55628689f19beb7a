/* Match actions: patterns over actions. Part of OrvActions.h.
 *
 * A match action names an action and lists the parameter values that a concrete action must have. What it does not list
 * does not matter; there are no wildcards and no ranges. It is an action itself: everything that reads, writes or sets
 * parameters serves it as well. In addition it has a description for people.
 *
 * Make one with OrvAct_CreateMatchActionFromTemplate, TalvecMatchAct_CreateActionByName (OrvPointers.h; without a twin)
 * or from text with the prefix "@ ". The functions of this header exist in both match families, OrvMatchAct_ and
 * TalvecMatchAct_. */
#ifndef ORV_MATCH_H
#define ORV_MATCH_H

#include "OrvActions/OrvAccess.h"
#include "OrvActions/OrvTypes.h"

#if defined(__cplusplus)
extern "C" {
#endif

/* Whether an action is one of those that a match action describes: the names are equal in any case, and for each
 * parameter of the match action the action has one of the same kind that matches.
 *   action   may be a match action; null matches nothing
 *   matches  out, not null
 * Texts match in any case. Kinds are not converted: a 32-bit 5 does not match a 64-bit 5. Of a channel the match
 * action's id decides; if it is 0 its number; if that is 0 too its name. Of an event type or a resource the id (guid)
 * decides, or the name if the id is 0. Neither object is changed, so any number of threads may match at the same time.
 */
ORV_API OrvBool OrvMatchAct_Matches(TOrvHandle matchAction, TOrvHandle action, OrvBool* matches);
ORV_API OrvBool TalvecMatchAct_Matches(TOrvHandle matchAction, TOrvHandle action, OrvBool* matches);

/* A new action with the name and the parameters of a match action, which the caller closes. For an action that is no
 * match action the call succeeds and gives null.
 *   templateAction  may be null. An example: parameters that the catalogue declares and the match action lacks are
 *                   taken from it. Of a generic action (OrvAct_CreateGenericAction) the channels and contacts go to the
 *                   parameters of their roles, unless the role is taken, and the value to the first 32-bit number.
 *   action          out, not null */
ORV_API OrvBool OrvMatchAct_CreateActionFromTemplate(TOrvHandle matchAction, TOrvHandle templateAction,
                                                     TOrvHandle* action);
ORV_API OrvBool TalvecMatchAct_CreateActionFromTemplate(TOrvHandle matchAction, TOrvHandle templateAction,
                                                        TOrvHandle* action);

/* Stores the description of a match action. It takes no part in matching and is no parameter.
 *   text  copied; null empties the description. The narrow form is in the ANSI code page.
 * For an action that is no match action this does nothing and succeeds. */
ORV_API OrvBool OrvMatchAct_SetDescriptionW(TOrvHandle matchAction, const OrvWChar* text);
ORV_API OrvBool TalvecMatchAct_SetDescriptionW(TOrvHandle matchAction, const OrvWChar* text);
ORV_API OrvBool OrvMatchAct_SetDescriptionA(TOrvHandle matchAction, const char* text);
ORV_API OrvBool TalvecMatchAct_SetDescriptionA(TOrvHandle matchAction, const char* text);

/* Reads the description; "" for an action that is no match action. The text belongs to the match action. The wide one
 * stays until the description changes, the narrow one until it is asked for again, which counts as a write. */
ORV_API OrvBool OrvMatchAct_GetDescriptionW(TOrvHandle matchAction, const OrvWChar** text);
ORV_API OrvBool TalvecMatchAct_GetDescriptionW(TOrvHandle matchAction, const OrvWChar** text);
ORV_API OrvBool OrvMatchAct_GetDescriptionA(TOrvHandle matchAction, const char** text);
ORV_API OrvBool TalvecMatchAct_GetDescriptionA(TOrvHandle matchAction, const char** text);

/* Whether a match action has a description that is not empty.
 *   has  out, not null */
ORV_API OrvBool OrvMatchAct_HasDescription(TOrvHandle matchAction, OrvBool* has);
ORV_API OrvBool TalvecMatchAct_HasDescription(TOrvHandle matchAction, OrvBool* has);

#if defined(__cplusplus)
}
#endif

#endif
