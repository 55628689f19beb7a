#include "OrvActions/OrvJson.h"

#include "exports/export_alias.h"
#include "exports/frame.h"
#include "forms/json_writer.h"

using namespace OrvPLC;

OrvBool OrvAct_StoreToJson(TOrvHandle handle, OrvWChar* buffer, std::uint32_t size, std::uint32_t* required,
                           OrvBool wrap, const std::uint32_t* limit)
{
    // Outside the frame, since the text refers to it. Making it cannot fail: the brace goes into memory of its own.
    TOrvJsonWriter writer(wrap != 0);
    return StoreTextOf(handle, buffer, size, required, [&](const TOrvMessage& object) {
        object.WriteJson(writer, limit);
        return writer.Finish();
    });
}
ORV_ALIAS(Talvec_Action_StoreToJson, OrvAct_StoreToJson);
