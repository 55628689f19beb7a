// Any number of match actions, and which of them an action matches, in the C++ wrapper. Part of OrvActions.hpp; include
// that.
//
//     orv::RuleSet rules;
//     const orv::RuleSet::Id gate = rules.Add(orv::Action::Parse("@ PanLeft (Camera: 7)"));
//     for (orv::RuleSet::Id id : rules.Match(action)) { ... }
//
// The decision is that of OrvMatchAct_Matches. An index finds the rules that can match at all: each is listed under the
// name of its action and the value of its most telling parameter. So the cost of a call depends on how many rules
// match, hardly on how many there are.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "OrvActions.hpp"

namespace orv {

namespace detail {

// A number made of several, under which the index finds rules. Different ones may give the same: that costs time only,
// since the library decides.
class IndexKey {
public:
    explicit IndexKey(std::uint64_t start = 0) : key_(start) {}

    IndexKey& Add(std::uint64_t word)
    {
        std::uint64_t mixed = (key_ ^ word) * 0x9E3779B97F4A7C15;
        mixed = (mixed ^ (mixed >> 32)) * 0xD6E8FEB86659FD93;
        key_ = mixed ^ (mixed >> 29);
        return *this;
    }
    // The same for texts that are equal in any case. The library knows the case of all scripts; this treats all units
    // beyond ASCII as one, apart from those that can turn into ASCII letters: the dotted I, the dotless i and the
    // Kelvin sign.
    IndexKey& AddInAnyCase(std::u16string_view text)
    {
        std::uint64_t hash = 0xCBF29CE484222325;
        for (const char16_t unit : text) hash = (hash ^ Folded(unit)) * 0x100000001B3;
        return Add(hash).Add(text.size());
    }
    std::uint64_t get() const { return key_; }

private:
    static std::uint64_t Folded(char16_t unit)
    {
        if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? unit | 0x20u : unit;
        if (unit == 0x130 || unit == 0x131) return u'i';
        return unit == 0x212A ? u'k' : 0xFFFFu;
    }

    std::uint64_t key_;
};

// How much a parameter of a rule tells before the values are known: higher is more, 0 for what the index cannot find.
inline int Telling(std::uint32_t kind, std::uint32_t enumType)
{
    switch (kind) {
    case ORV_KIND_Guid:
    case ORV_KIND_Resource:
    case ORV_KIND_MediaChannel: return 6;
    case ORV_KIND_Numeric64Bit:
    case ORV_KIND_EventType: return 5;
    case ORV_KIND_String:
    case ORV_KIND_DateTime:
    case ORV_KIND_Rect: return 4;
    case ORV_KIND_Numeric32Bit: return enumType == 0 ? 3 : 2;
    case ORV_KIND_NumericDouble: return 3;
    case ORV_KIND_Boolean: return 1;
    default: return 0;
    }
}

// Makes the keys of a value from that of its parameter. A rule's value has one key, that of its first field that is
// filled, because that field decides alone. An action's value has a key for each field that a rule may ask for.
template <class Call>
void ForEachKey(const TOrvParameterValue& value, std::u16string_view text, IndexKey parameter, bool ofRule, Call call)
{
    enum Field { kWhole, kNumber, kName };
    parameter.Add(value.kind);
    const auto give = [&](Field field, std::uint64_t word) { call(IndexKey(parameter).Add(field).Add(word).get()); };
    const auto giveName = [&](const OrvWChar* name) { give(kName, IndexKey().AddInAnyCase(View(name)).get()); };
    const auto& payload = value.payload;
    const auto guid = [](const Guid& given) {
        std::uint64_t halves[2];
        static_assert(sizeof halves == sizeof given);
        std::memcpy(halves, &given, sizeof halves);
        return IndexKey().Add(halves[0]).Add(halves[1]).get();
    };
    switch (value.kind) {
    case ORV_KIND_Boolean: return give(kWhole, payload.boolean);
    case ORV_KIND_Numeric32Bit: return give(kWhole, static_cast<std::uint32_t>(payload.int32));
    case ORV_KIND_Numeric64Bit:
    case ORV_KIND_Rect: return give(kWhole, static_cast<std::uint64_t>(payload.int64));
    case ORV_KIND_DateTime: return give(kWhole, payload.dateTime.value);
    case ORV_KIND_NumericDouble: {
        const double real = payload.real == 0 ? 0 : payload.real;  // minus zero is equal to zero
        std::uint64_t bits;
        std::memcpy(&bits, &real, sizeof bits);
        return give(kWhole, bits);
    }
    case ORV_KIND_String: return give(kWhole, IndexKey().AddInAnyCase(text).get());
    case ORV_KIND_Guid: return give(kWhole, guid(payload.guid));
    case ORV_KIND_EventType:
        if (payload.eventType.id != 0) give(kWhole, payload.eventType.id);
        if (payload.eventType.id == 0 || !ofRule) giveName(payload.eventType.name);
        return;
    case ORV_KIND_MediaChannel:
        if (payload.channel.id != 0) give(kWhole, payload.channel.id);
        if (payload.channel.id != 0 && ofRule) return;
        if (payload.channel.number != 0) give(kNumber, payload.channel.number);
        if (payload.channel.number == 0 || !ofRule) giveName(payload.channel.name);
        return;
    case ORV_KIND_Resource: {
        const bool named = IsZero(payload.resource.guid);
        if (!named) give(kWhole, guid(payload.resource.guid));
        if (named || !ofRule) giveName(payload.resource.name);
        return;
    }
    default: return;
    }
}

}  // namespace detail

// Match may run on several threads at once, each with an action of its own, while no thread adds or removes.
class RuleSet {
public:
    using Id = std::uint64_t;  // never given twice by one set

