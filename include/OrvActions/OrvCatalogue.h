/* The catalogue: which classes, actions, parameters and enum values there are. Part of OrvActions.h.
 *
 * There are two families of queries over one catalogue. OrvAct_ reports public type codes and no priorities;
 * Talvec_Action_ reports the internal fields. They differ in their records, TOrv... and TTalvec..., and where a comment
 * says so. A comment that names one function of a pair holds for both.
 *
 *  - All texts of a record are borrowed from the catalogue; the pointers are valid for the life of the process. After a
 *    Set... call a pointer from before reads the new text if that fitted into the room of the old one, else still the
 *    old text: ask again. A stands for the ANSI code page, U for UTF-8, W for UTF-16.
 *  - Plain names come from the native or from the neutral text set, see OrvAct_SetNativeTranslation. Descriptions are
 *    the same in both.
 *  - Record pointers are not null. A query that fails leaves the record as it was.
 *  - None of these functions reads or writes the last error, apart from those of the priority level: an unknown key is
 *    no fault.
 *  - Enumerations fill at most `capacity` records and return how many they filled, with no sign that there are more;
 *    ask for the number first. Classes and actions come in order of their lower-cased names, parameters in order of
 *    declaration, enum values in order of enum and value.
 *  - A Set... call takes PlainNameW and DescriptionW of the record, both not null, copies them and derives the narrow
 *    forms; they may point at texts of the catalogue. The plain name goes into the selected text set. An empty text
 *    leaves what is there, so no text can be cleared. Other fields are ignored, apart from those that a comment names
 *    as the key. Both texts are written, or neither and the result is false, for want of memory. What is written lasts
 *    as long as the process; nothing is stored and nobody is notified.
 *  - Any thread may write while others read. A form of an action, such as its plain text, shows each text either as it
 *    was before a write or as it is after it. A pointer of a record reads parts of both while another thread writes. */
#ifndef ORV_CATALOGUE_H
#define ORV_CATALOGUE_H

#include "OrvActions/OrvTypes.h"

/* Public type codes, which OrvAct_ queries report. An enum has a code from ORV_TYPE_FIRST_ENUM on, which is its id
 * (ORV_ENUM_...) without bit 0x1000, plus 10. */
enum {
    ORV_TYPE_INT32 = 0,
    ORV_TYPE_INT64 = 1,
    ORV_TYPE_DATE_TIME = 2,
    ORV_TYPE_STRING = 4,
    ORV_TYPE_BOOLEAN = 5,
    ORV_TYPE_GUID = 6,
    ORV_TYPE_EVENT_TYPE = 7,
    ORV_TYPE_MEDIA_CHANNEL = 8,
    ORV_TYPE_RESOURCE = 9,
    ORV_TYPE_FIRST_ENUM = 10,
    ORV_TYPE_DOUBLE = 100, /* this code and the next two are also those of the enums of ids 0x105A to 0x105C */
    ORV_TYPE_RECT = 101,
    ORV_TYPE_RESULT_DATA_SET = 102,
    ORV_TYPE_UNKNOWN = 0x7FFFFFFF
};

/* Filters of the OrvAct_ enum functions, besides a public type code. */
#define ORV_ALL_ENUM_VALUES 0x7FFFFFFFu

/* Kinds of filter of the Talvec_Action_ enum functions. */
enum { ORV_ENUM_KIND_ALL = 0, ORV_ENUM_KIND_BOOLEAN = 1, ORV_ENUM_KIND_BY_ID = 2 };

/* The action code that stands for the general parameters in the Talvec_Action_ parameter functions. */
#define ORV_GENERAL_PARAMETERS 0u

