// The set must decide as the library decides one by one, whatever the index does.
#include <gtest/gtest.h>
#include <OrvActions.hpp>

#include <algorithm>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Rules = std::map<orv::RuleSet::Id, orv::Action>;

std::vector<orv::RuleSet::Id> OneByOne(const Rules& rules, const orv::Action& action)
{
    std::vector<orv::RuleSet::Id> matching;
    for (const auto& [id, rule] : rules) {
        if (rule.Matches(action)) matching.push_back(id);
    }
    return matching;
}

// Names and values from a few that meet often, in other cases, of other kinds, beyond ASCII and with zero units inside.
class Maker {
public:
    orv::Action Make(bool rule)
    {
        const std::u16string name = Pick<std::u16string>(
            {u"PanLeft", u"panLEFT", u"CustomAction", u"customaction", u"Kind", u"\x212Aind", u"\xD6l", u"\xF6L", u""});
        TOrvHandle handle =
            rule ? TalvecMatchAct_CreateActionByName(Units(name)) : Talvec_Action_CreateActionByName(Units(name));
        orv::Action action(handle);
        for (std::uint32_t left = Below(rule ? 3 : 5); left > 0; --left) Set(action);
        return action;
    }
    std::uint32_t Below(std::uint32_t bound)
    {
        return std::uniform_int_distribution<std::uint32_t>(0, bound - 1)(random_);
    }

private:
    static const OrvWChar* Units(const std::u16string& text) { return reinterpret_cast<const OrvWChar*>(text.c_str()); }

    template <class T>
    T Pick(std::initializer_list<T> values)
    {
        return values.begin()[Below(static_cast<std::uint32_t>(values.size()))];
    }

    std::u16string Text()
    {
        return Pick<std::u16string>({u"", u"gate", u"GATE", u"g\xE4te", u"G\xC4TE", u"i", u"I", u"\x130", u"\x131",
                                     u"k", u"\x212A", std::u16string(u"gate\0x", 6), u"\x444", u"\x424"});
    }
    std::u16string Name() { return std::u16string(Text().c_str()); }
    orv::Guid Guid() { return {Below(2), 0, 0, {static_cast<std::uint8_t>(Below(2))}}; }

    void Set(orv::Action& action)
    {
        const std::u16string name =
            Pick<std::u16string>({u"Camera", u"CAMERA", u"Speed", u"\xC4", u"\xE4", u"k", u"\x212A", u""});
        const std::int32_t number = Pick({0, 1, -1, 7});
        switch (Below(13)) {
        case 0: return action.Set(name, number == 0);
        case 1: return action.Set(name, number);
        case 2: return action.Set(name, std::int64_t{number});
        case 3: return action.Set(name, Pick({0.0, -0.0, 1.0, 7.0, std::numeric_limits<double>::quiet_NaN()}));
        case 4: return action.Set(name, Text());
        case 5: return action.Set(name, orv::DateTime{Below(2)});
        case 6: return action.Set(name, Guid());
        case 7: return action.Set(name, orv::EventType{Below(2), Name()});
        case 8: return action.Set(name, orv::Resource{Guid(), Name()});
        case 9: return action.Set(name, orv::Rect{0, static_cast<std::int16_t>(number), 0, 0});
        case 10: return action.Set(name, orv::Enum{number, Below(2)});
        case 11: return action.SetResultText(name, Pick<std::u16string>({u"1 2 3 4 5 'a'", u"1 2 3 4 5 'A'"}));
        default: return action.Set(name, orv::Channel{Below(2), Name(), Below(2)});
        }
    }

    std::mt19937 random_{20261122};
};

TEST(RuleSet, DecidesAsOneByOne)
{
    Maker maker;
    orv::RuleSet set;
    Rules rules;
    std::size_t hits = 0;
    for (int round = 0; round < 3000; ++round) {
        if (rules.size() > 300) {
            const auto gone = std::next(rules.begin(), maker.Below(300));
            EXPECT_TRUE(set.Remove(gone->first));
            EXPECT_FALSE(set.Remove(gone->first));
            rules.erase(gone);
        }
        orv::Action rule = maker.Make(maker.Below(20) > 0);
        rules.emplace(set.Add(rule), std::move(rule));
        ASSERT_EQ(set.Size(), rules.size());
        const orv::Action action = maker.Make(maker.Below(9) == 0);
        const auto expected = OneByOne(rules, action);
        ASSERT_EQ(set.Match(action), expected) << action.TextUtf8();
        hits += expected.size();
    }
    EXPECT_GT(hits, 1000u);
    for (const auto& [id, rule] : rules) EXPECT_TRUE(set.Remove(id));
    EXPECT_EQ(set.Size(), 0u);
}

// What the library takes for equal the index must not tell apart: every unit against the letters that it may become.
TEST(RuleSet, FindsWhatTheLibraryTakesForEqual)
{
    orv::RuleSet set;
    Rules rules;
    for (const char16_t letter : std::u16string_view(u"abcdefghijklmnopqrstuvwxyz\x130\x131\x212A\xE5")) {
        orv::Action rule = orv::Action::Named("A").ToMatchAction();
        rule.Set("Text", std::u16string(1, letter));
        rules.emplace(set.Add(rule), std::move(rule));
    }
    orv::Action action = orv::Action::Named("A");
    for (std::uint32_t unit = 0; unit < 0x10000; ++unit) {
        action.Set("Text", std::u16string(1, static_cast<char16_t>(unit)));
        ASSERT_EQ(set.Match(action), OneByOne(rules, action)) << unit;
    }
}

TEST(RuleSet, HoldsCopiesAndTakesNothingForNothing)
{
    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    {
        orv::RuleSet set;
        orv::Action rule = orv::Action::Parse("@ PanLeft (Camera: 7)");
        const auto id = set.Add(rule);
        rule.Set("Camera", orv::Channel::Number(8));
        orv::Action action = orv::Action::Parse("PanLeft (Camera: 7)");
        EXPECT_EQ(set.Match(action), std::vector<orv::RuleSet::Id>{id});
        EXPECT_TRUE(set.Match(orv::Action()).empty());
        EXPECT_THROW(set.Add(orv::Action()), orv::Error);
        EXPECT_EQ(set.Size(), 1u);
        orv::RuleSet moved = std::move(set);
        EXPECT_EQ(moved.Match(action).size(), 1u);
        EXPECT_TRUE(moved.Remove(id));
        EXPECT_NE(moved.Add(rule), id);
    }
    EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open);
}

// Rules that share the value of their most telling parameter are told apart by the next one: of so many none is asked
// but those that match, or this takes minutes.
TEST(RuleSet, SpreadsCrowdedRules)
{
    orv::RuleSet set;
    for (int speed = 0; speed < 20000; ++speed) {
        orv::Action rule = orv::Action::Parse("@ PanLeft (Camera: 7)");
        rule.Set("Speed", speed);
        set.Add(rule);
    }
    orv::Action action = orv::Action::Parse("PanLeft (Camera: 7)");
    for (int speed = 0; speed < 20000; ++speed) {
        action.Set("Speed", speed);
        ASSERT_EQ(set.Match(action).size(), 1u);
    }
}

}  // namespace
