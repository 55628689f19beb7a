#include "bridge/hesk_patterns.h"

#include <atomic>
#include <mutex>
#include <string>

namespace HeskPLC {

namespace {

using OrvPLC::Expression;

// The pieces that patterns are joined from; needed only while they are compiled.
struct Pieces {
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

HeskPatterns Compile(const Pieces& pieces)
{
    return {
        .head = Expression(R"(^\s*([@!?])?\s*)" + pieces.identifier + R"(\s*\()"),
        .field = Expression(R"(\s*)" + pieces.key + pieces.value + R"(\s*(?:(?=\))|,\s*))"),
        .tail = Expression(R"(^\s*\))"),
    };
}

constinit std::atomic<const HeskPatterns*> patterns{nullptr};

std::mutex& Section()
{
    static std::mutex& section = *new std::mutex;  // never destroyed: threads may outlive the library's end
    return section;
}

}  // namespace

const HeskPatterns& Patterns()
{
    if (const HeskPatterns* present = patterns.load(std::memory_order_acquire)) return *present;
    const std::lock_guard<std::mutex> guard(Section());
    if (!patterns.load(std::memory_order_relaxed)) {
        patterns.store(new HeskPatterns(Compile({})), std::memory_order_release);
    }
    return *patterns.load(std::memory_order_relaxed);
}

void EndHeskPatterns()
{
    delete patterns.exchange(nullptr);
}

}  // namespace HeskPLC
