#include "match/matching.h"

#include <gtest/gtest.h>

#include <limits>

#include "forms/read_text.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {
namespace {

bool MatchesText(std::u16string_view pattern, std::u16string_view action)
{
    const ObjectPtr<TOrvAction> match = Read(pattern);
    const ObjectPtr<TOrvAction> given = Read(action);
    return match->Matches(given.get());
}

TEST(Matching, NamesAndParameters)
{
    const struct {
        const char16_t* pattern;
        const char16_t* action;
        bool matches;
    } cases[] = {
        {u"@ PanLeft ()", u"panLEFT (Camera: 7, Speed: 3)", true},
        {u"@ PanLeft (Comment: \"any\")", u"PanLeft ()", true},
        {u"@ PanLeft ()", u"TiltUp ()", false},
        {u"@ PanLeft ()", u"PanLefu ()", false},
        {u"@ PanLeft ()", u"@ PanLeft (Speed: 1)", true},  // kinds of objects take no part
        {u"@ NobodyKnows (x: 1)", u"nobodyKNOWS (X: 1, y: 2)", true},
        {u"@ NobodyKnows (x: 1)", u"NobodyKnows (y: 2)", false},
        {u"@ \"T\u00dcR \u00c4\" (x: 1)", u"\"t\u00fcr \u00e4\" (x: 1)", true},
        {u"@ \"T\u00dcR\" (x: 1)", u"\"t\u00fbr\" (x: 1)", false},
        {u"@ PanLeft (speed: 3)", u"PanLeft (Camera: 7, SPEED: 3)", true},
        {u"@ PanLeft (Speed: 3)", u"PanLeft (Speed: 4)", false},
        {u"@ PanLeft (Speed: 3)", u"PanLeft (Camera: 3)", false},
        {u"@ PanLeft (Speed: 3, own: 1, Zone: \"A\")", u"PanLeft (zone: \"a\", Own: 1, Speed: 3, other: 1)", true},
        {u"@ PanLeft (own: 1, Zone: \"A\")", u"PanLeft (own: 1, Zone: \"B\")", false},
        {u"@ PanLeft (own: 1)", u"PanLeft (Speed: 3)", false},
        {u"@ PanLeft (Camera: { 7, 0, \"x\" })", u"PanLeft (Camera: { 7, 5, \"y\" })", true},
    };
    for (const auto& [pattern, action, matches] : cases) {
        EXPECT_EQ(MatchesText(pattern, action), matches)
            << Ulmo::Utf8FromWide(pattern) << " | " << Ulmo::Utf8FromWide(action);
    }
}

// A value without a name would be read as text of the sibling product, so this one is set by hand.
TEST(Matching, TheEmptyNameIsANameLikeAnyOther)
{
    const ObjectPtr<TOrvMatchAction> match(TOrvMatchAction::Create(u"PanLeft"));
    match->SetInt32(Boundary(u""), 1);
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"PanLeft"));
    EXPECT_FALSE(match->Matches(action.get()));
    action->SetInt32(Boundary(u""), 1);
    EXPECT_TRUE(match->Matches(action.get()));
}

// The entry of event records is found by no name: the same name with and without an entry.
TEST(Matching, DeclaredOnOneSideOnly)
{
    const ObjectPtr<TOrvAction> declared(TOrvAction::Create(*Catalogue().EventEntry()));
    const ObjectPtr<TOrvMatchAction> match(TOrvMatchAction::Create(u"GeneralEventInfo"));
    ASSERT_NE(declared->Entry(), match->Entry());
    declared->SetInt32(Boundary(u"Int32FieldA"), 5);
    match->SetInt32(Boundary(u"int32fielda"), 5);
    EXPECT_TRUE(match->Matches(declared.get()));
    match->SetInt32(Boundary(u"Int32FieldB"), 5);
    EXPECT_FALSE(match->Matches(declared.get()));
}

TEST(Matching, OnlyMatchActionsMatch)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"PanLeft"));
    const ObjectPtr<TOrvMatchAction> match(TOrvMatchAction::Create(u"PanLeft"));
    EXPECT_FALSE(action->Matches(action.get()));
    EXPECT_FALSE(match->Matches(nullptr));
}

using Setter = void (*)(TOrvParameter&);
constexpr TOrvGuid kGuid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
constexpr TOrvGuid kOther = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 12}};

