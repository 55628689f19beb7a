#include "forms/result_list_walk.h"

#include "forms/text_steps.h"

namespace OrvPLC {

std::size_t ResultItemHead(std::u16string_view text, std::size_t at, std::u16string_view* numbers)
{
    constexpr std::size_t kNumbers = 5;
    if (!StandsAt(text, at, u'{')) return text.npos;
    at = SkipBlanks(text, at + 1);
    for (std::size_t index = 0; index < kNumbers; ++index) {
        const std::size_t behind = SkipDigits(text, at);
        if (behind == at) return text.npos;
        if (numbers) numbers[index] = Between(text, at, behind);
        at = SkipBlanks(text, behind);
        if (!StandsAt(text, at, u',')) return text.npos;
        at = SkipBlanks(text, at + 1);
    }
    return StandsAt(text, at, u'"') ? at : text.npos;
}

// Goes on with the item that opens at this place, if one does and it is not known to lead nowhere.
bool ResultListWalk::Enter(std::size_t item)
{
    const std::size_t open = ResultItemHead(text_, item, nullptr);
    if (open == kNone || failed_.contains(open)) return false;
    items_.push_back({open, StringCloses(text_, open, Backslash::MayStandAlone)});
    return true;
}

// The place of what follows an item whose name closes at this quote, behind the comma if there is one; kNone when the
// item does not end there.
std::size_t ResultListWalk::BehindItem(std::size_t close) const
{
    std::size_t at = SkipBlanks(text_, close + 1);
    if (!StandsAt(text_, at, u'}')) return kNone;
    at = SkipBlanks(text_, at + 1);
    return StandsAt(text_, at, u',') ? SkipBlanks(text_, at + 1) : at;
}

}  // namespace OrvPLC
