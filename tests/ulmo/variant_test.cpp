#include "ulmo/variant.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <locale>

#include "memory_stream.h"
#include "platform/system_error.h"
#include "ulmo/date_time.h"
#include "ulmo/exceptions.h"

namespace {

using namespace Ulmo;
using namespace Ulmo::VariantExceptions;

const TOrvGuid kGuid = {0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 255}};
constexpr std::uint64_t kMillennium = 125911584000000000;  // 2000-01-01
constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();

Variant Bytes(std::string_view bytes)
{
    return BinaryData(bytes.data(), bytes.size());
}

struct Object : VirtualReferenceCountBaseClass {
    std::uint32_t Count()
    {
        AddRef();
        return Release();
    }
};

struct Named : Object {
    std::string ToString() const override { return "<named/>"; }
};

TEST(Variant, KindsAndTexts)
{
    const CountedPtr<Object> plain = MakeCounted<Object>();
    const CountedPtr<Named> named = MakeCounted<Named>();
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        Variant value;
        int kind;
        std::size_t size;
        int fixedSize;
        std::string text;
    } cases[] = {
        {true, 0, 1, 1, "1"},
        {false, 0, 1, 1, "0"},
        {char(-56), 1, 1, 1, "-56"},
        {static_cast<unsigned char>(200), 2, 1, 1, "200"},
        {static_cast<signed char>(65), 3, 1, 1, "A"},
        {short{-32768}, 4, 2, 2, "-32768"},
        {static_cast<unsigned short>(65535), 5, 2, 2, "65535"},
        {0xFFFFFFFFU, 6, 4, 4, "4294967295"},
        {std::numeric_limits<int>::min(), 7, 4, 4, "-2147483648"},
        {std::numeric_limits<std::int64_t>::min(), 8, 8, 8, "-9223372036854775808"},
        {kMost, 8, 8, 8, "18446744073709551615"},
        {0.1F, 9, 4, 4, "0.1"},
        {1234567.0F, 9, 4, 4, "1.23457e+06"},
        {5.0, 10, 8, 8, "5."},
        {-0.05, 10, 8, 8, "-5.e-02"},
        {123456789012345.0, 10, 8, 8, "123456789012345"},
        {infinity, 10, 8, 8, "inf"},
        {"a\u00e4", 11, 4, -1, "a\u00e4"},
        {std::u16string(u"a\u00e4"), 12, 6, -1, "a\u00e4"},
        {BinaryData(), 13, 0, -1, "binarydata 0 "},
        {Bytes("abcd"), 13, 4, -1, "binarydata 4 YWJjZA=="},
        {BlobPtr(reinterpret_cast<const void*>(4096), 12), 14, 12, -1, "blobptr 124096"},
        {TFileTime{kMillennium}, 15, 8, 8, "2000/01/01 00:00:00,000"},
        {MakeDateTime(kMillennium / 10000, -60), 16, 8, 8, "2000/01/01 01:00:00,000 GMT+01:00"},
        {VariantReferencePointer(), 17, 8, 8, "<nullref/>"},
        {VariantReferencePointer(plain.get()), 17, 8, 8, "<refptr/>"},
        {VariantReferencePointer(named.get()), 17, 8, 8, "<named/>"},
        {kGuid, 18, 16, 16, "01020304-0506-0708-090a-0b0c0d0e0fff"},
        {TLong{-7}, 19, 4, 4, "-7"},
    };
    for (const auto& [value, kind, size, fixedSize, text] : cases) {
        EXPECT_EQ(value.GetKind(), kind) << text;
        EXPECT_EQ(value.GetSize(), size) << text;
        EXPECT_EQ(value.GetFixedSize(), fixedSize) << text;
        EXPECT_EQ(value.ToString(), text);
        const std::u16string wide = text == "18446744073709551615" ? u"-1" : Variant(text).ToWideString();
        EXPECT_EQ(value.ToWideString(), wide);
    }
    EXPECT_TRUE(Variant(2.5F).GetTypeInfo() == typeid(float));
    EXPECT_EQ(Variant().ToString(), "");
}

