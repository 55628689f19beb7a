#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "ulmo/xml_text.h"
#include "ulmo/xml_tree.h"

namespace {

using namespace Ulmo;

// A tree on one line: name[attribute=value]{text}(children).
std::string Shape(const XMLNode& node)
{
    std::string shape = node.GetName();
    for (const XMLNode::Attribute& attribute : node.Attributes()) {
        shape += "[" + attribute.name + "=" + attribute.value + "]";
    }
    if (!node.Text().empty()) shape += "{" + node.Text() + "}";
    if (!node.FirstChild()) return shape;
    shape += "(";
    for (const XMLNode* child = node.FirstChild(); child; child = child->NextSibling()) shape += Shape(*child) + ";";
    return shape + ")";
}

std::string ShapeOf(const char* text)
{
    XMLTree tree;
    tree.Parse(text);
    return tree.GetRoot() ? Shape(*tree.GetRoot()) : "nothing";
}

TEST(XmlParser, Trees)
{
    const std::pair<const char*, const char*> cases[] = {
        {"<a></a>", "a"},
        {"<a/>", "a"},
        {" \r\n\t<a / > ", "a"},
        {"<a", nullptr},
        {"<a>one<b/>two<c>x</c></a> tail", "a{one}(b;c{x};)"},
        {"<a> \t\r\n one  two\n \t  </a>", "a{one  two\n \t}"},
        {"<a b='1'c=\"'2'\" d = '&lt;>/'/>", "a[b=1][c='2'][d=<>/]"},
        {"<a_:.-1 B='' b='' azAZ09_:.-=''/>", "a_:.-1[B=][b=][azAZ09_:.-=]"},
        {"<a&#98;c></abc>", "abc"},
        {"<a><b/><b>2</b></a>", "a(b;b{2};)"},
        {"<?xml?><!DOCTYPE a<><!-- c --><a><!---->x<!--c--></a>", "a"},
        {"<!-- only -->", "nothing"},
        {"<a/><b/><", "a"},
        // A second root shows by its end tag only.
        {"<a></a><b c='1'/><d />", "a"},
        {"<a/><b c=1/>", nullptr},
        {"<a/><b/></b>", nullptr},
        {"<a/><b>lost", nullptr},
        // A "!" is text, unless a CDATA section stands anywhere after it.
        {"<a>x!y!</a>", "a{x!y!}"},
        {"<a>x<![CDATA[y]]></a>", "a"},
        {"<a><![CDATA[</a>]]></a>", "a"},
        {"<a>x!<![CDATA[y]]>z</a>", "a"},
        {"<a>x<b/><![CDATA[<y<]]><![CDATA[]]>t<c/></a>", "a{x}(b;c;)"},
        {"<a><b>one!</b><c><![CDATA[]]></c></a>", nullptr},
    };
    for (const auto& [text, shape] : cases) {
        if (shape) {
            EXPECT_EQ(ShapeOf(text), shape) << text;
        } else {
            EXPECT_THROW(ShapeOf(text), XMLNodeParsingException) << text;
        }
    }
}

TEST(XmlParser, FaultsWithTheirPlaces)
{
    const std::tuple<const char*, const char*, unsigned> cases[] = {
        {nullptr, "Invalid xml format. Start of node [<] not found", 0},
        {" \n", "Invalid xml format. Start of node [<] not found", 2},
        {"\xEF\xBB\xBF<a/>", "Invalid xml format. Start of node [<] not found", 0},
        {"<!-- a-b -->", "Syntax error reading comment end", 6},
        {"<!-- a", "End of comment not found", 0},
        {"<!DOCTYPE a", "End of DOCTYPE not found", 0},
        {"<!ELEMENT a>", "Syntax error reading comment", 0},
        {"<![CDATA[x]]><a/>", "Syntax error reading comment", 0},
        {"<<<", "Illegal character after tag start", 1},
        {"<\xC3\xA4/>", "Illegal character after tag start", 1},
        {"<a", "Start of attribute not found in read node name - invalid node", 1},
        {"<a></>", "No node name in read node name", 5},
        {"<a ", "Unexpected end during next node parsing", 3},
        {"<a / ", "Empty node - end [>] not found", 5},
        {"<a b", "End of file during attribute name parsing", 3},
        {"<a b/>", "Unexpected end of attribute", 4},
        {"<a b>", "Unexpected end of attribute", 4},
        {"<a b&='1'/>", "Invalid character during attribute name parsing", 4},
        {"<a<b/>", "Invalid character during attribute name parsing", 2},
        {"<a ?>", "Invalid character during attribute name parsing", 3},
        {"<a ='1'/>", "Invalid (no) attribute name", 3},
        {"<a b c='1'/>", "Invalid char at start of attribute value", 5},
        {"<a b ", "Attribute value: unexpected end", 5},
        {"<a b= ", "Attribute value: unexpected end", 6},
        {"<a b=1/>", "Attribute value begin: no ' or \" char found", 5},
        {"<a b='1\"/>", "Attribute value end: no ' or \" char found", 5},
        {"<a b='1' b='2'/>", "Double attribute - attribute has been already set", 9},
        {"<a a='' b='' c='' d='' e='' f='' g='' h='' i='' j='' k='' l='' m='' n='' o='' p='' q='' q=''/>",
         "Double attribute - attribute has been already set", 88},
        {"<a> ", "Unexpected end during value parsing", 4},
        {"<a> x!", "Unexpected end of file while parsing for values", 4},
        {"<a>1 > 2</a>", "Invalid character '<' in value", 5},
        {"<a>!<![CDATA[x]", "Invalid CDATA section: ]] not found", 6},
        {"<a><![CDATA[x]", "Invalid CDATA section: ]] not found", 5},
        {"<a><b/><![CDATA[x]", "Invalid CDATA section: ]] not found", 9},
        {"</a>", "End tag without start (no or multiple root)", 2},
        {"<a></a><b></b>", "End tag without start (no or multiple root)", 12},
        {"<a/><b><c/></b>", "End tag without start (no or multiple root)", 13},
        {"<a><{0}></a>", "Illegal character after tag start", 4},
        {"<a><b{0}></a>", "Name of start tag [b{0}] does not match name of end tag [a]", 11},
        {"<a></a b>", "Invalid termination of end tag", 7},
        {"<?php?>", "Illegal version beginning - xml expected", 2},
        {"<?xml version='1.0'>", "No end of version tag found", 0},
        {"<?xml ? >", "Illegal version termination", 7},
        {"<a><b/>", "End of root node expected", 7},
    };
    for (const auto& [text, message, position] : cases) {
        XMLTree tree;
        tree.Parse("<before/>");
        try {
            tree.Parse(text);
            ADD_FAILURE() << text << " reads";
        } catch (const XMLNodeParsingException& fault) {
            const std::string document = text ? text : "";
            EXPECT_EQ(fault.NarrowMessage().substr(0, fault.NarrowMessage().find('\n')),
                      std::string("XML parsing failed: ") + message)
                << document;
            EXPECT_EQ(fault.ErrorCode(), position) << document;
        }
        EXPECT_FALSE(tree.GetRoot());
    }
}

TEST(XmlParser, MessagesShowThePiece)
{
    const std::string noLetter(40, '\x80');
    const std::tuple<const char*, const char16_t*, unsigned> cases[] = {
        // 32 bytes would cut the last letter.
        {"<a>\n <b c=d>01234567890123456789012345678\xC3\xA4 behind</b></a>",
         u"XML parsing failed: Attribute value begin: no ' or \" char found\nd>01234567890123456789012345678", 10},
        {&noLetter[1], u"XML parsing failed: Invalid xml format. Start of node [<] not found\n", 0},
    };
    for (const auto& [text, message, position] : cases) {
        try {
            XMLTree().Parse(text);
            ADD_FAILURE() << text;
        } catch (const XMLNodeParsingException& fault) {
            EXPECT_EQ(fault.WideMessage(), message);
            EXPECT_EQ(fault.ErrorCode(), position);
        }
    }
    const TextPlace place = PlaceOf("<a>\n \xC3\xA4<b c=d>", 12, {3, 5});
    EXPECT_EQ(place.line, 4U);
    EXPECT_EQ(place.column, 8U);
    EXPECT_EQ(PlaceOf("ab", 1, place).column, 9U);
}

TEST(XmlParser, Versions)
{
    XMLTree tree;
    tree.Parse("<?xml version='1.0' note = '?>' ?><a/>");
    EXPECT_EQ(Shape(*tree.GetVersion()), "xmlversionattributes[version=1.0][note=?>]");
    tree.Parse("<a/>");
    EXPECT_EQ(Shape(*tree.GetVersion()), "noversion{no version information found}");
}

TEST(XmlText, Entities)
{
    const std::pair<std::string, std::string> cases[] = {
        {"&#65;&amp;&unknown;", "A&?"},
        {"&lt;&ltx;&gt;&quot;&quotx;&apos;", "<<>\"\"'"},
        {"&#x41;", std::string(1, '\0')},
        {"&#321;&#65b;&#;", std::string("AA\0", 3)},
        {"&amp;lt;&ampx;", "&lt;?"},
        {"a&b; c&#65", "a? c?"},
        {"&", "?"},
        {"AT&T is; good", "AT? good"},
        {"x&lt", "x<"},
    };
    for (const auto& [text, decoded] : cases) {
        std::string changed = text;
        DecodeXmlEntities(changed);
        EXPECT_EQ(changed, decoded) << text;
    }
}

TEST(XmlText, Escapes)
{
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"a<&>'\"b", "a&lt;&amp;&gt;&apos;&quot;b"},
        {"\xC2\x80\xE2\x82\xAC\xF0\x9F\x98\x8E", "\xC2\x80\xE2\x82\xAC\xF0\x9F\x98\x8E"},
        {"\xE0\xA0\x80\xED\x9F\xBF\xF4\x8F\xBF\xBF", "\xE0\xA0\x80\xED\x9F\xBF\xF4\x8F\xBF\xBF"},
        {"\xE0\x9F\xBF\xF0\x8F\xBF\xBF", "&#224;&#159;&#191;&#240;&#143;&#191;&#191;"},
        {"\xC3x\xE2\x82", "&#195;x&#226;&#130;"},
        {"\xC0\x80\xED\xA0\x80\xF4\x90\x80\x80", "&#192;&#128;&#237;&#160;&#128;&#244;&#144;&#128;&#128;"},
    };
    for (const auto& [text, escaped] : cases) EXPECT_EQ(EscapeXml(text), escaped);
}

