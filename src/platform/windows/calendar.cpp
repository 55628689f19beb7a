#include "platform/calendar.h"

#include "platform/windows/system_time.h"

namespace Platform {

bool FileTimeToSystemTime(std::uint64_t ticks, SystemTime& time)
{
    const FILETIME file = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    SYSTEMTIME system;
    if (!::FileTimeToSystemTime(&file, &system)) return false;
    time = FromSystem(system);
    return true;
}

bool SystemTimeToFileTime(const SystemTime& time, std::uint64_t& ticks)
{
    const SYSTEMTIME system = ToSystem(time);
    FILETIME file;
    if (!::SystemTimeToFileTime(&system, &file)) return false;
    ticks = std::uint64_t{file.dwHighDateTime} << 32 | file.dwLowDateTime;
    return true;
}

std::uint64_t NowAsFileTime()
{
    FILETIME file;
    GetSystemTimeAsFileTime(&file);
    return std::uint64_t{file.dwHighDateTime} << 32 | file.dwLowDateTime;
}

}  // namespace Platform
