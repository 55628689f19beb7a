#include "ulmo/unit_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

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
}

}  // namespace
