#include "ulmo/guid_tools.h"

#include <gtest/gtest.h>

namespace {

namespace GuidTools = Ulmo::GuidTools;

constexpr TOrvGuid kGuid = {0x01234567, 0x89AB, 0xCDEF, {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE}};
constexpr const char* kText = "01234567-89ab-cdef-1032-547698badcfe";

TEST(GuidTools, WritesLowerCaseWithoutBraces)
{
    EXPECT_EQ(GuidTools::GuidToStringA(kGuid), kText);
    EXPECT_EQ(GuidTools::GuidToStringW(kGuid), u"01234567-89ab-cdef-1032-547698badcfe");
}

TEST(GuidTools, ReadsWhatFollowsThePattern)
{
    const std::string cases[] = {kText, "01234567-89AB-CDEF-1032-547698BADCFE", std::string("{") + kText,
                                 std::string("{") + kText + "}", std::string(kText) + "trailing"};
    for (const std::string& text : cases) {
        TOrvGuid narrow{};
        TOrvGuid wide{};
        EXPECT_TRUE(GuidTools::StringToGuidA(text, narrow)) << text;
        EXPECT_TRUE(GuidTools::StringToGuidW(std::u16string(text.begin(), text.end()), wide)) << text;
        EXPECT_TRUE(GuidTools::Equal(narrow, kGuid) && GuidTools::Equal(wide, kGuid)) << text;
    }
    TOrvGuid zero = kGuid;
    EXPECT_TRUE(GuidTools::StringToGuidA("{00000000-0000-0000-0000-000000000000", zero));
    EXPECT_TRUE(GuidTools::IsZero(zero));
    EXPECT_FALSE(GuidTools::IsZero(kGuid));
}

TEST(GuidTools, RefusesAFaultAtEveryPlace)
{
    TOrvGuid guid = kGuid;
    const std::string text = kText;
    for (std::size_t i = 0; i != text.size(); ++i) {
        for (const char fault : {'g', '/', ':', '@', 'G', '`', '\xFF'}) {
            std::string faulty = text;
            faulty[i] = fault;
            EXPECT_FALSE(GuidTools::StringToGuidA(faulty, guid)) << faulty;
        }
        std::u16string faulty(text.begin(), text.end());
        faulty[i] = static_cast<char16_t>(faulty[i] + 0x100);  // the low byte alone would pass
        EXPECT_FALSE(GuidTools::StringToGuidW(faulty, guid)) << i;
        EXPECT_FALSE(GuidTools::StringToGuidA(text.substr(0, i), guid)) << i;
    }
    EXPECT_FALSE(GuidTools::StringToGuidA("{{" + text, guid));
    EXPECT_TRUE(GuidTools::Equal(guid, kGuid));
}

}  // namespace
