/* Event records: how the event database stores an action. Part of OrvActions.h.
 *
 * A record has a fixed set of columns. The catalogue says which parameter goes into which column (the masks of
 * ORV_COLUMN_...), and OrvAct_EnumerateEventFields how the columns are called. The library fills a record and reads
 * one; the database between is the caller's. It also keeps the image, the binary form of the action
 * (OrvAct_StoreToBinBuffer), which the caller stores and puts back: only the image carries every value faithfully. Make
 * it before the record, because filling a record may convert values of the action.
 *
 *     uint8_t image[1000], unused;
 *     uint32_t imageSize;
 *     TOrvEventData record = {sizeof record};
 *     if (OrvAct_StoreToBinBuffer(action, image, sizeof image, &imageSize) &&
 *         OrvAct_GetActionEventData(action, &record, &unused)) store_in_my_database(&record, image, imageSize);
 */
#ifndef ORV_EVENTS_H
#define ORV_EVENTS_H

#include "OrvActions/OrvInterfaces.h"
#include "OrvActions/OrvTypes.h"

#if defined(__cplusplus)
extern "C" {
#endif

/* A text column. The length counts units without a terminating zero; a null text is an empty column. */
typedef struct TOrvEventText {
    uint64_t length;
    const OrvWChar* text;
} TOrvEventText;

/* Indexes of TOrvEventData.userField. */
enum { ORV_EVENT_FIRST_USER = 0, ORV_EVENT_SECOND_USER = 1, ORV_EVENT_WINDOWS_HOST = 2, ORV_EVENT_WINDOWS_USER = 3 };

/* One event, 272 bytes. A column is empty when its pointer is null. The record owns nothing. */
struct TOrvEventData {
    uint32_t size;                /* set to sizeof(TOrvEventData) by the caller */
    uint32_t code;                /* of the action, 0 for one that the catalogue does not know */
    uint64_t clearedWords[2];     /* the caller's, but set to 0 when the record is filled */
    uint64_t callerWord;          /* the caller's, never touched */
    const int32_t* int32Field[4]; /* columns A to D */
    const int64_t* int64Field[4];
    const double* doubleField[2];
    const TUlmoDateTime* dateField[2];
    TOrvEventText stringField[4];
    uint64_t imageSize;         /* bytes of the binary form; only the low 32 bits are looked at */
    const void* image;          /* the binary form, or null; filling a record sets it to null */
    TOrvEventText userField[4]; /* first and second user, host and account of the client; ORV_EVENT_... */
};

/* All four families. Fills a record from an action.
 *   record  not null; its size is set. Everything but the size and callerWord is overwritten.
 *   field   out, may be null: set to 0 and nothing else
 * The pointers of the columns lead into the parameters of the action: a pointer is valid as long as the action lives
 * and its parameter is neither changed nor read as text. Values are converted in place to the type of their column, so
 * this counts as a write. An action that the catalogue does not know gives an empty record with code 0.
 * Parameters that the caller added under the names of columns get there only where the installation asks for it (see
 * docs/event-records.md). A size other than 272 fails with the code ORV_ERROR and the sub-code ORV_SUBERROR_WRONG_SIZE
 * and leaves the record as it was. */
ORV_API OrvBool OrvAct_GetActionEventData(TOrvHandle handle, TOrvEventData* record, uint8_t* field);
ORV_API OrvBool Talvec_Action_GetActionEventData(TOrvHandle handle, TOrvEventData* record, uint8_t* field);
ORV_API OrvBool OrvMatchAct_GetActionEventData(TOrvHandle handle, TOrvEventData* record, uint8_t* field);
ORV_API OrvBool TalvecMatchAct_GetActionEventData(TOrvHandle handle, TOrvEventData* record, uint8_t* field);

/* Both families. A new action from a record, which the caller closes: from the image when it holds an action, else from
 * the columns, and then only what fills all columns of a parameter comes back. A code that the catalogue does not know
 * gives an action named GeneralEventInfo with a parameter for each column.
 *   record  not null; its size is not looked at. Texts of columns hold as many units as their length says.
 * Null, with the reason in the last error, when the columns cannot be read. */
ORV_API TOrvHandle OrvAct_RestoreActionFromEventData(const TOrvEventData* record);
ORV_API TOrvHandle Talvec_Action_RestoreActionFromEventData(const TOrvEventData* record);

/* Both match families. The same as a match action, without a description. */
ORV_API TOrvHandle OrvMatchAct_RestoreActionFromEventData(const TOrvEventData* record);
ORV_API TOrvHandle TalvecMatchAct_RestoreActionFromEventData(const TOrvEventData* record);

/* Called on the thread of the describing function, with the context that was given, an index, a label and a value. The
 * texts end in a zero and are valid until the callback returns: copy what you keep. The index counts the calls from 0;
 * the last one has index -1, the plain name of the action as its label and the plain text after that name as its value.
 */
typedef void (*TOrvEventDescriptionCallback)(OrvWord context, int32_t index, const OrvWChar* label,
                                             const OrvWChar* value);
/* The same with the priority of the parameter in the catalogue; 0 in the last call. */
typedef void (*TOrvEventDescriptionCallback2)(OrvWord context, int32_t index, const OrvWChar* label,
                                              const OrvWChar* value, uint32_t priority);

/* Both families. Describes a record for people: one call for each parameter that the catalogue declares and the record
 * holds, in the order of the declaration, then one for the whole text.
 *   record    not null; read as OrvAct_RestoreActionFromEventData does
 *   context   passed to the callback
 *   callback  may be null: then nothing happens
 *   level     parameters with a priority above it get no call and are left out of the text; without it the process-wide
 *             level holds (Talvec_Action_SetPriorityLevel)
 * True also when there is nothing to describe; then there is no call. What the callback throws ends the walk
 * and becomes the last error. */
ORV_API OrvBool OrvAct_GetActionEventDescription(const TOrvEventData* record, OrvWord context,
                                                 TOrvEventDescriptionCallback callback);
ORV_API OrvBool Talvec_Action_GetActionEventDescription(const TOrvEventData* record, OrvWord context,
                                                        TOrvEventDescriptionCallback callback);
ORV_API OrvBool OrvAct_GetActionEventDescriptionEx(const TOrvEventData* record, OrvWord context,
                                                   TOrvEventDescriptionCallback callback, uint32_t level);
ORV_API OrvBool Talvec_Action_GetActionEventDescriptionEx(const TOrvEventData* record, OrvWord context,
                                                          TOrvEventDescriptionCallback callback, uint32_t level);
ORV_API OrvBool OrvAct_GetActionEventDescription2(const TOrvEventData* record, OrvWord context,
                                                  TOrvEventDescriptionCallback2 callback, uint32_t level);
ORV_API OrvBool Talvec_Action_GetActionEventDescription2(const TOrvEventData* record, OrvWord context,
                                                         TOrvEventDescriptionCallback2 callback, uint32_t level);

#if defined(__cplusplus)
} /* extern "C" */
#endif

#endif
