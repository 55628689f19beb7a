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

    // Messages of a source are shown when their level lies below its limit: a limit of 4 shows levels 0 to 3. Without a
    // name or a limit of its own a source has the default one. Names in any case of a to z.
    std::uint32_t LimitOf(std::string_view source) const noexcept;
    bool IsEnabled(std::string_view source, std::uint32_t level) const noexcept { return level < LimitOf(source); }

    std::uint32_t ConsoleTimeMode() const { return consoleTimeMode_; }
    bool DebugWindowSourcePrefix() const { return debugWindowSourcePrefix_ != 0; }

private:
    std::uint32_t defaultLimit_ = kDefaultLimit;
    std::uint32_t consoleTimeMode_ = 0;
    std::uint32_t debugWindowSourcePrefix_ = 1;
    std::map<std::string, std::uint32_t> limits_;  // by the name in upper case
};

}  // namespace Ulmo
