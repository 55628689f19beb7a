// Prints the actions that match one of the patterns.
#include <algorithm>

#include "action_reader.h"
#include "action_writer.h"
#include "commands.h"
#include "console.h"
#include "patterns.h"
#include "text.h"

namespace {

// Each pattern with the name of the action says why it does not match; the others are only counted.
std::string Explanation(const std::vector<Pattern>& patterns, const Action& action)
{
    constexpr std::size_t kWidest = 100;
    std::string lines;
    std::size_t others = 0;
    for (const Pattern& pattern : patterns) {
        const std::vector<std::string> reasons = Refusals(pattern, action);
        others += reasons.empty();
        if (reasons.empty()) continue;
        lines += "    " + (pattern.place.empty() ? "" : pattern.place + "  ") + Shortened(pattern.text, kWidest) + "\n";
        for (const std::string& reason : reasons) lines += "        " + reason + "\n";
    }
    if (others > 0) {
        lines +=
            "    " + std::to_string(others) + (others == 1 ? " pattern is" : " patterns are") + " for other actions\n";
    }
    return lines;
}

}  // namespace

int Match(const MatchOptions& options)
{
    bool sound = true;
    const Form* source = SourceForm(options.from, sound);
    ActionWriter writer;
    std::vector<Pattern> patterns;
    if (!sound || !writer.Open(options.to)) return kUsage;
    const bool standard = options.files.empty() || std::ranges::count(options.files, "-") > 0;
    if (options.patterns == "-" && standard) {
        return Complain("usage", "patterns and actions cannot both come from standard input");
    }
    ActionReader reader;
    if (!ReadPatterns(options.patterns, patterns) || !reader.Open(options.files, source)) return kUsage;

    const orv::RuleSet rules = RulesOf(patterns);
    std::size_t matched = 0;
    std::size_t unwritten = 0;
    Action action;
    for (Record record; reader.Next(action, record);) {
        if (!rules.Match(action).empty()) {
            ++matched;
            unwritten += !writer.Write(action, record.place);
            if (reader.MayWait()) FlushOutput();
        } else if (options.explain) {
            const std::string text = ShownText(action);
            Report(record.place, Severity::Answer,
                   {"refused", "refused  " + text, {}, 0, 0, Explanation(patterns, action)});
        }
    }
    writer.Finish();
    if (reader.failed()) return kUsage;
    if (reader.unreadable() + unwritten > 0) return kUnreadable;
    return matched > 0 ? kDone : kNoMatch;
}
