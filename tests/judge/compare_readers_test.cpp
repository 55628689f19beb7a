// The scanner against the patterns. `make compare-readers COUNT=...` compares them on more texts.
#include "judge/compare_readers.h"

#include <gtest/gtest.h>

#include "judge/expression.h"
#include "judge/text_maker.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC::Judge {
namespace {

std::string DifferenceOn(std::u16string_view text)
{
    const Comparison steps = CompareSteps(text);
    return steps.verdict == Verdict::Differs ? steps.difference : CompareReadings(text).difference;
}

class CompareReaders : public testing::Test {
protected:
    CompareReaders() : budget_(SetFixedSearchBudget(100'000)) {}
    ~CompareReaders() override { SetFixedSearchBudget(budget_); }

private:
    std::ptrdiff_t budget_;
};

TEST_F(CompareReaders, OnTextsOfAllKinds)
{
    TextMaker maker(20'221'020);
    for (int i = 0; i < 6'000; ++i) {
        const std::u16string text = maker.Make();
        ASSERT_EQ(DifferenceOn(text), "") << Ulmo::Utf8FromWide(text);
    }
}

// Where a choice has to be taken back; each row reads differently if the choices come in another order.
TEST_F(CompareReaders, WhereStringsMayCloseInSeveralPlaces)
{
    const std::u16string_view rows[] = {
        uR"(A (x: "a\", y: "b"))",            // protected, then taken back
        uR"(A (x: "a\\", y: "b\\"))",         // pairs close at once
        uR"(A (x: "a\\" b\", c\\" , d: 1))",  // a pair that cannot close there
        uR"(A (x: "a\", \", \", z))",         // the last of several
        uR"(A (x: "a\\\", \\", "b))",
        uR"(A ("n\": 1, "m": 2))",  // names
        uR"(A ("n\": "v\", "m": 2))",
        uR"("A\" (x: 1) " (y: 2))",             // header
        uR"(A (x: {1, 2, "a\"}, "b"}, y: 1))",  // in braces
        uR"(A (x: {"g\", "n\"}, "o"}, y: 1))",
        uR"(A (x: {{1,2,3,4,5,"a\"},{1,2,3,4,5,"b\"}}, y: 1)",
        uR"(A (x: {{1,2,3,4,5,"a\"} {1,2,3,4,5,"b"}, }, y: "\"))",
        uR"(CameraOn ("a\", "b\\", c: "d\"))",
    };
    for (const std::u16string_view row : rows) EXPECT_EQ(DifferenceOn(row), "") << Ulmo::Utf8FromWide(row);
}

TEST_F(CompareReaders, WhereTagsMayEndInSeveralPlaces)
{
    const std::u16string_view rows[] = {
        uR"(A (x: "<a b="\">" c="d">"))",
        uR"(A (x: "<a b=" \"> \" "))",  // the first of two protected quotes
        uR"(A (x: "<a b="1" c='"' d=e"f/>", y: "<a b='1'/>"))",
        uR"(A (x: "<a b="<a c="1"/>"/>", y: "<a c="1"/>"))",  // one tag in another
        uR"(A (x: "<a c="1"/>", y: "<a b="<a c="1"/>"/>"))",
        uR"(A (x: "<a b=c=d"e'f>g" h='"'>"))",
        uR"(A (x: "<a b='x"y'z="'>" w>", y: 1))",
        uR"(A (x: "<!-- "a" - -- -> -->" y: "<![CDATA["]]]>"))",
        uR"(A (x: "<?a b="1"?><?>< a b="1"><a/b="1">"))",
        uR"(<a b="1"/> A (x: "<a b="1"/>"))",
    };
    for (const std::u16string_view row : rows) EXPECT_EQ(DifferenceOn(row), "") << Ulmo::Utf8FromWide(row);
}

}  // namespace
}  // namespace OrvPLC::Judge
