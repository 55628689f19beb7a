#include "OrvActions/OrvEvents.h"

#include <cstddef>

#include "OrvActions/OrvErrors.h"
#include "catalogue/settings.h"
#include "events/event_description.h"
#include "events/event_fill.h"
#include "events/event_restore.h"
#include "exports/export_alias.h"
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
    return Succeeds([&] { DescribeEvent(*record, callbacks, level); });
}

}  // namespace

OrvBool OrvAct_GetActionEventData(TOrvHandle handle, TOrvEventData* record, std::uint8_t* field)
{
    return OnAction(handle, [&](TOrvAction& action) {
        if (record->size != sizeof *record) throw OrvPLCException(u"Wrong structure size", ORV_SUBERROR_WRONG_SIZE);
        if (field) *field = 0;
        FillEventRecord(*record, action);
    });
}
ORV_ALIAS(Talvec_Action_GetActionEventData, OrvAct_GetActionEventData);
ORV_ALIAS(OrvMatchAct_GetActionEventData, OrvAct_GetActionEventData);
ORV_ALIAS(TalvecMatchAct_GetActionEventData, OrvAct_GetActionEventData);

TOrvHandle OrvAct_RestoreActionFromEventData(const TOrvEventData* record)
{
    return NewHandle([&] { return RestoreAction(*record); });
}
ORV_ALIAS(Talvec_Action_RestoreActionFromEventData, OrvAct_RestoreActionFromEventData);

OrvBool OrvAct_GetActionEventDescription(const TOrvEventData* record, OrvWord context,
                                         TOrvEventDescriptionCallback callback)
{
    return Describe(record, {context, callback, nullptr}, Settings::PriorityLevel);
}
ORV_ALIAS(Talvec_Action_GetActionEventDescription, OrvAct_GetActionEventDescription);

OrvBool OrvAct_GetActionEventDescriptionEx(const TOrvEventData* record, OrvWord context,
                                           TOrvEventDescriptionCallback callback, std::uint32_t level)
{
    return Describe(record, {context, callback, nullptr}, level);
}
ORV_ALIAS(Talvec_Action_GetActionEventDescriptionEx, OrvAct_GetActionEventDescriptionEx);

OrvBool OrvAct_GetActionEventDescription2(const TOrvEventData* record, OrvWord context,
                                          TOrvEventDescriptionCallback2 callback, std::uint32_t level)
{
    return Describe(record, {context, nullptr, callback}, level);
}
ORV_ALIAS(Talvec_Action_GetActionEventDescription2, OrvAct_GetActionEventDescription2);
