#include "judge/text_maker.h"

namespace OrvPLC::Judge {

namespace {

using View = std::u16string_view;

constexpr View kNames[] = {u"PanLeft", u"Camera",     u"Speed",   u"x",        u"B2",
                           u"comment", u"\u00C4rger", u"a\u0663", u"CameraOn", u"Int"};
constexpr View kDigits[] = {u"0", u"7", u"010", u"019", u"42", u"65536", u"99999999999", u"1", u"\u0663", u"\uFF11"};
constexpr View kNumbers[] = {u"-1",    u"+5",    u"1.5", u".5", u"5.",    u"1e3",  u"1.5e3", u"1.e-3",
                             u"15E+3", u"-.5e1", u"1e",  u"+",  u"1.2.3", u"-1e2", u"1.5e",  u"--1"};
constexpr View kPieces[] = {u"\"",
                            u"\\",
                            u"\\\"",
                            u"\\\\\"",
                            u"{",
                            u"}",
                            u"{ {",
                            u"} }",
                            u",",
                            u":",
                            u"(",
                            u")",
                            u" ",
                            u"\n",
                            u"\r\n",
                            u"\t",
                            u"\u00A0",
                            u"\u2028",
                            u"\x85",
                            u"\f",
                            u"<",
                            u">",
                            u"<a b=\"",
                            u"/>",
                            u"='",
                            u"'",
                            u"=",
                            u"<!--",
                            u"-->",
                            u"<![CDATA[",
                            u"]]>",
                            u"<a ",
                            u"</a>",
                            u"@",
                            u"!",
                            u"?",
                            u"-",
                            u"+",
                            u".",
                            u"e",
                            u"1",
                            u"12",
                            u"x: 1, ",
                            u"A(",
                            u"1,1,1,1,1,\"",
                            u"{1,1,1,1,1,\"a\"}",
                            u"{1, 2, \"",
                            u"{ \"",
                            u"\", \"",
                            u"\" }",
                            u"\": ",
                            u"\",",
                            u"\")",
                            u"x",
                            u"ab",
                            u"_",
                            u"\u00AA",
                            u"0123456789abcdef",
                            u"01234567-89ab-cdef-0123-456789abcdef",
                            u"2022/10/20 12:00:00,000 GMT+01:00"};

template <std::size_t count>
View Pick(const View (&from)[count], std::uint64_t number)
{
    return from[number % count];
}

}  // namespace

// The generator splitmix64.
std::uint64_t TextMaker::Number()
{
    std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31);
}

std::u16string TextMaker::Make()
{
    std::u16string text;
    switch (Below(8)) {
    case 0: return Action();
    case 1: return Tokens(40);
    case 2: return std::u16string(u"A (") + Tokens(30);
    case 3: return Action() + Tokens(12);
    case 4: text = Tokens(6) + Action(); break;
    case 5: return Repeated();
    case 6: text = u"A (x: \"" + Tag() + Tokens(4) + Tag() + u"\", y: \"" + Tag() + u"\")"; break;
    default: text = Action(); break;
    }
    for (std::size_t mistakes = 1 + Below(4); mistakes > 0; --mistakes) Spoil(text);
    return text;
}

View TextMaker::Blanks()
{
    constexpr View kBlanks[] = {u"", u"", u"", u" ", u"  ", u"\n", u" \t", u"\u3000", u"\r\n "};
    return Pick(kBlanks, Number());
}

View TextMaker::Digits()
{
    return Pick(kDigits, Number());
}

View TextMaker::Name()
{
    return Pick(kNames, Number());
}

std::u16string TextMaker::Action()
{
    constexpr View kPrefixes[] = {u"", u"", u"", u"@", u"?", u"!"};
    std::u16string text(Blanks());
    text += Pick(kPrefixes, Number());
    text += Blanks();
    text += OneIn(6) ? String() : std::u16string(Name());
    text += Blanks();
    text += u'(';
    for (std::size_t count = Below(5); count > 0; --count) {
        text += Blanks();
        if (!OneIn(8)) {
            text += OneIn(4) ? String() : std::u16string(Name());
            text += Blanks();
            text += u':';
            text += Blanks();
        }
        text += Value();
        text += Blanks();
        if (count > 1 || OneIn(8)) text += u',';
    }
    text += Blanks();
    return text + u')';
}

