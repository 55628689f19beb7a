// Our broken-down time and the system's.
#pragma once

#include "platform/calendar.h"
#include "platform/windows/windows_api.h"

namespace Platform {

inline SYSTEMTIME ToSystem(const SystemTime& time)
{
    return {time.year, time.month, time.dayOfWeek, time.day, time.hour, time.minute, time.second, time.milliseconds};
}

inline SystemTime FromSystem(const SYSTEMTIME& time)
{
    return {time.wYear, time.wMonth,  time.wDayOfWeek, time.wDay,
            time.wHour, time.wMinute, time.wSecond,    time.wMilliseconds};
}

}  // namespace Platform