    RuleSet() = default;
    RuleSet(RuleSet&&) = default;
    RuleSet& operator=(RuleSet&&) = default;

    // Copies a match action into the set. An action that is no match action matches nothing; an empty one throws.
    Id Add(const Action& rule)
    {
        if (!rule) throw Error("An empty action is no rule.");
        Action copy = rule.Clone();
        const std::uint64_t name = NameKey(copy);
        Group& group = groups_[name];
        const Listing listing = BestListing(copy, name);
        const std::size_t listed = listing.parameter.empty() ? kByName : List(group, listing.parameter);
        Bucket& bucket = buckets_[listing.key];
        Rule& added = rules_.try_emplace(nextId_, std::move(copy), nextId_, name, listing.key, listed).first->second;
        // Nothing fails from here on.
        if (bucket.first) bucket.first->previous = &added;
        added.next = std::exchange(bucket.first, &added);
        ++bucket.size;
        ++group.rules;
        if (listed != kByName) ++group.parameters[listed].rules;
        return nextId_++;
    }

    // False for an id that is not in the set.
    bool Remove(Id id)
    {
        const auto found = rules_.find(id);
        if (found == rules_.end()) return false;
        const Rule& rule = found->second;
        const auto bucket = buckets_.find(rule.key);
        (rule.previous ? rule.previous->next : bucket->second.first) = rule.next;
        if (rule.next) rule.next->previous = rule.previous;
        if (--bucket->second.size == 0) buckets_.erase(bucket);
        const auto group = groups_.find(rule.name);
        if (rule.listed != kByName) --group->second.parameters[rule.listed].rules;
        if (--group->second.rules == 0) groups_.erase(group);
        rules_.erase(found);
        return true;
    }

    // The rules that match, in the order in which they were added; none for an empty action.
    std::vector<Id> Match(const Action& action) const
    {
        std::vector<Id> matching;
        if (!action) return matching;
        const std::uint64_t name = NameKey(action);
        const auto group = groups_.find(name);
        if (group == groups_.end()) return matching;
        const auto collect = [&](std::uint64_t key) { Collect(key, action, matching); };
        collect(name);
        detail::Record value;
        for (const Parameter& parameter : group->second.parameters) {
            if (parameter.rules == 0 || !Read(action, parameter.name, value)) continue;
            detail::ForEachKey(*value.get(), value.Text(), ParameterKey(name, parameter.name), false, collect);
        }
        std::sort(matching.begin(), matching.end());
        matching.erase(std::unique(matching.begin(), matching.end()), matching.end());  // two keys may be the same
        return matching;
    }

    std::size_t Size() const noexcept { return rules_.size(); }

private:
    static constexpr std::size_t kByName = std::numeric_limits<std::size_t>::max();
    // This many rules may share a value before the next most telling parameter is taken.
    static constexpr std::size_t kCrowded = 16;