template <class T>
void ExpectRead(std::initializer_list<std::pair<const char*, T>> cases)
{
    for (const auto& [text, value] : cases) EXPECT_EQ(Variant(text).As<T>(), value) << text;
}

struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Variant, NumbersFromText)
{
    // The host's language has no part in it.
    const std::locale hosts = std::locale::global(std::locale(std::locale::classic(), new Comma));
    ExpectRead<bool>({{"1", true}, {" 0", false}, {"1x", true}});
    ExpectRead<char>({{"-1", char(-1)}, {"200", static_cast<char>(200)}});
    ExpectRead<unsigned char>({{"300", static_cast<unsigned char>(44)}, {"", static_cast<unsigned char>(0)}});
    ExpectRead<signed char>({{"A", static_cast<signed char>(0)}, {"65", static_cast<signed char>(65)}});
    ExpectRead<short>({{"65537", short{1}}});
    ExpectRead<unsigned short>({{"-1", static_cast<unsigned short>(65535)}});
    ExpectRead<unsigned int>({{"4294967295", 4294967295U}, {"4294967297", 1U}});
    ExpectRead<int>({{" \t+12x", 12}, {"4294967295", 2147483647}});
    ExpectRead<std::int64_t>({{"-9223372036854775809", std::numeric_limits<std::int64_t>::min()}});
    ExpectRead<std::uint64_t>({{"18446744073709551615", kMost >> 1}, {"-1", kMost}});
    ExpectRead<float>({{"1.5e1abc", 15.0F}, {" 5.", 5.0F}, {"1e-99", 0.0F}});
    ExpectRead<double>({{"abc", 0.0}, {"", 0.0}, {"-2.5x", -2.5}});
    EXPECT_EQ(Variant("2147483648").As<TLong>().value, 2147483647);
    EXPECT_EQ(Variant("blobptr 1.024 4096").As<BlobPtr>().Size(), 1u);
    // Between two kinds: the text of the one is read by the other.
    EXPECT_EQ(Variant(static_cast<signed char>(65)).As<int>(), 0);
    EXPECT_EQ(Variant(3.99).As<std::u16string>(), u"3.99");
    EXPECT_EQ(Variant(3.99).As<int>(), 3);
    std::locale::global(hosts);
}

template <class Failure, class Call>
void ExpectFailure(std::string_view message, Call call)
{
    try {
        call();
        ADD_FAILURE() << "nothing was raised in place of " << message;
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.what(), message);
    }
}

TEST(Variant, FailuresLeaveTheValue)
{
    Variant truth(true);
    ExpectFailure<StringConversionException>("Failed to convert [true] into [bool]", [&] { truth.FromString("true"); });
    EXPECT_EQ(truth.ToString(), "1");
    Variant real(1.5F);
    for (const char* text : {"abc", "", "1e99"}) {
        const std::string message = std::string("Failed to convert [").append(text).append("] into [float]");
        ExpectFailure<StringConversionException>(message, [&] { real.FromString(text); });
    }
    EXPECT_EQ(real.ToString(), "1.5");
    Variant guid(kGuid);
    ExpectFailure<GuidConversionException>("Conversion of guid 'x' failed.", [&] { guid.FromString("x"); });
    Variant bytes = Bytes("abc");
    ExpectFailure<VariantStringToValueConversionException>(
        "Tried to convert string to BinaryData: std::string = BinaryData 1 AA==",
        [&] { bytes.FromString("BinaryData 1 AA=="); });
    ExpectFailure<OutOfMemoryException>("Out of memory during allocation of 99999999999 bytes in FlatMemory",
                                        [&] { bytes.FromString("binarydata 99999999999 AAAA"); });
    EXPECT_EQ(bytes.ToString(), "binarydata 3 YWJj");
    ExpectFailure<VariantStringToValueConversionException>("Tried to convert string to BlobPtr: string = blob 1 2",
                                                           [] { Variant(BlobPtr()).FromString("blob 1 2"); });
    ExpectFailure<VariantStringToValueConversionException>(
        "Tried to read VariantReferencePointer from string<nullref/>",
        [] { Variant(VariantReferencePointer()).FromString("<nullref/>"); });
    Variant time(TFileTime{kMillennium});
    EXPECT_THROW(time.FromString("1600/01/01"), EUlmoDateTime);
    EXPECT_THROW(time.FromString("2000/01/01 x"), EUlmoDateTime);
    EXPECT_EQ(time.ToString(), "2000/01/01 00:00:00,000");
    // Whatever fails on the way to a text, its reader sees one exception.
    ExpectFailure<VariantStringConversionException>("VariantException", [] { Variant(TFileTime{kMost}).ToString(); });
    ExpectFailure<VariantStringConversionException>("VariantException",
                                                    [] { Variant(MakeDateTime(0, 1)).ToWideString(); });
}

