#include "platform/calendar.h"

#include <cstdlib>
#include <ctime>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/posix/time_zone_rule.h"
#include "platform/posix/zone_file.h"

namespace Platform {

namespace {

constexpr const char* kLocalZoneFile = "/etc/localtime";
constexpr const char* kZoneFolder = "/usr/share/zoneinfo/";
constexpr std::uint64_t kTicksPerSecond = 10000000;
constexpr std::uint64_t kTicksPerMinute = 60 * kTicksPerSecond;
constexpr std::int64_t kSecondsTo1970 = 11644473600;

// A name is a path below the folder of zones.
std::string ZoneFile(std::string_view name)
{
    if (name.front() == '/') return std::string(name);
    // The folder may be elsewhere, as for the C library.
    const char* folder = std::getenv("TZDIR");
    return (folder ? std::string(folder) + '/' : std::string(kZoneFolder)).append(name);
}

struct Instant {
    std::int64_t seconds;  // since 1970
    std::uint16_t year;
};

Instant InstantOf(std::uint64_t ticks)
{
    SystemTime time;
    FileTimeToSystemTime(ticks, time);
    return {static_cast<std::int64_t>(ticks / kTicksPerSecond) - kSecondsTo1970, time.year};
}

// The zone that the variable TZ names: a zone file, or the rule itself. Null is the system's zone, "" is UTC.
std::optional<TimeZone> ZoneFor(const char* variable, const Instant& now)
{
    if (!variable) return ZoneAt(ReadZoneFile(kLocalZoneFile), now.seconds, now.year);
    std::string_view name(variable);
    if (!name.empty() && name.front() == ':') name.remove_prefix(1);
    if (name.empty()) return TimeZone{};
    const std::string content = ReadZoneFile(ZoneFile(name));
    return content.empty() ? ParsePosixRule(name, now.year) : ZoneAt(content, now.seconds, now.year);
}

// The offset that the C library finds for this instant, if the zone is neither a zone file nor a rule.
TimeZone PresentOffset()
{
    tzset();
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    TimeZone zone;
    zone.bias = static_cast<std::int32_t>(-local.tm_gmtoff / 60);
    return zone;
}

// The record is read anew when TZ changes and once a minute, so that a change of the system's zone shows, records for
// one year end with the year, and those of a zone file's table end with its next transition.
class ZoneCache {
public:
    TimeZone Get()
    {
        const char* variable = std::getenv("TZ");
        const std::uint64_t now = NowAsFileTime();
        const std::lock_guard<std::mutex> guard(section_);
        if (!filled_ || minute_ != now / kTicksPerMinute || !SameVariable(variable)) Fill(variable, now);
        return zone_;
    }

private:
    bool SameVariable(const char* variable) const
    {
        return variable ? variable_ && *variable_ == variable : !variable_.has_value();
    }

    void Fill(const char* variable, std::uint64_t now)
    {
        const std::optional<TimeZone> zone = ZoneFor(variable, InstantOf(now));
        zone_ = zone ? *zone : PresentOffset();
        variable_ = variable ? std::optional<std::string>(variable) : std::nullopt;
        minute_ = now / kTicksPerMinute;
        filled_ = true;
    }

    std::mutex section_;
    bool filled_ = false;
    std::uint64_t minute_ = 0;
    std::optional<std::string> variable_;
    TimeZone zone_;
};

}  // namespace

bool GetLocalTimeZone(TimeZone& zone)
{
    static ZoneCache& cache = *new ZoneCache;  // never destroyed: threads may still write lines at process end
    zone = cache.Get();
    return true;
}

}  // namespace Platform
