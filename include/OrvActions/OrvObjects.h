/* The life of an action: making, copying, comparing and closing. Part of OrvActions.h. */
#ifndef ORV_OBJECTS_H
#define ORV_OBJECTS_H

#include "OrvActions/OrvTypes.h"

#if defined(__cplusplus)
extern "C" {
#endif

/* A new action by its name in any case, known to the catalogue or not. It has no parameters until they are set. The
 * caller closes the handle; null, without a last error, for a null name. */
ORV_API TOrvHandle Talvec_Action_CreateActionByName(const OrvWChar* name);

/* A new action by its code (ORV_ACTION_...); null, without a last error, for a code that the catalogue does not
 * know. */
ORV_API TOrvHandle Talvec_Action_CreateActionByCode(uint32_t code);

/* A new action without a name that carries the channels and contacts of an occurrence; match actions build actions from
 * it (OrvMatchAct_CreateActionFromTemplate). The caller closes the handle. Its text, binary and JSON forms are empty.
 * The records are copied; a null record stands for the empty one (id 0, name "", number 0). */
ORV_API TOrvHandle OrvAct_CreateGenericAction(const TOrvChannelValue* videoInput, const TOrvChannelValue* videoOutput,
                                              const TOrvChannelValue* inputContact,
                                              const TOrvChannelValue* outputContact, uint32_t genericValue);

/* Both families. A new match action with the name and a copy of the parameters of an action, which the caller
 * closes.
 *   matchAction  out, not null */
ORV_API OrvBool OrvAct_CreateMatchActionFromTemplate(TOrvHandle action, TOrvHandle* matchAction);
ORV_API OrvBool Talvec_Action_CreateMatchActionFromTemplate(TOrvHandle action, TOrvHandle* matchAction);

/* Both families. Takes one more reference to the same object: the caller goes on using the handle that it has and owes
 * one more close. A null handle gives false and leaves the last error as it was. */
ORV_API OrvBool OrvAct_DuplicateHandle(TOrvHandle handle);
ORV_API OrvBool Talvec_Action_DuplicateHandle(TOrvHandle handle);

/* Both families. Gives up one reference; with the last one the object ends, and every pointer into it with it. A null
 * handle gives true. */
ORV_API OrvBool OrvAct_CloseHandle(TOrvHandle handle);
ORV_API OrvBool Talvec_Action_CloseHandle(TOrvHandle handle);

/* Both families. A new, independent object with the same content, which the caller closes. Message flags and internal
 * data are not copied, nor are the parameters of a generic action.
 *   clone  out, not null */
ORV_API OrvBool OrvAct_CloneHandle(TOrvHandle handle, TOrvHandle* clone);
ORV_API OrvBool Talvec_Action_CloneHandle(TOrvHandle handle, TOrvHandle* clone);

/* Both families. The number of references to the object; other threads may have changed it by the time of return. */
ORV_API OrvBool OrvAct_GetReferenceCounter(TOrvHandle handle, uint32_t* count);
ORV_API OrvBool Talvec_Action_GetReferenceCounter(TOrvHandle handle, uint32_t* count);

/* Both families. Whether two actions have the same name in any case and the same parameters with equal values of the
 * same kinds; the case of values counts. Match actions compare their descriptions as well, and an action never equals
 * a match action. Message flags and internal data take no part. */
ORV_API OrvBool OrvAct_Equal(TOrvHandle first, TOrvHandle second, OrvBool* equal);
ORV_API OrvBool Talvec_Action_Equal(TOrvHandle first, TOrvHandle second, OrvBool* equal);

/* Both families. The position of the action in the catalogue, 0 without a catalogue entry. */
ORV_API OrvBool OrvAct_GetInternalIndex(TOrvHandle handle, uint32_t* index);
ORV_API OrvBool Talvec_Action_GetInternalIndex(TOrvHandle handle, uint32_t* index);

#if defined(__cplusplus)
}
#endif

#endif
