/* An action as a bag of named texts, and the client that caused it. Part of OrvActions.h.
 *
 * Keys of properties, in any case. The first six stand for general parameters, any other key is a parameter's name:
 *
 *     windows-user         ClientAccount
 *     windows-host         ClientHost
 *     client-type          ClientType, a number of the enum PlcClientType
 *     hesk-user            User1
 *     hesk-secondary-user  User2
 *     special-service      SpecialService */
#ifndef ORV_PROPERTIES_H
#define ORV_PROPERTIES_H

#include "OrvActions/OrvTypes.h"

#if defined(__cplusplus)
extern "C" {
#endif

/* The text of a property, or null if the action lacks it; both are a success.
 *   key    null reads as ""
 *   value  out, not null: borrowed, until the parameter changes. The text is made inside the parameter, so this read
 *          counts as a write. Event types, channels and resources give their name. */
ORV_API OrvBool OrvAct_GetProperty(TOrvHandle handle, const OrvWChar* key, const OrvWChar** value);

/* The same as a new system string that the caller frees; the out pointer may be null. A string that it holds already
 * is overwritten, not freed. */
ORV_API OrvBool OrvAct_GetProperty__Q_NEW_Q__(TOrvHandle handle, const OrvWChar* key, OrvBStr* value);

/* Stores a text under a property; null reads as "". The text of client-type is read as a number, decimal or
 * hexadecimal after 0x or octal after 0; other text gives 0. A key that is not in the list stores a String whose name
 * is the key in lower case. */
ORV_API OrvBool OrvAct_SetProperty(TOrvHandle handle, const OrvWChar* key, const OrvWChar* value);

/* All parameters as <properties>...</properties>, a line each for name and value.
 *   text  not null; must hold null or a system string, which is freed when the new one takes its place
 * A date that has no text, because its local time lies before 1601, fails the call. */
ORV_API OrvBool OrvAct_GetProperties(TOrvHandle handle, OrvBStr* text);

/* All parameters on one line, <action name="...">  <property name="value">..., in which no element is
 * closed: a flat list to be searched, not XML to be parsed. The text is stored as by OrvAct_GetProperties. */
ORV_API OrvBool OrvAct_GetXML(TOrvHandle handle, OrvBStr* text);

/* The client that caused the action. The outputs point into the action, until its parameters change; none may be null.
 * True if host, type and account are all there. At the first that is missing, in this order, the call stops: its output
 * is null, the later outputs stay as they were, and the result is false without a last error. A type that is no number
 * gives null. */
ORV_API OrvBool OrvAct_GetWindowsClientInfo(TOrvHandle handle, const OrvWChar** host, const uint32_t** clientType,
                                            const OrvWChar** account);

/* Stores the client; the texts are copied. A null host or account removes that parameter. */
ORV_API OrvBool OrvAct_UpdateWindowsClientInfo(TOrvHandle handle, const OrvWChar* host, uint32_t clientType,
                                               const OrvWChar* account);

#if defined(__cplusplus)
}
#endif

#endif
