#include "events/event_restore.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "events/describe_record.h"
#include "forms/binary_form.h"
#include "forms/describe.h"
#include "forms/fake_sibling.h"
#include "forms/read_text.h"
#include "forms/sample_action.h"

namespace OrvPLC {
namespace {

void SetImage(TOrvEventData& record, const std::vector<std::byte>& image)
{
    record.image = image.data();
    record.imageSize = image.size();
}

std::string Restored(TOrvAction* restored)
{
    const ObjectPtr<TOrvAction> owned(restored);
    if (!owned) return "nothing";
    EXPECT_EQ(owned->ReferenceCount(), 1u);
    return Describe(*owned);
}

// Every parameter of an action set, and no field of a value empty.
ObjectPtr<TOrvAction> MakeFullAction(const TOrvActionInternalInfo& entry)
{
    ObjectPtr<TOrvAction> action(MakeSampleAction(entry));
    for (std::size_t position = 0; position < entry.Parameters.size(); ++position) {
        if (entry.Parameters[position].Type != ORV_KIND_MediaChannel) continue;
        const auto number = static_cast<std::uint32_t>(position) + 1;
        action->Parameters().StoreDeclared(
            position, [number](TOrvParameter& value) { value.SetMediaChannel(number + 100, number, u"channel"); });
    }
    return action;
}

// What the columns keep of a value: no guid, and of a small number nothing when its column is a large one.
TOrvParameter Kept(TOrvParameter value, Columns columns)
{
    const bool large = columns & kInt64Columns;
    if (value.Kind() == ORV_KIND_Boolean && large) value.SetBoolean(false);
    if (value.Kind() == ORV_KIND_Numeric32Bit && large) value.SetInt32(0);
    if (value.Kind() == ORV_KIND_Guid) value.SetGuid({});
    if (value.Kind() == ORV_KIND_Resource) value.SetResource({}, std::u16string(value.Wide()));
    return value;
}

// A parameter with columns of its own comes back; one that lost a column to an earlier parameter comes back with what
// is there.
TEST(EventRestore, EveryBuiltInActionFromItsColumns)
{
    std::size_t compared = 0;
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        const ObjectPtr<TOrvAction> action(MakeFullAction(*entry));
        TOrvEventData record{};
        action->GetEventData(&record);
        EXPECT_EQ(record.code, entry->Code);
        const ObjectPtr<TOrvAction> restored(RestoreAction(record));
        ASSERT_TRUE(restored);
        EXPECT_EQ(restored->Entry(), action->Entry());
        Columns taken = 0;
        for (std::size_t position = 0; position < entry->Parameters.size(); ++position) {
            const TOrvParameterInternalInfo& info = entry->Parameters[position];
            SCOPED_TRACE(info.NameA.c_str());
            const TOrvParameter* value = restored->Parameters().FindDeclared(position);
            EXPECT_EQ(value != nullptr, info.DbField != 0);
            const bool own = value && (info.DbField & taken) == 0;
            taken |= info.DbField;
            if (!own) continue;
            EXPECT_TRUE(value->SameValue(Kept(*action->Parameters().FindDeclared(position), info.DbField)));
            EXPECT_EQ(value->Kind(), info.Type);
            EXPECT_EQ(value->EnumType(), info.EnumType);
            ++compared;
        }
        EXPECT_EQ(FilledColumns(record), taken);
    }
    EXPECT_GT(compared, 1500u);
}

// A record that is made of columns by hand.
struct Columned {
    TOrvEventData record{};
    std::int32_t small = 5;
    std::int64_t large = 7;
    double real = 1.5;
    TUlmoDateTime date{11};

    explicit Columned(std::uint32_t code, Columns columns)
    {
        record.size = sizeof record;
        record.code = code;
        for (; columns != 0; columns &= columns - 1) Fill(First(columns));
    }
    Columned(const Columned&) = delete;
    Columned& operator=(const Columned&) = delete;

