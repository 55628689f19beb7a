#include "forms/binary_reader.h"

#include <gtest/gtest.h>

#include "forms/binary_form.h"
#include "forms/describe.h"
#include "forms/fake_sibling.h"
#include "forms/sample_action.h"

namespace OrvPLC {
namespace {

constexpr std::uint32_t kBetweenFields = 0xFFFFFFFF;

// A reading with the end of its buffer as consumed.
constexpr std::uint32_t kAll = 0xFFFF'0000;

struct Row {
    Bytes bytes;
    const char* object;
    std::uint32_t consumed = kAll;
    std::uint32_t expectedKind = ORV_EXPECT_ANY;
};

void ExpectReadings(std::span<const Row> rows)
{
    const std::uint32_t open = Platform::LivingCount::Read();
    for (const Row& row : rows) {
        const BinaryReading read = ReadBytes(row.bytes.Get(), row.expectedKind);
        EXPECT_EQ(read.object ? Describe(*read.object) : "none", row.object);
        EXPECT_EQ(read.consumed, row.consumed == kAll ? row.bytes.Get().size() : row.consumed) << row.object;
        EXPECT_TRUE(!read.object || read.object->ReferenceCount() == 1);
    }
    EXPECT_EQ(Platform::LivingCount::Read(), open);
}

TEST(BinaryReader, WhatStandsInTheBuffer)
{
    const auto one = [](std::u16string_view action) { return Bytes().U32(3).Text(action).U32(1); };
    const Row rows[] = {
        {one(u"A").Number(u"x", 5), "3 A; x i32 5"},
        {Bytes().U32(3).Text(u"").U32(0), "3 "},
        {one(u"panleft").Number(u"CAMERA", 5), "3 panleft; CAMERA i32 5"},  // not turned into a channel
        {one(u"PanLeft").Text(u"Speed").U32(3).U32(9).Put(std::int64_t{4}), "3 PanLeft; Speed i64 4 of 9"},
        {one(u"PanLeft").Number(u"FromTheFuture", 1), "3 PanLeft; FromTheFuture i32 1"},
        {one(u"A").Text(u"x").U32(77).U32(1), "3 A; x kind 77 of 1"},
        {one(u"A").Text(u"x").U32(0).U32(0), "3 A; x kind 0"},
        {one(u"A").Text(u"x").U32(1).U32(0).U32(5), "3 A; x bool 5"},
        {one(u"A").U32(0).U32(5).U32(0).U32(0), "3 A;  str ''"},  // texts without even a terminator
        // The last unit of a text is taken as its terminator, whatever it is.
        {Bytes().U32(3).U32(2).Put(u'A').Put(u'B').U32(0), "3 A"},
        {Bytes().U32(3).U32(1).Put(u'A').U32(0), "3 "},
        // Later records of the same key replace earlier ones, their spelling included.
        {Bytes().U32(3).Text(u"A").U32(3).Number(u"x", 1).Number(u"y", 2).Number(u"X", 3), "3 A; X i32 3; y i32 2"},
        {Bytes().U32(3).Text(u"PanLeft").U32(2).Number(u"Speed", 1).Number(u"speed", 2), "3 PanLeft; speed i32 2"},
        // Only a match action has a description.
        {Bytes().U32(4).Text(u"A").U32(2).Number(u"COMMENT", 7).Number(u"x", 1), "4 A; COMMENT i32 7; x i32 1"},
        {Bytes().U32(4).Text(u"A").U32(0), "4 A; Comment str ''"},
        {one(u"A").Number(u"Comment", 7), "3 A; Comment i32 7"},
        // What follows the last record is not looked at.
        {Bytes().U32(3).Text(u"A").U32(0).Number(u"x", 5), "3 A", 16},
    };
    ExpectReadings(rows);
}

TEST(BinaryReader, BuffersThatEndTooEarly)
{
    const Bytes whole = Bytes().U32(3).Text(u"A").U32(1).Number(u"x", 5);
    const struct {
        std::size_t size;
        const char* object;
        std::uint32_t consumed;
    } rows[] = {
        {0, "none", kBetweenFields},
        {1, "none", 1},
        {3, "none", 3},
        {4, "3 ", kBetweenFields},
        {6, "3 ", 2},
        {8, "3 ", kBetweenFields},
        {10, "3 ", 2},
        {12, "3 A", 13},
        {15, "3 A", 3},
        {16, "3 A", kBetweenFields},
        {18, "3 A", 2},
        {20, "3 A", kBetweenFields},
        {26, "3 A", 2},
        {28, "3 A", kBetweenFields},
        {32, "3 A; x i32 0", 33},
        {35, "3 A", 3},
        {36, "3 A; x i32 5", 36},
    };
    for (const auto& row : rows) {
        const BinaryReading read = ReadBytes({whole.Get().begin(), whole.Get().begin() + static_cast<long>(row.size)});
        EXPECT_EQ(read.object ? Describe(*read.object) : "none", row.object) << row.size;
        EXPECT_EQ(read.consumed, row.consumed) << row.size;
    }
    // More records announced than there are.
    const Row counts[] = {
        {Bytes().U32(3).Text(u"A").U32(3).Number(u"x", 1).Number(u"y", 2), "3 A; x i32 1; y i32 2", kBetweenFields},
        {Bytes().U32(3).Text(u"A").U32(2).Number(u"x", 1).Put(u'?'), "3 A; x i32 1", 2},
        {Bytes().U32(3).Text(u"A").U32(1).Text(u"x").U32(0), "3 A; x kind 0", 29},
    };
    ExpectReadings(counts);
    EXPECT_EQ(ReadActionBinary(nullptr, 36, ORV_EXPECT_ANY).consumed, kBetweenFields);
    // A size that a signed number does not hold is no room.
    const BinaryReadResult huge = ReadActionBinary(whole.Get().data(), 0x80000000, ORV_EXPECT_ANY);
    EXPECT_EQ(huge.object, nullptr);
    EXPECT_EQ(huge.consumed, 0x80000000);
}

TEST(BinaryReader, KindsThatAreNotAdmitted)
{
    const auto form = [](std::uint32_t kind) { return Bytes().U32(kind).Text(u"A").U32(0); };
    const Row rows[] = {
        {form(3), "3 A", 16, 3},
        {form(3), "3 A", 16, 1},
        {form(3), "none", 12, 4},
        {form(3), "none", 12, 2},
        {form(4), "none", 12, 3},
        {form(4), "4 A; Comment str ''", 16, 2},
        {form(4), "4 A; Comment str ''", 16, 0x7FFFFFFF},
        {form(3), "none", 12, 9},
        {form(0), "none", 12},
        {form(5), "none", 12},
        {form(0xFFFFFFFF), "none", 12},
        {form(1), "none", 12},
        {form(2), "none", 12},  // no sibling library
        {Bytes().U32(9).Text(u"A").U32(0).Put('?'), "none", 12},
        {Bytes().U32(9).U32(100).U32(0), "none", 4},
    };
    ExpectReadings(rows);
}

// From an odd address the texts are as readable as from an even one.
TEST(BinaryReader, AnyAlignment)
{
    const Bytes form = Bytes().U32(3).Text(u"\u00c4").U32(1).Text(u"x").U32(5).U32(0).Text(u"text");
    for (std::size_t offset = 0; offset < 8; ++offset) {
        std::vector<std::byte> shifted(offset);
        shifted.insert(shifted.end(), form.Get().begin(), form.Get().end());
        const BinaryReadResult read =
            ReadActionBinary(shifted.data() + offset, static_cast<std::uint32_t>(form.Get().size()), ORV_EXPECT_ANY);
        const ObjectPtr<TOrvAction> object(read.object);
        ASSERT_TRUE(object);
        EXPECT_EQ(Describe(*object), "3 \u00c4; x str 'text'");
        EXPECT_EQ(read.consumed, form.Get().size());
    }
}

// The sibling gets the whole buffer, and its text makes an action whatever was expected, or nothing.
TEST(BinaryReader, SiblingBuffers)
{
    const struct {
        std::optional<std::u16string> rewritten;
        const char* object;
        std::uint32_t consumed;
    } rows[] = {
        {std::nullopt, "none", 1}, {u"PanLeft (Camera: 7) tail", "3 PanLeft; Camera chan 0 7 ''", 19},
        {u"Foo ()", "3 Foo", 6},   {u"@ PanLeft ()", "none", 11},
        {u"", "none", 0},
    };
    for (const std::uint32_t kind : {1u, 2u}) {
        for (const auto& row : rows) {
            FakeSibling sibling(row.rewritten);
            const Bytes bytes = Bytes().U32(kind).U32(0xFFFFFFFF).Put('?');
            const BinaryReading read = ReadBytes(bytes.Get(), ORV_MESSAGE_MATCH_ACTION);
            EXPECT_EQ(read.object ? Describe(*read.object) : "none", row.object);
            EXPECT_EQ(read.consumed, row.consumed) << row.object;
            EXPECT_EQ(sibling.seenBuffer, bytes.Get());
            EXPECT_EQ(sibling.seenKind, kind);
        }
    }
}

TEST(BinaryReader, ABufferWithoutAKindIsNotTheSiblings)
{
    FakeSibling sibling(u"PanLeft ()");
    EXPECT_FALSE(ReadBytes(Bytes().Put('\1').Put('\0').Put('\0').Get()).object);
    EXPECT_TRUE(sibling.seenBuffer.empty());
}

TEST(BinaryRoundTrip, EveryBuiltInAction)
{
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        const ObjectPtr<TOrvAction> action(MakeSampleAction(*entry));
        const std::vector<std::byte> form = BinaryForm(*action);
        const BinaryReading read = ReadBytes(form);
        ASSERT_TRUE(read.object);
        EXPECT_EQ(read.consumed, form.size());
        EXPECT_TRUE(read.object->Equals(*action)) << Describe(*action);
        EXPECT_EQ(Describe(*read.object), Describe(*action));
    }
}

}  // namespace
}  // namespace OrvPLC
