#include "platform/calendar.h"

#include "platform/windows/system_time.h"

namespace Platform {

bool GetLocalTimeZone(TimeZone& zone)
{
    TIME_ZONE_INFORMATION information;
    if (GetTimeZoneInformation(&information) == TIME_ZONE_ID_INVALID) return false;
    zone.bias = information.Bias;
    zone.standardDate = FromSystem(information.StandardDate);
    zone.standardBias = information.StandardBias;
    zone.daylightDate = FromSystem(information.DaylightDate);
    zone.daylightBias = information.DaylightBias;
    return true;
}

}  // namespace Platform
