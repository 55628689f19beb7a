#include "forms/string_closes.h"

#include "ulmo/unit_search.h"

namespace OrvPLC {

// Whether the backslashes directly before a quote protect each other and so leave the quote alone.
bool StringCloses::PairsOff(std::size_t quote, bool& afterBackslash) const
{
    std::size_t first = quote;
    while (first > open_ + 1 && text_[first - 1] == u'\\') --first;
    afterBackslash = first != quote;
    return (quote - first) % 2 == 0;
}

std::size_t StringCloses::Next()
{
    return forward_ ? NextForward() : NextBackward();
}

std::size_t StringCloses::NextForward()
{
    for (;;) {
        const std::size_t quote = Ulmo::FindUnit(text_, u'"', at_);
        if (quote == kNone) {
            at_ = last_ = text_.size();
            forward_ = false;
            return NextBackward();
        }
        at_ = quote + 1;
        bool afterBackslash = false;
        const bool pairsOff = PairsOff(quote, afterBackslash);
        if (!pairsOff) {
            passedOver_ += backslash_ == Backslash::MayStandAlone;
            continue;
        }
        if (!afterBackslash || backslash_ == Backslash::ProtectsTheNextOne) {
            at_ = last_ = quote;
            forward_ = false;
        }
        return quote;
    }
}

std::size_t StringCloses::NextBackward()
{
    bool afterBackslash = false;
    while (passedOver_ > 0) {
        if (text_[--at_] != u'"' || PairsOff(at_, afterBackslash)) continue;
        --passedOver_;
        return at_;
    }
    return kNone;
}

}  // namespace OrvPLC
