// What the administrator of the machine wants to see of the diagnostics. Read once, when the settings are made.
//
//     [HKEY_LOCAL_MACHINE\SOFTWARE\Tessarine\Orv\DebugOut]
//     "ConsoleTimeMode"=dword:00000001
//     [HKEY_LOCAL_MACHINE\SOFTWARE\Tessarine\Orv\DebugOut\Filter]
//     "mymodule"=dword:00000005
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace Ulmo {

class DebugOutSettings {
public:
    static constexpr std::uint32_t kDefaultLimit = 4;

    static DebugOutSettings Read();

    // Whether a message may be shown: its level lies below the limit of its source, or the default limit when the
    // source has none or is empty. A limit of 4 shows levels 0 to 3. Names of sources in any case of a to z.
    bool IsEnabled(std::string_view source, std::uint32_t level) const noexcept;

    std::uint32_t ConsoleTimeMode() const { return consoleTimeMode_; }
    bool DebugWindowSourcePrefix() const { return debugWindowSourcePrefix_ != 0; }

private:
    std::uint32_t LimitOf(std::string_view source) const noexcept;

    std::uint32_t defaultLimit_ = kDefaultLimit;
    std::uint32_t consoleTimeMode_ = 0;
    std::uint32_t debugWindowSourcePrefix_ = 1;
    std::map<std::string, std::uint32_t> limits_;  // by the name in upper case
};

}  // namespace Ulmo
