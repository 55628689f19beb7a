/* The interfaces of an action object: abstract classes with the table of COM interfaces. Part of OrvActions.h.
 *
 * C has their tables in OrvTables.h. In C++ a handle and the interface pointer of the same object are one
 * pointer, see OrvInterfaceOf. The order of the operations is fixed; there is no virtual destructor in the tables:
 * objects end by Release.
 *
 * An operation that takes a name accepts it in any case; no pointer argument may be null unless its comment allows it.
 * None of them stores a last error: the result of a read says whether the parameter is present, and a value that cannot
 * be converted leaves the output as it was. A date whose local time lies before 1601 is a value without a text.
 *
 * No exception leaves an operation, apart from std::bad_alloc when memory runs out. What an enumerator of the caller
 * throws ends the enumeration and goes no further.
 *
 * AddRef and Release may be called on any thread at any time; everything else on one object by one thread at a time. */
#ifndef ORV_INTERFACES_H
#define ORV_INTERFACES_H

#include "OrvActions/OrvTables.h"
#include "OrvActions/OrvTypes.h"

/* The event record of the event database. */
typedef struct TOrvEventData TOrvEventData;

/* The identifiers of the interfaces, for QueryInterface. */
#if defined(__cpp_inline_variables)
#define ORV_IDENTIFIER inline constexpr TOrvGuid
#elif defined(__cplusplus)
#define ORV_IDENTIFIER constexpr TOrvGuid
#else
#define ORV_IDENTIFIER static const TOrvGuid
#endif
ORV_IDENTIFIER ORV_IID_IUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
ORV_IDENTIFIER ORV_IID_ITalvecMessage = {
    0x714596EB, 0x24D2, 0x43BB, {0xA3, 0xE2, 0x1F, 0xA7, 0x8B, 0x5B, 0xEC, 0x09}};
ORV_IDENTIFIER ORV_IID_ITalvecJson = {
    0x714596EB, 0x24D2, 0x63BB, {0xA3, 0xE2, 0x1F, 0xA7, 0x8B, 0x5B, 0xEC, 0x01}};
ORV_IDENTIFIER ORV_IID_ITalvecAction = {
    0x78148956, 0x4620, 0x4A6F, {0xAB, 0xAD, 0xB5, 0x19, 0xA9, 0x13, 0xD3, 0x0D}};
ORV_IDENTIFIER ORV_IID_ITalvecMatchAction = {
    0x7C524938, 0x3D27, 0x4175, {0x93, 0x03, 0xB9, 0x7A, 0x85, 0xE0, 0x13, 0xD4}};
#undef ORV_IDENTIFIER

#if defined(__cplusplus)

/* The root of all interfaces. A host that has included <unknwn.h> before gets the system's own; the table is the
 * same. Elsewhere OrvUnknown has these three operations. */
#if defined(__IUnknown_INTERFACE_DEFINED__)
#define ORV_CALL STDMETHODCALLTYPE
typedef IUnknown OrvUnknown;
#else
#define ORV_CALL
struct OrvUnknown {
    /* Takes a reference and stores the pointer; 0 on success, 0x80004002 for an unknown interface, 0x80004003 for a
     * null out pointer. */
    virtual int32_t QueryInterface(const TOrvGuid& id, void** object) = 0;
    virtual uint32_t AddRef() = 0;  /* the new count */
    virtual uint32_t Release() = 0; /* the new count; at 0 the object is gone */

protected:
    ~OrvUnknown() = default;
};
#if !defined(_WIN32)
typedef OrvUnknown IUnknown;
#endif
#endif

