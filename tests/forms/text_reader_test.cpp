#include "forms/text_reader.h"

#include <gtest/gtest.h>

#include "OrvActions.h"
#include "forms/describe.h"
#include "forms/fake_sibling.h"
#include "forms/technical_text_writer.h"
#include "ulmo/exceptions.h"

namespace OrvPLC {
namespace {

struct Answer {
    std::string object;  // its description, or "none"
    std::uint32_t consumed;
};

Answer Read(std::u16string_view text, std::uint32_t expectedKind = ORV_EXPECT_ANY, bool narrow = false)
{
    const TextReadResult read = ReadActionText(text, expectedKind, narrow);
    const ObjectPtr<TOrvAction> object(read.object);
    EXPECT_TRUE(!object || object->ReferenceCount() == 1);
    return {object ? Describe(*object) : "none", read.consumed};
}

struct Row {
    const char16_t* text;
    const char* object;
    int left = 0;  // characters that stay unread
};

void ExpectReadings(std::span<const Row> rows)
{
    const std::uint32_t open = Platform::LivingCount::Read();
    for (const Row& row : rows) {
        const std::u16string_view text = row.text;
        const Answer answer = Read(text);
        EXPECT_EQ(answer.object, row.object) << Ulmo::Utf8FromWide(text);
        EXPECT_EQ(answer.consumed, text.size() - static_cast<std::size_t>(row.left)) << Ulmo::Utf8FromWide(text);
    }
    EXPECT_EQ(Platform::LivingCount::Read(), open);
}

TEST(TextReader, Frame)
{
    const Row rows[] = {
        {u"PanStop()", "3 PanStop"},
        {u"@ Foo ( a : 1 , b: 2 ) tail", "4 Foo; Comment str ''; a i32 1; b i32 2", 5},
        {u"@pANsTOP()", "4 pANsTOP; Comment str ''"},
        {u"\"my own\"(a: 1)", "3 my own; a i32 1"},
        {u"A(x: 1,)", "3 A; x i32 1"},
        {u"A(B: 1 C: 2)", "3 A; C i32 2"},
        {u"A(B: 1; ; C: 2)", "3 A; C i32 2"},
        {u"A (x: 1", "none", 4},
        {u"A (x: 1, y: 2", "none", 4},
        {u"A (x: 1, y: 2 z)", "none", 7},
        {u"A (x: 1) B (y: 2)", "3 A; x i32 1; y i32 2"},  // parameters are looked for after the bracket, too
        // The header and the closing bracket are found after any line break.
        {u"rubbish\n A (x: 1)", "3 A; x i32 1"},
        {u"A (x: 1, rubbish\n)", "3 A; x i32 1"},
        {u"A (x: 1, rubbish)", "none", 8},
        // A name may hold letters of every language.
        {u"\u00c4rger9 (\u0431: 1)", "3 \xc3\x84rger9; \xd0\xb1 i32 1"},
        {u"\U0001F600 (x: 1)", "none", 9},
        // Blanks and digits may be those of every language.
        {u"\u3000A\u00a0(x\u2007:\u202f1\u2003,\u205fy: 2)", "3 A; x i32 1; y i32 2"},
        {u"A(x: \u0663)", "3 A; x i32 0"},
        {u"A\u00aa(x: 1)", "none", 8},
        {u"", "none"},
        {u"A", "none", 1},
        {u"9A (x: 1)", "none", 9},
        {u"\"\" (x: 1)", "none", 9},
        {u"(x: 1)", "none", 6},
        {u"? A (x: 1)", "none", 5},
        {u"!A (x: 1)", "none", 5},
    };
    ExpectReadings(rows);
}

TEST(TextReader, NaturalKinds)
{
    const Row rows[] = {
        {u"A(x: -1, y: +2, z: 2147483648)", "3 A; x i32 -1; y i32 2; z i64 2147483648"},
        {u"A(x: 010, y: 0x1F)", "none", 8},
        {u"A(x: 010, y: 019, z: 089)", "3 A; x i32 8; y i32 1; z i32 0"},
        {u"A(x: 99999999999, y: -99999999999999999999)", "3 A; x i64 99999999999; y i64 -9223372036854775808"},
        {u"A(a: 1.5e3, b: 15e3, c: .5, d: 1., e: -1.25E-2)",
         "3 A; a dbl 1500; b dbl 15000; c dbl 0.5; d dbl 1; e dbl -0.0125"},
        {u"A(x: \"\", y: \"a\\\"b\\\", z: \"\\\\\")", "3 A; x str ''; y str 'a\\\"b\\'; z str '\\\\'"},
        {u"A(x: \"two\nlines\")", "3 A; x str 'two\nlines'"},
        {u"A(r: {1,2,3,4}, s: { 0 , 010 , 65535 , 65536 })", "3 A; r rect 1, 2, 3, 4; s rect 0, 8, -1, 0"},
        {u"A(c: {5, 6, \"n\"}, d: {0, 0, \"\"})", "3 A; c chan 5 6 'n'; d chan 0 0 ''"},
        {u"A(e: {010, \"n\"}, f: {18446744073709551615, \"\"})", "3 A; e event 8 'n'; f event 9223372036854775807 ''"},
        {u"A(r: {\"0001e240-0000-0000-0000-00000000000A\", \"n\"}, s: {\"short\", \"m\"}, t: {\"\", \"lost\"})",
         "3 A; r res 0001e240-0000-0000-0000-00000000000a 'n'; s res 00000000-0000-0000-0000-000000000000 'm'; "
         "t str ''"},
        {u"A(g: \"0001E240-0000-0000-0000-00000000000a\")", "3 A; g guid 0001e240-0000-0000-0000-00000000000a"},
        {u"A(t: \"2026/11/15 03:10:43,123 GMT+01:00\")", "3 A; t time 2026/11/15 03:10:43,123 GMT+01:00"},
        {u"A(t: \"2026/11/15 03:10:43,123 GMT+01:0\")", "3 A; t str '2026/11/15 03:10:43,123 GMT+01:0'"},
        {u"A(l: { { 1, 2, 65535, 65537, 4294967295, \"a\" }{ 6,7,8,9,010, \"b c\" }, })",
         "3 A; l data '1 2 65535 1 4294967295 'a', 6 7 8 9 10 'b c''"},
        {u"A(x: 1, X: 2)", "3 A; X i32 2"},
        {u"A(\"x y\": 1, \"z\\\": 2)", "3 A; x y i32 1; z\\ i32 2"},
    };
    ExpectReadings(rows);
}

TEST(TextReader, DeclaredKinds)
{
    const Row rows[] = {
        {u"PanLeft (camera: 5, SPEED: 2.9)", "3 PanLeft; camera chan 0 5 ''; SPEED i32 2"},
        {u"PanLeft (Camera: -1, Speed: \"7 x\")", "3 PanLeft; Camera chan 0 -1 ''; Speed i32 7"},
        {u"PanLeft (Camera: \"Door\")", "3 PanLeft; Camera chan 0 0 'Door'"},
        {u"PanLeft (Camera: {5, 6, \"Door\"}, Other: 010)", "3 PanLeft; Camera chan 5 6 'Door'; Other i32 8"},
        // What cannot be turned into the declared kind stays as it was read.
        {u"PanLeft (Camera: {1,2,3,4})", "3 PanLeft; Camera rect 1, 2, 3, 4"},
        {u"CustomAction (Int: 1, String: \"0001e240-0000-0000-0000-00000000000A\")",
         "3 CustomAction; Int i64 1; String str '0001e240-0000-0000-0000-00000000000a'"},
        {u"CustomAction (String: 3.50)", "3 CustomAction; String str '3.5'"},
        {u"LenelAccessEvent (Duress: 7, TimeStamp: \"never\", SubType: 3)",
         "3 LenelAccessEvent; Duress bool 1; SubType i32 3 of 4185; TimeStamp str 'never'"},
    };
    ExpectReadings(rows);
}

TEST(TextReader, TheCommentOfAMatchActionIsItsDescription)
{
    const Row rows[] = {
        {u"@ A (x: 1, cOMMENT: \"mine\")", "4 A; cOMMENT str 'mine'; x i32 1"},
        {u"@ A (Comment: 5, x: 1)", "4 A; Comment i32 5; x i32 1"},
        {u"A (Comment: \"c\")", "3 A; Comment str 'c'"},
        {u"@ A (Comment: \"alone\")", "none"},  // no parameter is left, and the name is unknown
    };
    ExpectReadings(rows);
}

TEST(TextReader, MarkupKeepsItsQuotes)
{
    const Row rows[] = {
        {u"A(s: \"<a b=\"1\"/>\")", "3 A; s str '<a b=\"1\"/>'"},
        {u"A(s: \"<a b=\"1\"/>\", t: \"<a b=\"1\"/>\")", "3 A; s str '<a b=\"1\"/>'; t str '<a b='1'/>'"},
        {u"A(s: \"<a b=\"1\"/>\", t: \"<c d=\"2\">x</c>\")", "3 A; s str '<a b=\"1\"/>'; t str '<c d=\"2\">x</c>'"},
        {u"A(s: \"<!-- \"x\" --><![CDATA[\"]]>\")", "3 A; s str '<!-- \"x\" --><![CDATA[\"]]>'"},
        // The comment is guarded with the tag in it and comes back with it, so it is left for another string.
        {u"A(s: \"<a b=\"\"><a b=\"\"><a b=\"\"><!--<a b=\"\">--><c d=\"2\">\", t: \"<!--<a b=\"\">-->\")",
         "3 A; s str '<a b=\"\"><a b=\"\"><a b=\"\"><!--<a b=\"\">--><c d=\"2\">'; t str '<!--<a b=\"\">-->'"},
        {u"A(s: \"<a b='1'/> 1 < 2\")", "3 A; s str '<a b='1'/> 1 < 2'"},
        {u"A(s: \"<a b=c=\", t: 1, u: \">\")", "3 A; s str '<a b=c='; t i32 1; u str '>'"},  // no tag
        {u"A(s: \"<a b=\"1\"/>\", t: \"1 < 2\")", "3 A; s str '<a b=\"1\"/>'; t str '1 < 2'"},
        {u"A(s: \"<a b=\"1\"/>\") <", "3 A; s str '<a b=\"1\"/>'", 2},
        {u"A(s: \"if a <b then the temperature of the cabinet rose\", t: 1)",
         "3 A; s str 'if a <b then the temperature of the cabinet rose'; t i32 1"},
        {u"<x/>\nA(s: \"<a b=\"1\"/>\")", "none"},  // a text that begins with a tag is not guarded
    };
    ExpectReadings(rows);
}

TEST(TextReader, ExpectedKind)
{
    const struct {
        std::uint32_t expected;
        bool action, matchAction;
    } rows[] = {{0, true, true},  {0x7FFFFFFF, true, true}, {1, true, false},  {3, true, false},
                {2, false, true}, {4, false, true},         {5, false, false}, {0xFFFFFFFF, false, false}};
    for (const auto& row : rows) {
        const Answer action = Read(u"A (x: 1)", row.expected);
        const Answer matchAction = Read(u"@A (x: 1)", row.expected);
        EXPECT_EQ(action.object != "none", row.action) << row.expected;
        EXPECT_EQ(matchAction.object != "none", row.matchAction) << row.expected;
        EXPECT_EQ(action.consumed, row.action ? 8u : 3u);
        EXPECT_EQ(matchAction.consumed, row.matchAction ? 9u : 4u);
    }
}

TEST(TextReader, ImpossibleLiteralsRaise)
{
    const std::uint32_t open = Platform::LivingCount::Read();
    EXPECT_THROW(Read(u"A(x: 1, g: \"zzzzzzzz-0000-0000-0000-000000000000\")"), Ulmo::GuidConversionException);
    EXPECT_THROW(Read(u"A(r: {\"zzzzzzzz-0000-0000-0000-000000000000\", \"\"})"), Ulmo::GuidConversionException);
    EXPECT_THROW(Read(u"CustomAction(String: \"2026/02/29 03:10:43,123 GMT+01:00\")"), Ulmo::EUlmoDateTime);
    EXPECT_EQ(Platform::LivingCount::Read(), open);
}

TEST(SiblingText, WhatCountsAsSiblingText)
{
    const struct {
        const char16_t* text;
        bool sibling;
    } rows[] = {
        {u"A (1)", true},       {u"A (x: 1, 2)", true},  {u"PanLeft (5)", true}, {u"A ()", true},
        {u"@ A ()", true},      {u"A (x: 15E+3)", true}, {u"A (x: 1)", false},   {u"PanLeft ()", false},
        {u"A (\"\": 1)", true}, {u"A (x: 1", false},     {u"no header", false},  {u"? A ()", false},
    };
    for (const auto& row : rows) {
        FakeSibling sibling(std::nullopt);
        Read(row.text);
        EXPECT_EQ(sibling.seenText, row.sibling ? row.text : u"") << Ulmo::Utf8FromWide(row.text);
    }
}

TEST(SiblingText, NobodyConvertsItBeforeTheBridgeStarts)
{
    SiblingConverter* const before = SetSibling(nullptr);
    std::u16string text;
    EXPECT_FALSE(Sibling().ConvertText(u"CameraOn (5)", text));
    EXPECT_FALSE(Sibling().ConvertNarrowText("CameraOn (5)", text));
    EXPECT_FALSE(Sibling().ConvertBinary({}, 1, text));
    EXPECT_FALSE(Sibling().ConvertEvent({}, text));
    SetSibling(before);
}

TEST(SiblingText, Answers)
{
    const struct {
        std::optional<std::u16string> rewritten;
        std::uint32_t expected;
        const char* object;
        std::uint32_t consumed;
    } rows[] = {
        {std::nullopt, 0, "none", 5},
        {u"", 0, "none", 0},
        {u"PanLeft (Camera: 1) x", 0, "3 PanLeft; Camera chan 0 1 ''", 19},
        {u"PanLeft (Camera: 1", 0, "none", 0},
        {u"@ PanLeft (Camera: 1)", 3, "none", 0},
        {u"B (1, 2)", 0, "3 B;  i32 2", 8},  // not checked a second time
    };
    const std::uint32_t open = Platform::LivingCount::Read();
    for (const auto& row : rows) {
        FakeSibling sibling(row.rewritten);
        const Answer answer = Read(u"A (1) tail", row.expected);
        EXPECT_EQ(answer.object, row.object);
        EXPECT_EQ(answer.consumed, row.consumed);
    }
    FakeSibling sibling(u"A(x: \"2026/13/01 00:00:00,000 GMT+00:00\")");
    EXPECT_THROW(Read(u"A (1)"), Ulmo::EUlmoDateTime);
    EXPECT_EQ(Platform::LivingCount::Read(), open);
}

TEST(SiblingText, NarrowTextIsSeenThroughUtf8)
{
    const std::u16string text = std::u16string(u"A (\"") + u'\xD800' + u"\")";
    FakeSibling sibling(std::nullopt);
    Read(text, 0, false);
    EXPECT_FALSE(Talvec_Action_ConvertOrvActionTextToHeskActionText(Boundary(text.c_str()), nullptr));
    EXPECT_FALSE(Talvec_Action_CreateIOrvActionFromTextBuffer(Boundary(text.c_str()), 0));
    EXPECT_FALSE(OrvAct_CreateFromTextBufferW(Boundary(text.c_str()), ORV_LENGTH_TERMINATED, 0, 0, nullptr));
    EXPECT_EQ(sibling.seenText, text);
    EXPECT_EQ(sibling.seenNarrow, "");
    Read(text, 0, true);
    EXPECT_EQ(sibling.seenNarrow, "A (\"\uFFFD\")");
}

}  // namespace
}  // namespace OrvPLC
