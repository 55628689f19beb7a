#include "ulmo/number_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Ulmo::TrailingPoint;

TEST(NumberText, WritesIntegersAtTheirLimits)
{
    std::u16string text;
    Ulmo::AppendDecimal(text, std::numeric_limits<std::int64_t>::min());
    Ulmo::AppendDecimal(text, 0);
    Ulmo::AppendUnsigned(text, std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(text, u"-9223372036854775808018446744073709551615");
}

// The wide digits are written in pairs; the narrow ones come from the standard library.
TEST(NumberText, WritesWideDigitsAsTheNarrowOnes)
{
    const auto expectSame = [](std::int64_t value) {
        std::u16string wide;
        std::string narrow;
        Ulmo::AppendDecimal(wide, value);
        Ulmo::AppendDecimal(narrow, value);
        EXPECT_EQ(wide, std::u16string(narrow.begin(), narrow.end()));
    };
    for (std::int64_t value = -1100; value <= 1100; ++value) expectSame(value);
    for (std::int64_t power = 1000; power < std::numeric_limits<std::int64_t>::max() / 10; power *= 10) {
        for (const std::int64_t value : {power - 1, power, power + 1}) {
            expectSame(value);
            expectSame(-value);
        }
    }
}

TEST(NumberText, WritesDoublesWithFifteenDigits)
{
    struct Case {
        double value;
        std::u16string dropped;
        std::u16string kept;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    const Case cases[] = {
        {5, u"5", u"5.0"},
        {0, u"0", u"0.0"},
        {-0.0, u"-0", u"-0.0"},
        {0.5, u"0.5", u"0.5"},
        {0.1 + 0.2, u"0.3", u"0.3"},
        {-1234.5678, u"-1234.5678", u"-1234.5678"},
        {123456789012345678.0, u"1.23456789012346e+17", u"1.23456789012346e+17"},
        {999999999999999.0, u"999999999999999", u"999999999999999.0"},
        {1e15, u"1e+15", u"1e+15"},
        {0.0001, u"0.0001", u"0.0001"},
        {0.00001, u"1e-05", u"1e-05"},
        {std::numeric_limits<double>::max(), u"1.79769313486232e+308", u"1.79769313486232e+308"},
        {-std::numeric_limits<double>::denorm_min(), u"-4.94065645841247e-324", u"-4.94065645841247e-324"},
        {-infinity, u"-inf", u"-inf"},
        {std::numeric_limits<double>::quiet_NaN(), u"nan", u"nan"},
    };
    for (const Case& test : cases) {
        std::u16string dropped;
        std::u16string kept;
        Ulmo::AppendDouble(dropped, test.value);
        Ulmo::AppendDouble(kept, test.value, TrailingPoint::Keep);
        EXPECT_EQ(dropped, test.dropped);
        EXPECT_EQ(kept, test.kept);
    }
}

TEST(NumberText, WritesTheGeneralFormOfWindows)
{
    const struct {
        double value;
        int digits;
        const char* text;
    } cases[] = {
        {0, 6, "0."},
        {-0.0, 6, "-0."},
        {0.1, 6, "0.1"},
        {0.01, 6, "1.e-02"},
        {100, 6, "100."},
        {123456, 6, "123456"},
        {1234567, 6, "1.23457e+06"},
        {999999.5, 6, "1000000"},
        {1e15, 15, "1.e+15"},
        {0.1 + 0.2, 15, "0.3"},
        {1e300, 15, "1.e+300"},
        {-1.0 / 3, 6, "-0.333333"},
    };
    for (const auto& [value, digits, text] : cases) {
        std::string written;
        Ulmo::AppendGeneral(written, value, digits);
        EXPECT_EQ(written, text);
    }
}

TEST(NumberText, ScansDecimals)
{
    struct Case {
        std::u16string text;
        std::int32_t small;
        std::int64_t large;
    };
    const Case cases[] = {
        {u"", 0, 0},
        {u"abc", 0, 0},
        {u" \t\r\n\v\f-12x", -12, -12},
        {u"+7", 7, 7},
        {u"- 7", 0, 0},
        {u"--7", 0, 0},
        {u"010", 10, 10},
        {u"0x10", 0, 0},
        {u"2147483647", 2147483647, 2147483647},
        {u"2147483648", 2147483647, 2147483648},
        {u"-2147483648", -2147483647 - 1, -2147483648LL},
        {u"-99999999999999999999", -2147483647 - 1, std::numeric_limits<std::int64_t>::min()},
        {u"9223372036854775807", 2147483647, std::numeric_limits<std::int64_t>::max()},
        {u"18446744073709551617", 2147483647, std::numeric_limits<std::int64_t>::max()},
        {u"\uFF11", 0, 0},
    };
    for (const Case& test : cases) {
        EXPECT_EQ(Ulmo::ScanInt32(test.text), test.small);
        EXPECT_EQ(Ulmo::ScanInt64(test.text), test.large);
    }
}

TEST(NumberText, ScansDoubles)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<std::u16string, double> cases[] = {
        {u"", 0},
        {u"abc", 0},
        {u"  -2.5e3xyz", -2500},
        {u"+.5", 0.5},
        {u"5.", 5},
        {u"1e", 1},
        {u"+-5", 0},
        {u"1e400", infinity},
        {u"-1e400", -infinity},
        {u"1e-400", 0},
        {u"0e99999", 0},
        {u"1e99999999999999999999", infinity},
        {u"0." + std::u16string(400, u'0') + u"1", 0},
        {u"1,5", 1},
        {u"1e+2\u0135", 100},  // the low byte alone is a 5
        {u"0x7", 7},
        {u"1x7", 1},
        {u" -0X1p3", -8},
        {u"0x.8", 0.5},
        {u"0x1.8p-1z", 0.75},
        {u"0xAe", 174},
        {u"0x1p", 1},
        {u"0x", 0},
        {u"0x.", 0},
        {u"0x.g", 0},
        {u"0x-1", 0},
        {u"00x10", 0},
        {u"0x1p2000", infinity},
        {u"0x0." + std::u16string(1100, u'0') + u"1p5460", infinity},
        {u"0x1000p-9999", 0},
        {u"0x1p-1074", 5e-324},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Ulmo::ScanDouble(text), value) << std::string(text.begin(), text.end());
    }
}

TEST(NumberText, DetectsTheBase)
{
    struct Case {
        std::u16string text;
        std::int32_t value;
        bool inRange;
    };
    const Case cases[] = {
        {u"10", 10, true},
        {u"010", 8, true},
        {u"019", 1, true},
        {u"08", 0, true},
        {u"0x5", 5, true},
        {u"0X1f", 31, true},
        {u"0x", 0, true},
        {u"0xg", 0, true},
        {u"-0x80000000", -2147483647 - 1, true},
        {u"-010", -8, true},
        {u"2147483648", 2147483647, false},
        {u"-2147483649", -2147483647 - 1, false},
        {u"0x80000000", 2147483647, false},
        {u"", 0, true},
        {u"9999999999999999999999", 2147483647, false},
    };
    for (const Case& test : cases) {
        bool inRange = !test.inRange;
        EXPECT_EQ(Ulmo::DetectInt32(test.text, inRange), test.value);
        EXPECT_EQ(inRange, test.inRange);
    }
    EXPECT_EQ(Ulmo::DetectInt64(u"0777777777777777777776"), std::numeric_limits<std::int64_t>::max() - 1);
    EXPECT_EQ(Ulmo::DetectInt64(u"-9223372036854775809"), std::numeric_limits<std::int64_t>::min());
}

}  // namespace
