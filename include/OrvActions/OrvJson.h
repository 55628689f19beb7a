/* The JSON form of an action, for web-facing clients. Part of OrvActions.h.
 *
 * The library writes it and does not read it. docs/json-form.md shows all of it. Keys are not escaped, and tabs and
 * line breaks stand raw in strings, so a strict parser may refuse the text. */
#ifndef ORV_JSON_H
#define ORV_JSON_H

#include "OrvActions/OrvTypes.h"

#if defined(__cplusplus)
extern "C" {
#endif

/* Both families. Stores the JSON form of an action.
 *   size   in units
 *   wrap   true for a document, {"action":{...}}; false for the member "action":{...} alone
 *   limit  parameters that the catalogue declares with a priority above it are left out; null for the process-wide
 *          priority level. An action that the catalogue does not know shows all it has.
 * A date that has no text, because its local time lies before 1601, fails the call. */
ORV_API OrvBool OrvAct_StoreToJson(TOrvHandle handle, OrvWChar* buffer, uint32_t size, uint32_t* required, OrvBool wrap,
                                   const uint32_t* limit);
ORV_API OrvBool Talvec_Action_StoreToJson(TOrvHandle handle, OrvWChar* buffer, uint32_t size, uint32_t* required,
                                          OrvBool wrap, const uint32_t* limit);

#if defined(__cplusplus)
}
#endif

#endif
