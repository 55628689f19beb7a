/* What an action is and what it holds, without knowing its parameters. Part of OrvActions.h.
 *
 * Parameters are found by role, that is by what the catalogue says they designate (ORV_VIEW_...), or by name. */
#ifndef ORV_ACCESS_H
#define ORV_ACCESS_H

#include "OrvActions/OrvTypes.h"

#if defined(__cplusplus)
extern "C" {
#endif

/* ---- what an action is ------------------------------------------------------------------------------------------ */

/* All four families. The code of the action (ORV_ACTION_...) and of its class (ORV_CLASS_...); 0 for an action that the
 * catalogue does not know. */
ORV_API OrvBool OrvAct_GetActionCode(TOrvHandle handle, uint32_t* code);
ORV_API OrvBool Talvec_Action_GetActionCode(TOrvHandle handle, uint32_t* code);
ORV_API OrvBool OrvMatchAct_GetActionCode(TOrvHandle handle, uint32_t* code);
ORV_API OrvBool TalvecMatchAct_GetActionCode(TOrvHandle handle, uint32_t* code);
ORV_API OrvBool OrvAct_GetActionClass(TOrvHandle handle, uint32_t* classCode);
ORV_API OrvBool Talvec_Action_GetActionClass(TOrvHandle handle, uint32_t* classCode);
ORV_API OrvBool OrvMatchAct_GetActionClass(TOrvHandle handle, uint32_t* classCode);
ORV_API OrvBool TalvecMatchAct_GetActionClass(TOrvHandle handle, uint32_t* classCode);

/* All four families. The name in the catalogue's spelling, or as it was given for an action that the catalogue does not
 * know. It lives as long as the object. The narrow form is in the ANSI code page; for an unknown action its first read
 * counts as a write. */
ORV_API OrvBool OrvAct_GetActionNameW(TOrvHandle handle, const OrvWChar** name);
ORV_API OrvBool Talvec_Action_GetActionNameW(TOrvHandle handle, const OrvWChar** name);
ORV_API OrvBool OrvMatchAct_GetActionNameW(TOrvHandle handle, const OrvWChar** name);
ORV_API OrvBool TalvecMatchAct_GetActionNameW(TOrvHandle handle, const OrvWChar** name);
ORV_API OrvBool OrvAct_GetActionNameA(TOrvHandle handle, const char** name);
ORV_API OrvBool Talvec_Action_GetActionNameA(TOrvHandle handle, const char** name);
ORV_API OrvBool OrvMatchAct_GetActionNameA(TOrvHandle handle, const char** name);
ORV_API OrvBool TalvecMatchAct_GetActionNameA(TOrvHandle handle, const char** name);

/* All four families. The plain name, native or neutral as OrvAct_SetNativeTranslation says; "" for an action that the
 * catalogue does not know. The pointer is valid for the life of the process. OrvCatalogue.h tells what it reads after
 * somebody has written another plain name. */
ORV_API OrvBool OrvAct_GetActionPlainNameW(TOrvHandle handle, const OrvWChar** name);
ORV_API OrvBool Talvec_Action_GetActionPlainNameW(TOrvHandle handle, const OrvWChar** name);
ORV_API OrvBool OrvMatchAct_GetActionPlainNameW(TOrvHandle handle, const OrvWChar** name);
ORV_API OrvBool TalvecMatchAct_GetActionPlainNameW(TOrvHandle handle, const OrvWChar** name);
ORV_API OrvBool OrvAct_GetActionPlainNameA(TOrvHandle handle, const char** name);
ORV_API OrvBool Talvec_Action_GetActionPlainNameA(TOrvHandle handle, const char** name);
ORV_API OrvBool OrvMatchAct_GetActionPlainNameA(TOrvHandle handle, const char** name);
ORV_API OrvBool TalvecMatchAct_GetActionPlainNameA(TOrvHandle handle, const char** name);

/* Both Talvec families. Flags and priority of the action in the catalogue; 0 when it is unknown. */
ORV_API OrvBool Talvec_Action_GetActionFlags(TOrvHandle handle, uint32_t* flags);
ORV_API OrvBool TalvecMatchAct_GetActionFlags(TOrvHandle handle, uint32_t* flags);
ORV_API OrvBool Talvec_Action_GetActionPriority(TOrvHandle handle, uint32_t* priority);
ORV_API OrvBool TalvecMatchAct_GetActionPriority(TOrvHandle handle, uint32_t* priority);

/* 1 for an action, 2 for a match action. */
ORV_API OrvBool OrvAct_GetMessageClass(TOrvHandle handle, uint32_t* messageClass);
/* The message kind itself, ORV_MESSAGE_...: 3 for an action, 4 for a match action. */
ORV_API OrvBool Talvec_Action_GetMessageClass(TOrvHandle handle, uint32_t* messageClass);

/* ---- marks of the caller ---------------------------------------------------------------------------------------- */

/* Both families. Values that the library keeps with the object and never looks at. They are 0 in a new object, a clone
 * included, take no part in comparisons and are in no text, binary or JSON form. */
ORV_API OrvBool OrvAct_SetMessageFlags(TOrvHandle handle, uint32_t flags);
ORV_API OrvBool Talvec_Action_SetMessageFlags(TOrvHandle handle, uint32_t flags);
ORV_API OrvBool OrvAct_GetMessageFlags(TOrvHandle handle, uint32_t* flags);
ORV_API OrvBool Talvec_Action_GetMessageFlags(TOrvHandle handle, uint32_t* flags);
ORV_API OrvBool OrvAct_SetInternalData(TOrvHandle handle, uint64_t data);
ORV_API OrvBool Talvec_Action_SetInternalData(TOrvHandle handle, uint64_t data);
ORV_API OrvBool OrvAct_GetInternalData(TOrvHandle handle, uint64_t* data);
ORV_API OrvBool Talvec_Action_GetInternalData(TOrvHandle handle, uint64_t* data);

/* ---- parameters by role ----------------------------------------------------------------------------------------- */

/* Both families. The channel in a role, whatever the parameter is called: the first parameter of that role that is set,
 * in the catalogue's order. PTZ heads and audio inputs count as video inputs.
 *   channel  out, not null; borrows a record inside the object, or null when the action has no such role or it is not
 *            set, which is a success
 * The record is overwritten by the next read of any role on the same action, and its name lives as long as the
 * parameter: copy what you keep. If the value in the role is no channel, the record keeps what was there before.
 * Reads write that record, so two threads must not read one action at the same time. */
ORV_API OrvBool OrvAct_GetVideoInput(TOrvHandle handle, const TOrvChannelValue** channel);
ORV_API OrvBool Talvec_Action_GetVideoInput(TOrvHandle handle, const TOrvChannelValue** channel);
ORV_API OrvBool OrvAct_GetVideoOutput(TOrvHandle handle, const TOrvChannelValue** channel);
ORV_API OrvBool Talvec_Action_GetVideoOutput(TOrvHandle handle, const TOrvChannelValue** channel);
ORV_API OrvBool OrvAct_GetInputContact(TOrvHandle handle, const TOrvChannelValue** channel);
ORV_API OrvBool Talvec_Action_GetInputContact(TOrvHandle handle, const TOrvChannelValue** channel);
ORV_API OrvBool OrvAct_GetOutputContact(TOrvHandle handle, const TOrvChannelValue** channel);
ORV_API OrvBool Talvec_Action_GetOutputContact(TOrvHandle handle, const TOrvChannelValue** channel);

/* Both families. Stores a channel in the first parameter of a role, in the catalogue's order, in place of whatever was
 * there.
 *   channel  not null; copied
 * The families differ where the action has no such role: OrvAct_ fails with the code ORV_ERROR and the sub-code
 * ORV_SUBERROR_NO_SUCH_ROLE, Talvec_Action_ answers true and stores nothing. */
ORV_API OrvBool OrvAct_SetVideoInput(TOrvHandle handle, const TOrvChannelValue* channel);
ORV_API OrvBool Talvec_Action_SetVideoInput(TOrvHandle handle, const TOrvChannelValue* channel);
ORV_API OrvBool OrvAct_SetVideoOutput(TOrvHandle handle, const TOrvChannelValue* channel);
ORV_API OrvBool Talvec_Action_SetVideoOutput(TOrvHandle handle, const TOrvChannelValue* channel);
ORV_API OrvBool OrvAct_SetInputContact(TOrvHandle handle, const TOrvChannelValue* channel);
ORV_API OrvBool Talvec_Action_SetInputContact(TOrvHandle handle, const TOrvChannelValue* channel);
ORV_API OrvBool OrvAct_SetOutputContact(TOrvHandle handle, const TOrvChannelValue* channel);
ORV_API OrvBool Talvec_Action_SetOutputContact(TOrvHandle handle, const TOrvChannelValue* channel);

/* Both families. The foreign key that an action carries, as a 64-bit number.
 *   foreignKey  out, not null; borrowed under the rules of OrvAct_GetVideoInput, null if there is none */
ORV_API OrvBool OrvAct_GetForeignKey(TOrvHandle handle, const int64_t** foreignKey);
ORV_API OrvBool Talvec_Action_GetForeignKey(TOrvHandle handle, const int64_t** foreignKey);

/* The first 32-bit parameter of the action in the catalogue's order, enums included; 0 when the action has none or it
 * is not set. Always a success. */
ORV_API OrvBool OrvAct_GetGenericInt32Parameter(TOrvHandle handle, int32_t* value);

/* ---- parameters by name ----------------------------------------------------------------------------------------- */

/* Both Talvec families. Reads a parameter of any kind.
 *   name   in any case; null reads as ""
 *   value  not null. Kind, enum and the member of the payload that the kind uses are filled. For the kinds String and
 *          ResultDataSet the text is a new system string; the text that the record had is freed first, so begin with
 *          null, reuse the record for as many reads as you like and free its last text with SysFreeString. Names of
 *          event types, channels and resources point into the parameter.
 * False, with the last error cleared and the record untouched, when the parameter is absent. */
ORV_API OrvBool Talvec_Action_GetParameterByName(TOrvHandle handle, const OrvWChar* name, TOrvParameterValue* value);
ORV_API OrvBool TalvecMatchAct_GetParameterByName(TOrvHandle handle, const OrvWChar* name, TOrvParameterValue* value);

/* Both Talvec families. Stores a parameter of any kind under a name, in place of whatever was there.
 *   name   in any case, kept as written; known to the catalogue or not; null reads as ""
 *   value  not null; copied. A null name or text reads as "". The text is a system string. A kind that does not exist
 *          stores a value without content. */
ORV_API OrvBool Talvec_Action_SetParameterByName(TOrvHandle handle, const OrvWChar* name,
                                                 const TOrvParameterValue* value);
ORV_API OrvBool TalvecMatchAct_SetParameterByName(TOrvHandle handle, const OrvWChar* name,
                                                  const TOrvParameterValue* value);

/* ---- names from the configuration ------------------------------------------------------------------------------- */

/* What a caller knows of its configuration, for OrvAct_UpdateActionInfo. Each callback gets the context of that call
 * and a record with what the action holds, and brings the record up to date: ids, numbers and names. It answers true
 * if it knows the thing; otherwise the action keeps what it has. A name that it puts into the record must live until
 * the next callback or the end of the call; null reads as "". Callbacks run on the thread of the call, during it. What
 * has a null callback is not asked for. */
typedef struct TOrvActionInfoUpdateCallbacks {
    OrvWord reserved;                                                  /* not read */
    OrvBool (*videoInput)(OrvWord context, TOrvChannelValue* channel); /* PTZ heads and audio inputs as well */
    OrvBool (*videoOutput)(OrvWord context, TOrvChannelValue* channel);
    OrvBool (*inputContact)(OrvWord context, TOrvChannelValue* channel);
    OrvBool (*outputContact)(OrvWord context, TOrvChannelValue* channel);
    OrvBool (*eventType)(OrvWord context, TOrvEventTypeValue* eventType);
    /* Time ranges, backup destinations, schedules and sources, logic rules; the view (ORV_VIEW_...) tells which. */
    OrvBool (*resource)(OrvWord context, uint32_t view, TOrvResourceValue* resource);
    /* Parameter sets of a camera; the last argument points at the camera's id. */
    OrvBool (*resourceOfChannel)(OrvWord context, uint32_t view, TOrvResourceValue* resource,
                                 const uint64_t* channelId);
} TOrvActionInfoUpdateCallbacks;

/* Both families. Refreshes what an action carries of channels, contacts, event types and resources from the caller's
 * configuration. Only parameters that are set and that the catalogue declares are looked at. This changes the action
 * and nothing else: nobody is notified. What a callback throws ends the call and becomes the last error.
 *   context    passed to the callbacks
 *   callbacks  not null
 *   allKnown   out, not null: false if a callback did not know what it was asked for */
ORV_API OrvBool OrvAct_UpdateActionInfo(TOrvHandle handle, OrvWord context,
                                        const TOrvActionInfoUpdateCallbacks* callbacks, OrvBool* allKnown);
ORV_API OrvBool Talvec_Action_UpdateActionInfo(TOrvHandle handle, OrvWord context,
                                               const TOrvActionInfoUpdateCallbacks* callbacks, OrvBool* allKnown);

#if defined(__cplusplus)
}
#endif

#endif
