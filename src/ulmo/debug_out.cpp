#include "ulmo/debug_out.h"

#include <array>
#include <mutex>

#include "platform/debug_output.h"
#include "ulmo/debug_out_streamers.h"
#include "ulmo/event_log.h"
#include "ulmo/string_conversion.h"

namespace Ulmo {

namespace {

constexpr std::array<std::u16string_view, 5> kLabels = {u"ERROR", u"SECTY", u"WARNG", u"INFO ", u"DEBUG"};

constexpr std::size_t kStreamerKinds = 5;

// Never destroyed but by End: threads may still write when the process ends.
constinit std::atomic<const DebugOutSettings*> settings{nullptr};
constinit DebugOutStreamer* common = nullptr;

std::mutex& Section()
{
    static std::mutex& section = *new std::mutex;
    return section;
}

// Read once, by whoever comes first. After End they are read again.
const DebugOutSettings& NeedSettings()
{
    if (const DebugOutSettings* present = settings.load(std::memory_order_acquire)) return *present;
    const std::lock_guard<std::mutex> guard(Section());
    // Another thread may have read them while this one waited.
    if (!settings.load(std::memory_order_relaxed)) {
        settings.store(new DebugOutSettings(DebugOutSettings::Read()), std::memory_order_release);
    }
    return *settings.load(std::memory_order_relaxed);
}

std::uint32_t NextNumber()
{
    static constinit std::atomic<std::uint32_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace

std::u16string_view DebugLevelLabel(std::uint32_t level)
{
    return level < kLabels.size() ? kLabels[level] : u"UNKNOWN";
}

CountedPtr<DebugOutStreamer> DebugOutStreamer::Common()
{
    NeedSettings();
    const std::lock_guard<std::mutex> guard(Section());
    if (!common) {
        auto streamer = MakeCounted<DebugOutStreamer>();
        streamer->Enable(DebugStreamerDebugWindow);
        streamer->AddRef();  // the reference of the global pointer
        common = streamer.get();
    }
    return CountedPtr<DebugOutStreamer>(common);
}

void DebugOutStreamer::Enable(std::uint32_t kinds, bool addOnly)
{
    NeedSettings();  // which outputs look at when they are made
    const CriticalSectionGuard guard(section_);
    for (std::size_t bit = 0; bit < kStreamerKinds; ++bit) {
        const std::uint32_t kind = 1u << bit;
        if (kinds & kind) {
            SwitchOn(kind);
        } else if (!addOnly) {
            SwitchOff(kind);
        }
    }
}

// A failure in between leaves the kind off.
void DebugOutStreamer::SwitchOn(std::uint32_t kind)
{
    if (streamers_.contains(kind)) return;
    // After this only making the output can fail.
    active_.reserve(kStreamerKinds);
    streamers_.emplace(kind, Make(kind));
    active_.push_back(kind);
}

void DebugOutStreamer::SwitchOff(std::uint32_t kind)
{
    const auto found = streamers_.find(kind);
    if (found == streamers_.end()) return;
    // Closed last: a thread that writes at this moment still holds the output.
    const CountedPtr<IDebugOutStreamerObject> streamer = std::move(found->second);
    streamers_.erase(found);
    std::erase(active_, kind);
    streamer->Close();
}

CountedPtr<IDebugOutStreamerObject> DebugOutStreamer::Make(std::uint32_t kind)
{
    const auto counted = [](auto* streamer) { return CountedPtr<IDebugOutStreamerObject>(streamer); };
    switch (kind) {
    case DebugStreamerConsole: return counted(new ConsoleOutputStreamer);
    case DebugStreamerDebugWindow: return counted(new DebugWindowOutputStreamer);
    case DebugStreamerFile: return counted(new FileOutputStreamer);
    case DebugStreamerEventLog: return counted(new EventlogOutputStreamer);
    default: return counted(new OutputHistoryStreamer);
    }
}

CountedPtr<IDebugOutStreamerObject> DebugOutStreamer::Find(std::uint32_t kind)
{
    const CriticalSectionGuard guard(section_);
    const auto found = streamers_.find(kind);
    return found != streamers_.end() ? found->second : CountedPtr<IDebugOutStreamerObject>();
}

// The section is held while the set is read and not while the outputs work.
bool DebugOutStreamer::Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text)
{
    std::array<CountedPtr<IDebugOutStreamerObject>, kStreamerKinds> outputs;
    std::size_t count = 0;
    {
        const CriticalSectionGuard guard(section_);
        for (const std::uint32_t kind : active_) outputs[count++] = streamers_.at(kind);
    }
    for (std::size_t i = 0; i < count; ++i) {
        try {
            outputs[i]->Write(message, source, text);
        } catch (...) {  // a failing output is not a fault of the application
        }
    }
    return count != 0;
}

DebugOut::DebugOut(const char* source, CountedPtr<DebugOutStreamer> streamer)
    : streamer_(std::move(streamer)), source_(source ? source : ""), limit_(NeedSettings().LimitOf(source_))
{}

void DebugOut::Send(std::uint32_t level, std::u16string_view text) noexcept
try {
    const DebugOutMessage message{NextNumber(), source_.data(), level};
    const bool written = streamer_ && streamer_->Write(message, WideFromAnsi(source_), text);
    // Without settings the diagnostics have not begun or have ended, and the text would be lost.
    if (!written && !Diagnostics::Settings()) Platform::WriteDebug(std::u16string(u"STATOUT: ").append(text));
} catch (...) {  // likewise: no memory, or a source that the system cannot widen
}

const DebugOutSettings* Diagnostics::Settings() noexcept
{
    return settings.load(std::memory_order_acquire);
}

void Diagnostics::End() noexcept
{
    const std::lock_guard<std::mutex> guard(Section());
    delete settings.exchange(nullptr);
    if (common) std::exchange(common, nullptr)->Release();
    EventLog::End();
}

}  // namespace Ulmo
