// The kinds that are numbers.
#include <locale>
#include <sstream>

#include "ulmo/number_text.h"
#include "ulmo/type_name.h"
#include "ulmo/variant_families.h"

namespace Ulmo {

namespace {

using namespace VariantFamilies;

// Text behind the number is no failure, and neither is the end of the text.
template <class T>
T Extract(std::string_view text)
{
    // A stream, not Scan: here a text without a number is a failure.
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    T value{};
    stream >> value;
    if (stream.fail()) {
        throw StringConversionException(
            std::string("Failed to convert [").append(text).append("] into [").append(TypeName(typeid(T))).append("]"));
    }
    return value;
}

struct Bool : PlainValue<bool> {
    static std::string ToString(const void* value) { return At<bool>(value) ? "1" : "0"; }
    static void FromString(void* value, std::string_view text) { At<bool>(value) = Extract<bool>(text); }
};

template <class T>
std::string Decimal(const void* value)
{
    std::string text;
    AppendDecimal(text, At<T>(value));
    return text;
}

template <class T>
std::string Unsigned(const void* value)
{
    std::string text;
    AppendUnsigned(text, At<T>(value));
    return text;
}

// Written by ToText; read as a number of 32 or of 64 bits, of which the low ones are kept.
template <class T, class Scanned, auto ToText>
struct Integer : PlainValue<T> {
    static std::string ToString(const void* value) { return Guarded<ToText>(value); }
    static void FromString(void* value, std::string_view text)
    {
        if constexpr (sizeof(Scanned) == sizeof(std::int64_t)) {
            At<T>(value) = static_cast<T>(ScanInt64(text));
        } else {
            At<T>(value) = static_cast<T>(ScanInt32(text));
        }
    }
};

// Whether a plain char has a sign is the compiler's affair; this one has.
std::string SmallDecimal(const void* value)
{
    const auto extended = static_cast<signed char>(At<char>(value));
    return Decimal<signed char>(&extended);
}

// The one kind that is written as the character that it is, and read as a number all the same.
std::string RawCharacter(const void* value)
{
    return std::string(1, static_cast<char>(At<signed char>(value)));
}

using Char = Integer<char, std::int32_t, SmallDecimal>;
using UnsignedChar = Integer<unsigned char, std::int32_t, Unsigned<unsigned char>>;
using SignedChar = Integer<signed char, std::int32_t, RawCharacter>;
using Short = Integer<short, std::int32_t, Decimal<short>>;
using UnsignedShort = Integer<unsigned short, std::int32_t, Unsigned<unsigned short>>;
using UnsignedInt = Integer<unsigned int, std::int64_t, Unsigned<unsigned int>>;
using Int = Integer<int, std::int32_t, Decimal<int>>;
using Int64 = Integer<std::int64_t, std::int64_t, Decimal<std::int64_t>>;
// Read as a signed number, so texts from 2^63 on stop at 2^63 - 1.
using UnsignedInt64 = Integer<std::uint64_t, std::int64_t, Unsigned<std::uint64_t>>;

struct Long : PlainValue<TLong> {
    static std::string ToString(const void* value) { return Guarded<Decimal<std::int32_t>>(&At<TLong>(value).value); }
    static void FromString(void* value, std::string_view text) { At<TLong>(value) = {ScanInt32(text)}; }
};

template <class T, int digits>
std::string General(const void* value)
{
    std::string text;
    AppendGeneral(text, At<T>(value), digits);
    return text;
}

struct Float : PlainValue<float> {
    static std::string ToString(const void* value) { return Guarded<General<float, 6>>(value); }
    static void FromString(void* value, std::string_view text) { At<float>(value) = Extract<float>(text); }
};

// Reads without failure, unlike the float: what is no number is 0.
struct Double : PlainValue<double> {
    static std::string ToString(const void* value) { return Guarded<General<double, 15>>(value); }
    static void FromString(void* value, std::string_view text) { At<double>(value) = ScanDouble(text); }
};

}  // namespace

ORV_VARIANT_KIND(Bool)
ORV_VARIANT_KIND(Char)
ORV_VARIANT_KIND(UnsignedChar)
ORV_VARIANT_KIND(SignedChar)
ORV_VARIANT_KIND(Short)
ORV_VARIANT_KIND(UnsignedShort)
ORV_VARIANT_KIND(UnsignedInt)
ORV_VARIANT_KIND(Int)
ORV_VARIANT_KIND(Int64)
ORV_VARIANT_KIND(UnsignedInt64)
ORV_VARIANT_KIND(Long)
ORV_VARIANT_KIND(Float)
ORV_VARIANT_KIND(Double)

}  // namespace Ulmo