    void Fill(Columns column)
    {
        VisitColumn(record, column, [this](auto& field) { Set(field); });
    }
    void Set(const std::int32_t*& field) { field = &small; }
    void Set(const std::int64_t*& field) { field = &large; }
    void Set(const double*& field) { field = &real; }
    void Set(const TUlmoDateTime*& field) { field = &date; }
    void Set(TOrvEventText& field) { field = {4, Boundary(u"text behind")}; }
};

TEST(EventRestore, FromColumns)
{
    const struct {
        std::uint32_t code;
        Columns columns;
        const char* action;
    } cases[] = {
        {1102, 0, "3 PanLeft"},
        {1102, ORV_COLUMN_Int32_A | ORV_COLUMN_Int64_A | ORV_COLUMN_String_A, "3 PanLeft; Camera chan 7 5 'text'"},
        {1102, ORV_COLUMN_Int32_A | ORV_COLUMN_Int64_A | ORV_COLUMN_Int32_B, "3 PanLeft; Speed i32 5"},
        {1662, ORV_COLUMN_Int32_A, "3 CrossingLine; Type i32 5 of 4194"},
        {1451, ORV_COLUMN_Int64_B | ORV_COLUMN_Int64_C,
         "3 InitializeRemoteExport; Device guid 00000000-0000-0000-0000-000000000000"},
        {2030, ORV_COLUMN_Int64_B, "3 VantikVMDAlarm; AlarmArea rect 7, 0, 0, 0"},
        {1102, kUserColumns,
         "3 PanLeft; ClientAccount str 'text'; ClientHost str 'text'; User1 str 'text'; "
         "User2 str 'text'"},
        {123456, ORV_COLUMN_Int32_B | ORV_COLUMN_Time_A | ORV_COLUMN_String_D | ORV_COLUMN_Double_B,
         "3 GeneralEventInfo; DateFieldA time 1601/01/01 00:00:00,011 GMT+00:00; DoubleFieldB dbl 1.5; "
         "Int32FieldB i32 5; StringFieldD str 'text'"},
        {0, ORV_COLUMN_Int64_C | ORV_COLUMN_FirstUser,
         "3 GeneralEventInfo; Int64FieldC i64 7; StringFieldFirstUser str 'text'"},
    };
    for (const auto& [code, columns, action] : cases) {
        const Columned filled(code, columns);
        EXPECT_EQ(Restored(RestoreAction(filled.record)), action);
        EXPECT_EQ(Restored(RestoreFromColumns(filled.record)), action);
    }
    const Columned all(123456, kAllColumns);
    const ObjectPtr<TOrvAction> every(RestoreFromColumns(all.record));
    EXPECT_EQ(every->Parameters().Size(), 20u);
    EXPECT_EQ(every->Entry(), Catalogue().EventEntry());
    const ObjectPtr<TOrvAction> byName(RestoreAction(all.record));
    EXPECT_EQ(byName->Entry(), nullptr);
}

TEST(EventRestore, LengthsOfTexts)
{
    Columned filled(1008, ORV_COLUMN_String_A | ORV_COLUMN_FirstUser | ORV_COLUMN_SecondUser);
    filled.record.stringField[0].length = 0;  // an empty text, but a filled column
    filled.record.userField[0].length = 0;    // not filled: here the length counts as well
    EXPECT_EQ(Restored(RestoreAction(filled.record)), "3 CustomAction; String str ''; User2 str 'text'");
    const std::uint32_t open = Platform::LivingCount::Read();
    filled.record.stringField[0].length = 0xFFFFFFFFFFFFFFFF;
    EXPECT_THROW(RestoreAction(filled.record), std::length_error);
    EXPECT_EQ(Platform::LivingCount::Read(), open);
}

TEST(EventRestore, TheImageGoesFirst)
{
    Columned filled(1102, ORV_COLUMN_Int32_B);
    const char* columns = "3 PanLeft; Speed i32 5";
    const std::vector<std::byte> action = BinaryForm(*Read(u"TiltUp (Camera: 7)"));
    SetImage(filled.record, action);
    EXPECT_EQ(Restored(RestoreAction(filled.record)), "3 TiltUp; Camera chan 0 7 ''");
    EXPECT_EQ(Restored(RestoreMatchAction(filled.record)), "4 TiltUp; Comment str ''; Camera chan 0 7 ''");
    filled.record.imageSize = std::uint64_t{1} << 32;  // no size in the 32 bits that count
    EXPECT_EQ(Restored(RestoreAction(filled.record)), columns);
    EXPECT_EQ(Restored(RestoreForDescription(filled.record)), columns);
    filled.record.imageSize = action.size();
    filled.record.image = nullptr;
    EXPECT_EQ(Restored(RestoreAction(filled.record)), columns);

    // A match action is not what the callers want; for describing it serves.
    const std::vector<std::byte> match = BinaryForm(*Read(u"@ TiltUp (Comment: \"c\", Speed: 2)"));
    SetImage(filled.record, match);
    EXPECT_EQ(Restored(RestoreAction(filled.record)), columns);
    EXPECT_EQ(Restored(RestoreMatchAction(filled.record)), "4 PanLeft; Comment str ''; Speed i32 5");
    EXPECT_EQ(Restored(RestoreForDescription(filled.record)), "4 TiltUp; Comment str 'c'; Speed i32 2");

    // An image that cannot be read is no failure, and one that ends too early holds what is whole.
    const std::vector<std::byte> garbage(40, std::byte{0xAB});
    SetImage(filled.record, garbage);
    EXPECT_EQ(Restored(RestoreAction(filled.record)), columns);
    SetImage(filled.record, action);
    filled.record.imageSize -= 1;
    EXPECT_EQ(Restored(RestoreAction(filled.record)), "3 TiltUp");
    filled.record.code = 1001;  // the first of ours
    EXPECT_EQ(Restored(RestoreForDescription(filled.record)), "3 TiltUp");
}

// An action that the catalogue does not know has code 0 in its record. Its image is ours all the same.
TEST(EventRestore, AnUnknownActionComesBackFromItsImage)
{
    const ObjectPtr<TOrvAction> action = Read(u"NobodyKnows (x: 1)");
    TOrvEventData record{};
    action->GetEventData(&record);
    const std::vector<std::byte> image = BinaryForm(*action);
    SetImage(record, image);
    EXPECT_EQ(Restored(RestoreAction(record)), "3 NobodyKnows; x i32 1");
}

TEST(EventRestore, ImagesOfTheSibling)
{
    const struct {
        std::uint32_t code;
        const char16_t* answer;
        bool asked;
        const char* action;
        const char* described;
    } cases[] = {
        {1000, u"TiltUp (Speed: 2)", true, "3 TiltUp; Speed i32 2", "3 TiltUp; Speed i32 2"},
        {1000, u"", true, "3 GeneralEventInfo", "3 GeneralEventInfo"},
        {1000, nullptr, true, "3 GeneralEventInfo", "3 GeneralEventInfo"},
        {1000, u"@ TiltUp (Speed: 2)", true, "3 GeneralEventInfo", "4 TiltUp; Comment str ''; Speed i32 2"},
        {1000, u"A (5)", true, "3 A;  i32 5", "3 A;  i32 5"},  // asks the sibling again, in wide text
        {1001, u"TiltUp (Speed: 2)", false, "3 SystemStarted", "3 SystemStarted"},
    };
    const std::vector<std::byte> image(40, std::byte{0xAB});
    for (const auto& [code, answer, asked, action, described] : cases) {
        FakeSibling sibling(answer ? std::optional<std::u16string>(answer) : std::nullopt);
        Columned filled(code, 0);
        EXPECT_EQ(Restored(RestoreForDescription(filled.record)), asked ? "3 GeneralEventInfo" : action);
        EXPECT_EQ(sibling.seenCode, 0u);  // without an image there is nothing to ask for
        SetImage(filled.record, image);
        EXPECT_EQ(Restored(RestoreAction(filled.record)), action);
        EXPECT_EQ(sibling.seenCode, asked ? code : 0);
        EXPECT_EQ(sibling.seenNarrow, "");
        EXPECT_EQ(Restored(RestoreForDescription(filled.record)), described);
    }
}

}  // namespace
}  // namespace OrvPLC
