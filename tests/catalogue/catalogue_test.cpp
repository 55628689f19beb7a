#include "catalogue/catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "catalogue/name_tables.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {
namespace {

ActionPtr NewAction(std::u16string_view name, std::uint32_t code)
{
    return Ulmo::MakeCounted<TOrvActionInternalInfo>(name, code, kDefaultPriority, 0);
}

TEST(Catalogue, RegistrationOfActions)
{
    TOrvActionCatalogue catalogue;
    const ActionPtr first = NewAction(u"First", 10001);
    const ActionPtr sameName = NewAction(u"FIRST", 10002);
    const ActionPtr sameCode = NewAction(u"Second", 10001);
    catalogue.RegisterAction(ActionPtr());
    for (const ActionPtr& action : {first, sameName, sameCode}) catalogue.RegisterAction(action);

    // A taken name loses whole; a new name takes the code, and the older action stays under its name and index.
    EXPECT_EQ(catalogue.FindActionByCode(10002), nullptr);
    EXPECT_EQ(catalogue.FindActionByCode(10001), sameCode.get());
    EXPECT_EQ(catalogue.FindActionByName(u"fIrSt"), first.get());
    EXPECT_EQ(catalogue.FindActionByIndex(0), first.get());
    EXPECT_EQ(catalogue.FindActionByIndex(1), sameCode.get());
    EXPECT_EQ(catalogue.FindActionByIndex(2), nullptr);
}

TEST(Catalogue, RegistrationOfTheRest)
{
    TOrvActionCatalogue catalogue;
    const auto value = Ulmo::MakeCounted<TOrvEnumInternalInfo>(u"One", 0x1500u, 1u);
    const auto other = Ulmo::MakeCounted<TOrvEnumInternalInfo>(u"Uno", 0x1500u, 1u);
    catalogue.RegisterEnumValue(value);
    catalogue.RegisterEnumValue(other);
    EXPECT_EQ(catalogue.FindEnumValue(0x1500, 1), value.get());

    catalogue.RegisterEnumType(u"colour", 0x500);
    catalogue.RegisterEnumType(u"colour", 0x600);
    EXPECT_EQ(catalogue.FindEnumTypeId(u"Colour"), 0x1500u);
    EXPECT_EQ(catalogue.FindEnumTypeId(u"Shade"), 0u);
}

TEST(Catalogue, NamesOutsideAsciiAreFoundInAnyCase)
{
    TOrvActionCatalogue catalogue;
    const ActionPtr action = NewAction(u"\u00c4rger\u0416", 10001);
    catalogue.RegisterAction(action);
    EXPECT_EQ(catalogue.FindActionByName(u"\u00e4RGER\u0436"), action.get());
    EXPECT_EQ(catalogue.FindActionByName(u"aerger"), nullptr);
    EXPECT_EQ(catalogue.FindActionByName(u""), nullptr);
}

TEST(Catalogue, ManyNamesKeepApart)
{
    TOrvActionCatalogue catalogue;
    std::vector<ActionPtr> actions;
    for (std::uint32_t i = 0; i < 1000; ++i) {
        std::u16string name = u"Action[";
        for (std::uint32_t rest = i; rest != 0; rest /= 7) name += static_cast<char16_t>(u'a' + rest % 7);
        actions.push_back(NewAction(name, 10000 + i));
        catalogue.RegisterAction(actions.back());
    }
    for (const ActionPtr& action : actions) {
        EXPECT_EQ(catalogue.FindActionByName(action->NameW.view()), action.get());
        EXPECT_EQ(catalogue.FindActionByCode(action->Code), action.get());
    }
    for (const auto* name : {u"Acti", u"Actio", u"Action{"}) EXPECT_EQ(catalogue.FindActionByName(name), nullptr);
}

TEST(Catalogue, ParametersAreFoundAndWalkedInBothOrders)
{
    const ActionPtr action = NewAction(u"Ordered", 10001);
    std::vector<TOrvParameterInternalInfo> parameters;
    for (const auto* name : {u"Zeta", u"alpha", u"Mid"}) parameters.emplace_back(name, 5u, 0u, 5u, 0u, 0u);
    action->SetParameters(std::move(parameters));
    EXPECT_TRUE(std::ranges::equal(action->KeyOrder(), std::vector<std::uint32_t>{1, 2, 0}));
    EXPECT_FALSE(action->HasRepeatedNames());
    EXPECT_EQ(action->FindParameter(u"ZETA"), 0u);
    EXPECT_EQ(action->FindParameter(u"Alpha"), 1u);
    EXPECT_EQ(action->FindParameter(u"Zet"), TOrvActionInternalInfo::kNotFound);
}

// An extension can write such a name as "A&#0;CardNumber". No text that ends in a zero unit is it, whatever lies behind.
TEST(Catalogue, ANameWithAZeroUnitIsNoTerminatedText)
{
    constexpr std::u16string_view kName(u"A\0CardNumber", 12);
    const ActionPtr action = NewAction(u"Odd", 10001);
    std::vector<TOrvParameterInternalInfo> parameters;
    parameters.emplace_back(kName, 5u, 0u, 5u, 0u, 0u);
    action->SetParameters(std::move(parameters));
    EXPECT_TRUE(action->IsSpelt(0, kName));
    EXPECT_FALSE(action->IsSpelt(0, kName.data()));
}

// What the built-in table promises to every other piece.
TEST(BuiltinCatalogue, IsComplete)
{
    const TOrvActionCatalogue& catalogue = Catalogue();
    EXPECT_EQ(catalogue.ClassesByName().size(), 23u);
    ASSERT_EQ(catalogue.ActionsByName().size(), 429u);
    EXPECT_EQ(catalogue.GeneralParameters().size(), 13u);
    EXPECT_EQ(catalogue.FindActionByIndex(0)->NameW.view(), u"ABCConnect");
    std::uint32_t index = 0;
    for (const auto& [key, action] : catalogue.ActionsByName()) {
        EXPECT_EQ(action->InternalIndex, index++);
        EXPECT_NE(action->Class.get(), nullptr);
        EXPECT_EQ(catalogue.FindActionByCode(action->Code), action);
        EXPECT_GT(action->Code, 1000u);
        for (const TOrvParameterInternalInfo& parameter : action->Parameters) {
            EXPECT_TRUE(parameter.Type >= 1 && parameter.Type <= 12);
            EXPECT_EQ(&action->Parameters[action->FindParameter(parameter.LowerName.view())], &parameter);
        }
    }
    ASSERT_NE(catalogue.EventEntry(), nullptr);
    EXPECT_EQ(catalogue.EventEntry()->Parameters.size(), 20u);
    EXPECT_EQ(catalogue.FindActionByName(u"GeneralEventInfo"), nullptr);
    EXPECT_EQ(catalogue.FindActionByCode(0), nullptr);
    EXPECT_EQ(catalogue.FindGeneralParameter(u"comment")->Priority, 8u);
    EXPECT_EQ(catalogue.FindEnumValue(kBooleanEnum, 1)->NativePlain.W.view(), u"True");
    EXPECT_EQ(catalogue.FindEnumTypeId(u"plcclienttype"), 4136u);
}

std::u16string UpperCase(std::u16string_view name)
{
    std::u16string upper(name);
    for (char16_t& unit : upper) unit = unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
    return upper;
}

// The generator writes hashes and orders; the library has its own way to both.
TEST(BuiltinCatalogue, IndexesAgreeWithTheEntries)
{
    const TOrvActionCatalogue& catalogue = Catalogue();
    const auto check = [](const auto& entries, auto&& find) {
        std::u16string_view before;
        for (const auto& [key, entry] : entries) {
            EXPECT_LT(before, key);
            EXPECT_EQ(Ulmo::LowerCase(entry->NameW.view()), key);
            EXPECT_EQ(find(entry->NameW.view()), entry);
            EXPECT_EQ(find(UpperCase(key)), entry);
            before = key;
        }
        EXPECT_EQ(find(std::u16string(before) + u"x"), nullptr);
    };
    check(catalogue.ActionsByName(), [&](auto name) { return catalogue.FindActionByName(name); });
    check(catalogue.ClassesByName(), [&](auto name) { return catalogue.FindActionClassByName(name); });
    for (const auto& [key, entry] : catalogue.ClassesByName()) {
        EXPECT_EQ(catalogue.FindActionClassByCode(entry->Code), entry);
    }
    std::uint64_t before = 0;
    for (const auto& [key, entry] : catalogue.EnumValues()) {
        EXPECT_LT(before, key);
        EXPECT_EQ(catalogue.FindEnumValue(entry->EnumId, entry->Value), entry);
        before = key;
    }
    EXPECT_EQ(catalogue.EnumValues().size(), 622u);
    EXPECT_EQ(catalogue.FindEnumValue(0x1028, 0xffffffff), nullptr);
    for (const auto& [name, action] : catalogue.ActionsByName()) {
        std::u16string_view last;
        for (const std::uint32_t position : action->KeyOrder()) {
            const TOrvParameterInternalInfo& parameter = action->Parameters[position];
            EXPECT_LT(last, parameter.LowerName.view());
            EXPECT_TRUE(action->IsSpelt(position, parameter.NameW.view()));
            EXPECT_TRUE(TOrvActionInternalInfo::ViewBit(parameter.View) == 0 ||
                        action->FindView(TOrvActionInternalInfo::ViewBit(parameter.View), position) == position);
            last = parameter.LowerName.view();
        }
    }
}

// What is added stands between the built-in entries, and takes over codes that are registered directly.
TEST(BuiltinCatalogue, IsAddedToInOrder)
{
    TOrvActionCatalogue catalogue(TOrvActionCatalogue::Content::BuiltIn);
    const TOrvActionInternalInfo* panLeft = catalogue.FindActionByName(u"PanLeft");
    const ActionPtr added[] = {NewAction(u"panleftmost", panLeft->Code), NewAction(u"\u00c4nderung", 10001),
                               NewAction(u"0", 10002)};
    for (const ActionPtr& action : added) catalogue.RegisterAction(action);
    catalogue.RegisterAction(NewAction(u"PANLEFT", 10003));
    EXPECT_EQ(catalogue.ActionsByName().size(), 432u);
    EXPECT_EQ(catalogue.FindActionByCode(10003), nullptr);
    EXPECT_EQ(catalogue.FindActionByCode(panLeft->Code), added[0].get());
    EXPECT_EQ(catalogue.FindActionByIndex(431), added[2].get());
    EXPECT_EQ(added[2]->InternalIndex, 431u);
    EXPECT_EQ(catalogue.FindActionByName(u"PanLeftMost"), added[0].get());
    std::vector<const TOrvActionInternalInfo*> order;
    for (const auto& [name, action] : catalogue.ActionsByName()) order.push_back(action);
    EXPECT_TRUE(std::ranges::is_sorted(order, {}, [](const auto* action) { return action->LowerName.view(); }));
    EXPECT_EQ(order.front(), added[2].get());
    EXPECT_EQ(order.back(), added[1].get());
    EXPECT_EQ(*(std::ranges::find(order, panLeft) + 1), added[0].get());

    const std::uint32_t enumId = catalogue.FindEnumValue(0x1028, 0)->EnumId;
    const auto value = Ulmo::MakeCounted<TOrvEnumInternalInfo>(u"Late", enumId, 0xffffffff);
    catalogue.RegisterEnumValue(value);
    catalogue.RegisterEnumValue(Ulmo::MakeCounted<TOrvEnumInternalInfo>(u"Again", enumId, 0u));
    EXPECT_EQ(catalogue.EnumValues().size(), 623u);
    EXPECT_EQ(catalogue.FindEnumValue(enumId, 0xffffffff), value.get());
    const auto begin = catalogue.EnumValues().lower_bound(EnumKey(enumId, 0));
    const auto end = catalogue.EnumValues().upper_bound(EnumKey(enumId, 0xffffffff));
    EXPECT_EQ((*begin).second, catalogue.FindEnumValue(enumId, 0));
    EXPECT_EQ((*catalogue.EnumValues().lower_bound(EnumKey(enumId, 0xffffffff))).second, value.get());
    EXPECT_GT((*end).second->EnumId, enumId);
    const auto& builtIn = Catalogue().EnumValues();
    const auto before =
        std::distance(builtIn.lower_bound(EnumKey(enumId, 0)), builtIn.upper_bound(EnumKey(enumId, 0xffffffff)));
    EXPECT_EQ(std::distance(begin, end), before + 1);
}

TEST(Entries, TextsAreKeptInAllForms)
{
    const ActionPtr action = NewAction(u"Plain", 10001);
    EXPECT_EQ(action->NativePlain.U.view(), "Plain");
    EXPECT_EQ(action->Description.W.view(), u"Plain");
    const char16_t* const room = action->NativePlain.W.c_str();
    action->WriteTexts(u"T\u00fcren", u"");
    EXPECT_EQ(action->NativePlain.W.c_str(), room);  // which the new text fills to the end
    EXPECT_EQ(action->NativePlain.W.view(), u"T\u00fcren");
    EXPECT_EQ(action->NativePlain.U.view(), "T\xc3\xbcren");
    EXPECT_EQ(action->NeutralPlain.W.view(), u"Plain");
    EXPECT_EQ(action->Description.W.view(), u"Plain");
}

// A text of a length that no conversion takes, which nobody looks into.
TEST(Entries, WriteBothTextsOrNone)
{
    const ActionPtr action = NewAction(u"Plain", 10001);
    const std::u16string_view endless(u"x", std::size_t{1} << 33);
    EXPECT_ANY_THROW(action->WriteTexts(u"new", endless));
    EXPECT_ANY_THROW(action->WriteTexts(endless, u"new"));
    EXPECT_EQ(action->NativePlain.A.view(), "Plain");
    EXPECT_EQ(action->NativePlain.W.view(), u"Plain");
    EXPECT_EQ(action->Description.W.view(), u"Plain");
}

TEST(NameTables, TypesViewsAndColumns)
{
    const struct {
        std::u16string_view name;
        std::uint32_t type;
    } types[] = {{u"Bool", 1},      {u"bOOLEAN", 1},       {u"__int64", 3},       {u"Float", 4},
                 {u"TPlcRect", 11}, {u"PlcClientType", 2}, {u"ResultDataSet", 2}, {u"", 2}};
    for (const auto& row : types) EXPECT_EQ(ParameterTypeFromName(row.name), row.type);
    EXPECT_EQ(ViewFromName(u"absource"), 26u);
    EXPECT_EQ(ViewFromName(u"HardwareModule"), 22u);
    EXPECT_EQ(ViewFromName(u"nothing"), 0u);

    const struct {
        std::u16string_view text;
        std::uint32_t mask;
    } columns[] = {{u"Int32_A|Int64_A", 0x11},       {u"int32_a", 1}, {u"Int32_A|", 0}, {u"Int32_A|None", 0},
                   {u"Int32_A|what|Time_B", 0x8001}, {u"what", 0},    {u"|", 0},        {u"", 0},
                   {u"WindowsUser", 0x80000}};
    for (const auto& row : columns) EXPECT_EQ(ColumnsFromText(row.text), row.mask);
}

TEST(NameTables, PublicTypes)
{
    const std::uint32_t byKind[] = {kPublicTypeUnknown, 5, 0, 1, 100, 4, 2, 6, 7, 8, 9, 101, 102, kPublicTypeUnknown};
    for (std::uint32_t kind = 0; kind < std::size(byKind); ++kind) EXPECT_EQ(PublicType(kind, 0), byKind[kind]);
    EXPECT_EQ(PublicType(2, kBooleanEnum), 5u);
    EXPECT_EQ(PublicType(2, 4136), 50u);
    EXPECT_EQ(EnumIdFromPublicType(50), 4136u);
    EXPECT_EQ(EnumIdFromPublicType(5), kBooleanEnum);
}

}  // namespace
}  // namespace OrvPLC