TEST(Variant, DatesAndGuidsFromText)
{
    EXPECT_EQ(Variant("2000-01-01T00:00").As<TFileTime>().ticks, kMillennium);
    EXPECT_EQ(Variant("2000/01/01 01:00:00,000 GMT+01:00").As<TUlmoDateTime>().value,
              MakeDateTime(kMillennium / 10000, -60).value);
    EXPECT_EQ(Variant(Variant("{01020304-0506-0708-090A-0B0C0D0E0FFF").As<TOrvGuid>()).ToString(),
              Variant(kGuid).ToString());
}

TEST(Variant, BinaryDataFromText)
{
    const struct {
        const char* text;
        const char* becomes;
    } cases[] = {
        {"binarydata 0 ", "binarydata 0 "},
        {"\tbinarydata\n3  YWJj rest", "binarydata 3 YWJj"},
        {"binarydata 2 YWJjZA==", "binarydata 2 YWI="},      // more than declared
        {"binarydata 5 YWJj", "binarydata 5 YWJjeXo="},      // less: what was there stays
        {"binarydata 4 YWJj!AAA", "binarydata 4 YWJjeQ=="},  // damaged
        {"binarydata 8 YWJj", "binarydata 8 YWJjeXoAAAA="},  // and what nobody has set is 0
        {"binarydata x YWJj", "binarydata 0 "},
        {"binarydata", "binarydata 0 "},
    };
    for (const auto& [text, becomes] : cases) {
        Variant value = Bytes("vwxyz");
        value.FromString(text);
        EXPECT_EQ(value.ToString(), becomes) << text;
    }
    EXPECT_EQ(Variant("binarydata 0 ").As<BinaryData>().Held(), nullptr);
    BufferPool::Clear();  // what it keeps may be larger
    BinaryData longer;
    longer.FromText("binarydata 2 " + std::string(6668, 'A'));
    EXPECT_EQ(longer.Held()->Capacity(), 8192U);  // there was room for all that the text brings
    EXPECT_THROW(Variant("binarydata -1 YWJj").As<BinaryData>(), OutOfMemoryException);
    EXPECT_EQ(Variant("binarydata 1048579 YWJj").As<BinaryData>().Size(), 1048579U);
    EXPECT_THROW(Variant("binarydata 1048580 YWJj").As<BinaryData>(), OutOfMemoryException);
}

TEST(Variant, CopiesShareOnlyWhatIsCounted)
{
    const Variant bytes = Bytes("abc");
    Variant copy = bytes;
    copy.FromString("binarydata 3 eHl6");
    EXPECT_EQ(bytes.ToString(), "binarydata 3 YWJj");
    BinaryData data("abc", 3);
    const Buffer* held = data.Held();
    EXPECT_NE(BinaryData(data).Held(), held);
    data.Append("de", 2);  // deliberately in place of what was there
    EXPECT_EQ(data.ToText(), "binarydata 2 ZGU=");
    EXPECT_EQ(data.Held(), held);
    data.Assign(nullptr, 0);
    EXPECT_EQ(BinaryData(data).Held(), nullptr);

    BlobPtr blob = BlobPtr::Allocate(4);
    std::memcpy(blob.Data(), "abcd", 4);
    Variant first(blob);
    Variant second = first;
    auto owners = [bytes = blob.Data(), count = 0U]() mutable {
        std::memcpy(&count, bytes - sizeof count, sizeof count);
        return count;
    };
    EXPECT_EQ(owners(), 3U);
    blob.Release();
    EXPECT_EQ(owners(), 2U);
    EXPECT_EQ(blob.Data(), nullptr);
    first = 1;
    char out[4];
    second.StoreToBuffer(out, sizeof out);
    EXPECT_EQ(std::string_view(out, 4), "abcd");

    const CountedPtr<Object> object = MakeCounted<Object>();
    {
        const Variant reference{VariantReferencePointer(object.get())};
        Variant other = reference;
        EXPECT_EQ(object->Count(), 3U);
        other = std::string(100, 'x');
        EXPECT_EQ(object->Count(), 2U);
        other = *&other;
        EXPECT_EQ(other.ToString(), std::string(100, 'x'));
        other = reference;
    }
    EXPECT_EQ(object->Count(), 1U);
}