/* Any message. */
struct ITalvecMessage : OrvUnknown {
    virtual uint32_t ORV_CALL GetMessageKind() = 0; /* ORV_MESSAGE_... */
    /* The texts are new system strings that the caller frees; null if a value has no text. What the output holds before
     * is overwritten, not freed. */
    virtual void ORV_CALL StoreToTextTechnical(OrvBStr* text) = 0;
    virtual void ORV_CALL StoreToTextPlain(OrvBStr* text) = 0;
    /* The block is freed with CoTaskMemFree; size in bytes. Null and 0 when there is no memory for it. */
    virtual void ORV_CALL StoreToBinary(void** block, uint32_t* size) = 0;

protected:
    ~ITalvecMessage() = default;
};

struct ITalvecMatchAction;

/* Receives the parameters of an action, one call each. Derive from it and implement the three operations of the root
 * in any way; the library does not call them. The name is valid until OnParameter returns, and the action must not be
 * changed before the enumeration ends. What OnParameter throws ends the enumeration; only std::bad_alloc goes on to the
 * caller. */
struct ITalvecParameterEnumerator : OrvUnknown {
    virtual void ORV_CALL OnParameter(const OrvWChar* name, uint32_t kind, uint32_t enumType) = 0;

protected:
    ~ITalvecParameterEnumerator() = default;
};

/* An action and its parameters. Texts returned by pointer belong to the object or the catalogue. */
struct ITalvecAction : ITalvecMessage {
    /* 0 or "" for an action that the catalogue does not know. */
    virtual uint32_t ORV_CALL GetActionClassCode() = 0;
    virtual const OrvWChar* ORV_CALL GetActionClassName() = 0;
    virtual uint32_t ORV_CALL GetActionCode() = 0;
    virtual const OrvWChar* ORV_CALL GetActionName() = 0; /* the catalogue's spelling, else the name as given */
    virtual const OrvWChar* ORV_CALL GetActionPlainName() = 0;
    virtual const OrvWChar* ORV_CALL GetActionDescription() = 0;
    virtual uint32_t ORV_CALL GetActionPriority() = 0;
    virtual uint32_t ORV_CALL GetActionFlags() = 0;

    /* A new match action with this name and a copy of the parameters, with reference count 0: take the first
     * reference with AddRef. */
    virtual ITalvecMatchAction* ORV_CALL CreateMatchAction() = 0;

    virtual uint32_t ORV_CALL GetParameterCount() = 0;
    /* In order of the lower-cased names; a null enumerator does nothing. */
    virtual void ORV_CALL EnumerateParameters(ITalvecParameterEnumerator* enumerator) = 0;
    virtual bool ORV_CALL HasParameter(const OrvWChar* name) = 0;
    virtual void ORV_CALL RemoveParameter(const OrvWChar* name) = 0;       /* an absent name is no fault */
    virtual uint32_t ORV_CALL GetParameterType(const OrvWChar* name) = 0;  /* ORV_KIND_..., 0 when absent */
    virtual uint32_t ORV_CALL GetParameterEnum(const OrvWChar* name) = 0;  /* 0 when absent or no enum */

    /* Reads. True if the parameter is present. A value of another kind is converted for the caller; the parameter keeps
     * its kind. If there is no conversion, the output stays as it was and the result is still true. */
    virtual bool ORV_CALL GetBoolean(const OrvWChar* name, OrvBool* value) = 0;
    virtual bool ORV_CALL GetInt32(const OrvWChar* name, int32_t* value) = 0;
    virtual bool ORV_CALL GetInt64(const OrvWChar* name, int64_t* value) = 0;
    virtual bool ORV_CALL GetDouble(const OrvWChar* name, double* value) = 0;
    virtual bool ORV_CALL GetString(const OrvWChar* name, OrvBStr* value) = 0; /* new; the caller frees it */
    virtual bool ORV_CALL GetDateTime(const OrvWChar* name, TUlmoDateTime* value) = 0;
    virtual bool ORV_CALL GetGuid(const OrvWChar* name, TOrvGuid* value) = 0;
    /* The names inside these records point into the parameter and live until it changes. */
    virtual bool ORV_CALL GetEventType(const OrvWChar* name, TOrvEventTypeValue* value) = 0;
    virtual bool ORV_CALL GetMediaChannel(const OrvWChar* name, TOrvChannelValue* value) = 0;
    virtual bool ORV_CALL GetResource(const OrvWChar* name, TOrvResourceValue* value) = 0;
    virtual bool ORV_CALL GetRect(const OrvWChar* name, int64_t* value) = 0;
    /* The items stay valid until the next read of this value. */
    virtual bool ORV_CALL GetResultDataSet(const OrvWChar* name, const TOrvResultDataItem** items,
                                           uint64_t* count) = 0;

