#include "forms/binary_writer.h"

#include <gtest/gtest.h>

#include "forms/binary_form.h"
#include "objects/generic_action.h"
#include "objects/match_action.h"
#include "platform/system_string.h"

namespace OrvPLC {
namespace {

// Byte by byte, as the documentation shows it.
TEST(BinaryWriter, TheExample)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"A"));
    action->SetInt32(Boundary(u"x"), 5);
    const unsigned char expected[] = {
        3, 0, 0, 0,                 // an action
        2, 0, 0, 0, 0x41, 0, 0, 0,  // "A" and its terminator
        1, 0, 0, 0,                 // one record
        2, 0, 0, 0, 0x78, 0, 0, 0,  // "x"
        2, 0, 0, 0,                 // Numeric32Bit
        0, 0, 0, 0,                 // no enum
        5, 0, 0, 0,
    };
    const std::vector<std::byte> form = BinaryForm(*action);
    ASSERT_EQ(form.size(), 36u);
    EXPECT_EQ(std::memcmp(form.data(), expected, sizeof expected), 0);
}

TEST(BinaryWriter, EveryKind)
{
    const TOrvGuid guid = {0x01234567, 0x89AB, 0xCDEF, {1, 2, 3, 4, 5, 6, 7, 8}};
    struct Row {
        void (*set)(TOrvParameter&);
        Bytes payload;
    } rows[] = {
        {[](TOrvParameter& p) { p.SetBoolean(true); }, Bytes().U32(1)},
        {[](TOrvParameter& p) { p.SetInt32(-2, 0x1028); }, Bytes().Put(std::int32_t{-2})},
        {[](TOrvParameter& p) { p.SetInt64(-3); }, Bytes().Put(std::int64_t{-3})},
        {[](TOrvParameter& p) { p.SetDouble(0.1); }, Bytes().Put(0.1)},
        {[](TOrvParameter& p) { p.SetString(std::u16string_view(u"a\0b", 3)); },
         Bytes().Text(std::u16string_view(u"a\0b", 3))},
        {[](TOrvParameter& p) { p.SetDateTime({0xFFC4'0000'0000'0001}); }, Bytes().Put(0xFFC4'0000'0000'0001)},
        {[](TOrvParameter& p) {
             p.SetGuid({0x01234567, 0x89AB, 0xCDEF, {1, 2, 3, 4, 5, 6, 7, 8}});
         },
         Bytes().Put(guid)},
        {[](TOrvParameter& p) { p.SetEventType(7, u"e"); }, Bytes().Text(u"e").Put(std::int64_t{7})},
        {[](TOrvParameter& p) { p.SetMediaChannel(8, 9, {}); }, Bytes().Text(u"").Put(std::int64_t{8}).U32(9)},
        {[](TOrvParameter& p) {
             p.SetResource({0x01234567, 0x89AB, 0xCDEF, {1, 2, 3, 4, 5, 6, 7, 8}}, u"r");
         },
         Bytes().Text(u"r").Put(guid)},
        {[](TOrvParameter& p) { p.SetRect(0x0004'0003'0002'0001); }, Bytes().Put(std::uint64_t{0x0004'0003'0002'0001})},
        {[](TOrvParameter& p) { p.SetResultDataText(u"1 2 3 4 5 'a'"); }, Bytes().Text(u"1 2 3 4 5 'a'")},
        {[](TOrvParameter& p) { p.SetKindAndEnum(13, 14); }, Bytes()},
        {[](TOrvParameter&) {}, Bytes()},
    };
    for (Row& row : rows) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"Custom"));
        action->Parameters().Store(u"Own Name", row.set);
        const TOrvParameter& value = *action->Parameters().Find(u"own name");
        Bytes expected;
        expected.U32(3).Text(u"Custom").U32(1).Text(u"Own Name").U32(value.Kind()).U32(value.EnumType());
        std::vector<std::byte> bytes = expected.Get();
        bytes.insert(bytes.end(), row.payload.Get().begin(), row.payload.Get().end());
        EXPECT_EQ(BinaryForm(*action), bytes) << "kind " << value.Kind();
    }
}

// Key order, whatever was set first and whatever the catalogue knows; the description is the first record.
TEST(BinaryWriter, OrderAndDescription)
{
    const ObjectPtr<TOrvMatchAction> match(TOrvMatchAction::Create(u"panLeft"));
    EXPECT_EQ(BinaryForm(*match),
              Bytes().U32(4).Text(u"panLeft").U32(1).Text(u"Comment").U32(5).U32(0).Text(u"").Get());
    for (const char16_t* name : {u"Speed", u"a", u"Q", u"Camera"}) match->SetInt32(Boundary(name), 1);
    match->Description().SetString(u"d");
    Bytes expected;
    expected.U32(4).Text(u"panLeft").U32(5).Text(u"Comment").U32(5).U32(0).Text(u"d");
    for (const char16_t* name : {u"a", u"Camera", u"Q", u"Speed"}) expected.Number(name, 1);
    EXPECT_EQ(BinaryForm(*match), expected.Get());
}

// Each size: whole fields only, nothing after them touched, and the length reported.
TEST(BinaryWriter, TooSmallABuffer)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"A"));
    action->SetInt32(Boundary(u"x"), 5);
    const std::vector<std::byte> form = BinaryForm(*action);
    const std::size_t ends[] = {0, 4, 12, 16, 24, 28, 32, 36};
    for (std::size_t size = 0; size <= form.size(); ++size) {
        std::vector<std::byte> buffer(form.size(), std::byte{0xEE});
        TOrvBinaryCursor cursor(buffer.data(), static_cast<std::int64_t>(size));
        action->WriteBinary(cursor);
        EXPECT_EQ(cursor.Fits(), size == form.size());
        EXPECT_EQ(cursor.Required(), 36);
        std::vector<std::byte> expected(form.size(), std::byte{0xEE});
        const std::size_t whole = *(std::upper_bound(std::begin(ends), std::end(ends), size) - 1);
        std::copy_n(form.begin(), whole, expected.begin());
        EXPECT_EQ(buffer, expected) << size;
    }
    TOrvBinaryCursor negative(nullptr, std::int64_t{INT32_MIN});
    action->WriteBinary(negative);
    EXPECT_FALSE(negative.Fits());
    EXPECT_EQ(negative.Required(), 36);
}

// Short copies are made by hand: every length around the seams of the pieces.
TEST(BinaryWriter, TextsOfEveryLength)
{
    std::u16string text;
    for (char16_t unit = 1; unit < 80; ++unit) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(text));
        EXPECT_EQ(BinaryForm(*action), Bytes().U32(3).Text(text).U32(0).Get());
        text += unit;
    }
}

TEST(BinaryWriter, TaskMemory)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"PanStop"));
    const ObjectPtr<TOrvGenericAction> generic(TOrvGenericAction::Create({}));
    for (TOrvAction* object : {action.get(), static_cast<TOrvAction*>(generic.get())}) {
        void* block = nullptr;
        std::uint32_t size = 77;
        object->StoreToBinary(&block, &size);
        const std::vector<std::byte> form = BinaryForm(*object);
        EXPECT_EQ(size, object == action.get() ? 4 + 4 + 2 * 8 + 4 : 0u);
        ASSERT_NE(block, nullptr);
        EXPECT_TRUE(std::equal(form.begin(), form.end(), static_cast<const std::byte*>(block)));
        Platform::FreeTaskMemory(block);
    }
}

}  // namespace
}  // namespace OrvPLC
