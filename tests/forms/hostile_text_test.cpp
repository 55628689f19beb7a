// Texts made to hurt, and texts that are merely large. Every one gets the answer of the grammar, in a walk.
#include <gtest/gtest.h>

#include "forms/describe.h"
#include "forms/technical_text_writer.h"
#include "forms/text_reader.h"
#include "judge/compare_readers.h"

namespace OrvPLC {
namespace {

std::u16string Repeat(std::u16string_view piece, std::size_t count)
{
    std::u16string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i) text += piece;
    return text;
}

ObjectPtr<TOrvAction> Read(std::u16string_view text)
{
    return ObjectPtr<TOrvAction>(ReadActionText(text, ORV_EXPECT_ANY, false).object);
}

// "none", or the object's number of parameters.
std::string Outcome(std::u16string_view text)
{
    const ObjectPtr<TOrvAction> object = Read(text);
    return object ? std::to_string(object->Parameters().Size()) : "none";
}

// Some million units each: whatever takes more than a few walks does not end.
constexpr std::size_t kUnits = 1'000'000;

// A few repetitions read as the patterns read them; with many the outcome shows that they still do.
TEST(HostileText, IsReadInOneWalk)
{
    const struct {
        const char* what;
        std::u16string_view before, piece, after;
        const char* outcome;
    } rows[] = {
        {"backslashes in an open string", u"A(x: \"", u"\\", u"", "none"},
        {"backslashes in a string", u"A(x: \"", u"\\", u"\")", "1"},
        {"places that cost much each", u"A(", u"\"\\\\\\\\\\\\\" x: 1, ", u"y: 1)", "2"},
        {"quotes after backslashes", u"A(x: 1, ", u"\\\"", u")", "none"},
        {"quotes after backslashes in a string", u"A(x: \"", u"\\\"", u"\")", "1"},
        {"strings that close early or late", u"A(", u"x: \"\\\" , ", u")", "1"},
        {"names after backslashes", u"A(x: 1, ", u"\\\": 1 ", u")", "2"},
        {"blanks before the header", u"", u" ", u"A(x: 1)", "1"},
        {"lines before the header", u"", u"\n", u"A(x: 1)", "1"},
        {"lines that are no header", u"", u"A b\n", u"A(x: 1)", "1"},
        {"names that are no header", u"", u"\"\\\"\n", u"A(x: 1)", "1"},
        {"blanks alone", u"", u" ", u"", "none"},
        {"blanks after the header", u"A(", u" ", u"x: 1)", "1"},
        {"blanks between name and colon", u"A(x", u" ", u": 1)", "1"},
        {"blanks after an open header", u"A(", u" ", u"", "none"},
        {"blanks after the bracket", u"A(x: 1)", u" ", u"", "1"},
        {"digits after the bracket", u"A(x: 1)", u"1", u"", "1"},
        {"letters after the bracket", u"A(x: 1)", u"x", u"", "1"},
        {"colons after the bracket", u"A(x: 1)", u":", u"", "1"},
        {"commas after the bracket", u"A(x: 1)", u",", u"", "1"},
        {"words after the bracket", u"A(x: 1)", u"word \"word\" ", u"", "1"},
        {"lines before the bracket", u"A(x: 1 ", u"\n", u")", "1"},
        {"letters and digits", u"A(x: 1)", u"a1", u"", "1"},
        {"numbers with points", u"A(x: 1)", u"1.", u"", "1"},
        {"digits without an end", u"A(x: ", u"1", u"", "none"},
        {"names and colons", u"A(x: 1, ", u"a:", u")", "none"},
        {"an open string", u"A(x: \"", u".", u"", "none"},
        {"quotes", u"A(x: 1, ", u"\"", u"", "none"},
        {"braces", u"A(x: 1, ", u"{", u"", "none"},
        {"braces and blanks", u"A(x: 1, ", u"{ ", u")", "none"},
        {"open channels", u"A(x: 1, ", u"{1,2,\"\\\"", u")", "none"},
        {"open resources", u"A(x: 1, ", u"{\"\\\",\"", u")", "none"},
        {"an open list", u"A(x: {{1,1,1,1,1,\"", u"\\\"}", u"", "none"},
        {"an open list of many items", u"A(x: {", u"{1,1,1,1,1,\"a\"} ", u"", "none"},
        {"a list of many items", u"A(x: {", u"{1,1,1,1,1,\"a\"} ", u"})", "1"},
        {"lists that read in two ways", u"A(x: {", u"{1,1,1,1,1,\"\\\"},", u"", "none"},
        {"lists in names of lists", u"A(x: {", u"{1,1,1,1,1,\"}{{1,1,1,1,1,\"},", u"", "none"},
        {"open tags", u"A(x: 1, ", u"<", u")", "none"},
        {"tags that never end", u"A(x: 1, ", u"<a b=\"", u")", "none"},
        {"tags that end late", u"A(x: 1, ", u"<a b=\"", u">)", "none"},
        {"attributes that are none", u"A(x: 1, <a ", u"b=c=", u">)", "none"},
        {"quotes after backslashes in a tag", u"A(x: 1, <a b=\"", u"\\\"", u">)", "none"},
        {"comments that never end", u"A(x: 1, ", u"<!--\"", u")", "none"},
        {"data that never ends", u"A(x: 1, ", u"<![CDATA[\"", u")", "none"},
        {"equal rows", u"A(x: \"", u"<p x=\"0\" y=\"0\"><q/></p>", u"\")", "1"},
        {"values with a bracket", u"A(", u"x: \"<a b=\"1\"/> <\", ", u")", "1"},
    };
    const std::uint32_t open = Platform::LivingCount::Read();
    for (const auto& row : rows) {
        for (const std::size_t few : {0u, 1u, 2u, 3u, 5u}) {
            const std::u16string text = std::u16string(row.before) + Repeat(row.piece, few) + std::u16string(row.after);
            const Judge::Comparison comparison = Judge::CompareReadings(text);
            EXPECT_EQ(comparison.difference, "") << row.what;
            EXPECT_TRUE(few > 2 || comparison.verdict != Judge::Verdict::Undecided) << row.what;
        }
        const std::size_t many = kUnits / row.piece.size();
        EXPECT_EQ(Outcome(std::u16string(row.before) + Repeat(row.piece, many) + std::u16string(row.after)),
                  row.outcome)
            << row.what;
        EXPECT_EQ(Platform::LivingCount::Read(), open) << row.what;
    }
}

TEST(HostileText, OddUnits)
{
    const std::u16string rows[] = {
        std::u16string(u"A(x: 1)\0\0", 9),
        std::u16string(u"A(x: \"\0\")", 9),
        std::u16string(u"A(x: \"") + u'\xDC00' + u'\xD800' + u"\")",
        std::u16string(u"A(\0x: 1)", 8),
    };
    for (const std::u16string& row : rows) EXPECT_EQ(Outcome(row), "1");
}

TEST(LargeText, KeepsItsValues)
{
    const std::u16string letters[] = {Repeat(u"x", 1'000'000), Repeat(u"\u0431", 1'400'000), Repeat(u"\\\"", 100'000)};
    for (const std::u16string& value : letters) {
        const ObjectPtr<TOrvAction> object = Read(u"A(x: \"" + value + u"\")");
        ASSERT_TRUE(object);
        EXPECT_TRUE(object->Parameters().Find(u"x")->Wide() == value);
    }
    const ObjectPtr<TOrvAction> list = Read(u"A(x: {" + Repeat(u"{1,2,3,4,5,\"a\"},", 300'000) + u"})");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->Parameters().Find(u"x")->Wide().size(), 300'000 * std::size(u"1 2 3 4 5 'a', ") - 300'000 - 2);
}

TEST(LargeText, KeepsTheMarkupOfEachValue)
{
    constexpr int kValues = 50'000;
    std::u16string many = u"A(";
    for (int i = 0; i < kValues; ++i) {
        many += u"x";
        Ulmo::AppendDecimal(many, i);
        many += u": \"<a b=\"";
        Ulmo::AppendDecimal(many, i);
        many += u"\"/>\", ";
    }
    const ObjectPtr<TOrvAction> object = Read(many + u")");
    ASSERT_TRUE(object);
    EXPECT_EQ(object->Parameters().Size(), std::size_t{kValues});
    EXPECT_EQ(object->Parameters().Find(u"x49999")->Wide(), u"<a b=\"49999\"/>");
}

}  // namespace
}  // namespace OrvPLC
