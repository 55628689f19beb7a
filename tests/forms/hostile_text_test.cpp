// Texts made to hurt, and texts that are merely large.
#include <gtest/gtest.h>

#include <stdexcept>

#include "forms/describe.h"
#include "forms/expression.h"
#include "forms/technical_text_writer.h"
#include "forms/text_reader.h"

namespace OrvPLC {
namespace {

std::u16string Repeat(std::u16string_view piece, std::size_t count)
{
    std::u16string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i) text += piece;
    return text;
}

// "none", the object's number of parameters, or "raised" when the engine gave up.
std::string Outcome(std::u16string_view text)
{
    try {
        const ObjectPtr<TOrvAction> object(ReadActionText(text, ORV_EXPECT_ANY, false).object);
        return object ? std::to_string(object->Parameters().Size()) : "none";
    } catch (const std::runtime_error&) {
        return "raised";
    }
}

// With a tenth of the budget, which shows the same in a tenth of the time.
class HostileText : public testing::Test {
protected:
    HostileText() : budget_(SetSearchBudget(2'000'000)) {}
    ~HostileText() override { SetSearchBudget(budget_); }

private:
    std::ptrdiff_t budget_;
};

TEST_F(HostileText, EndsAndLeavesNothingBehind)
{
    const std::u16string bomb = u"\"" + Repeat(u"\\", 26) + u"\" x 1, ";  // exponential, then readable again
    const struct {
        const char* what;
        std::u16string text;
        const char* outcome;
    } rows[] = {
        {"backslashes in an open string", u"A(x: \"" + Repeat(u"\\", 1000), "raised"},
        {"many places that cost much each", u"A(" + Repeat(bomb, 100) + u")", "raised"},
        {"blanks in front of the header", Repeat(u" ", 5000), "raised"},
        {"blanks behind the header", u"A(" + Repeat(u" ", 5000), "raised"},
        {"digits", u"A(x: " + Repeat(u"1", 5000), "raised"},
        {"an open string of letters", u"A(x: \"" + Repeat(u"x", 5000), "raised"},
        {"an open string", u"A(x: \"" + Repeat(u".", 20'000), "none"},
        {"quotes", u"A(" + Repeat(u"\"", 20'000), "none"},
        {"braces", u"A(" + Repeat(u"{", 20'000), "none"},
        {"nested braces", u"A(x: " + Repeat(u"{ ", 1000) + Repeat(u"} ", 1000) + u")", "none"},
        {"an open list", u"A(x: {{1,1,1,1,1,\"" + Repeat(u"\\\"}", 10'000), "raised"},
        {"an open list of many items", u"A(x: {" + Repeat(u"{1,1,1,1,1,\"a\"} ", 10'000), "raised"},
        {"open tags", u"A(" + Repeat(u"<", 20'000), "none"},
        {"tags that never end", u"A(" + Repeat(u"<a b=\"", 10'000), "raised"},
        {"comments that never end", u"A(" + Repeat(u"<!--\"", 10'000), "raised"},
        {"zero units", std::u16string(u"A(x: 1)\0\0", 9), "1"},
        {"a zero unit in a string", std::u16string(u"A(x: \"\0\")", 9), "1"},
        {"lone surrogates", std::u16string(u"A(x: \"") + u'\xDC00' + u'\xD800' + u"\")", "1"},
        {"a zero unit between tokens", std::u16string(u"A(\0x: 1)", 8), "1"},
    };
    const std::uint32_t open = OpenObjects();
    for (const auto& row : rows) {
        EXPECT_EQ(Outcome(row.text), row.outcome) << row.what;
        EXPECT_EQ(OpenObjects(), open) << row.what;
    }
}

// Comments that the engine passes easily, whose places look alike for long stretches.
TEST_F(HostileText, MarkupThatRepeatsItself)
{
    const std::u16string piece = Repeat(u"<!--", 20'000);
    try {
        ReadActionText(u"A(x: \"" + piece + u"\"-->" + piece + u"'-->\")", ORV_EXPECT_ANY, false);
        ADD_FAILURE() << "it read";
    } catch (const std::runtime_error& failure) {
        EXPECT_STREQ(failure.what(), "The text holds too much markup.");
    }
}

TEST(LargeText, ReadsWhatIsWellFormed)
{
    const std::u16string letters[] = {Repeat(u"x", 1'000'000), Repeat(u"\u0431", 1'000'000), Repeat(u"\\\"", 100'000)};
    for (const std::u16string& value : letters) {
        const ObjectPtr<TOrvAction> object(ReadActionText(u"A(x: \"" + value + u"\")", 0, false).object);
        ASSERT_TRUE(object);
        EXPECT_TRUE(object->Parameters().Find(u"x")->Wide() == value);
    }
    const std::u16string blanks = Repeat(u" ", 1000);
    EXPECT_EQ(Outcome(blanks + u"A" + blanks + u"(" + blanks + u"x: 1)"), "1");

    std::u16string many = u"A(";
    for (int i = 0; i < 2000; ++i) {
        many += u"x";
        Ulmo::AppendDecimal(many, i);
        many += u": \"<a b=\"";
        Ulmo::AppendDecimal(many, i);
        many += u"\"/>\", ";
    }
    many += u")";
    const ObjectPtr<TOrvAction> object(ReadActionText(many, 0, false).object);
    ASSERT_TRUE(object);
    EXPECT_EQ(object->Parameters().Size(), 2000u);
    EXPECT_EQ(object->Parameters().Find(u"x1999")->Wide(), u"<a b=\"1999\"/>");
}

}  // namespace
}  // namespace OrvPLC
