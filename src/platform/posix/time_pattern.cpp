#include "platform/posix/time_pattern.h"

#include <algorithm>

namespace Platform {

namespace {

constexpr std::string_view kUsualTwelveHours = "%I:%M:%S %p";  // what the C library takes for an empty pattern

void ReplaceAll(std::string& text, std::string_view from, std::string_view to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

// The end of the conversion that begins at a "%": flags, a width, a modifier and a letter.
std::size_t ConversionEnd(std::string_view pattern, std::size_t begin)
{
    const std::size_t letter = pattern.find_first_not_of("_-^#+0123456789EO", begin + 1);
    return std::min(letter, pattern.size() - 1) + 1;
}

// Cuts the seconds out, which stand between the places. `before` is the end of the conversion before them.
void CutSeconds(std::string& pattern, std::size_t before, std::size_t begin, std::size_t end)
{
    const std::size_t next = std::min(pattern.find_first_of(" %", end), pattern.size());
    const bool hasUnit = next != end && (next == pattern.size() || pattern[next] == ' ');
    if (hasUnit) {
        while (begin > before && pattern[begin - 1] == ' ') --begin;
        pattern.erase(begin, next - begin);
    } else {
        pattern.erase(before, end - before);
    }
}

}  // namespace

std::string TimePatternWithoutSeconds(std::string_view given, std::string_view twelveHours)
{
    std::string pattern(given);
    // Patterns within the pattern may hold the seconds.
    ReplaceAll(pattern, "%r", twelveHours.empty() ? kUsualTwelveHours : twelveHours);
    ReplaceAll(pattern, "%T", "%H:%M:%S");
    std::size_t before = 0;
    for (std::size_t begin = pattern.find('%'); begin != std::string::npos; begin = pattern.find('%', before)) {
        const std::size_t end = ConversionEnd(pattern, begin);
        if (pattern[end - 1] == 'S') {
            CutSeconds(pattern, before, begin, end);
            break;
        }
        before = end;
    }
    return pattern;
}

}  // namespace Platform
