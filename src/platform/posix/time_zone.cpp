#include "platform/calendar.h"

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/posix/time_zone_rule.h"

namespace Platform {

namespace {

constexpr const char* kLocalZoneFile = "/etc/localtime";
constexpr const char* kZoneFolder = "/usr/share/zoneinfo/";
constexpr std::uint64_t kTicksPerMinute = 600000000;

// The last line of a zone file, which rules all instants behind its tables; empty for a file that is none or has none.
std::string LastRule(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    char magic[4] = {};
    if (!file.read(magic, sizeof magic) || std::string_view(magic, sizeof magic) != "TZif") return {};
    char tail[256];
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    file.seekg(size > std::streamoff{sizeof tail} ? size - std::streamoff{sizeof tail} : 0);
    file.read(tail, sizeof tail);
    std::string_view text(tail, static_cast<std::size_t>(file.gcount()));
    if (text.empty() || text.back() != '\n') return {};
    text.remove_suffix(1);
    const std::size_t start = text.rfind('\n');
    return start == std::string_view::npos ? std::string() : std::string(text.substr(start + 1));
}

std::string ZoneFile(std::string_view name)
{
    if (name.front() == '/') return std::string(name);
    const char* folder = std::getenv("TZDIR");
    return (folder ? std::string(folder) + '/' : std::string(kZoneFolder)).append(name);
}

// The rule that the variable TZ names: a zone file, or the rule itself. Null is the system's zone, "" is UTC.
std::string RuleFor(const char* variable)
{
    if (!variable) return LastRule(kLocalZoneFile);
    std::string_view name(variable);
    if (!name.empty() && name.front() == ':') name.remove_prefix(1);
    if (name.empty()) return "UTC0";
    const std::string rule = LastRule(ZoneFile(name));
    return rule.empty() ? std::string(name) : rule;
}

// The offset that the C library finds for this instant: for zone files of the first version, which have no rule.
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

// The record is read anew when TZ changes and once a minute, so that a change of the system's zone shows and records
// for one year end with the year.
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
        SystemTime time;
        FileTimeToSystemTime(now, time);
        const std::optional<TimeZone> zone = ParsePosixRule(RuleFor(variable), time.year);
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
