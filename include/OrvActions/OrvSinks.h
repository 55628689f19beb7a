/* Catalogue queries that call an object of the caller instead of filling an array. Part of OrvActions.h.
 *
 * A sink is an object of the caller with the table of an interface: three operations of the root, which the library
 * does not call, and a fourth that gets one item a call.
 *
 *  - The record belongs to the library and lasts for the length of the call; its texts last as in the records of
 *    OrvCatalogue.h.
 *  - The catalogue is locked meanwhile: a sink may ask the catalogue on its own thread, but must not wait for another
 *    thread that does.
 *  - The last error stays as it is. The result is false for a null sink, else true. What a sink throws ends the
 *    enumeration with false; no exception leaves the function. */
#ifndef ORV_SINKS_H
#define ORV_SINKS_H

#include "OrvActions/OrvCatalogue.h"
#include "OrvActions/OrvInterfaces.h"

#if !defined(__cplusplus)

/* The tables of OrvTables.h. */
typedef struct ITalvecActionClassSink ITalvecActionClassSink;
typedef struct ITalvecActionClassSinkTable {
    ORV_ROOT_OPERATIONS(ITalvecActionClassSink)
    void (*OnActionClass)(ITalvecActionClassSink* self, const TTalvecActionClassPlainInfo* record);
} ITalvecActionClassSinkTable;
struct ITalvecActionClassSink {
    const ITalvecActionClassSinkTable* table;
};

typedef struct ITalvecActionSink ITalvecActionSink;
typedef struct ITalvecActionSinkTable {
    ORV_ROOT_OPERATIONS(ITalvecActionSink)
    void (*OnAction)(ITalvecActionSink* self, const TTalvecActionPlainInfo* record);
} ITalvecActionSinkTable;
struct ITalvecActionSink {
    const ITalvecActionSinkTable* table;
};

typedef struct ITalvecParameterSink ITalvecParameterSink;
typedef struct ITalvecParameterSinkTable {
    ORV_ROOT_OPERATIONS(ITalvecParameterSink)
    void (*OnParameter)(ITalvecParameterSink* self, const TTalvecParameterPlainInfo* record);
} ITalvecParameterSinkTable;
struct ITalvecParameterSink {
    const ITalvecParameterSinkTable* table;
};

typedef struct ITalvecEnumValueSink ITalvecEnumValueSink;
typedef struct ITalvecEnumValueSinkTable {
    ORV_ROOT_OPERATIONS(ITalvecEnumValueSink)
    void (*OnEnumValue)(ITalvecEnumValueSink* self, const TTalvecEnumValuePlainInfo* record);
} ITalvecEnumValueSinkTable;
struct ITalvecEnumValueSink {
    const ITalvecEnumValueSinkTable* table;
};

#else

struct ITalvecActionClassSink : OrvUnknown {
    virtual void ORV_CALL OnActionClass(const TTalvecActionClassPlainInfo* record) = 0;

protected:
    ~ITalvecActionClassSink() = default;
};

struct ITalvecActionSink : OrvUnknown {
    virtual void ORV_CALL OnAction(const TTalvecActionPlainInfo* record) = 0;

protected:
    ~ITalvecActionSink() = default;
};

struct ITalvecParameterSink : OrvUnknown {
    virtual void ORV_CALL OnParameter(const TTalvecParameterPlainInfo* record) = 0;

protected:
    ~ITalvecParameterSink() = default;
};

struct ITalvecEnumValueSink : OrvUnknown {
    virtual void ORV_CALL OnEnumValue(const TTalvecEnumValuePlainInfo* record) = 0;

protected:
    ~ITalvecEnumValueSink() = default;
};

extern "C" {
#endif

/* All classes, in order of their lower-cased names. Also writes the size of the record, 88, to the diagnostic output,
 * with a null sink as well. */
ORV_API OrvBool Talvec_Action_EnumerateActionClassesInterface(ITalvecActionClassSink* sink);

/* All actions, in order of their lower-cased names. */
ORV_API OrvBool Talvec_Action_EnumerateActionsInterface(ITalvecActionSink* sink);

/* The parameters of an action in order of declaration, or the general ones with the code ORV_GENERAL_PARAMETERS. Also
 * false for a code that the catalogue does not know. */
ORV_API OrvBool Talvec_Action_EnumerateActionParametersInterface(ITalvecParameterSink* sink, uint32_t code);

/* The enum values that a filter lets through, see Talvec_Action_GetNumberOfEnumValues. */
ORV_API OrvBool Talvec_Action_EnumerateEnumValuesInterface(ITalvecEnumValueSink* sink, uint32_t kind, uint32_t id);

#if defined(__cplusplus)
}
#endif

#endif