std::u16string TextMaker::Value()
{
    switch (Below(4)) {
    case 0: return std::u16string(Digits());
    case 1: return std::u16string(Pick(kNumbers, Number()));
    case 2: return String();
    default: return Literal();
    }
}

// A value in braces: numbers and strings, separated by commas; most of them are some kind of value.
std::u16string TextMaker::Literal()
{
    std::u16string text = u"{";
    if (OneIn(3)) {
        for (std::size_t items = 1 + Below(3); items > 0; --items) {
            text += Blanks();
            text += u"{1,2,3,4,";
            text += Digits();
            text += u',';
            text += Blanks();
            text += String();
            text += Blanks();
            text += u'}';
            if (items > 1 || OneIn(4)) text += u',';
        }
    } else {
        for (std::size_t parts = 1 + Below(4); parts > 0; --parts) {
            text += Blanks();
            text +=
                OneIn(3) || parts == 1 ? (OneIn(4) ? std::u16string(Digits()) : String()) : std::u16string(Digits());
            text += Blanks();
            if (parts > 1) text += u',';
        }
    }
    text += Blanks();
    return text + u'}';
}

std::u16string TextMaker::String()
{
    std::u16string text = u"\"";
    switch (Below(8)) {
    case 0: break;
    case 1: text += u"01234567-89ab-cdef-0123-456789abcdef"; break;
    case 2: text += u"2022/10/20 12:00:00,000 GMT+01:00"; break;
    case 3: text += Tag(); break;
    case 4: text += Tokens(4); break;
    case 5: text += u"a\\\" b"; break;
    case 6: text += u"a\\\\"; break;
    default: text += Name(); break;
    }
    return text + u'"';
}

std::u16string TextMaker::Tag()
{
    constexpr View kAttributes[] = {u" b=\"1\"",    u" b='1'",           u" b=1",   u" c",      u" d = \"x y\"",
                                    u" e=\"\\\"\"", u" f=\"<a b='1'>\"", u" g=h=i", u"j=\"k\"", u" l='\"'",
                                    u" m=n/o"};
    constexpr View kEnds[] = {u">", u"/>", u" />", u"?>", u" >", u""};
    if (OneIn(8)) return u"<!-- \"q\" -->";
    if (OneIn(8)) return u"<![CDATA[\"q\"]]>";
    if (OneIn(8)) return u"</a >";
    std::u16string text = OneIn(6) ? u"<?x" : u"<a";
    for (std::size_t count = Below(4); count > 0; --count) text += Pick(kAttributes, Number());
    return text + std::u16string(Pick(kEnds, Number()));
}

std::u16string TextMaker::Tokens(std::size_t most)
{
    std::u16string text;
    for (std::size_t count = Below(most + 1); count > 0; --count) text += Pick(kPieces, Number());
    return text;
}

// Short enough for the engine, most of the time.
std::u16string TextMaker::Repeated()
{
    const std::u16string before = OneIn(2) ? u"A (x: \"" : u"A (";
    const std::u16string piece = Tokens(3);
    std::u16string text = before;
    for (std::size_t count = Below(12); count > 0; --count) text += piece;
    return text + (OneIn(2) ? u"\", y: 1)" : u", y: 1)");
}

void TextMaker::Spoil(std::u16string& text)
{
    const std::size_t at = Below(text.size() + 1);
    switch (Below(4)) {
    case 0: text.insert(at, Pick(kPieces, Number())); break;
    case 1: text.erase(at, 1 + Below(3)); break;
    case 2: text.insert(at, text.substr(Below(text.size() + 1), Below(20))); break;
    default:
        if (at < text.size()) text[at] = Pick(kPieces, Number()).front();
        break;
    }
}

}  // namespace OrvPLC::Judge
