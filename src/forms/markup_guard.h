// String values may hold markup whose attributes hold double quotes, which would end the string. Before a text is
// parsed the guard turns the double quotes inside its tags into single ones, and turns them back in the values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace OrvPLC {

class MarkupGuard {
public:
    // The text outlives the guard. Raises std::runtime_error, as Restore does, for a text whose tags would take too
    // long to tell apart.
    explicit MarkupGuard(std::u16string_view text);

    // The text to be parsed, of the same length; refers to the given text or to the guard.
    std::u16string_view Text() const { return changed_.empty() ? original_ : std::u16string_view(changed_); }
    bool IsActive() const { return unspent_ != 0; }

    // Puts the tags back into a value. Each tag is spent on the first value that holds it, so a second value with the
    // same tag keeps the single quotes. Deliberate: that is how the format behaves.
    void Restore(std::u16string& value);

private:
    struct Tag {
        std::u16string_view written;
        std::uint64_t hash;  // of the tag with all its quotes made single
        bool spent = false;
    };
    // The tags of one length, ordered by their hashes.
    struct Length {
        std::size_t units;
        std::vector<std::uint32_t> tags;
    };
    struct Occurrence {
        std::uint32_t tag;
        std::size_t place;
    };

    void CollectTags();
    void GroupByLength();
    void Guard();
    std::vector<Occurrence> FindOccurrences(std::u16string_view text);
    std::span<const std::uint32_t> TagsOf(const Length& length, std::uint64_t hash) const;

    std::u16string_view original_;
    std::u16string changed_;
    std::vector<Tag> tags_;  // in the order of the text
    std::vector<Length> lengths_;
    std::size_t unspent_ = 0;
    std::size_t comparisonsLeft_;
};

}  // namespace OrvPLC
