#include "forms/text_patterns.h"

#include <string>
#include <utility>

namespace OrvPLC {

namespace {

// The pieces that patterns are joined from; needed only while they are compiled.
struct Pieces {
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

constexpr std::string_view kGuid = R"(\w{8}-\w{4}-\w{4}-\w{4}-\w{12})";
constexpr std::string_view kDateTime = R"(\d{4}/\d{2}/\d{2}\s\d{2}:\d{2}:\d{2},\d{3}\s[[:alnum:]]{3}[+ -]\d{2}:\d{2})";
constexpr std::string_view kMarkupTag =
    R"x(<(?:([a-zA-Z\?][\w:\-]*))x"
    R"x((\s(?:\s*[a-zA-Z][\w:\-]*(?:\s*=(?:\s*"(?:\\"|[^"])*"|\s*'(?:\\'|[^'])*'|[^\s>]+))?)*)?)x"
    R"x((\s*[\/\?]?)|\/([a-zA-Z][\w:\-]*)\s*|!--((?:[^\-]|-(?!->))*)--|!\[CDATA\[((?:[^\]]|\](?!\]>))*)\]\])>)x";

TextPatterns Compile(const Pieces& pieces)
{
    return {
        .header = Expression(R"(^\s*([@!?])?\s*)" + pieces.name + R"(\s*\()"),
        .parameter = Expression(R"(\s*(?:)" + pieces.name + R"(\s*:)?\s*)" + pieces.value + R"(\s*(?:(?=\))|,\s*))"),
        .close = Expression(R"(^\s*\))"),
        .resultDataItem = Expression(pieces.resultDataItem),
        .guid = Expression(kGuid),
        .dateTime = Expression(kDateTime),
        .markupTag = Expression(kMarkupTag),
    };
}

const TextPatterns* patterns = nullptr;  // not an object with a destructor: the library decides when it ends

}  // namespace

const TextPatterns& Patterns()
{
    return *patterns;
}

void StartTextPatterns()
{
    patterns = new TextPatterns(Compile({}));
}

void EndTextPatterns()
{
    delete std::exchange(patterns, nullptr);
}

}  // namespace OrvPLC