    struct Rule {
        Rule(Action given, Id number, std::uint64_t nameKey, std::uint64_t placeKey, std::size_t parameter)
            : action(std::move(given)), id(number), name(nameKey), key(placeKey), listed(parameter)
        {}
        Action action;
        Id id;
        std::uint64_t name;
        std::uint64_t key;
        std::size_t listed;  // in the parameters of its group, or kByName
        Rule* next = nullptr;
        Rule* previous = nullptr;
    };
    // The rules under one key.
    struct Bucket {
        Rule* first = nullptr;
        std::size_t size = 0;
    };
    // A parameter under whose values rules are listed; without rules its place is free.
    struct Parameter {
        std::u16string name;
        std::size_t rules = 0;
    };
    // The rules for one name.
    struct Group {
        std::vector<Parameter> parameters;
        std::size_t rules = 0;
    };
    // Under which key a rule is listed: that of its name, or that of a value of one of its parameters.
    struct Listing {
        std::uint64_t key;
        std::u16string parameter;  // "" when only the name is left
        int telling = 0;
        std::size_t crowd = 0;
    };

    static std::uint64_t NameKey(const Action& action) { return detail::IndexKey().AddInAnyCase(action.Name()).get(); }
    static detail::IndexKey ParameterKey(std::uint64_t name, const std::u16string& parameter)
    {
        return detail::IndexKey(name).AddInAnyCase(parameter);
    }

    // An absent parameter stores no last error, a read that fails does.
    static bool Read(const Action& action, const std::u16string& name, detail::Record& value)
    {
        if (value.Read(action.Handle(), name)) return true;
        TOrvLastErrorInfo info{};
        if (OrvAct_GetLastError(&info)) throw Error::Last();
        return false;
    }

    void Collect(std::uint64_t key, const Action& action, std::vector<Id>& matching) const
    {
        const auto bucket = buckets_.find(key);
        if (bucket == buckets_.end()) return;
        for (const Rule* rule = bucket->second.first; rule; rule = rule->next) {
            if (rule->action.Matches(action)) matching.push_back(rule->id);
        }
    }

    Listing BestListing(const Action& rule, std::uint64_t name) const
    {
        Listing best{name, {}, 0, std::numeric_limits<std::size_t>::max()};
        detail::Record value;
        for (const CarriedParameter& parameter : rule.Parameters()) {
            const int telling = detail::Telling(parameter.kind, parameter.enumType);
            // A name with a zero unit inside ends there for a reader, which then finds another parameter or nothing.
            if (telling == 0 || parameter.name.empty() || !Read(rule, parameter.name, value)) continue;
            detail::ForEachKey(*value.get(), value.Text(), ParameterKey(name, parameter.name), true,
                               [&](std::uint64_t key) {
                                   const auto bucket = buckets_.find(key);
                                   const std::size_t crowd = bucket == buckets_.end() ? 0 : bucket->second.size;
                                   if (!Better(crowd, telling, best)) return;
                                   best = {key, parameter.name, telling, crowd};
                               });
        }
        return best;
    }

    static bool Better(std::size_t crowd, int telling, const Listing& than)
    {
        const bool crowded = crowd >= kCrowded;
        if (crowded != (than.crowd >= kCrowded)) return !crowded;
        return crowded ? crowd < than.crowd : telling > than.telling;
    }

    // Where a parameter stands among those of its group. Names that differ in the case of ASCII letters only are one.
    static std::size_t List(Group& group, const std::u16string& name)
    {
        const auto lower = [](char16_t unit) { return unit >= u'A' && unit <= u'Z' ? unit | 0x20 : unit; };
        const auto same = [&](const Parameter& listed) {
            return std::equal(name.begin(), name.end(), listed.name.begin(), listed.name.end(),
                              [&](char16_t a, char16_t b) { return lower(a) == lower(b); });
        };
        auto& parameters = group.parameters;
        auto place = std::find_if(parameters.begin(), parameters.end(), same);
        if (place == parameters.end()) {
            place = std::find_if(parameters.begin(), parameters.end(), [](const Parameter& p) { return p.rules == 0; });
            if (place == parameters.end()) place = parameters.insert(place, Parameter());
            place->name = name;
        }
        return static_cast<std::size_t>(place - parameters.begin());
    }

    std::unordered_map<Id, Rule> rules_;
    std::unordered_map<std::uint64_t, Bucket> buckets_;
    std::unordered_map<std::uint64_t, Group> groups_;
    Id nextId_ = 1;
};

}  // namespace orv