#if defined(__cplusplus)
extern "C" {
#endif

typedef struct TOrvActionClassPlainInfo {
    uint32_t Code;     /* ORV_CLASS_... */
    const char* NameA; /* programmatic name */
    const OrvWChar* NameW;
    const void* Reserved;   /* always null */
    const char* PlainNameA; /* display name */
    const char* PlainNameU;
    const OrvWChar* PlainNameW;
    const char* DescriptionA;
    const char* DescriptionU;
    const OrvWChar* DescriptionW;
} TOrvActionClassPlainInfo;

typedef struct TOrvActionPlainInfo {
    uint32_t ClassCode;      /* ORV_CLASS_..., 0 for an action without class */
    uint32_t Code;           /* ORV_ACTION_..., 0 for the event description */
    uint32_t Flags;          /* 0 for everything built in */
    uint32_t ParameterCount; /* own parameters, or event fields */
    const char* NameA;
    const OrvWChar* NameW;
    const char* PlainNameA;
    const char* PlainNameU;
    const OrvWChar* PlainNameW;
    const char* DescriptionA;
    const char* DescriptionU;
    const OrvWChar* DescriptionW;
} TOrvActionPlainInfo;

/* A parameter of an action, an event field or the description of match actions. */
typedef struct TOrvParameterPlainInfo {
    uint32_t Type;     /* public type code */
    uint32_t View;     /* ORV_VIEW_... */
    uint32_t Reserved; /* always 0 */
    const char* NameA;
    const OrvWChar* NameW;
    const char* PlainNameA;
    const char* PlainNameU;
    const OrvWChar* PlainNameW;
    const char* DescriptionA;
    const char* DescriptionU;
    const OrvWChar* DescriptionW;
} TOrvParameterPlainInfo;

typedef struct TOrvEnumValuePlainInfo {
    uint32_t Type; /* public type code of the enum */
    uint32_t Value;
    const char* NameA;
    const OrvWChar* NameW; /* in a Set... call: the description */
    const char* PlainNameA;
    const char* PlainNameU;
    const OrvWChar* PlainNameW;
    const void* Reserved; /* left as it was */
} TOrvEnumValuePlainInfo;

typedef struct TTalvecActionClassPlainInfo {
    uint32_t Code; /* ORV_CLASS_... */
    uint32_t Priority;
    uint32_t Flags; /* 0 for everything built in */
    const char* NameA;
    const OrvWChar* NameW;
    const void* Reserved; /* always null */
    const char* PlainNameA;
    const char* PlainNameU;
    const OrvWChar* PlainNameW;
    const char* DescriptionA;
    const char* DescriptionU;
    const OrvWChar* DescriptionW;
} TTalvecActionClassPlainInfo;

typedef struct TTalvecActionPlainInfo {
    uint32_t ClassCode; /* ORV_CLASS_..., 0 for an action without class */
    uint32_t Code;      /* ORV_ACTION_..., 0 for the event description */
    uint32_t Priority;
    uint32_t Flags;          /* 0 for everything built in */
    uint32_t Reserved;       /* left as it was */
    uint32_t ParameterCount; /* own parameters, or event fields */
    const char* NameA;
    const OrvWChar* NameW;
    const char* PlainNameA;
    const char* PlainNameU;
    const OrvWChar* PlainNameW;
    const char* DescriptionA;
    const char* DescriptionU;
    const OrvWChar* DescriptionW;
} TTalvecActionPlainInfo;

/* A parameter of an action, a general parameter, an event field or the description of match actions. */
typedef struct TTalvecParameterPlainInfo {
    uint32_t Type;     /* ORV_KIND_... */
    uint32_t View;     /* ORV_VIEW_... */
    uint32_t Priority; /* level of detail: plain text hides what exceeds the priority level */
    uint32_t EnumType; /* 0 none, 1 the Boolean enum, else ORV_ENUM_... */
    uint32_t DbField;  /* ORV_COLUMN_... bits */
    const char* NameA;
    const OrvWChar* NameW;
    const char* PlainNameA;
    const char* PlainNameU;
    const OrvWChar* PlainNameW;
    const char* DescriptionA;
    const char* DescriptionU;
    const OrvWChar* DescriptionW;
} TTalvecParameterPlainInfo;

typedef struct TTalvecEnumValuePlainInfo {
    uint32_t EnumId; /* 1 for the Boolean enum, else ORV_ENUM_... */
    uint32_t Value;
    const char* NameA;
    const OrvWChar* NameW; /* in a Set... call: the description */
    const char* PlainNameA;
    const char* PlainNameU;
    const OrvWChar* PlainNameW;
    const char* DescriptionA; /* in a Set... call ignored, as are the next two */
    const char* DescriptionU;
    const OrvWChar* DescriptionW;
} TTalvecEnumValuePlainInfo;

/* ---- lookups ---------------------------------------------------------------------------------------------------- */

/* Both families. The code of an action by its name in any case, 0 when unknown or null. */
ORV_API uint32_t OrvAct_GetActionCodeByNameW(const OrvWChar* name);
ORV_API uint32_t Talvec_Action_GetActionCodeByNameW(const OrvWChar* name);
ORV_API uint32_t OrvAct_GetActionCodeByNameA(const char* name);
ORV_API uint32_t Talvec_Action_GetActionCodeByNameA(const char* name);

/* Both families. The code of a class by its name in any case. 0 when unknown or null; 0 is also the code of the class
 * System, so this cannot tell them apart. */
ORV_API uint32_t OrvAct_GetActionClassByNameW(const OrvWChar* name);
ORV_API uint32_t Talvec_Action_GetActionClassByNameW(const OrvWChar* name);
ORV_API uint32_t OrvAct_GetActionClassByNameA(const char* name);
ORV_API uint32_t Talvec_Action_GetActionClassByNameA(const char* name);

/* Both families. The code of the action that was registered at a position, counted from 0; 0 past the end. */
ORV_API uint32_t OrvAct_GetActionCodeByIndex(uint32_t index);
ORV_API uint32_t Talvec_Action_GetActionCodeByIndex(uint32_t index);

/* Both families. The position of an action by its code. 0 when unknown; 0 is also the position of the first action. */
ORV_API uint32_t OrvAct_GetInternalIndexByCode(uint32_t code);
ORV_API uint32_t Talvec_Action_GetInternalIndexByCode(uint32_t code);

/* ---- switches of the process ------------------------------------------------------------------------------------ */

/* Both families. Selects the text set of plain names, for reading and for writing: native (after load) or neutral. A
 * neutral plain name is the programmatic name until somebody writes another. The result is always true and the last
 * error stays as it is. Meant to be set at start; there is no lock. */
ORV_API OrvBool OrvAct_SetNativeTranslation(OrvBool native);
ORV_API OrvBool Talvec_Action_SetNativeTranslation(OrvBool native);
ORV_API OrvBool OrvAct_GetNativeTranslation(OrvBool* native);
ORV_API OrvBool Talvec_Action_GetNativeTranslation(OrvBool* native);

/* Sets the level of detail, 5 after load: parameters whose priority exceeds it are hidden from plain text and left out
 * by stores that apply it. The result is always true, with the last error cleared. Meant to be set at start; there is
 * no lock. */
ORV_API OrvBool Talvec_Action_SetPriorityLevel(uint32_t level);
ORV_API OrvBool Talvec_Action_GetPriorityLevel(uint32_t* level);

/* ---- classes ---------------------------------------------------------------------------------------------------- */

/* Both families. The number of classes; it stays the same for the life of the process. */
ORV_API uint32_t OrvAct_GetNumberOfActionClasses(void);
ORV_API uint32_t Talvec_Action_GetNumberOfActionClasses(void);

/* Fills records with all classes. */
ORV_API uint32_t OrvAct_EnumerateActionClasses(TOrvActionClassPlainInfo* records, uint32_t capacity);
ORV_API uint32_t Talvec_Action_EnumerateActionClasses(TTalvecActionClassPlainInfo* records, uint32_t capacity);

/* Fills a record with the class of a code; false when unknown. */
ORV_API OrvBool OrvAct_GetActionClassInfo(TOrvActionClassPlainInfo* record, uint32_t classCode);
ORV_API OrvBool Talvec_Action_GetActionClassInfo(TTalvecActionClassPlainInfo* record, uint32_t classCode);

/* Writes the texts of the class that the field Code names; false when unknown. */
ORV_API OrvBool OrvAct_SetActionClassPlainInfo(const TOrvActionClassPlainInfo* record);
ORV_API OrvBool Talvec_Action_SetActionClassPlainInfo(const TTalvecActionClassPlainInfo* record);

/* ---- actions ---------------------------------------------------------------------------------------------------- */

/* Both families. The number of actions; it stays the same for the life of the process. */
ORV_API uint32_t OrvAct_GetNumberOfActions(void);
ORV_API uint32_t Talvec_Action_GetNumberOfActions(void);

/* Fills records with all actions. */
ORV_API uint32_t OrvAct_EnumerateActions(TOrvActionPlainInfo* records, uint32_t capacity);
ORV_API uint32_t Talvec_Action_EnumerateActions(TTalvecActionPlainInfo* records, uint32_t capacity);

/* Fills a record with the action of a code; false when unknown. */
ORV_API OrvBool OrvAct_GetActionInfo(TOrvActionPlainInfo* record, uint32_t code);
ORV_API OrvBool Talvec_Action_GetActionInfo(TTalvecActionPlainInfo* record, uint32_t code);

/* Writes the texts of the action that the field Code names; false when unknown. */
ORV_API OrvBool OrvAct_SetActionPlainInfo(const TOrvActionPlainInfo* record);
ORV_API OrvBool Talvec_Action_SetActionPlainInfo(const TTalvecActionPlainInfo* record);

/* ---- parameters ------------------------------------------------------------------------------------------------- */

/* The number of an action's own parameters, 0 when the code is unknown. Here and below, Talvec_Action_ takes the code
 * ORV_GENERAL_PARAMETERS for the parameters that any action may carry, in order of registration. */
ORV_API uint32_t OrvAct_GetNumberOfActionParameters(uint32_t code);
ORV_API uint32_t Talvec_Action_GetNumberOfActionParameters(uint32_t code);

/* Fills records with the parameters of an action. */
ORV_API uint32_t OrvAct_EnumerateActionParameters(TOrvParameterPlainInfo* records, uint32_t capacity, uint32_t code);
ORV_API uint32_t Talvec_Action_EnumerateActionParameters(TTalvecParameterPlainInfo* records, uint32_t capacity,
                                                         uint32_t code);

/* Fills a record with one parameter of an action, counted from 0; false when the code is unknown or the index past the
 * end. */
ORV_API OrvBool OrvAct_GetActionParameterInfo(TOrvParameterPlainInfo* record, uint32_t code, uint32_t index);
ORV_API OrvBool Talvec_Action_GetActionParameterInfo(TTalvecParameterPlainInfo* record, uint32_t code, uint32_t index);

/* Writes the texts of one parameter of one action; other actions with a parameter of that name keep theirs. A general
 * parameter (Talvec_Action_, code 0) is found by the field NameW in any case, and the index is not used. */
ORV_API OrvBool OrvAct_SetActionParameterPlainInfo(const TOrvParameterPlainInfo* record, uint32_t code, uint32_t index);
ORV_API OrvBool Talvec_Action_SetActionParameterPlainInfo(const TTalvecParameterPlainInfo* record, uint32_t code,
                                                          uint32_t index);

/* Fills a record with the description of match actions, which is the general parameter Comment, or writes its texts. */
ORV_API OrvBool OrvAct_GetMatchActionDescriptionInfo(TOrvParameterPlainInfo* record);
ORV_API OrvBool Talvec_Action_GetMatchActionDescriptionInfo(TTalvecParameterPlainInfo* record);
ORV_API OrvBool OrvAct_SetMatchActionDescriptionPlainInfo(const TOrvParameterPlainInfo* record);
ORV_API OrvBool Talvec_Action_SetMatchActionDescriptionPlainInfo(const TTalvecParameterPlainInfo* record);

/* ---- event records ---------------------------------------------------------------------------------------------- */

/* Fills a record with the description of event records, or writes its texts: it looks like an action that nobody can
 * create, whose parameters are the event fields. */
ORV_API OrvBool OrvAct_GetEventDescriptionInfo(TOrvActionPlainInfo* record);
ORV_API OrvBool Talvec_Action_GetEventDescriptionInfo(TTalvecActionPlainInfo* record);
ORV_API OrvBool OrvAct_SetEventDescriptionPlainInfo(const TOrvActionPlainInfo* record);
ORV_API OrvBool Talvec_Action_SetEventDescriptionPlainInfo(const TTalvecActionPlainInfo* record);

/* Fills records with the event fields. */
ORV_API uint32_t OrvAct_EnumerateEventFields(TOrvParameterPlainInfo* records, uint32_t capacity);
ORV_API uint32_t Talvec_Action_EnumerateEventFields(TTalvecParameterPlainInfo* records, uint32_t capacity);

/* Fills a record with one event field, counted from 0, or writes its texts; false when the index is past the end. */
ORV_API OrvBool OrvAct_GetEventFieldInfo(TOrvParameterPlainInfo* record, uint32_t index);
ORV_API OrvBool Talvec_Action_GetEventFieldInfo(TTalvecParameterPlainInfo* record, uint32_t index);
ORV_API OrvBool OrvAct_SetEventFieldPlainInfo(const TOrvParameterPlainInfo* record, uint32_t index);
ORV_API OrvBool Talvec_Action_SetEventFieldPlainInfo(const TTalvecParameterPlainInfo* record, uint32_t index);

/* ---- enum values ------------------------------------------------------------------------------------------------ */

/* The number of values of one enum by its public type code, or of all with ORV_ALL_ENUM_VALUES. */
ORV_API uint32_t OrvAct_GetNumberOfEnumValues(uint32_t publicType);

/* The same by kind: all, the Boolean enum, or with any other kind the enum of an id (ORV_ENUM_...). Only the last uses
 * the id. */
ORV_API uint32_t Talvec_Action_GetNumberOfEnumValues(uint32_t kind, uint32_t id);

/* Fill records with the values that the filter lets through; filters as above. */
ORV_API uint32_t OrvAct_EnumerateEnumValues(TOrvEnumValuePlainInfo* records, uint32_t capacity, uint32_t publicType);
ORV_API uint32_t Talvec_Action_EnumerateEnumValues(TTalvecEnumValuePlainInfo* records, uint32_t capacity, uint32_t kind,
                                                   uint32_t id);

/* Fill a record with one value of an enum; false when unknown. Kind 1 means the Boolean enum, every other kind the enum
 * of the id. */
ORV_API OrvBool OrvAct_GetEnumValueInfo(TOrvEnumValuePlainInfo* record, uint32_t publicType, uint32_t value);
ORV_API OrvBool Talvec_Action_GetEnumValueInfo(TTalvecEnumValuePlainInfo* record, uint32_t kind, uint32_t id,
                                               uint32_t value);

/* Writes the texts of the value that the fields Type or EnumId, and Value, name; false when unknown. The description is
 * taken from the field NameW: a record fresh from a Get... call makes the name the description. */
ORV_API OrvBool OrvAct_SetEnumValuePlainInfo(const TOrvEnumValuePlainInfo* record);
ORV_API OrvBool Talvec_Action_SetEnumValuePlainInfo(const TTalvecEnumValuePlainInfo* record);

#if defined(__cplusplus)
}
#endif

#endif
