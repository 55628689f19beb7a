#include "ulmo/format.h"

#include <gtest/gtest.h>

namespace {

using Ulmo::Text::Format;
using Ulmo::Text::InvalidFormatStringException;

std::u16string Formatted(const char16_t* format, std::initializer_list<std::u16string_view> arguments)
{
    std::u16string output;
    Format(format, output, std::span<const std::u16string_view>(arguments.begin(), arguments.size()));
    return output;
}

TEST(Format, FillsInArguments)
{
    struct Case {
        const char16_t* format;
        std::u16string result;
    };
    const Case cases[] = {
        {nullptr, u""},
        {u"", u""},
        {u"{0} of {1}", u"ab of x"},
        {u"{1}{00}{01}", u"xabx"},
        {u"{{0}}", u"{0}"},
        {u"a{{b}}c{{", u"a{b}c{"},
        {u"}}", u"}"},
        {u"{{{0}}}", u"{ab}"},
        {u"[{0,5}]", u"[   ab]"},
        {u"[{0,-5}]", u"[ab   ]"},
        {u"[{0,1}]", u"[ab]"},
        {u"[{2,600}]", u"[]"},
        {u"[{0,513}]", u"[ab]"},
        {u"[{0,99999999999999999999}]", u"[ab]"},
        {u"{0,512}", std::u16string(510, u' ') + u"ab"},
    };
    for (const Case& test : cases) EXPECT_EQ(Formatted(test.format, {u"ab", u"x", u""}), test.result);
}

TEST(Format, NamesTheFaultAndItsPosition)
{
    struct Case {
        const char16_t* format;
        const char16_t* message;
        std::uint32_t position;
    };
    const Case cases[] = {
        {u"ab {0", u"Text::Format illegal begin of format string: :\"ab {0", 0},
        {u"ab 0}", u"Text::Format illegal end of format string: :\"ab 0}", 4},
        {u"a{x}", u"Text::Format illegal format string : :\"a{x}", 1},
        {u"a{}", u"Text::Format illegal format string : :\"a{}", 1},
        {u"a{000}", u"Text::Format illegal format string : :\"a{000}", 1},
        {u"a{00,3}", u"Text::Format illegal format string : :\"a{00,3}", 1},
        {u"a{0,}", u"Text::Format illegal format string : :\"a{0,}", 1},
        {u"a{0,-}", u"Text::Format illegal format string : :\"a{0,-}", 1},
        {u"a{x,3}", u"Text::Format illegal format string : :\"a{x,3}", 1},
        {u"a{0,3x}", u"Text::Format illegal format string : :\"a{0,3x}", 1},
        {u"ab{2}", u"Text::Format illegal argument number : :\"ab{2}", 2},
        {u"ab{10}", u"Text::Format illegal argument number : :\"ab{10}", 2},
        {u"ab{2,5}", u"Text::Format illegal argument number (,): :\"ab{2,5}", 2},
    };
    for (const Case& test : cases) {
        try {
            Formatted(test.format, {u"a", u"b"});
            ADD_FAILURE() << "passed: " << test.position;
        } catch (const InvalidFormatStringException& failure) {
            EXPECT_EQ(failure.WideMessage(), test.message);
            EXPECT_EQ(failure.FormatString(), test.format);
            EXPECT_EQ(failure.Position(), test.position);
        }
    }
}

TEST(Format, AppendsNarrowTextAndKeepsWhatPrecedesAFault)
{
    const std::string_view arguments[] = {"x"};
    std::string output = "got: ";
    Format("{0,3}!", output, arguments);
    EXPECT_EQ(output, "got:   x!");
    EXPECT_THROW(Format("{0} {1}", output, arguments), InvalidFormatStringException);
    EXPECT_EQ(output, "got:   x!x ");
}

}  // namespace
