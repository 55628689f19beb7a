// Diagnostics: a producer's DebugOut hands a message to the streamer, which routes it to the outputs that are on.
//
// A diagnostic failure never becomes a fault of the application: what an output raises ends here. What the filter
// holds back costs the test of the filter and nothing else.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "ulmo/critical_section.h"
#include "ulmo/debug_out_settings.h"
#include "ulmo/reference_count.h"

namespace Ulmo {

enum DebugLevel : std::uint32_t {
    DebugLevelError = 0,
    DebugLevelSecurity = 1,
    DebugLevelWarning = 2,
    DebugLevelInfo = 3,
    DebugLevelDebug = 4,
};

// Five characters: "ERROR", "SECTY", "WARNG", "INFO ", "DEBUG"; any other level is "UNKNOWN".
std::u16string_view DebugLevelLabel(std::uint32_t level);

struct DebugOutMessage {
    std::uint32_t number;  // counted by the process from 1
    const char* source;    // the name of the producing unit in the ANSI code page; may be null
    std::uint32_t level;
};

// One output. Any thread may write; each implementation protects its own resource.
class IDebugOutStreamerObject : public VirtualReferenceCountBaseClass {
public:
    // The source is that of the message in wide characters. May raise.
    virtual void Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text) = 0;
    virtual void Flush() {}
    virtual void Close() {}  // nothing is written afterwards
};

// The kinds of outputs, as bits of a mask.
enum DebugStreamerKind : std::uint32_t {
    DebugStreamerConsole = 1,
    DebugStreamerDebugWindow = 2,
    DebugStreamerFile = 4,
    DebugStreamerEventLog = 8,
    DebugStreamerHistory = 16,
};

// What the owner of a streamer can rule.
class IDebugOutStreamerProperties {
public:
    // Switches the outputs of the mask on, those of the other bits off unless `addOnly`. Unknown bits are passed over.
    // Raises when an output cannot be made; that one stays off, and those behind it are as they were.
    virtual void Enable(std::uint32_t kinds, bool addOnly = false) = 0;
    // The output of a kind, for what only that kind has; null while it is off.
    virtual CountedPtr<IDebugOutStreamerObject> Find(std::uint32_t kind) = 0;

protected:
    ~IDebugOutStreamerProperties() = default;
};

class DebugOutStreamer : public IDebugOutStreamerProperties, public VirtualReferenceCountBaseClass {
public:
    // The one that the library's own messages go to. The debug window is on.
    static CountedPtr<DebugOutStreamer> Common();

    void Enable(std::uint32_t kinds, bool addOnly = false) override;
    CountedPtr<IDebugOutStreamerObject> Find(std::uint32_t kind) override;

    // False when no output is on. What an output raises does not keep the message from the others.
    bool Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text);

protected:
    virtual CountedPtr<IDebugOutStreamerObject> Make(std::uint32_t kind);  // may raise

private:
    void SwitchOn(std::uint32_t kind);
    void SwitchOff(std::uint32_t kind);

    CriticalSection section_;
    std::map<std::uint32_t, CountedPtr<IDebugOutStreamerObject>> streamers_;  // by kind
    std::vector<std::uint32_t> active_;                                       // the kinds that are on
};

// A producer's handle.
class DebugOut {
public:
    // The first one reads the settings. The source outlives the handle.
    explicit DebugOut(const char* source, CountedPtr<DebugOutStreamer> streamer = DebugOutStreamer::Common());

    void SetEnabled(bool enabled) noexcept { enabled_.store(enabled, std::memory_order_relaxed); }
    // For producers whose text takes work to make.
    bool IsEnabled(std::uint32_t level) const noexcept
    {
        return level < limit_ && enabled_.load(std::memory_order_relaxed);
    }
    void Write(std::uint32_t level, std::u16string_view text) noexcept
    {
        if (IsEnabled(level)) Send(level, text);
    }

private:
    void Send(std::uint32_t level, std::u16string_view text) noexcept;

    CountedPtr<DebugOutStreamer> streamer_;
    std::string_view source_;
    std::uint32_t limit_;  // of the source; the settings never change
    std::atomic<bool> enabled_{true};
};

namespace Diagnostics {

// The settings of the process; null before the first DebugOut and after End.
const DebugOutSettings* Settings() noexcept;

// Gives the settings and the common streamer back when the library is unloaded. Messages that come afterwards go to
// the debug sink.
void End() noexcept;

}  // namespace Diagnostics

}  // namespace Ulmo
