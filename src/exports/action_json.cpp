#include "OrvActions/OrvJson.h"

#include "exports/export_twin.h"
#include "exports/frame.h"
#include "forms/json_writer.h"

using namespace OrvPLC;

ORV_EXPORT_TWIN(OrvBool, StoreToJson,
                (TOrvHandle handle, OrvWChar* buffer, std::uint32_t size, std::uint32_t* required, OrvBool wrap,
                 const std::uint32_t* limit),
                (handle, buffer, size, required, wrap, limit))
{
    TOrvJsonWriter writer(wrap != 0);
    return StoreText(buffer, size, required, [&, &object = ObjectOf(handle)] {
        object.WriteJson(writer, limit);
        return writer.Finish();
    });
}
