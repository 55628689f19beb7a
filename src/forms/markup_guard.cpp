#include "forms/markup_guard.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_set>

#include "forms/text_patterns.h"

namespace OrvPLC {

namespace {

// Units that one reading may compare to find its tags again, about half a second. Ten thousand different tags of usual
// length take a hundredth of it; texts that repeat themselves over and over can take it all.
constexpr std::size_t kComparisons = 500'000'000;

void UseSingleQuotes(std::u16string& text)
{
    std::replace(text.begin(), text.end(), u'"', u'\'');
}

}  // namespace

// Where in a text tags may stand: at each opening bracket. Guarding and restoring change nothing but the kind of
// quotes, so the places are ordered once by what stands there with all quotes made single, and each tag finds its own
// among them without walking the text.
class MarkupGuard::Places {
public:
    Places(std::u16string_view text, std::size_t& comparisonsLeft) : text_(text), comparisonsLeft_(comparisonsLeft)
    {
        UseSingleQuotes(text_);
        for (std::size_t at = text.find(u'<'); at != text.npos; at = text.find(u'<', at + 1)) places_.push_back(at);
        std::sort(places_.begin(), places_.end(),
                  [this](std::size_t a, std::size_t b) { return Compare(From(a), From(b)) < 0; });
    }

    bool Empty() const { return places_.empty(); }

    // Replaces every occurrence of one tag by another that differs in the kind of quotes; whether there was one.
    bool Replace(std::u16string& text, std::u16string_view from, std::u16string_view to, std::u16string_view guarded)
    {
        const auto first = std::partition_point(places_.begin(), places_.end(), [&](std::size_t place) {
            return Compare(From(place).substr(0, guarded.size()), guarded) < 0;
        });
        const auto last = std::partition_point(first, places_.end(), [&](std::size_t place) {
            return Compare(From(place).substr(0, guarded.size()), guarded) == 0;
        });
        std::vector<std::size_t> inOrder(first, last);
        std::sort(inOrder.begin(), inOrder.end());
        std::size_t free = 0;  // occurrences do not overlap
        for (const std::size_t place : inOrder) {
            if (place < free || Compare(std::u16string_view(text).substr(place, from.size()), from) != 0) continue;
            text.replace(place, to.size(), to);
            free = place + to.size();
        }
        return free != 0;
    }

private:
    std::u16string_view From(std::size_t place) const { return std::u16string_view(text_).substr(place); }

    int Compare(std::u16string_view a, std::u16string_view b)
    {
        const std::size_t common = std::min(a.size(), b.size());
        const auto differing = std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(common), b.begin());
        const auto same = static_cast<std::size_t>(differing.first - a.begin());
        if (same >= comparisonsLeft_) throw std::runtime_error("The text holds too much markup.");
        comparisonsLeft_ -= same + 1;
        if (same < common) return a[same] < b[same] ? -1 : 1;
        return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
    }

    std::u16string text_;
    std::size_t& comparisonsLeft_;
    std::vector<std::size_t> places_;
};

// A text that begins with a bracket is left alone, although its tags may hold quotes. Deliberate.
MarkupGuard::MarkupGuard(std::u16string_view text, PatternSearch& search)
    : original_(text), comparisonsLeft_(kComparisons)
{
    if (text.starts_with(u'<') || text.starts_with(u'>')) return;
    CollectTags(search);
    if (!tags_.empty()) Guard();
}

void MarkupGuard::CollectTags(PatternSearch& search)
{
    std::unordered_set<std::u16string_view> seen;
    std::u16string_view rest = original_;
    for (std::size_t at = rest.find(u'<'); at != rest.npos; at = rest.find(u'<')) {
        if (!search.Find(Patterns().markupTag, rest.substr(at))) return;
        rest = search.Rest();
        const std::u16string_view written = search[0];
        if (written.find(u'"') == written.npos || !seen.insert(written).second) continue;
        std::u16string guarded(written);
        UseSingleQuotes(guarded);
        tags_.push_back({written, std::move(guarded), false});
    }
    unspent_ = tags_.size();
}

void MarkupGuard::Guard()
{
    changed_ = original_;
    Places places(original_, comparisonsLeft_);
    for (const Tag& tag : tags_) places.Replace(changed_, tag.written, tag.guarded, tag.guarded);
}

void MarkupGuard::Restore(std::u16string& value)
{
    Places places(value, comparisonsLeft_);
    if (places.Empty()) return;
    for (Tag& tag : tags_) {
        if (tag.spent) continue;
        tag.spent = places.Replace(value, tag.guarded, tag.written, tag.guarded);
        unspent_ -= tag.spent;
    }
}

}  // namespace OrvPLC
