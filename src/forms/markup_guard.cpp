#include "forms/markup_guard.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_set>
#include <utility>

#include "forms/markup_tags.h"
#include "ulmo/unit_search.h"

namespace OrvPLC {

namespace {

using View = std::u16string_view;

// Units that may be compared to find tags again: a part for each text, and so often its length. Each tag in a text is
// compared about once. Only hundreds of long tags that differ in nothing but their quotes take more.
constexpr std::size_t kComparisons = 16'000'000;
constexpr std::size_t kComparisonsPerUnit = 16;

char16_t SingleQuoted(char16_t unit)
{
    return unit == u'"' ? u'\'' : unit;
}

bool SameButForQuotes(View a, View b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t left, char16_t right) { return SingleQuoted(left) == SingleQuoted(right); });
}

// Whether the tag stands here with all its double quotes made single.
bool StandsGuarded(View here, View written)
{
    return std::equal(here.begin(), here.end(), written.begin(), written.end(),
                      [](char16_t unit, char16_t own) { return unit == SingleQuoted(own); });
}

// Hashes of all stretches of a text, its double quotes taken for single ones. Equal stretches have equal hashes; the
// opposite has to be checked.
class StretchHashes {
public:
    explicit StretchHashes(View text) : upTo_(text.size() + 1)
    {
        // One more than the unit, so that a zero unit counts too.
        for (std::size_t at = 0; at < text.size(); ++at) upTo_[at + 1] = upTo_[at] * kBase + SingleQuoted(text[at]) + 1;
    }
    std::uint64_t Of(std::size_t first, std::size_t units, std::uint64_t power) const
    {
        return upTo_[first + units] - upTo_[first] * power;
    }
    static std::uint64_t Power(std::size_t units)  // what a stretch of this length multiplies by
    {
        std::uint64_t power = 1;
        for (std::uint64_t base = kBase; units != 0; units /= 2, base *= base) {
            if (units % 2 != 0) power *= base;
        }
        return power;
    }
    static std::uint64_t OfWhole(View text)
    {
        std::uint64_t hash = 0;
        for (const char16_t unit : text) hash = hash * kBase + SingleQuoted(unit) + 1;
        return hash;
    }

private:
    static constexpr std::uint64_t kBase = 0x9E3779B97F4A7C15;

    std::vector<std::uint64_t> upTo_;
};

}  // namespace

// A text that begins with a bracket is left alone, although its tags may hold quotes. Deliberate.
MarkupGuard::MarkupGuard(View text)
    : original_(text), comparisonsLeft_(kComparisons + kComparisonsPerUnit * text.size())
{
    if (text.starts_with(u'<') || text.starts_with(u'>')) return;
    CollectTags();
    if (tags_.empty()) return;
    GroupByLength();
    Guard();
    unspent_ = tags_.size();
}

void MarkupGuard::CollectTags()
{
    if (Ulmo::FindUnit(original_, u'<', 0) == View::npos) return;
    std::unordered_set<View> seen;
    MarkupTags walk(original_);
    for (View tag; walk.Next(tag);) {
        // A tag without double quotes needs no guard, and one that stands several times is one tag.
        if (Ulmo::FindUnit(tag, u'"', 0) == View::npos || !seen.insert(tag).second) continue;
        tags_.push_back({tag, StretchHashes::OfWhole(tag)});
    }
}

void MarkupGuard::GroupByLength()
{
    std::vector<std::uint32_t> order(tags_.size());
    for (std::uint32_t tag = 0; tag < order.size(); ++tag) order[tag] = tag;
    std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
        const Tag& left = tags_[a];
        const Tag& right = tags_[b];
        return std::pair(left.written.size(), left.hash) < std::pair(right.written.size(), right.hash);
    });
    for (const std::uint32_t tag : order) {
        const std::size_t units = tags_[tag].written.size();
        if (lengths_.empty() || lengths_.back().units != units) lengths_.push_back({units, {}});
        lengths_.back().tags.push_back(tag);
    }
}

// Tags stand at opening brackets only. Which tag stands where is found by hashes, since guarding and restoring change
// nothing but the kind of quotes.
std::vector<MarkupGuard::Occurrence> MarkupGuard::FindOccurrences(View text)
{
    std::vector<Occurrence> found;
    std::vector<std::size_t> brackets;
    for (std::size_t at = Ulmo::FindUnit(text, u'<', 0); at != View::npos; at = Ulmo::FindUnit(text, u'<', at + 1)) {
        brackets.push_back(at);
    }
    if (brackets.empty()) return found;
    const StretchHashes hashes(text);
    for (const Length& length : lengths_) {
        if (length.units > text.size()) break;
        const std::uint64_t power = StretchHashes::Power(length.units);
        for (const std::size_t place : brackets) {
            if (place > text.size() - length.units) break;
            const View here = text.substr(place, length.units);
            for (const std::uint32_t tag : TagsOf(length, hashes.Of(place, length.units, power))) {
                if (tags_[tag].spent) continue;
                if (comparisonsLeft_ < length.units) throw std::runtime_error("The text holds too much markup.");
                comparisonsLeft_ -= length.units;
                if (SameButForQuotes(here, tags_[tag].written)) found.push_back({tag, place});
            }
        }
    }
    std::sort(found.begin(), found.end(), [](const Occurrence& a, const Occurrence& b) {
        return std::pair(a.tag, a.place) < std::pair(b.tag, b.place);
    });
    return found;
}

std::span<const std::uint32_t> MarkupGuard::TagsOf(const Length& length, std::uint64_t hash) const
{
    const auto first = std::partition_point(length.tags.begin(), length.tags.end(),
                                            [&](std::uint32_t tag) { return tags_[tag].hash < hash; });
    const auto last =
        std::find_if(first, length.tags.end(), [&](std::uint32_t tag) { return tags_[tag].hash != hash; });
    return {first, last};
}

// Tag after tag, each at all its places: one may hold another, and the earlier one then changes what the later one
// finds.
void MarkupGuard::Guard()
{
    changed_ = original_;
    std::size_t free = 0;  // occurrences of one tag do not overlap
    const Tag* current = nullptr;
    for (const Occurrence& found : FindOccurrences(original_)) {
        const Tag& tag = tags_[found.tag];
        if (std::exchange(current, &tag) != &tag) free = 0;
        if (found.place < free || View(changed_).substr(found.place, tag.written.size()) != tag.written) continue;
        free = found.place + tag.written.size();
        const auto first = changed_.begin() + static_cast<std::ptrdiff_t>(found.place);
        std::replace(first, first + static_cast<std::ptrdiff_t>(tag.written.size()), u'"', u'\'');
    }
}

void MarkupGuard::Restore(std::u16string& value)
{
    std::size_t free = 0;
    const Tag* current = nullptr;
    for (const Occurrence& found : FindOccurrences(value)) {
        Tag& tag = tags_[found.tag];
        if (std::exchange(current, &tag) != &tag) free = 0;
        if (found.place < free || !StandsGuarded(View(value).substr(found.place, tag.written.size()), tag.written)) {
            continue;
        }
        free = found.place + tag.written.size();
        value.replace(found.place, tag.written.size(), tag.written);
        unspent_ -= !std::exchange(tag.spent, true);
    }
}

}  // namespace OrvPLC
