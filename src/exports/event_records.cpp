#include "OrvActions/OrvEvents.h"

#include <cstddef>

#include "OrvActions/OrvErrors.h"
#include "catalogue/settings.h"
#include "events/event_description.h"
#include "events/event_fill.h"
#include "events/event_restore.h"
#include "exports/export_twin.h"
#include "exports/frame.h"
#include "objects/orv_plc_exception.h"

using namespace OrvPLC;

// The layout is part of the binary contract.
static_assert(offsetof(TOrvEventData, code) == 4);
static_assert(offsetof(TOrvEventData, clearedWords) == 8);
static_assert(offsetof(TOrvEventData, callerWord) == 24);
static_assert(offsetof(TOrvEventData, int32Field) == 32);
static_assert(offsetof(TOrvEventData, int64Field) == 64);
static_assert(offsetof(TOrvEventData, doubleField) == 96);
static_assert(offsetof(TOrvEventData, dateField) == 112);
static_assert(offsetof(TOrvEventData, stringField) == 128);
static_assert(offsetof(TOrvEventText, text) == 8);
static_assert(offsetof(TOrvEventData, imageSize) == 192);
static_assert(offsetof(TOrvEventData, image) == 200);
static_assert(offsetof(TOrvEventData, userField) == 208);
static_assert(sizeof(TOrvEventData) == 272);

namespace {

OrvBool Describe(const TOrvEventData* record, const TOrvEventDescriptionCallbacks& callbacks, std::uint32_t level)
{
    return Framed<OrvBool>(0, [&] {
        DescribeEvent(*record, callbacks, level);
        return OrvBool{1};
    });
}

}  // namespace

ORV_EXPORT_EVERY_TWIN(OrvBool, GetActionEventData, (TOrvHandle handle, TOrvEventData* record, std::uint8_t* field),
                      (handle, record, field))
{
    return OnObject(handle, [&](TOrvMessage&) {
        if (record->size != sizeof *record) throw OrvPLCException(u"Wrong structure size", ORV_SUBERROR_WRONG_SIZE);
        if (field) *field = 0;
        FillEventRecord(*record, ActionOf(handle));
    });
}

ORV_EXPORT_TWIN(TOrvHandle, RestoreActionFromEventData, (const TOrvEventData* record), (record))
{
    return Framed<TOrvHandle>(nullptr, [&] {
        TOrvAction* restored = RestoreAction(*record);
        return restored ? HandleOf(restored) : nullptr;
    });
}

ORV_EXPORT_TWIN(OrvBool, GetActionEventDescription,
                (const TOrvEventData* record, OrvWord context, TOrvEventDescriptionCallback callback),
                (record, context, callback))
{
    return Describe(record, {context, callback, nullptr}, Settings::PriorityLevel);
}

ORV_EXPORT_TWIN(OrvBool, GetActionEventDescriptionEx,
                (const TOrvEventData* record, OrvWord context, TOrvEventDescriptionCallback callback,
                 std::uint32_t level),
                (record, context, callback, level))
{
    return Describe(record, {context, callback, nullptr}, level);
}

ORV_EXPORT_TWIN(OrvBool, GetActionEventDescription2,
                (const TOrvEventData* record, OrvWord context, TOrvEventDescriptionCallback2 callback,
                 std::uint32_t level),
                (record, context, callback, level))
{
    return Describe(record, {context, nullptr, callback}, level);
}
