/* The tables of the interfaces, for C. Part of OrvActions.h; C++ has the abstract classes of OrvInterfaces.h and
 * OrvSinks.h, which tell what the operations do.
 *
 * An object begins with a pointer to the table of its operations, each of which takes the object first:
 *
 *     ITalvecAction* action = Talvec_Action_ConvertToIOrvAction(handle);
 *     uint32_t count = action->table->GetParameterCount(action);
 *
 * An interface that the library calls is an object of the caller's that begins in the same way. The library does not
 * call the three operations of the root, so they may be null:
 *
 *     static void OnParameter(ITalvecParameterEnumerator* self, const OrvWChar* name, uint32_t kind,
 *                             uint32_t enumType);
 *     static const ITalvecParameterEnumeratorTable table = {NULL, NULL, NULL, OnParameter};
 *     ITalvecParameterEnumerator enumerator = {&table};
 *     action->table->EnumerateParameters(action, &enumerator);
 *
 * examples/walk_parameters.c does all of it.
 */
#ifndef ORV_TABLES_H
#define ORV_TABLES_H

#if !defined(__cplusplus)

#include "OrvActions/OrvTypes.h"

typedef struct TOrvEventData TOrvEventData;
typedef struct ITalvecMessage ITalvecMessage;
typedef struct ITalvecAction ITalvecAction;
typedef struct ITalvecMatchAction ITalvecMatchAction;
typedef struct ITalvecJson ITalvecJson;
typedef struct ITalvecParameterEnumerator ITalvecParameterEnumerator;

/* clang-format off */
#define ORV_ROOT_OPERATIONS(This)                                             \
    int32_t (*QueryInterface)(This* self, const TOrvGuid* id, void** object); \
    uint32_t (*AddRef)(This* self);                                           \
    uint32_t (*Release)(This* self);

#define ORV_MESSAGE_OPERATIONS(This)                                 \
    uint32_t (*GetMessageKind)(This* self);                          \
    void (*StoreToTextTechnical)(This* self, OrvBStr* text);         \
    void (*StoreToTextPlain)(This* self, OrvBStr* text);             \
    void (*StoreToBinary)(This* self, void** block, uint32_t* size);

#define ORV_ACTION_OPERATIONS(This)                                                                                   \
    uint32_t (*GetActionClassCode)(This* self);                                                                       \
    const OrvWChar* (*GetActionClassName)(This* self);                                                                \
    uint32_t (*GetActionCode)(This* self);                                                                            \
    const OrvWChar* (*GetActionName)(This* self);                                                                     \
    const OrvWChar* (*GetActionPlainName)(This* self);                                                                \
    const OrvWChar* (*GetActionDescription)(This* self);                                                              \
    uint32_t (*GetActionPriority)(This* self);                                                                        \
    uint32_t (*GetActionFlags)(This* self);                                                                           \
    ITalvecMatchAction* (*CreateMatchAction)(This* self);                                                             \
    uint32_t (*GetParameterCount)(This* self);                                                                        \
    void (*EnumerateParameters)(This* self, ITalvecParameterEnumerator* enumerator);                                  \
    OrvBool (*HasParameter)(This* self, const OrvWChar* name);                                                        \
    void (*RemoveParameter)(This* self, const OrvWChar* name);                                                        \
    uint32_t (*GetParameterType)(This* self, const OrvWChar* name);                                                   \
    uint32_t (*GetParameterEnum)(This* self, const OrvWChar* name);                                                   \
    OrvBool (*GetBoolean)(This* self, const OrvWChar* name, OrvBool* value);                                          \
    OrvBool (*GetInt32)(This* self, const OrvWChar* name, int32_t* value);                                            \
    OrvBool (*GetInt64)(This* self, const OrvWChar* name, int64_t* value);                                            \
    OrvBool (*GetDouble)(This* self, const OrvWChar* name, double* value);                                            \
    OrvBool (*GetString)(This* self, const OrvWChar* name, OrvBStr* value);                                           \
    OrvBool (*GetDateTime)(This* self, const OrvWChar* name, TUlmoDateTime* value);                                   \
    OrvBool (*GetGuid)(This* self, const OrvWChar* name, TOrvGuid* value);                                            \
    OrvBool (*GetEventType)(This* self, const OrvWChar* name, TOrvEventTypeValue* value);                             \
    OrvBool (*GetMediaChannel)(This* self, const OrvWChar* name, TOrvChannelValue* value);                            \
    OrvBool (*GetResource)(This* self, const OrvWChar* name, TOrvResourceValue* value);                               \
    OrvBool (*GetRect)(This* self, const OrvWChar* name, int64_t* value);                                             \
    OrvBool (*GetResultDataSet)(This* self, const OrvWChar* name, const TOrvResultDataItem** items, uint64_t* count); \
    void (*SetBoolean)(This* self, const OrvWChar* name, OrvBool value);                                              \
    void (*SetInt32)(This* self, const OrvWChar* name, int32_t value);                                                \
    void (*SetInt64)(This* self, const OrvWChar* name, const int64_t* value);                                         \
    void (*SetDouble)(This* self, const OrvWChar* name, const double* value);                                         \
    void (*SetString)(This* self, const OrvWChar* name, const OrvWChar* value);                                       \
    void (*SetDateTime)(This* self, const OrvWChar* name, const TUlmoDateTime* value);                                \
    void (*SetGuid)(This* self, const OrvWChar* name, const TOrvGuid* value);                                         \
    void (*SetEventType)(This* self, const OrvWChar* name, const TOrvEventTypeValue* value);                          \
    void (*SetMediaChannel)(This* self, const OrvWChar* name, const TOrvChannelValue* value);                         \
    void (*SetResource)(This* self, const OrvWChar* name, const TOrvResourceValue* value);                            \
    void (*SetRect)(This* self, const OrvWChar* name, const int64_t* value);                                          \
    void (*SetResultDataSet)(This* self, const OrvWChar* name, const TOrvResultDataItem* items, uint64_t count);      \
    void (*SetEnum)(This* self, const OrvWChar* name, int32_t value, uint32_t enumType);                              \
    OrvBool (*GetEventData)(This* self, TOrvEventData* record);

