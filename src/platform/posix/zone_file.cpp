#include "platform/posix/zone_file.h"

#include <fstream>

#include "platform/posix/time_zone_rule.h"

namespace Platform {

namespace {

constexpr std::string_view kMagic = "TZif";
constexpr std::size_t kLargestFile = 0x100000;
constexpr std::size_t kHeaderSize = 44;
constexpr std::size_t kCountsStart = 20;  // of six counts in the header
constexpr std::size_t kTypeSize = 6;      // of a local time type: its offset and its name

std::int64_t BigEndian(std::string_view bytes, std::size_t at, std::size_t size)
{
    // The sign is that of the first byte, and the bits above are filled with it.
    const bool negative = static_cast<signed char>(bytes[at]) < 0;
    std::uint64_t value = negative ? ~std::uint64_t{0} : 0;
    for (std::size_t i = 0; i < size; ++i) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return static_cast<std::int64_t>(value);
}

// One of the two blocks of a file: the first has times of four bytes, the second, which newer files have, of eight.
class Table {
public:
    Table(std::string_view rest, std::size_t timeSize) : rest_(rest), timeSize_(timeSize)
    {
        if (rest.size() < kHeaderSize || !rest.starts_with(kMagic)) return;
        const auto count = [&](std::size_t index) {
            return static_cast<std::uint64_t>(BigEndian(rest, kCountsStart + 4 * index, 4) & 0xFFFFFFFF);
        };
        const std::uint64_t leapSeconds = count(2);
        times_ = count(3);
        types_ = count(4);
        end_ = kHeaderSize + times_ * (timeSize + 1) + types_ * kTypeSize + count(5) + leapSeconds * (timeSize + 4) +
               count(1) + count(0);
        // Six counts of 32 bits times small sizes do not wrap in 64 bits.
        valid_ = end_ <= rest.size();
        if (!valid_) times_ = types_ = 0;
    }

    bool IsValid() const { return valid_; }
    std::string_view Behind() const { return rest_.substr(static_cast<std::size_t>(end_)); }
    bool EndsBefore(std::int64_t seconds) const { return times_ == 0 || Time(times_ - 1) <= seconds; }

    // In seconds east of Greenwich. Before the first transition the first type holds.
    std::optional<std::int64_t> OffsetAt(std::int64_t seconds) const
    {
        std::uint64_t next = 0;
        while (next < times_ && Time(next) <= seconds) ++next;
        const std::size_t typesStart = kHeaderSize + static_cast<std::size_t>(times_) * (timeSize_ + 1);
        const std::size_t indices = typesStart - static_cast<std::size_t>(times_);
        const auto type =
            next == 0 ? 0U : static_cast<unsigned char>(rest_[indices + static_cast<std::size_t>(next) - 1]);
        if (type >= types_) return std::nullopt;
        return BigEndian(rest_, typesStart + type * kTypeSize, 4);
    }

private:
    std::int64_t Time(std::uint64_t index) const
    {
        return BigEndian(rest_, kHeaderSize + static_cast<std::size_t>(index) * timeSize_, timeSize_);
    }

    std::string_view rest_;
    std::size_t timeSize_;
    std::uint64_t times_ = 0;
    std::uint64_t types_ = 0;
    std::uint64_t end_ = 0;
    bool valid_ = false;
};

// The rule stands between two line feeds at the end; empty if there is none.
std::string_view LastLine(std::string_view content)
{
    if (content.empty() || content.back() != '\n') return {};
    content.remove_suffix(1);
    const std::size_t start = content.rfind('\n');
    return start == std::string_view::npos ? std::string_view() : content.substr(start + 1);
}

}  // namespace

std::string ReadZoneFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string content(kMagic.size(), '\0');
    if (!file.read(content.data(), static_cast<std::streamsize>(kMagic.size())) || content != kMagic) return {};
    char chunk[4096];
    do {
        file.read(chunk, sizeof chunk);
        content.append(chunk, static_cast<std::size_t>(file.gcount()));
    } while (file && content.size() <= kLargestFile);
    return content.size() <= kLargestFile ? content : std::string();
}

std::optional<TimeZone> ZoneAt(std::string_view content, std::int64_t seconds, std::uint16_t year)
{
    Table table(content, 4);
    // The second block says the same for more years.
    if (table.IsValid() && table.Behind().starts_with(kMagic)) table = Table(table.Behind(), 8);
    const std::string_view rule = LastLine(content);
    // The rule in the last line takes over where the table ends.
    const bool ruled = !rule.empty() && table.EndsBefore(seconds);
    if (!table.IsValid() || ruled) return ParsePosixRule(rule, year);
    const std::optional<std::int64_t> offset = table.OffsetAt(seconds);
    if (!offset) return std::nullopt;
    TimeZone zone;
    zone.bias = static_cast<std::int32_t>(-*offset / 60);
    return zone;
}

}  // namespace Platform