TEST(XmlText, Wildcards)
{
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"", "any", true},       {"*", "", true},      {"a*", "a", true},       {"a*", "b", false},
        {"?", "a", true},        {"?", "", false},     {"a?c", "abc", true},    {"a?c", "abd", false},
        {"*b", "abab", true},    {"*b*", "xbx", true}, {"*a?c", "aXaYc", true}, {"a*b*c", "aXbYbZc", true},
        {"a*b*c", "acb", false}, {"abc", "ab", false}, {"ab", "abc", false},    {"**x?", "aaxb", true},
    };
    for (const auto& [pattern, name, fits] : cases) {
        EXPECT_EQ(MatchesWildcards(pattern, name), fits) << pattern << " " << name;
    }
    EXPECT_FALSE(MatchesWildcards(std::string_view("ab", 1), "ab"));  // what stands behind a pattern is not its own
}

// Each in linear time and constant stack: with the square of the time the test would not end.
TEST(XmlParser, HostileDocuments)
{
    constexpr std::size_t kMany = 300'000;
    const auto repeated = [](std::string_view piece) {
        std::string text;
        for (std::size_t i = 0; i < kMany; ++i) text += piece;
        return text;
    };
    std::string attributes = "<a";
    for (std::size_t i = 0; i < kMany / 10; ++i) attributes += " a" + std::to_string(i) + "=''";
    std::string children = "<a>";
    for (std::size_t i = 0; i < kMany / 10; ++i) children += "<a" + std::to_string(i) + "/>";
    const std::string documents[] = {
        repeated("<"),
        repeated("<a>"),
        repeated("<a b='"),
        "<a>" + repeated("&") + "</a>",
        "<a>" + repeated("&#1") + "</a>",
        "<a>" + repeated("!") + "</a>",
        "<a>" + repeated("![CDATA["),
        "<a>" + repeated("<!---->"),
        "<a>" + repeated("<b/>"),
        "<a>" + repeated("<!"),
        attributes,
        attributes + "/>",
        children,
        children + "</a>",
    };
    for (const std::string& document : documents) {
        XMLTree tree;
        try {
            tree.Parse(document.c_str());
            EXPECT_TRUE(tree.GetRoot());
        } catch (const XMLNodeParsingException& fault) {
            EXPECT_LE(fault.ErrorCode(), document.size());
            EXPECT_LT(fault.NarrowMessage().size(), 200U);
        }
    }
}

}  // namespace
