#include "ulmo/debug_out_settings.h"

#include <algorithm>

#include "platform/configuration.h"
#include "ulmo/string_conversion.h"

namespace Ulmo {

namespace {

constexpr std::u16string_view kKey = u"Software\\Tessarine\\Orv\\DebugOut";
constexpr std::u16string_view kFilterKey = u"Software\\Tessarine\\Orv\\DebugOut\\Filter";

char UpperCase(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

}  // namespace

DebugOutSettings DebugOutSettings::Read()
{
    using namespace Platform::Configuration;
    constexpr std::uint32_t kLargestLimit = 0x7FFFFFFF;
    DebugOutSettings settings;
    settings.consoleTimeMode_ = ReadNumber(kKey, u"ConsoleTimeMode").value_or(settings.consoleTimeMode_);
    settings.debugWindowSourcePrefix_ =
        ReadNumber(kKey, u"DebugWindowSourcePrefix").value_or(settings.debugWindowSourcePrefix_);
    for (const auto& [name, limit] : ReadNumbers(kFilterKey)) {
        if (limit > kLargestLimit) continue;  // negative
        std::string source = AnsiFromWide(name);
        std::transform(source.begin(), source.end(), source.begin(), UpperCase);
        settings.limits_.insert_or_assign(std::move(source), limit);
    }
    return settings;
}

std::uint32_t DebugOutSettings::LimitOf(std::string_view source) const noexcept
{
    if (source.empty()) return defaultLimit_;
    for (const auto& [name, limit] : limits_) {
        // The stored name is in upper case already.
        const auto same = [](char letter, char stored) { return UpperCase(letter) == stored; };
        if (std::equal(source.begin(), source.end(), name.begin(), name.end(), same)) return limit;
    }
    return defaultLimit_;
}

}  // namespace Ulmo
