/* Match actions: patterns over actions. Part of OrvActions.h.
 *
 * A match action names an action and lists the parameter values that a concrete action must have. What it does not list
 * does not matter; there are no wildcards and no ranges. It is an action itself: everything that reads, writes or sets
 * parameters serves it as well. Beside them it has a description for people.
 *
 * Make one with OrvAct_CreateMatchActionFromTemplate, TalvecMatchAct_CreateActionByName or from text with the prefix
 * "@ ". All functions exist in both match families, OrvMatchAct_ and TalvecMatchAct_. */
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
 * action's id decides; when it is 0 its number; when that is 0 too its name. Of an event type or a resource the id
 * decides, or the name when there is no id. Neither object is changed, so any number of threads may match at the same
 * time. */
ORV_MATCH_TWIN(OrvBool, Matches, (TOrvHandle matchAction, TOrvHandle action, OrvBool* matches));

/* A new action with the name and the parameters of a match action, which the caller closes.
 *   templateAction  may be null. An example: parameters that the catalogue declares and the match action lacks are
 *                   taken from it. Of a generic action (OrvAct_CreateGenericAction) the channels and contacts go to the
 *                   parameters of their roles, unless such a role is taken, and the value to the first 32-bit number.
 *   action          out, not null */
ORV_MATCH_TWIN(OrvBool, CreateActionFromTemplate,
               (TOrvHandle matchAction, TOrvHandle templateAction, TOrvHandle* action));

/* The description of a match action. It takes no part in matching and is in no parameter.
 *   text  copied; null empties the description. The narrow form is in the ANSI code page.
 * For an action that is no match action these do nothing and read as "". */
ORV_MATCH_TWIN(OrvBool, SetDescriptionW, (TOrvHandle matchAction, const OrvWChar* text));
ORV_MATCH_TWIN(OrvBool, SetDescriptionA, (TOrvHandle matchAction, const char* text));

/* The text belongs to the match action and stays until the description changes; the narrow one, which counts as a
 * write, until it is asked for again. */
ORV_MATCH_TWIN(OrvBool, GetDescriptionW, (TOrvHandle matchAction, const OrvWChar** text));
ORV_MATCH_TWIN(OrvBool, GetDescriptionA, (TOrvHandle matchAction, const char** text));

/* False in `has` for an empty description. */
ORV_MATCH_TWIN(OrvBool, HasDescription, (TOrvHandle matchAction, OrvBool* has));

#if defined(__cplusplus)
}
#endif

#endif
