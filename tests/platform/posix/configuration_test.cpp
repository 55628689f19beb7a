#include "platform/configuration.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>

#include "events/event_settings.h"
#include "platform/configuration_cases.h"

namespace {

using Platform::Configuration::ReadNumber;
using Platform::Configuration::ReadText;

// A configuration for the length of a test.
class RegistryFile {
public:
    explicit RegistryFile(std::string_view content) : name_(testing::TempDir() + "orv_configuration_test.reg")
    {
        std::ofstream(name_, std::ios::binary) << content;
        setenv("ORV_REGISTRY", name_.c_str(), 1);
    }
    ~RegistryFile()
    {
        unsetenv("ORV_REGISTRY");
        std::remove(name_.c_str());
    }

private:
    std::string name_;
};

constexpr std::string_view kFile = R"(Windows Registry Editor Version 5.00

; a comment
[HKEY_LOCAL_MACHINE\SOFTWARE\Orv]
"Number"=dword:0000000A
"number 2" = dword:FFFFFFFF
"Twice"=dword:1
"Text"="C:\\folder \"x\" \u00e4"
"Gone"=dword:1
"Gone"=-
"Bytes"=dword:1
"Bytes"=hex:01,02,\
  03,04,\
  05
"Behind"="yes" ; said twice
"Commented"=dword:11 ; [or more]
@="default"
[hkey_local_machine\software\orv]
"twice"=dword:2
[HKEY_LOCAL_MACHINE\SOFTWARE\Odd]k] ; see [1]
"Number"=dword:6
[HKEY_LOCAL_MACHINE\SOFTWARE\Orv\Below]
"Number"=dword:3
[HKEY_CURRENT_USER\SOFTWARE\Orv]
"Number"=dword:4
[HKEY_LOCAL_MACHINE\SOFTWARE\Removed]
"Number"=dword:5
"Text"="none"
[-HKEY_LOCAL_MACHINE\SOFTWARE\Removed]
[HKEY_LOCAL_MACHINE\SOFTWARE\Removed]
"Text"="new"
)";

TEST(PosixConfiguration, ReadsTheFormatOfTheRegistry)
{
    const RegistryFile file(kFile);
    const std::u16string_view key = u"Software\\ORV";
    EXPECT_EQ(ReadNumber(key, u"NUMBER"), 10u);
    EXPECT_EQ(ReadNumber(key, u"Number 2"), 0xFFFFFFFFu);
    EXPECT_EQ(ReadNumber(key, u"Twice"), 2u);
    EXPECT_EQ(ReadNumber(u"SOFTWARE\\Orv\\Below", u"Number"), 3u);
    EXPECT_EQ(ReadText(key, u"Text"), u"C:\\folder \"x\" u00e4");
    EXPECT_EQ(ReadText(key, u"Behind"), u"yes");
    EXPECT_EQ(ReadNumber(key, u"Commented"), 17u);
    EXPECT_EQ(ReadNumber(u"SOFTWARE\\Odd] ;k", u"Number"), std::nullopt);
    EXPECT_EQ(ReadNumber(u"SOFTWARE\\Odd]k", u"Number"), 6u);
    EXPECT_EQ(ReadText(key, u""), u"default");
    for (const auto* missing : {u"Gone", u"Bytes", u"Text", u"None"}) EXPECT_EQ(ReadNumber(key, missing), std::nullopt);
    EXPECT_EQ(ReadText(key, u"Number"), std::nullopt);
    EXPECT_EQ(ReadNumber(u"SOFTWARE\\Removed", u"Number"), std::nullopt);
    EXPECT_EQ(ReadText(u"SOFTWARE\\Removed", u"Text"), u"new");
    EXPECT_EQ(ReadNumber(u"SOFTWARE", u"Number"), std::nullopt);
}

TEST(PosixConfiguration, ReadsWhatAdministratorsSet)
{
    std::string content = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\OrvConfigurationCases]\n";
    for (const ConfigurationCase& test : kConfigurationCases) {
        const std::string name(test.name);
        content.append(name.empty() ? "@" : '"' + name + '"').append("=").append(test.fileData).append("\n");
    }
    const RegistryFile file(content);
    ExpectConfigurationCases(u"SOFTWARE\\OrvConfigurationCases");
}

TEST(PosixConfiguration, Utf16AsTheRegistryExportsIt)
{
    const std::u16string text = u"\ufeff[HKEY_LOCAL_MACHINE\\K]\r\n\"t\"=\"\u00c4\u20ac\"";
    const RegistryFile file({reinterpret_cast<const char*>(text.data()), text.size() * 2});
    EXPECT_EQ(ReadText(u"K", u"t"), u"\u00c4\u20ac");
}

