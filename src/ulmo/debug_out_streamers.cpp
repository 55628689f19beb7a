#include "ulmo/debug_out_streamers.h"

#include <array>
#include <optional>

#include "platform/debug_output.h"
#include "platform/own_module.h"
#include "ulmo/date_time.h"
#include "ulmo/event_log.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"
#include "ulmo/xml_text.h"

namespace Ulmo {

namespace {

std::u16string Number(std::uint64_t number)
{
    std::u16string text;
    AppendUnsigned(text, number);
    return text;
}

// Levels without a colour keep the console's own.
std::optional<Platform::ConsoleColour> ColourOf(std::uint32_t level)
{
    // Bright red, magenta, yellow and cyan.
    constexpr std::array<Platform::ConsoleColour, 4> kColours = {12, 13, 14, 11};
    if (level < kColours.size()) return kColours[level];
    return std::nullopt;
}

// Empty if the configuration wants no time, else with a blank after it.
std::u16string PresentTime()
{
    constexpr TUlmoDateTimeStrMode kModes[] = {dtsmTimeOnly, dtsmWeekday, dtsmDateAndTime};
    const DebugOutSettings* const settings = Diagnostics::Settings();
    const std::uint32_t mode = settings ? settings->ConsoleTimeMode() : 0;
    // 0 is no time, and so is a number that is no mode.
    if (mode < 1 || mode > std::size(kModes)) return {};
    DateText buffer;
    return std::u16string(ToLocaleText(Now(), buffer, kModes[mode - 1])) + u' ';
}

}  // namespace

std::u16string DebugLine(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text)
{
    std::u16string line(DebugLevelLabel(message.level));
    line.append(u" [").append(source) += u',';
    AppendUnsigned(line, message.number);
    return line.append(u"] ").append(text).append(u"\r\n");
}

ConsoleOutputStreamer::ConsoleOutputStreamer()
    : output_(Platform::ConsoleStream::Kind::Output), error_(Platform::ConsoleStream::Kind::Error)
{
    if (!output_.IsValid()) Platform::WriteDebug(u"ConsoleOutputStreamer::GetStdHandle STD_OUTPUT failed");
    if (!error_.IsValid()) Platform::WriteDebug(u"ConsoleOutputStreamer::GetStdHandle STD_ERROR failed");
}

void ConsoleOutputStreamer::Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text)
{
    const Platform::ConsoleStream& stream = message.level == DebugLevelError ? error_ : output_;
    if (!stream.IsValid()) return;
    const std::u16string line = PresentTime() + DebugLine(message, source, text);
    const CriticalSectionGuard guard(section_);
    stream.Write(line, ColourOf(message.level));
}

DebugWindowOutputStreamer::DebugWindowOutputStreamer()
{
    const DebugOutSettings* const settings = Diagnostics::Settings();
    if (!settings || settings->DebugWindowSourcePrefix()) prefix_ = Platform::OwnModuleName() + u' ';
}

void DebugWindowOutputStreamer::Write(const DebugOutMessage& message, std::u16string_view source,
                                      std::u16string_view text)
{
    Platform::WriteDebug(prefix_ + DebugLine(message, source, text));
}

void EventlogOutputStreamer::Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text)
{
    const std::uint16_t type = message.level == DebugLevelError ? 2 : message.level == DebugLevelWarning ? 1 : 0;
    EventLog::Get()->Write(type, DebugLine(message, source, text));
}

void FileOutputStreamer::SetStream(std::unique_ptr<THugeStream> stream)
{
    const CriticalSectionGuard guard(section_);
    stream_ = std::move(stream);
}

// The element is written with one call, so that a reader of the growing file sees whole lines.
void FileOutputStreamer::Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text)
{
    const CriticalSectionGuard guard(section_);
    if (!stream_) return;
    const auto escaped = [](std::u16string_view part) { return EscapeXml(Utf8FromWide(part)); };
    std::string bytes = "<debugout type=\"" + escaped(DebugLevelLabel(message.level));
    bytes.append("\" filter=\"").append(escaped(source)).append("\">").append(escaped(text)).append("</debugout>\r\n");
    stream_->Write(bytes.data(), bytes.size());
}

void FileOutputStreamer::Close()
{
    SetStream(nullptr);
}

void OutputHistoryStreamer::Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text)
{
    std::u16string line(DebugLevelLabel(message.level));
    line.append(u" : [").append(source).append(u"] ").append(text);
    DebugHistoryEntry entry{Number(message.number), std::u16string(source), std::move(line),
                            Platform::CurrentThreadId(), Now()};
    const CriticalSectionGuard guard(section_);
    entries_.push_back(std::move(entry));
    if (entries_.size() > kLimit) entries_.pop_front();
}

std::vector<DebugHistoryEntry> OutputHistoryStreamer::Snapshot()
{
    const CriticalSectionGuard guard(section_);
    return {entries_.begin(), entries_.end()};
}

}  // namespace Ulmo
