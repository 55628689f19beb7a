// Finds the end of a result data list, `{ { 1, 2, 3, 4, 5, "a" }, { 6, 7, 8, 9, 0, "b" } }`.
//
// Each item's name is a string that may close in several places, and the choice decides what the rest of the list is.
// The walk takes the choices back in the order of the pattern and remembers the names from which no list ends well, so
// it visits each name once however many lists begin in a text.
#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "forms/string_closes.h"

namespace OrvPLC {

// The head of an item, `{ 1, 2, 3, 4, 5, `, up to the quote of its name. Gives the quote's place, npos where no such
// head stands. `numbers`, five of them, may be null.
std::size_t ResultItemHead(std::u16string_view text, std::size_t at, std::u16string_view* numbers);

class ResultListWalk {
public:
    static constexpr std::size_t kNone = std::u16string_view::npos;

    explicit ResultListWalk(std::u16string_view text) : text_(text) {}

    // `at` is the place of the first item's opening brace. `ends(place)` says whether a list may end before that place,
    // behind its closing brace; that place is the result, kNone when there is no list.
    template <class Ends>
    std::size_t EndOf(std::size_t at, Ends ends);

private:
    bool Enter(std::size_t item);
    std::size_t BehindItem(std::size_t close) const;

    struct Item {
        std::size_t open;  // the quote of its name
        StringCloses closes;
    };

    std::u16string_view text_;
    std::vector<Item> items_;                 // of the list that is walked, as far as it goes
    std::unordered_set<std::size_t> failed_;  // quotes of names from which no list ends well
};

template <class Ends>
std::size_t ResultListWalk::EndOf(std::size_t at, Ends ends)
{
    items_.clear();
    if (!Enter(at)) return kNone;
    while (!items_.empty()) {
        const std::size_t close = items_.back().closes.Next();
        if (close == kNone) {
            failed_.insert(items_.back().open);
            items_.pop_back();
            continue;
        }
        const std::size_t next = BehindItem(close);
        if (next >= text_.size()) continue;
        if (text_[next] == u'{') {
            // If the list does not go on there, the next place where this name may close is tried.
            Enter(next);
        } else if (text_[next] == u'}' && ends(next + 1)) {
            return next + 1;
        }
    }
    return kNone;
}

}  // namespace OrvPLC
