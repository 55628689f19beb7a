// The exported replacements of the Windows string calls; on Windows the originals stand in their place.
#include "OrvActions/OrvSystemStrings.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

TEST(PosixSystemStrings, FollowTheOriginals)
{
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    OrvBStr text = SysAllocString(u"abc");
    EXPECT_EQ(SysStringLen(text), 3U);
    EXPECT_EQ(SysStringByteLen(text), 6U);
    SysFreeString(text);

    text = SysAllocStringLen(nullptr, 5);
    EXPECT_EQ(SysStringLen(text), 5U);
    EXPECT_EQ(text[5], u'\0');
    SysFreeString(text);

    text = SysAllocStringByteLen("abc", 3);  // an odd length is kept, and the zero unit follows the last byte
    EXPECT_EQ(SysStringByteLen(text), 3U);
    EXPECT_EQ(SysStringLen(text), 1U);
    const char* bytes = reinterpret_cast<const char*>(text);
    EXPECT_EQ(std::string_view(bytes, 5), std::string_view("abc\0\0", 5));
    SysFreeString(text);

    EXPECT_EQ(SysStringLen(nullptr), 0U);
    EXPECT_EQ(SysStringByteLen(nullptr), 0U);
    SysFreeString(nullptr);
}

TEST(PosixSystemStrings, RefuseHostileSizes)
{
    EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFF), nullptr);
    EXPECT_EQ(SysAllocStringLen(nullptr, 0x80000000), nullptr);
    EXPECT_EQ(SysAllocStringLen(nullptr, 0x7FFFFFFF), nullptr);
    EXPECT_EQ(SysAllocStringByteLen(nullptr, 0xFFFFFFFF), nullptr);
}

TEST(PosixSystemStrings, TaskMemoryHoldsNothingToo)
{
    void* block = CoTaskMemAlloc(0);
    EXPECT_NE(block, nullptr);
    CoTaskMemFree(block);
    CoTaskMemFree(nullptr);
}

}  // namespace
