// Values as an administrator sets them: on Windows by "reg add", elsewhere by a line of the configuration file. Both
// must read alike.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

#include "platform/configuration.h"

struct ConfigurationCase {
    const char* name;  // without one the default value of the key
    const char* type;
    const char* data;      // as "reg add" takes it
    const char* fileData;  // as the file has it
    std::optional<std::uint32_t> number;
    std::optional<std::u16string> text;
};

inline const ConfigurationCase kConfigurationCases[] = {
    {"StoreGenericParamsToDBFields", "REG_DWORD", "1", "dword:00000001", 1, {}},
    {"DebugWindowSourcePrefix", "REG_DWORD", "0", "dword:0", 0, {}},
    {"Hesk actions", "REG_DWORD", "0xfffffffe", "dword:FFFFFFFE", 0xFFFFFFFE, {}},
    {"DumpFolder", "REG_SZ", "C:\\site 7\\dumps", "\"C:\\\\site 7\\\\dumps\"", {}, u"C:\\site 7\\dumps"},
    {"Digits", "REG_SZ", "3", "\"3\"", {}, u"3"},
    {"Empty", "REG_SZ", "", "\"\"", {}, u""},
    {"", "REG_SZ", "default", "\"default\"", {}, u"default"},
    {"Bytes", "REG_BINARY", "01000000", "hex:01,00,00,00", {}, {}},
    {"Lines", "REG_MULTI_SZ", "a\\0b", "hex(7):61,00,00,00,62,00,00,00,\\\n  00,00", {}, {}},
};

inline void ExpectConfigurationCases(std::u16string_view key)
{
    for (const ConfigurationCase& test : kConfigurationCases) {
        const std::string name(test.name);
        const std::u16string wide(name.begin(), name.end());
        EXPECT_EQ(Platform::Configuration::ReadNumber(key, wide), test.number) << name;
        EXPECT_EQ(Platform::Configuration::ReadText(key, wide), test.text) << name;
    }
}