    /* Writes. A parameter of that name in any case is replaced, whatever its kind was; the library copies. */
    virtual void ORV_CALL SetBoolean(const OrvWChar* name, OrvBool value) = 0;
    virtual void ORV_CALL SetInt32(const OrvWChar* name, int32_t value) = 0;
    virtual void ORV_CALL SetInt64(const OrvWChar* name, const int64_t* value) = 0;
    virtual void ORV_CALL SetDouble(const OrvWChar* name, const double* value) = 0;
    virtual void ORV_CALL SetString(const OrvWChar* name, const OrvWChar* value) = 0; /* null removes it */
    virtual void ORV_CALL SetDateTime(const OrvWChar* name, const TUlmoDateTime* value) = 0;
    virtual void ORV_CALL SetGuid(const OrvWChar* name, const TOrvGuid* value) = 0;
    virtual void ORV_CALL SetEventType(const OrvWChar* name, const TOrvEventTypeValue* value) = 0;
    virtual void ORV_CALL SetMediaChannel(const OrvWChar* name, const TOrvChannelValue* value) = 0;
    virtual void ORV_CALL SetResource(const OrvWChar* name, const TOrvResourceValue* value) = 0;
    virtual void ORV_CALL SetRect(const OrvWChar* name, const int64_t* value) = 0;
    virtual void ORV_CALL SetResultDataSet(const OrvWChar* name, const TOrvResultDataItem* items,
                                           uint64_t count) = 0;
    virtual void ORV_CALL SetEnum(const OrvWChar* name, int32_t value, uint32_t enumType) = 0;

    /* Fills the record as OrvAct_GetActionEventData does, without a look at its size; the result is always false. */
    virtual bool ORV_CALL GetEventData(TOrvEventData* record) = 0;

protected:
    ~ITalvecAction() = default;
};

/* A pattern over actions. */
struct ITalvecMatchAction : ITalvecAction {
    /* The description is reached only through OrvMatchAct_SetDescriptionW and its kin: here it is always "" and false,
     * and SetDescription does nothing. */
    virtual const OrvWChar* ORV_CALL GetDescription() = 0;
    virtual void ORV_CALL SetDescription(const OrvWChar* text) = 0;
    virtual bool ORV_CALL Matches(ITalvecAction* action) = 0; /* false for null */
    virtual bool ORV_CALL HasDescription() = 0;
    /* As OrvMatchAct_CreateActionFromTemplate; the result has one reference that the caller releases. */
    virtual ITalvecAction* ORV_CALL CreateActionFromTemplate(ITalvecAction* templateAction) = 0;

protected:
    ~ITalvecMatchAction() = default;
};

/* The JSON form; reached by QueryInterface. The texts are new system strings that the caller frees; null if a value has
 * no text. See OrvAct_StoreToJson for wrap and limit. */
struct ITalvecJson : OrvUnknown {
    virtual void ORV_CALL StoreJson(OrvBStr* text, OrvBool wrap) = 0;
    virtual void ORV_CALL StoreJsonLimited(OrvBStr* text, OrvBool wrap, uint32_t limit) = 0;

protected:
    ~ITalvecJson() = default;
};

/* The interface pointer of a handle; no reference moves. */
inline ITalvecMatchAction* OrvInterfaceOf(TOrvHandle handle)
{
    return reinterpret_cast<ITalvecMatchAction*>(handle);
}

#endif
#endif
