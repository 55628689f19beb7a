// A configuration for the length of a test.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <initializer_list>
#include <string>
#include <variant>

struct ConfiguredValue {
    const char* key;  // below HKEY_LOCAL_MACHINE
    const char* name;
    std::variant<std::uint32_t, std::string> value;
};

class Configured {
public:
    Configured(std::initializer_list<ConfiguredValue> values) : name_(testing::TempDir() + "orv_configured.reg")
    {
        std::ofstream file(name_);
        for (const ConfiguredValue& entry : values) {
            file << "[HKEY_LOCAL_MACHINE\\" << entry.key << "]\n\"" << entry.name << "\"=";
            if (const auto* number = std::get_if<std::uint32_t>(&entry.value)) {
                file << "dword:" << std::hex << *number << "\n";
            } else {
                file << '"' << std::get<std::string>(entry.value) << "\"\n";
            }
        }
        setenv("ORV_REGISTRY", name_.c_str(), 1);
    }
    Configured(const Configured&) = delete;
    Configured& operator=(const Configured&) = delete;
    ~Configured()
    {
        unsetenv("ORV_REGISTRY");
        std::remove(name_.c_str());
    }

private:
    std::string name_;
};
