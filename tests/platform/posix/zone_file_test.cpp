#include "platform/posix/zone_file.h"

#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <initializer_list>
#include <utility>

#include "ulmo/date_time.h"

namespace {

namespace files = std::filesystem;

constexpr std::int64_t kSecondsTo1970 = 11644473600;

// The bias that the library finds at an instant, as text, so that none is a value as well.
std::string BiasAt(std::string_view content, std::int64_t seconds)
{
    const std::time_t instant = seconds;
    std::tm utc{};
    gmtime_r(&instant, &utc);
    const auto zone = Platform::ZoneAt(content, seconds, static_cast<std::uint16_t>(utc.tm_year + 1900));
    if (!zone) return "none";
    return std::to_string(Ulmo::BiasAt(static_cast<std::uint64_t>((seconds + kSecondsTo1970) * 1000), *zone));
}

std::string BigEndian(std::int64_t value, int size)
{
    std::string bytes;
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
    return bytes;
}

// One block: transitions as instant and type, and the offsets of the types in hours.
std::string Block(int timeSize, std::initializer_list<std::pair<std::int64_t, char>> transitions,
                  std::initializer_list<int> hours, int leapSeconds = 0)
{
    const auto types = static_cast<std::int64_t>(hours.size());
    std::string block = "TZif2" + std::string(15, '\0') + BigEndian(types, 4) + BigEndian(0, 4);
    block += BigEndian(leapSeconds, 4);
    block += BigEndian(static_cast<std::int64_t>(transitions.size()), 4);
    block += BigEndian(types, 4) + BigEndian(4, 4);
    for (const auto& [instant, type] : transitions) block += BigEndian(instant, timeSize);
    for (const auto& [instant, type] : transitions) block += type;
    for (const int hour : hours) block += BigEndian(hour * 3600, 4) + std::string(2, '\0');
    return block + "ABC" + std::string(1 + leapSeconds * (timeSize + 4) + hours.size(), '\0');
}

TEST(ZoneFile, TheTableRulesUpToItsLastTransition)
{
    const std::string first = Block(4, {{1000, 1}}, {9, 9});
    const std::string table = Block(8, {{-1000, 1}, {5000000000, 0}, {5001000000, 1}}, {-2, 1});
    const std::string file = first + table + "\nABC-1\n";
    const struct {
        std::string content;
        std::int64_t seconds;
        const char* bias;
    } cases[] = {
        {file, -1001, "120"},
        {file, -1000, "-60"},
        {file, 4999999999, "-60"},
        {file, 5000000000, "120"},
        {file, 5000999999, "120"},
        {file, 5001000000, "-60"},
        // After it the last line, or the last type if there is no line.
        {first + table + "\nABC-7\n", 5001000000, "-420"},
        {first + table + "\n\n", 5001000000, "-60"},
        {first, 1000, "-540"},
        {Block(4, {}, {1}, 3) + Block(8, {{0, 1}}, {9, 2}, 2) + "\nABC-7\n", -1, "-540"},
        {first + Block(8, {}, {3}) + "\nABC-1\n", 0, "-60"},
        {Block(4, {{-2000000000, 0}, {2000000000, 1}}, {1, 2}), 1999999999, "-60"},
        {Block(4, {{-2000000000, 0}, {2000000000, 1}}, {1, 2}), 2000000000, "-120"},
        // What cannot be read leaves the last line, and a type that does not exist leaves nothing.
        {first + table.substr(0, 50) + "\nABC-1\n", 0, "-60"},
        {"TZif2\nABC-2\n", 0, "-120"},
        {first + Block(8, {{0, 1}, {9, 0}}, {3}) + "\nABC-1\n", 1, "none"},
        {"TZif2" + std::string(15, '\0') + std::string(24, '\xFF') + "\n", 0, "none"},
        {"TZif2" + std::string(200, '\n') + "ABC-2\n", 0, "-120"},
    };
    for (const auto& c : cases) EXPECT_EQ(BiasAt(c.content, c.seconds), c.bias) << &c - cases;
}

// Every zone of this system, wherever one is installed, as the C library has it.
TEST(ZoneFile, AgreesWithTheCLibrary)
{
    const char* const kept = std::getenv("TZ");
    const std::string before = kept ? kept : "";
    const files::path folder = "/usr/share/zoneinfo";
    std::error_code ignored;
    for (files::recursive_directory_iterator at(folder, ignored), end; at != end; at.increment(ignored)) {
        const std::string path = at->path().string();
        const bool otherScale = path.find("/right") != std::string::npos;  // counts leap seconds
        const std::string content = otherScale || !at->is_regular_file() ? std::string() : Platform::ReadZoneFile(path);
        if (content.empty()) continue;
        setenv("TZ", (':' + path).c_str(), 1);
        tzset();
        int wrong = 0;
        for (std::time_t seconds = 0; seconds < std::time_t{131} * 365 * 86400; seconds += 12345678) {
            std::tm local{};
            localtime_r(&seconds, &local);
            if (BiasAt(content, seconds) != std::to_string(-local.tm_gmtoff / 60)) ++wrong;
        }
        EXPECT_EQ(wrong, 0) << path;
    }
    kept ? setenv("TZ", before.c_str(), 1) : unsetenv("TZ");
    tzset();
}

}  // namespace