#define ORV_MATCH_ACTION_OPERATIONS(This)                                                  \
    const OrvWChar* (*GetDescription)(This* self);                                         \
    void (*SetDescription)(This* self, const OrvWChar* text);                              \
    OrvBool (*Matches)(This* self, ITalvecAction* action);                                 \
    OrvBool (*HasDescription)(This* self);                                                 \
    ITalvecAction* (*CreateActionFromTemplate)(This* self, ITalvecAction* templateAction);

#define ORV_JSON_OPERATIONS(This)                                                      \
    void (*StoreJson)(This* self, OrvBStr* text, OrvBool wrap);                        \
    void (*StoreJsonLimited)(This* self, OrvBStr* text, OrvBool wrap, uint32_t limit);

/* clang-format on */

typedef struct ITalvecMessageTable {
    ORV_ROOT_OPERATIONS(ITalvecMessage)
    ORV_MESSAGE_OPERATIONS(ITalvecMessage)
} ITalvecMessageTable;
struct ITalvecMessage {
    const ITalvecMessageTable* table;
};

typedef struct ITalvecActionTable {
    ORV_ROOT_OPERATIONS(ITalvecAction)
    ORV_MESSAGE_OPERATIONS(ITalvecAction)
    ORV_ACTION_OPERATIONS(ITalvecAction)
} ITalvecActionTable;
struct ITalvecAction {
    const ITalvecActionTable* table;
};

typedef struct ITalvecMatchActionTable {
    ORV_ROOT_OPERATIONS(ITalvecMatchAction)
    ORV_MESSAGE_OPERATIONS(ITalvecMatchAction)
    ORV_ACTION_OPERATIONS(ITalvecMatchAction)
    ORV_MATCH_ACTION_OPERATIONS(ITalvecMatchAction)
} ITalvecMatchActionTable;
struct ITalvecMatchAction {
    const ITalvecMatchActionTable* table;
};

typedef struct ITalvecJsonTable {
    ORV_ROOT_OPERATIONS(ITalvecJson)
    ORV_JSON_OPERATIONS(ITalvecJson)
} ITalvecJsonTable;
struct ITalvecJson {
    const ITalvecJsonTable* table;
};

/* Receives the parameters of an action, one call each. */
typedef struct ITalvecParameterEnumeratorTable {
    ORV_ROOT_OPERATIONS(ITalvecParameterEnumerator)
    void (*OnParameter)(ITalvecParameterEnumerator* self, const OrvWChar* name, uint32_t kind, uint32_t enumType);
} ITalvecParameterEnumeratorTable;
struct ITalvecParameterEnumerator {
    const ITalvecParameterEnumeratorTable* table;
};

#endif
#endif
