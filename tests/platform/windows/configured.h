// A configuration for the length of a test: keys of the 64-bit view that go with it.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <variant>
#include <vector>

#include "platform/windows/windows_api.h"

struct ConfiguredValue {
    const char* key;  // below HKEY_LOCAL_MACHINE
    const char* name;
    std::variant<std::uint32_t, std::string> value;
};

class Configured {
public:
    Configured(std::initializer_list<ConfiguredValue> values)
    {
        for (const ConfiguredValue& entry : values) {
            HKEY key = nullptr;
            EXPECT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, entry.key, 0, nullptr, 0, KEY_WRITE | KEY_WOW64_64KEY,
                                      nullptr, &key, nullptr),
                      ERROR_SUCCESS);
            const auto* number = std::get_if<std::uint32_t>(&entry.value);
            const auto* text = std::get_if<std::string>(&entry.value);
            const auto* data = number ? static_cast<const void*>(number) : text->c_str();
            EXPECT_EQ(RegSetValueExA(key, entry.name, 0, number ? REG_DWORD : REG_SZ, static_cast<const BYTE*>(data),
                                     static_cast<DWORD>(number ? sizeof *number : text->size() + 1)),
                      ERROR_SUCCESS);
            RegCloseKey(key);
            keys_.emplace_back(entry.key);
        }
    }
    Configured(const Configured&) = delete;
    Configured& operator=(const Configured&) = delete;
    ~Configured()
    {
        for (; !keys_.empty(); keys_.pop_back()) {
            RegDeleteKeyExA(HKEY_LOCAL_MACHINE, keys_.back().c_str(), KEY_WOW64_64KEY, 0);
        }
    }

private:
    std::vector<std::string> keys_;
};