TEST(Matching, Values)
{
    const struct {
        const char* what;
        Setter wanted;
        Setter given;
        bool matches;
    } cases[] = {
        {"boolean", [](auto& v) { v.SetBoolean(true); }, [](auto& v) { v.SetBoolean(true); }, true},
        {"boolean and number", [](auto& v) { v.SetBoolean(true); }, [](auto& v) { v.SetInt32(1); }, false},
        {"enums take no part", [](auto& v) { v.SetInt32(1, 0x1001); }, [](auto& v) { v.SetInt32(1); }, true},
        {"32 and 64 bits", [](auto& v) { v.SetInt32(5); }, [](auto& v) { v.SetInt64(5); }, false},
        {"64 bits", [](auto& v) { v.SetInt64(5); }, [](auto& v) { v.SetInt64(5 + (1LL << 32)); }, false},
        {"double", [](auto& v) { v.SetDouble(0.0); }, [](auto& v) { v.SetDouble(-0.0); }, true},
        {"not a number", [](auto& v) { v.SetDouble(std::numeric_limits<double>::quiet_NaN()); },
         [](auto& v) { v.SetDouble(std::numeric_limits<double>::quiet_NaN()); }, false},
        {"string", [](auto& v) { v.SetString(u"Abc \u00c4"); }, [](auto& v) { v.SetString(u"aBC \u00e4"); }, true},
        {"longer string", [](auto& v) { v.SetString(u"abc"); }, [](auto& v) { v.SetString(u"abcd"); }, false},
        {"date", [](auto& v) { v.SetDateTime({7}); }, [](auto& v) { v.SetDateTime({7 + (1ULL << 48)}); }, false},
        {"guid", [](auto& v) { v.SetGuid(kGuid); }, [](auto& v) { v.SetGuid(kGuid); }, true},
        {"other guid", [](auto& v) { v.SetGuid(kGuid); }, [](auto& v) { v.SetGuid(kOther); }, false},
        {"zero guid", [](auto& v) { v.SetGuid({}); }, [](auto& v) { v.SetGuid(kGuid); }, false},
        {"event id", [](auto& v) { v.SetEventType(1, u"x"); }, [](auto& v) { v.SetEventType(1, u"y"); }, true},
        {"event id differs", [](auto& v) { v.SetEventType(1, u"x"); }, [](auto& v) { v.SetEventType(2, u"x"); }, false},
        {"event name", [](auto& v) { v.SetEventType(0, u"X"); }, [](auto& v) { v.SetEventType(2, u"x"); }, true},
        {"channel id", [](auto& v) { v.SetMediaChannel(5, 1, u"x"); }, [](auto& v) { v.SetMediaChannel(5, 2, u"y"); },
         true},
        {"channel id differs", [](auto& v) { v.SetMediaChannel(5, 1, u"x"); },
         [](auto& v) { v.SetMediaChannel(0, 1, u"x"); }, false},
        {"channel number", [](auto& v) { v.SetMediaChannel(0, 1, u"x"); },
         [](auto& v) { v.SetMediaChannel(9, 1, u"y"); }, true},
        {"channel number differs", [](auto& v) { v.SetMediaChannel(0, 1, u"x"); },
         [](auto& v) { v.SetMediaChannel(0, 2, u"x"); }, false},
        {"channel name", [](auto& v) { v.SetMediaChannel(0, 0, u"X"); }, [](auto& v) { v.SetMediaChannel(5, 5, u"x"); },
         true},
        {"channel without anything", [](auto& v) { v.SetMediaChannel(0, 0, u""); },
         [](auto& v) { v.SetMediaChannel(5, 5, u"x"); }, false},
        {"channel without a name", [](auto& v) { v.SetMediaChannel(0, 0, u""); },
         [](auto& v) { v.SetMediaChannel(5, 5, u""); }, true},
        {"resource guid", [](auto& v) { v.SetResource(kGuid, u"x"); }, [](auto& v) { v.SetResource(kGuid, u"y"); },
         true},
        {"resource guid differs", [](auto& v) { v.SetResource(kGuid, u"x"); }, [](auto& v) { v.SetResource({}, u"x"); },
         false},
        {"resource name", [](auto& v) { v.SetResource({}, u"X"); }, [](auto& v) { v.SetResource(kGuid, u"x"); }, true},
        {"resource without a name", [](auto& v) { v.SetResource({}, u""); },
         [](auto& v) { v.SetResource(kGuid, u"x"); }, false},
        {"rectangle", [](auto& v) { v.SetRect(5); }, [](auto& v) { v.SetRect(5); }, true},
        {"rectangle and number", [](auto& v) { v.SetRect(5); }, [](auto& v) { v.SetInt64(5); }, false},
        {"result data", [](auto& v) { v.SetResultDataText(u"1 2 3 4 5 'A'"); },
         [](auto& v) { v.SetResultDataText(u"1 2 3 4 5 'a'"); }, true},
        {"no kind", [](auto&) {}, [](auto&) {}, false},
    };
    for (const auto& [what, wanted, given, matches] : cases) {
        TOrvParameter a;
        TOrvParameter b;
        wanted(a);
        given(b);
        EXPECT_EQ(MatchesValue(a, b), matches) << what;
    }
}

}  // namespace
}  // namespace OrvPLC
