#include "platform/configuration.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "events/event_settings.h"
#include "platform/configuration_cases.h"
#include "platform/windows/windows_api.h"

namespace {

using Platform::Configuration::ReadNumber;
using Platform::Configuration::ReadText;

// A key of the 64-bit view that goes with the test.
class RegistryKey {
public:
    explicit RegistryKey(const wchar_t* path) : path_(path)
    {
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, 0, KEY_WRITE | KEY_WOW64_64KEY, nullptr, &key_, nullptr);
    }
    ~RegistryKey()
    {
        RegCloseKey(key_);
        RegDeleteKeyExW(HKEY_LOCAL_MACHINE, path_, KEY_WOW64_64KEY, 0);
    }
    void Set(const wchar_t* name, DWORD type, const void* data, std::size_t size)
    {
        ASSERT_EQ(RegSetValueExW(key_, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)),
                  ERROR_SUCCESS);
    }
    void SetNumber(const wchar_t* name, DWORD value) { Set(name, REG_DWORD, &value, sizeof value); }
    void SetText(const wchar_t* name, const std::u16string& text)
    {
        Set(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(char16_t));
    }

private:
    const wchar_t* path_;
    HKEY key_ = nullptr;
};

TEST(WindowsConfiguration, ReadsTheRegistry)
{
    RegistryKey registry(L"SOFTWARE\\OrvConfigurationTest");
    const std::u16string_view key = u"software\\orvconfigurationtest";
    const std::u16string longText(1000, u'\u00e4');
    registry.SetNumber(L"Number", 0xFFFFFFFF);
    registry.SetText(L"Empty", u"");
    registry.SetText(L"Long", longText);
    EXPECT_EQ(ReadNumber(key, u"NUMBER"), 0xFFFFFFFFu);
    EXPECT_EQ(ReadText(key, u"Empty"), u"");
    EXPECT_EQ(ReadText(key, u"Long"), longText);
    EXPECT_EQ(ReadText(key, u"Number"), std::nullopt);
    EXPECT_EQ(ReadNumber(key, u"Long"), std::nullopt);
    EXPECT_EQ(ReadNumber(key, u"None"), std::nullopt);
    EXPECT_EQ(ReadNumber(u"SOFTWARE\\OrvNoSuchKey", u"Number"), std::nullopt);
}

int RunReg(const std::string& arguments)
{
    return std::system(("reg " + arguments + " /f >nul").c_str());
}

// In the 64-bit view; what a 32-bit program has set is in the other one and is not seen.
TEST(WindowsConfiguration, ReadsWhatAdministratorsSet)
{
    const std::string key = "HKLM\\SOFTWARE\\OrvConfigurationCases";
    for (const ConfigurationCase& test : kConfigurationCases) {
        const std::string name(test.name);
        const std::string value = name.empty() ? "/ve" : "/v \"" + name + '"';
        const std::string typed = std::string(" /t ").append(test.type).append(" /d \"").append(test.data).append("\"");
        EXPECT_EQ(RunReg("add " + key + ' ' + value + typed + " /reg:64"), 0) << name;
    }
    EXPECT_EQ(RunReg("add " + key + " /v Other /t REG_DWORD /d 1 /reg:32"), 0);
    ExpectConfigurationCases(u"SOFTWARE\\OrvConfigurationCases");
    EXPECT_EQ(ReadNumber(u"SOFTWARE\\OrvConfigurationCases", u"Other"), std::nullopt);
    for (const char* view : {" /reg:64", " /reg:32"}) EXPECT_EQ(RunReg("delete " + key + view), 0);
}

TEST(WindowsConfiguration, RulesGenericParametersOfEvents)
{
    {
        RegistryKey registry(L"SOFTWARE\\Tessarine\\Orv\\Server\\PLC");
        registry.SetNumber(L"StoreGenericParamsToDBFields", 2);
        OrvPLC::EventSettings::Read();
        EXPECT_TRUE(OrvPLC::EventSettings::StoreGenericParameters);
    }
    OrvPLC::EventSettings::Read();
    EXPECT_FALSE(OrvPLC::EventSettings::StoreGenericParameters);
}

}  // namespace