TEST(PosixConfiguration, WhatIsNoFileHoldsNothing)
{
    for (const auto* name : {"/nonexistent/orv.reg", "/", "/dev/zero", ""}) {
        setenv("ORV_REGISTRY", name, 1);
        EXPECT_EQ(ReadNumber(u"K", u"n"), std::nullopt) << name;
    }
    const std::string content = "[HKEY_LOCAL_MACHINE\\K]\n\"n\"=dword:1\n";
    for (const bool large : {false, true}) {
        const RegistryFile file(std::string((1 << 20) - content.size() + (large ? 1 : 0), '\n') + content);
        EXPECT_EQ(ReadNumber(u"K", u"n").has_value(), !large);
    }
}

// The lines around a broken one count, but for those below a broken key; what is wrong goes to the debug sink, which is
// opened once a process.
TEST(PosixConfigurationDeathTest, BrokenLinesAreToldAndLeftOut)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const struct {
        const char* line;
        const char* message;
    } cases[] = {
        {"\"x\"=dword:123456789", "a dword has one to eight hexadecimal digits"},
        {"\"x\"=dword:", "a dword has one to eight hexadecimal digits"},
        {"\"x\"=dword:0x1", "a dword has one to eight hexadecimal digits"},
        {"\"x\"=\"open", "the text has no closing quote"},
        {"\"x", "the text has no closing quote"},
        {"\"x\"=\"a\" b", "something follows the text"},
        {"\"x\" dword:1", "expected = behind the name"},
        {"\"x\"=qword:1", "expected dword:, hex: or a text in quotes"},
        {"[HKEY_LOCAL_MACHINE", "the key has no closing bracket"},
        {"[HKEY_LOCAL_MACHINE\\K] x", "the key has no closing bracket"},
        {"[HKLM\\SOFTWARE\\Orv]", "the key does not begin with a root such as HKEY_LOCAL_MACHINE"},
        {"\"x\"=dword:1 2 ; two", "a dword has one to eight hexadecimal digits"},
        {"x=1", "expected a .key., a \"name\"=value or a comment"},
    };
    for (const auto& [line, message] : cases) {
        const auto run = [line = line] {
            setenv("ORV_DEBUG_OUTPUT", "1", 1);
            const RegistryFile file("[HKEY_LOCAL_MACHINE\\K]\n\"x\"=dword:7\n" + std::string(line) +
                                    "\n\"y\"=dword:8\n\n; the end\n");
            std::exit(ReadNumber(u"K", u"x") != 7u || (line[0] == '[') == ReadNumber(u"K", u"y").has_value() ? 1 : 0);
        };
        EXPECT_EXIT(run(), testing::ExitedWithCode(0), std::string("test.reg:3: ") + message + "\n$");
    }
    const std::pair<std::string, const char*> files[] = {
        {std::string((1 << 20) + 1, '\n'), "test.reg: larger than a megabyte\n$"},
        {"\"x\"=dword:7\n", "test.reg:1: a value before the first .key.\n$"}};
    for (const auto& [content, message] : files) {
        const auto run = [&content = content] {
            setenv("ORV_DEBUG_OUTPUT", "1", 1);
            const RegistryFile file(content);
            std::exit(ReadNumber(u"K", u"x") ? 1 : 0);
        };
        EXPECT_EXIT(run(), testing::ExitedWithCode(0), message);
    }
    const auto missing = [] {
        setenv("ORV_DEBUG_OUTPUT", "1", 1);
        setenv("ORV_REGISTRY", "/nonexistent", 1);
        std::exit(ReadNumber(u"K", u"x") ? 1 : 0);
    };
    EXPECT_EXIT(missing(), testing::ExitedWithCode(0), "^/nonexistent: No such file or directory\n$");
}

// A process of its own reads the flag while the library loads.
TEST(PosixConfigurationDeathTest, TheFlagOfGenericParametersIsReadAtLoad)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const RegistryFile file(
        "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tessarine\\Orv\\Server\\PLC]\n\"StoreGenericParamsToDBFields\"=dword:1\n");
    EXPECT_EXIT(std::exit(OrvPLC::EventSettings::StoreGenericParameters ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST(PosixConfiguration, RulesGenericParametersOfEvents)
{
    const auto flagWith = [](std::string_view value) {
        const RegistryFile file("[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tessarine\\Orv\\Server\\PLC]\n" + std::string(value));
        OrvPLC::EventSettings::Read();
        return OrvPLC::EventSettings::StoreGenericParameters;
    };
    EXPECT_TRUE(flagWith("\"StoreGenericParamsToDBFields\"=dword:2"));
    EXPECT_FALSE(flagWith("\"StoreGenericParamsToDBFields\"=\"1\""));
    EXPECT_TRUE(flagWith("\"storegenericparamstodbfields\"=dword:1"));
    EXPECT_FALSE(flagWith("\"StoreGenericParamsToDBFields\"=dword:0"));
}

}  // namespace
