#include "judge/patterns.h"

#include <string>

namespace OrvPLC::Judge {

namespace {

// The pieces that patterns are joined from.
struct OwnPieces {
    const std::string identifier = R"(([[:alpha:]][[:alnum:]]*))";
    // No escapes: a backslash protects the next character from ending the string and stays in the value. The last
    // alternative lets a string end in a backslash.
    const std::string quoted = R"x("((?:[^\\"]|\\.|\\)*)")x";
    const std::string integer = R"(([+-]?\d+))";
    const std::string real =
        R"(([-+]?(?:(?:(?:\d+\.(?:\d+)?[eE](?:[+-]?\d+))|(?:\d+[eE]\d+)|(?:\d+\.\d+)|(?:\d+\.)|(?:\.\d+)))))";
    const std::string rect = R"(\{\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+)\s*\})";
    const std::string name = "(?:" + identifier + "|" + quoted + ")";
    const std::string channel = R"(\{\s*(\d+)\s*,\s*(\d+)\s*,\s*)" + quoted + R"(\s*\})";
    const std::string eventType = R"(\{\s*(\d+)\s*,\s*)" + quoted + R"(\s*\})";
    const std::string resource = R"(\{\s*)" + quoted + R"(\s*,\s*)" + quoted + R"(\s*\})";
    const std::string resultDataItem =
        R"(\{\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+)\s*,\s*)" + quoted + R"(\s*\})";
    const std::string resultData = R"((\{\s*()" + resultDataItem + R"(\s*,?\s*)+\s*\}))";
    // The order counts: an integer is tried first and gives way to a float only because what follows then fails.
    const std::string value = "(?:" + integer + "|" + real + "|" + quoted + "|" + rect + "|" + channel + "|" +
                              eventType + "|" + resource + "|" + resultData + ")";
};

struct SiblingPieces {
    const std::string identifier = "([[:alpha:]][[:alnum:]]*)";
    // A backslash protects the next character from ending the string and stays in the value. Unlike in our own text a
    // string cannot end in one.
    const std::string quoted = R"x("((?:[^\\"]|\\.)*)")x";
    const std::string integer = R"(([+-]?\d+))";
    const std::string real = R"(([+-]?\d+\.\d+(?:[eE][+-]?\d+)?))";
    const std::string rect = R"(\{\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+)\s*\})";
    const std::string channel = R"(\{\s*(\d+)\s*,\s*(\d+)\s*,\s*)" + quoted + R"(\s*\})";
    const std::string eventType = R"(\{\s*(\d+)\s*,\s*)" + quoted + R"(\s*\})";
    const std::string resource = R"(\{\s*)" + quoted + R"(\s*,\s*)" + quoted + R"(\s*\})";
    // The order counts: an integer is tried first and gives way to a float only because what follows then fails.
    const std::string value = "(?:" + integer + "|" + real + "|" + quoted + "|" + rect + "|" + channel + "|" +
                              eventType + "|" + resource + ")";
    const std::string key = "(?:" + identifier + R"(\s*:)?\s*)";
};

constexpr std::string_view kGuid = R"(\w{8}-\w{4}-\w{4}-\w{4}-\w{12})";
constexpr std::string_view kDateTime = R"(\d{4}/\d{2}/\d{2}\s\d{2}:\d{2}:\d{2},\d{3}\s[[:alnum:]]{3}[+ -]\d{2}:\d{2})";
constexpr std::string_view kMarkupTag =
    R"x(<(?:([a-zA-Z\?][\w:\-]*))x"
    R"x((\s(?:\s*[a-zA-Z][\w:\-]*(?:\s*=(?:\s*"(?:\\"|[^"])*"|\s*'(?:\\'|[^'])*'|[^\s>]+))?)*)?)x"
    R"x((\s*[\/\?]?)|\/([a-zA-Z][\w:\-]*)\s*|!--((?:[^\-]|-(?!->))*)--|!\[CDATA\[((?:[^\]]|\](?!\]>))*)\]\])>)x";

OwnPatternSet Compile(const OwnPieces& pieces)
{
    return {
        .identifier = Expression(pieces.identifier),
        .header = Expression(R"(^\s*([@!?])?\s*)" + pieces.name + R"(\s*\()"),
        .parameter = Expression(R"(\s*(?:)" + pieces.name + R"(\s*:)?\s*)" + pieces.value + R"(\s*(?:(?=\))|,\s*))"),
        .close = Expression(R"(^\s*\))"),
        .resultDataItem = Expression(pieces.resultDataItem),
        .guid = Expression(kGuid),
        .dateTime = Expression(kDateTime),
        .markupTag = Expression(kMarkupTag),
    };
}

SiblingPatternSet Compile(const SiblingPieces& pieces)
{
    return {
        .head = Expression(R"(^\s*([@!?])?\s*)" + pieces.identifier + R"(\s*\()"),
        .field = Expression(R"(\s*)" + pieces.key + pieces.value + R"(\s*(?:(?=\))|,\s*))"),
        .tail = Expression(R"(^\s*\))"),
    };
}

}  // namespace

const OwnPatternSet& OwnPatterns()
{
    static const OwnPatternSet patterns = Compile(OwnPieces());
    return patterns;
}

const SiblingPatternSet& SiblingPatterns()
{
    static const SiblingPatternSet patterns = Compile(SiblingPieces());
    return patterns;
}

}  // namespace OrvPLC::Judge
