// String values may hold markup whose attributes hold double quotes, which would end the string. Before a text is
// parsed the guard turns the double quotes inside its tags into single ones, and turns them back in the values.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "forms/expression.h"

namespace OrvPLC {

class MarkupGuard {
public:
    // The text outlives the guard. Raises std::runtime_error for a text with more markup than can be guarded in
    // sensible time.
    MarkupGuard(std::u16string_view text, PatternSearch& search);

    // The text to be parsed, of the same length; refers to the given text or to the guard.
    std::u16string_view Text() const { return changed_.empty() ? original_ : std::u16string_view(changed_); }
    bool IsActive() const { return unspent_ != 0; }

    // Puts the tags back into a value. Each tag is spent on the first value that holds it, so a second value with the
    // same tag keeps the single quotes. Deliberate: that is how the format behaves.
    void Restore(std::u16string& value);

private:
    struct Tag {
        std::u16string_view written;
        std::u16string guarded;
        bool spent;
    };
    class Places;
    void CollectTags(PatternSearch& search);
    void Guard();

    std::u16string_view original_;
    std::u16string changed_;
    std::vector<Tag> tags_;
    std::size_t unspent_ = 0;
    std::size_t comparisonsLeft_;
};

}  // namespace OrvPLC
