#include "objects/parameter_map.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <new>
#include <stdexcept>

#include "objects/action.h"

namespace OrvPLC {
namespace {

std::vector<std::u16string> Keys(const ParameterMap& map)
{
    std::vector<std::u16string> keys;
    map.ForEachByKey([&](std::u16string_view key, std::u16string_view, const TOrvParameter&, std::size_t) {
        keys.emplace_back(key);
    });
    return keys;
}

std::vector<std::u16string> Names(const ParameterMap& map)
{
    std::vector<std::u16string> names;
    map.ForEachDeclaredFirst(
        [&](std::u16string_view name, const TOrvParameter&, std::size_t) { names.emplace_back(name); });
    return names;
}

void SetNumber(ParameterMap& map, std::u16string_view name, std::int32_t number)
{
    map.Store(name, [number](TOrvParameter& value) { value.SetInt32(number); });
}

class MapOfPanLeft : public testing::Test {
protected:
    ObjectPtr<TOrvAction> action_{TOrvAction::Create(u"PanLeft")};
    ParameterMap& map_{action_->Parameters()};
};

TEST_F(MapOfPanLeft, IsWalkedByKeyAndByDeclaration)
{
    for (const auto* name : {u"zebra", u"speeD", u"SPEED", u"Dora", u"camera", u"Bert"}) SetNumber(map_, name, 1);
    EXPECT_EQ(Keys(map_), (std::vector<std::u16string>{u"bert", u"camera", u"dora", u"speed", u"zebra"}));
    EXPECT_EQ(Names(map_), (std::vector<std::u16string>{u"camera", u"SPEED", u"Bert", u"Dora", u"zebra"}));
    EXPECT_EQ(map_.Size(), 5u);
}

TEST_F(MapOfPanLeft, FindsReplacesAndRemovesInAnyCase)
{
    for (const auto* name : {u"Speed", u"Other", u"\u00c4pfel"}) {
        SetNumber(map_, name, 1);
        SetNumber(map_, name, 2);
    }
    EXPECT_EQ(map_.Size(), 3u);
    EXPECT_EQ(map_.Find(u"sPEED")->Small(), 2);
    EXPECT_EQ(map_.Find(u"OTHER")->Small(), 2);
    EXPECT_EQ(map_.Find(u"\u00e4PFEL")->Small(), 2);
    EXPECT_EQ(map_.Find(u"Camera"), nullptr);
    EXPECT_EQ(map_.Find(u""), nullptr);
    for (const auto* name : {u"SPEED", u"other", u"\u00e4pfel"}) {
        EXPECT_TRUE(map_.Remove(name));
        EXPECT_FALSE(map_.Remove(name));
    }
    EXPECT_EQ(map_.Size(), 0u);
}

TEST_F(MapOfPanLeft, ValuesKeepTheirAddress)
{
    SetNumber(map_, u"Speed", 1);
    SetNumber(map_, u"middle", 1);
    const TOrvParameter* slot = map_.Find(u"Speed");
    const TOrvParameter* node = map_.Find(u"middle");
    for (int i = 0; i < 100; ++i) SetNumber(map_, u"name" + std::u16string(1, static_cast<char16_t>(u'a' + i)), i);
    map_.Remove(u"namea");
    EXPECT_EQ(map_.Find(u"Speed"), slot);
    EXPECT_EQ(map_.Find(u"middle"), node);
}

TEST_F(MapOfPanLeft, AStoreMayReadTheValueThatItReplaces)
{
    const std::u16string text = u"a text that is longer than any small string";
    for (const auto* name : {u"Camera", u"other"}) {
        map_.Store(name, [&](TOrvParameter& value) { value.SetString(text); });
        const std::u16string_view old = map_.Find(name)->Wide();
        map_.Store(name, [&](TOrvParameter& value) { value.SetMediaChannel(1, 2, old); });
        EXPECT_EQ(map_.Find(name)->Wide(), text);
    }
}

// A text that fits takes the place of the one that it replaces, and an object gives room to so many texts only: one
// that is changed for ever does not grow.
TEST_F(MapOfPanLeft, TextsKeepTheirPlaceAndTheRoomHasAnEnd)
{
    const auto setName = [&](std::u16string_view name) {
        map_.Store(u"Camera", [&](TOrvParameter& value) { value.SetMediaChannel(1, 2, name); });
        EXPECT_EQ(map_.Find(u"Camera")->Wide(), name);
    };
    setName(u"front door");
    const char16_t* place = map_.Find(u"Camera")->Wide().data();
    for (const auto* name : {u"", u"yard", u"back doors"}) setName(name);
    EXPECT_EQ(map_.Find(u"Camera")->Wide().data(), place);
    setName(std::u16string(5000, u'x'));
    setName(u"gate");

    alignas(TextHeader) std::byte memory[64];
    TextRoom room(memory, sizeof memory);
    int given = 0;
    while (given < 1000 && room.Take(10)) ++given;
    EXPECT_GT(given, 10);
    EXPECT_LT(given, 200);
    EXPECT_EQ(room.Take(static_cast<std::size_t>(-1)), nullptr);
}

TEST_F(MapOfPanLeft, AFailedStoreChangesNothing)
{
    SetNumber(map_, u"Speed", 7);
    for (const auto* name : {u"Camera", u"Speed", u"other"}) {
        EXPECT_THROW(map_.Store(name, [](TOrvParameter&) { throw std::runtime_error("no"); }), std::runtime_error);
    }
    EXPECT_EQ(map_.Size(), 1u);
    EXPECT_EQ(map_.Find(u"Speed")->Small(), 7);
}

TEST(ParameterMap, MapsWithDifferentDeclarationsCompareByKeys)
{
    const ObjectPtr<TOrvAction> known(TOrvAction::Create(u"PanLeft"));
    const ObjectPtr<TOrvAction> unknown(TOrvAction::Create(u"NobodyKnows"));
    for (const auto* name : {u"Speed", u"Other"}) {
        SetNumber(known->Parameters(), name, 1);
        SetNumber(unknown->Parameters(), name, 1);
    }
    EXPECT_TRUE(known->Parameters().SameContent(unknown->Parameters()));
    SetNumber(unknown->Parameters(), u"other", 2);
    EXPECT_FALSE(known->Parameters().SameContent(unknown->Parameters()));
    unknown->Parameters().Remove(u"other");
    EXPECT_FALSE(known->Parameters().SameContent(unknown->Parameters()));
}

// More declared parameters than slots: the rest lives in nodes and keeps its place in the declaration.
TEST(ParameterMap, ManyDeclaredParameters)
{
    const auto entry = Ulmo::MakeCounted<TOrvActionInternalInfo>(u"Huge", 10001u, 5u, 0u);
    const auto nameAt = [](int i) { return u"P" + std::u16string(1, static_cast<char16_t>(u'\u4e63' - i)); };
    std::vector<TOrvParameterInternalInfo> parameters;
    for (int i = 0; i < 100; ++i) parameters.emplace_back(nameAt(i), 2u, 0u, 5u, 0u, 0u);
    entry->SetParameters(std::move(parameters));
    // A map finds its slots after itself.
    const std::size_t slots = ParameterMap::SlotCount(entry.get());
    const std::size_t size = sizeof(ParameterMap) + slots * sizeof(TOrvParameter);
    const auto memory = std::make_unique<std::max_align_t[]>(size / sizeof(std::max_align_t) + 1);
    auto* const behind = reinterpret_cast<std::byte*>(memory.get()) + sizeof(ParameterMap);
    const std::unique_ptr<ParameterMap, void (*)(ParameterMap*)> made(new (memory.get())
                                                                          ParameterMap(entry.get(), {behind, slots, 0, false}),
                                                                      [](ParameterMap* map) { std::destroy_at(map); });
    ParameterMap& map = *made;
    std::vector<std::u16string> declared;
    SetNumber(map, u"undeclared", 1);
    for (int i = 99; i >= 0; --i) {
        map.StoreDeclared(static_cast<std::size_t>(i), [i](TOrvParameter& value) { value.SetInt32(i); });
    }
    for (int i = 0; i < 100; ++i) declared.push_back(nameAt(i));
    declared.push_back(u"undeclared");
    EXPECT_EQ(Names(map), declared);
    EXPECT_EQ(map.Size(), 101u);
    EXPECT_EQ(map.FindDeclared(80)->Small(), 80);
    const std::vector<std::u16string> keys = Keys(map);
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    EXPECT_EQ(keys.size(), 101u);
}

}  // namespace
}  // namespace OrvPLC