struct Holder : Object {
    Variant inner = std::string(100, 'i');
};

TEST(Variant, TakesAValueFromTheObjectThatItHolds)
{
    Holder* const holder = new Holder;
    Variant value{VariantReferencePointer(holder)};
    value = holder->inner;
    EXPECT_EQ(value.ToString(), std::string(100, 'i'));
}

// A value of the same kind that holds something else.
Variant Another(const Variant& value)
{
    if (value.GetKind() == Variant(VariantReferencePointer()).GetKind()) return VariantReferencePointer();
    Variant other = value;
    const bool isBinary = value.ToString().starts_with("binarydata");
    const bool isGuid = value.GetFixedSize() == 16;
    other.FromString(isBinary ? "binarydata 1 eA==" : isGuid ? Variant(TOrvGuid{}).ToString() : "0");
    return other;
}

// Each case: what a value stores into buffers of different sizes, and what another of its kind loads from them.
TEST(Variant, BuffersOfAnySize)
{
    const struct {
        Variant value;
        std::string stored;
        std::string loaded;  // the text of what is loaded into an empty value
    } cases[] = {
        {0x01020304, std::string("\4\3\2\1", 4), "16909060"},
        {0x01020304, std::string("\4\3", 2), "772"},
        {0x01020304, std::string("\4\3\2\1\0\0", 6), "16909060"},
        {"abc", std::string("abc\0", 4), "abc"},
        {"abc", std::string("ab\0", 3), "ab"},
        {"abc", std::string("abc\0\0\0", 6), std::string("abc\0\0", 5)},
        {"abc", std::string("\0", 1), ""},
        {"abc", "", ""},
        {std::u16string(u"ab"), std::string("a\0b\0\0\0", 6), "ab"},
        {std::u16string(u"ab"), std::string("a\0\0\0\0", 5), "a"},
        {std::u16string(u"ab"), std::string("\0", 1), ""},
        {Bytes("abc"), "abc", "binarydata 3 YWJj"},
        {Bytes("abc"), std::string("abc\0", 4), "binarydata 4 YWJjAA=="},
        {Bytes("abc"), "", "binarydata 0 "},
    };
    for (const auto& [value, stored, loaded] : cases) {
        std::string buffer(stored.size(), '\x55');
        value.StoreToBuffer(buffer.data(), buffer.size());
        EXPECT_EQ(buffer, stored);
        Variant other = Another(value);
        other.LoadFromBuffer(buffer.data(), buffer.size());
        EXPECT_EQ(other.ToString(), loaded);
    }
    Variant truth(false);
    truth.LoadFromBuffer("\7", 1);
    EXPECT_EQ(truth.ToString(), "1");

    const CountedPtr<Object> object = MakeCounted<Object>();
    char address[sizeof(void*)];
    Variant(VariantReferencePointer(object.get())).StoreToBuffer(address, sizeof address);
    Variant reference{VariantReferencePointer()};
    for (int i = 0; i != 2; ++i) reference.LoadFromBuffer(address, sizeof address);
    EXPECT_EQ(object->Count(), 2U);
    EXPECT_THROW(reference.LoadFromBuffer(address, 7), SystemException);

    Variant blob{BlobPtr::Allocate(8)};
    blob.LoadFromBuffer(address, 5);
    EXPECT_EQ(blob.GetSize(), 5U);
    EXPECT_EQ(blob.ToString(), "blobptr 5" + std::to_string(reinterpret_cast<std::uintptr_t>(&address)));
}

