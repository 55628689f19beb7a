#include "ulmo/unit_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

TEST(TerminatedLength, CountsFromEveryAlignment)
{
    alignas(16) char16_t text[64];
    for (std::size_t start = 0; start != 9; ++start) {
        for (std::size_t length = 0; length != 40; ++length) {
            std::fill(std::begin(text), std::end(text), u'\0');
            // Units whose low or high byte is zero must not end the text.
            for (std::size_t i = 0; i != length; ++i) text[start + i] = i % 3 == 0 ? u'\x8000' : u'\x0001';
            EXPECT_EQ(Ulmo::TerminatedLength(text + start), length) << "from unit " << start;
        }
    }
    alignas(16) char packed[64];
    std::memcpy(packed + 1, u"a text of a packed record", sizeof u"a text of a packed record");
    EXPECT_EQ(Ulmo::TerminatedLength(reinterpret_cast<const char16_t*>(packed + 1)), 25u);
}

// `b` ends at every distance from the end of a page, where a block of it would reach into the next one.
TEST(SameTerminated, AsUnitByUnitNearTheEndOfAPage)
{
    constexpr std::size_t kPage = 4096 / sizeof(char16_t);
    std::vector<char16_t> memory(3 * kPage);
    void* start = memory.data();
    std::size_t space = memory.size() * sizeof(char16_t);
    auto* const page = static_cast<char16_t*>(std::align(4096, 4096, start, space));
    ASSERT_NE(page, nullptr);
    const std::u16string names[] = {
        u"",          u"A", u"Camera", u"Seconds", u"SubTypes", u"SecondaryDevice", u"CardholderEntered",
        u"HostNames", std::u16string(40, u'x')};
    for (const std::u16string& name : names) {
        for (std::size_t distance = name.size() + 2; distance != name.size() + 24; ++distance) {
            char16_t* const text = page + kPage - distance;
            std::fill(page, page + kPage + 1, u'x');
            for (std::size_t other = 0; other <= name.size(); ++other) {
                std::copy_n(name.c_str(), name.size() + 1, text);
                EXPECT_TRUE(Ulmo::SameTerminated(name, text));
                text[other] ^= u'\x8000';  // another unit, or none where it ended
                text[name.size() + 1] = 0;
                EXPECT_FALSE(Ulmo::SameTerminated(name, text)) << "unit " << other;
                text[other] = 0;
                EXPECT_EQ(Ulmo::SameTerminated(name, text), other == name.size());
            }
        }
    }
}

}  // namespace
