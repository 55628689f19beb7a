// The entries of one kind in the order of their keys: the built-in ones, which stand in that order, and what was added.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <span>

namespace OrvPLC {

// Reads as a map of keys to pointers. KeyOf gives the key of an entry; it lives as long as the entry.
template <class Entry, auto KeyOf>
class OrderedEntries {
public:
    using Key = decltype(KeyOf(std::declval<const Entry&>()));

    struct Item {
        Key first;
        const Entry* second;
    };

private:
    struct Added {
        const Entry* entry;
        std::size_t before;  // how many built-in entries stand before this one
    };
    using AddedMap = std::map<Key, Added>;

public:
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Item;
        using difference_type = std::ptrdiff_t;
        using pointer = const Item*;
        using reference = Item;

        Item operator*() const
        {
            const Entry* entry = AtAdded() ? added_->second.entry : &of_->builtIn_[next_];
            return {KeyOf(*entry), entry};
        }
        Iterator& operator++()
        {
            if (AtAdded()) {
                ++added_;
            } else {
                ++next_;
            }
            return *this;
        }
        bool operator==(const Iterator& other) const { return next_ == other.next_ && added_ == other.added_; }

    private:
        friend OrderedEntries;
        Iterator(const OrderedEntries& of, std::size_t next, typename AddedMap::const_iterator added)
            : of_(&of), next_(next), added_(added)
        {}
        bool AtAdded() const { return added_ != of_->added_.end() && added_->second.before <= next_; }

        const OrderedEntries* of_;
        std::size_t next_;  // of the built-in entries
        typename AddedMap::const_iterator added_;
    };

    OrderedEntries() = default;
    explicit OrderedEntries(std::span<const Entry> builtIn) : builtIn_(builtIn) {}

    // The key is new.
    void Add(const Entry& entry)
    {
        const Key key = KeyOf(entry);
        added_.try_emplace(key, Added{&entry, FirstBuiltIn([&](const Key& other) { return other < key; })});
    }
    void Remove(const Entry& added) noexcept { added_.erase(KeyOf(added)); }

    Iterator begin() const { return Iterator(*this, 0, added_.begin()); }
    Iterator end() const { return Iterator(*this, builtIn_.size(), added_.end()); }
    std::size_t size() const { return builtIn_.size() + added_.size(); }
    bool empty() const { return size() == 0; }

    Iterator lower_bound(const Key& key) const
    {
        return Iterator(*this, FirstBuiltIn([&](const Key& other) { return other < key; }), added_.lower_bound(key));
    }
    Iterator upper_bound(const Key& key) const
    {
        return Iterator(*this, FirstBuiltIn([&](const Key& other) { return !(key < other); }), added_.upper_bound(key));
    }
    // Only among the added entries; null if there is none.
    const Entry* FindAdded(const Key& key) const
    {
        const auto found = added_.find(key);
        return found == added_.end() ? nullptr : found->second.entry;
    }

private:
    // The position of the first built-in entry for which `comesBefore` is false.
    template <class ComesBefore>
    std::size_t FirstBuiltIn(ComesBefore&& comesBefore) const
    {
        const auto found = std::partition_point(builtIn_.begin(), builtIn_.end(),
                                                [&](const Entry& entry) { return comesBefore(KeyOf(entry)); });
        return static_cast<std::size_t>(found - builtIn_.begin());
    }

    std::span<const Entry> builtIn_;
    AddedMap added_;
};

}  // namespace OrvPLC