TEST(Variant, Streams)
{
    const CountedPtr<Object> object = MakeCounted<Object>();
    Object* const raw = object.get();
    const std::string address(reinterpret_cast<const char*>(&raw), sizeof raw);
    const struct {
        Variant value;
        std::string written;
        std::string read;
        std::string left;
    } cases[] = {
        {short{0x0102}, "\2\1", "258", ""},
        {kGuid, std::string("\4\3\2\1\6\5\x8\7\x9\xA\xB\xC\xD\xE\xF\xFF", 16), Variant(kGuid).ToString(), ""},
        // A text comes back without its last character, and its zero stays behind.
        {"abc", std::string("\3\0\0\0abc\0", 8), "ab", std::string("\0", 1)},
        {"", std::string("\0\0\0\0\0", 5), "", std::string("\0", 1)},
        {std::u16string(u"ab"), std::string("\4\0\0\0a\0b\0\0\0", 10), "a", std::string("\0\0", 2)},
        {Bytes("abc"), std::string("\3\0\0\0abc", 7), "binarydata 3 YWJj", ""},
        {Bytes("a"), std::string("\1\0\0\0a", 5), "binarydata 1 YQ==", ""},
        {BinaryData(), std::string("\0\0\0\0", 4), "binarydata 0 ", ""},
        {VariantReferencePointer(raw), address, "<refptr/>", ""},
    };
    for (const auto& [value, written, read, left] : cases) {
        MemoryStream stream;
        value.WriteToStream(stream);
        EXPECT_EQ(stream.Bytes(), written);
        Variant other = Another(value);
        other.ReadFromStream(stream);
        EXPECT_EQ(other.ToString(), read);
        EXPECT_EQ(stream.Left(), left);
    }

    MemoryStream stream;
    Variant(BlobPtr("abc", 3)).WriteToStream(stream);
    EXPECT_EQ(stream.Bytes(), std::string("\3\0\0\0abc", 7));
    Variant blob{BlobPtr::Allocate(100)};
    blob.ReadFromStream(stream);
    const Variant copy = blob;
    blob = 1;
    char out[3];
    copy.StoreToBuffer(out, sizeof out);
    EXPECT_EQ(std::string_view(out, 3), "abc");
}

// The only reference to an object goes through a stream and back into the value that holds it.
TEST(Variant, AReferenceReadOverItself)
{
    Variant reference{VariantReferencePointer(new Named)};
    MemoryStream stream;
    reference.WriteToStream(stream);
    reference.ReadFromStream(stream);
    EXPECT_EQ(reference.ToString(), "<named/>");
}

TEST(Variant, StreamsThatPromiseTooMuch)
{
    const std::string streams[] = {"", "\3", std::string("\xFF\xFF\xFF\xFF", 4), std::string("\4\0\0\0abc", 7)};
    const Variant values[] = {"kept", std::u16string(u"kept"), Bytes("kept"), BlobPtr("kept", 4), kMost};
    for (const std::string& bytes : streams) {
        for (const Variant& value : values) {
            if (value.GetFixedSize() == static_cast<int>(bytes.size())) continue;
            Variant read = value;
            MemoryStream stream(bytes);
            try {
                read.ReadFromStream(stream);
                ADD_FAILURE() << value.ToString();
            } catch (const SystemException& failure) {
                EXPECT_EQ(failure.ErrorCode(), Platform::kResultEndOfFile);
            }
            EXPECT_EQ(read.ToString(), value.ToString());
        }
    }
    Variant odd{std::u16string()};
    MemoryStream stream(std::string("\7\0\0\0a\0b\0c\0d", 11));
    odd.ReadFromStream(stream);
    EXPECT_EQ(odd.ToString(), "ab");
}

}  // namespace
