// What the administrator of the machine has configured: values of keys below HKEY_LOCAL_MACHINE.
//
// On Windows that is the registry in its 64-bit view. Elsewhere the same keys stand in a text file in the format that
// the registry exports, UTF-8 or UTF-16 with a byte order mark: the one that the environment variable ORV_REGISTRY
// names, else /etc/tessarine/orv.reg. Lines that cannot be read are reported to the debug sink and skipped.
//
//     [HKEY_LOCAL_MACHINE\SOFTWARE\Tessarine\Orv\Server\PLC]
//     "StoreGenericParamsToDBFields"=dword:00000001
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Platform::Configuration {

// The value of a key, such as SOFTWARE\Tessarine\Orv; names in any case. Nothing when key or value are missing, cannot
// be read or are of another type. Each call looks again.
std::optional<std::uint32_t> ReadNumber(std::u16string_view key, std::u16string_view value);
std::optional<std::u16string> ReadText(std::u16string_view key, std::u16string_view value);

// All values of a key that are numbers, with their names as they are written there; in no particular order.
std::vector<std::pair<std::u16string, std::uint32_t>> ReadNumbers(std::u16string_view key);

}  // namespace Platform::Configuration
