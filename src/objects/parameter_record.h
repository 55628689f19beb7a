// The plain records of a parameter's value, as callers exchange them.
#pragma once

#include "OrvActions/OrvTypes.h"
#include "catalogue/boundary.h"
#include "objects/parameter.h"

namespace OrvPLC {

// Fills the record. Names inside it point into the value. The text of a String or a ResultDataSet is a new system
// string in place of the record's own, which is freed: a caller reuses one record for many reads and frees its last
// text. Other kinds leave the text alone.
void FillRecord(TOrvParameterValue& record, const TOrvParameter& value);

// Sets a new value from a record with a name; a null name reads as "".
inline void SetFromRecord(TOrvParameter& value, const TOrvEventTypeValue& record)
{
    value.SetEventType(record.id, TerminatedView(record.name));
}
inline void SetFromRecord(TOrvParameter& value, const TOrvChannelValue& record)
{
    value.SetMediaChannel(record.id, record.number, TerminatedView(record.name));
}
inline void SetFromRecord(TOrvParameter& value, const TOrvResourceValue& record)
{
    value.SetResource(record.guid, TerminatedView(record.name));
}

// Sets a new value, whose kind is 0, from the record: kind, enum and what the kind uses. A kind that does not exist
// leaves it 0.
void SetFromRecordOfAnyKind(TOrvParameter& value, const TOrvParameterValue& record);
inline void SetFromRecord(TOrvParameter& value, const TOrvParameterValue& record)
{
    if (record.kind == ORV_KIND_Numeric32Bit) return value.SetInt32(record.payload.int32, record.enum_type);
    SetFromRecordOfAnyKind(value, record);
}

}  // namespace OrvPLC
