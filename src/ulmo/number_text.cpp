#include "ulmo/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <system_error>

namespace Ulmo {

namespace {

// As many as every decimal number keeps through a double.
constexpr int kSignificantDigits = 15;

constexpr std::size_t kLongestNumber = 32;
constexpr std::size_t kLongestGeneral = 349;

// Widened in a buffer of its own: appending by iterators of another type makes a temporary string.
void AppendWidened(std::u16string& output, std::string_view narrow)
{
    char16_t wide[kLongestNumber];
    output.append(wide, std::copy(narrow.begin(), narrow.end(), wide));
}

// "00" to "99", one behind the other.
struct DigitPairs {
    char16_t units[200];

    constexpr DigitPairs() : units()
    {
        for (unsigned i = 0; i < 100; ++i) {
            units[2 * i] = static_cast<char16_t>(u'0' + i / 10);
            units[2 * i + 1] = static_cast<char16_t>(u'0' + i % 10);
        }
    }
};
constexpr DigitPairs kDigitPairs;

template <class Integer>
void AppendInteger(std::string& output, Integer value)
{
    char text[kLongestNumber];
    output.append(text, std::to_chars(text, text + sizeof text, value).ptr);
}

std::size_t DigitCount(std::uint64_t value)
{
    std::size_t count = 1;
    for (; value >= 100; value /= 100) count += 2;
    return count + (value >= 10);
}

char16_t Unit(char c)
{
    return static_cast<unsigned char>(c);
}

char16_t Unit(char16_t c)
{
    return c;
}

// As the C library skips it in its usual locale.
template <class Char>
std::basic_string_view<Char> WithoutLeadingSpace(std::basic_string_view<Char> text)
{
    const auto first =
        std::find_if_not(text.begin(), text.end(), [](Char c) { return c == ' ' || (c >= '\t' && c <= '\r'); });
    text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
    return text;
}

template <class Char>
bool TakeSign(std::basic_string_view<Char>& text)
{
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
    return negative;
}

unsigned DigitValue(char16_t c)
{
    if (c >= u'0' && c <= u'9') return c - u'0';
    const char16_t lower = c | 0x20;
    return lower >= u'a' && lower <= u'z' ? lower - u'a' + 10U : 99U;
}

// The digits of a base as a value of the type, which stops at its limits.
template <class Integer, class Char>
Integer ReadDigits(std::basic_string_view<Char> digits, unsigned base, bool negative, bool& inRange)
{
    using Limits = std::numeric_limits<Integer>;
    constexpr std::size_t kAlwaysFit = 2 * sizeof(Integer) - 1;  // as many digits of any base up to 16
    const auto most = static_cast<std::uint64_t>(Limits::max()) + (negative ? 1 : 0);
    std::uint64_t value = 0;
    inRange = true;
    for (std::size_t at = 0; at < digits.size(); ++at) {
        const unsigned digit = DigitValue(Unit(digits[at]));
        if (digit >= base) break;
        if (at >= kAlwaysFit) inRange = inRange && value <= (most - digit) / base;
        if (inRange) value = value * base + digit;
    }
    if (!inRange) return negative ? Limits::min() : Limits::max();
    // In unsigned numbers, which wrap where the lowest value has no positive one.
    return static_cast<Integer>(negative ? 0 - value : value);
}

// As C's conversion with base 10: blanks, a sign, digits; what follows is not looked at.
template <class Integer, class Char>
Integer Scan(std::basic_string_view<Char> text)
{
    text = WithoutLeadingSpace(text);
    const bool negative = TakeSign(text);
    bool inRange = true;
    return ReadDigits<Integer>(text, 10, negative, inRange);
}

// Takes the "0x" if a hexadecimal digit follows; a leading zero stays, being a digit of base 8 as well.
unsigned TakeBase(std::u16string_view& digits)
{
    if (digits.empty() || digits.front() != u'0') return 10;
    const bool hexadecimal = digits.size() > 2 && (digits[1] | 0x20) == u'x' && DigitValue(digits[2]) < 16;
    if (hexadecimal) digits.remove_prefix(2);
    return hexadecimal ? 16 : 8;
}

// Nearly all numbers: a few decimal digits and nothing else. False for any other.
bool ReadShortDecimal(std::u16string_view text, std::uint32_t& value)
{
    constexpr std::size_t kShort = 9;
    if (text.empty() || text.size() > kShort || text.front() == u'0') return false;
    value = 0;
    for (const char16_t c : text) {
        const unsigned digit = static_cast<unsigned>(c - u'0');
        if (digit > 9) return false;
        value = value * 10 + digit;
    }
    return true;
}

template <class Integer>
Integer Detect(std::u16string_view text, bool& inRange)
{
    if (std::uint32_t value = 0; ReadShortDecimal(text, value)) {
        inRange = true;
        return static_cast<Integer>(value);
    }
    text = WithoutLeadingSpace(text);
    const bool negative = TakeSign(text);
    const unsigned base = TakeBase(text);
    return ReadDigits<Integer>(text, base, negative, inRange);
}

// The part of a text that can belong to a number, narrow.
template <class Char>
std::string NumberPart(std::basic_string_view<Char> text)
{
    const auto end = std::find_if_not(
        text.begin(), text.end(), [](Char c) { return DigitValue(Unit(c)) != 99 || c == '.' || c == '+' || c == '-'; });
    std::string narrow(static_cast<std::size_t>(end - text.begin()), '\0');
    std::transform(text.begin(), end, narrow.begin(), [](Char c) { return static_cast<char>(c); });
    return narrow;
}

// How a real number is written; hexadecimal ones have a binary exponent.
struct Notation {
    std::chars_format format;
    std::string_view digits;  // without 0
    std::string_view exponentMarks;
    int placeWeight;  // of a digit's place in the exponent
};
constexpr Notation kDecimal = {std::chars_format::general, "123456789", "eE", 1};
constexpr Notation kHexadecimal = {std::chars_format::hex, "123456789abcdefABCDEF", "pP", 4};

// Takes the "0x" from the front of a number that goes on with a hexadecimal digit.
const Notation& TakeNotation(std::string_view& number)
{
    if (number.size() < 3 || number[0] != '0' || (number[1] | 0x20) != 'x') return kDecimal;
    const std::size_t first = number[2] == '.' ? 3 : 2;
    if (first == number.size() || DigitValue(Unit(number[first])) >= 16) return kDecimal;
    number.remove_prefix(2);
    return kHexadecimal;
}

// Whether a number that fits no double is too large, and not too small: the place of its first digit that is not 0.
bool IsTooLarge(std::string_view number, const Notation& notation)
{
    const std::size_t exponentMark = std::min(number.find_first_of(notation.exponentMarks), number.size());
    const std::string_view mantissa = number.substr(0, exponentMark);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = std::min(mantissa.find_first_of(notation.digits), mantissa.size());
    const std::string_view exponent = number.substr(std::min(exponentMark + 1, number.size()));
    const std::int64_t place = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    return place * notation.placeWeight + ScanInt32(exponent) > 0;
}

template <class Char>
double ScanReal(std::basic_string_view<Char> text)
{
    text = WithoutLeadingSpace(text);
    const bool negative = TakeSign(text);
    const std::string part = NumberPart(text);
    // The sign is taken already; from_chars would take a second one.
    if (part.empty() || part.front() == '-') return 0;
    std::string_view number = part;
    const Notation& notation = TakeNotation(number);
    double value = 0;
    const std::from_chars_result result =
        std::from_chars(number.data(), number.data() + number.size(), value, notation.format);
    if (result.ec == std::errc::result_out_of_range) {
        const std::string_view taken(number.data(), static_cast<std::size_t>(result.ptr - number.data()));
        value = IsTooLarge(taken, notation) ? std::numeric_limits<double>::infinity() : 0;
    }
    return negative ? -value : value;
}

// The power of ten of a finite number's first digit, 0 for 0.
int DecimalExponent(double value)
{
    constexpr int kEnoughDigits = 20;  // so that no 9.99... is rounded up to the next power
    char text[kLongestNumber];
    const char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, kEnoughDigits).ptr;
    const std::string_view number(text, end);
    return ScanInt32(number.substr(number.find('e') + 1));
}

}  // namespace

char16_t* WriteUnsigned(char16_t* target, std::uint64_t value)
{
    char16_t* const end = target + DigitCount(value);
    char16_t* place = end;
    for (; value >= 10; value /= 100) {
        place -= 2;
        std::memcpy(place, &kDigitPairs.units[2 * (value % 100)], 2 * sizeof(char16_t));
    }
    if (place != target) *target = static_cast<char16_t>(u'0' + value);
    return end;
}

char16_t* WriteDecimal(char16_t* target, std::int64_t value)
{
    const auto bits = static_cast<std::uint64_t>(value);
    if (value >= 0) return WriteUnsigned(target, bits);
    *target = u'-';
    return WriteUnsigned(target + 1, 0 - bits);
}

void AppendDecimal(std::u16string& output, std::int64_t value)
{
    char16_t text[kLongestDecimal];
    output.append(text, WriteDecimal(text, value));
}

void AppendUnsigned(std::u16string& output, std::uint64_t value)
{
    char16_t text[kLongestDecimal];
    output.append(text, WriteUnsigned(text, value));
}

void AppendDecimal(std::string& output, std::int64_t value)
{
    AppendInteger(output, value);
}

void AppendUnsigned(std::string& output, std::uint64_t value)
{
    AppendInteger(output, value);
}

void AppendDouble(std::u16string& output, double value, TrailingPoint mode)
{
    char text[kLongestNumber];
    const char* end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, kSignificantDigits).ptr;
    const std::string_view number(text, end);
    AppendWidened(output, number);
    // Neither a point nor an exponent: it reads as an integer.
    const bool whole = std::isfinite(value) && number.find_first_of(".e") == std::string_view::npos;
    if (whole && mode == TrailingPoint::Keep) output.append(u".0");
}

void AppendGeneral(std::string& output, double value, int digits)
{
    char text[kLongestGeneral];
    const int exponent = std::isfinite(value) ? DecimalExponent(value) : 0;
    const bool fixed = exponent >= -1 && exponent < digits;
    const std::to_chars_result result =
        fixed ? std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, digits - 1 - exponent)
              : std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, digits - 1);
    if (result.ec != std::errc()) return;
    const std::string_view number(text, result.ptr);
    const std::size_t point = std::min(number.find('.'), number.size());
    const std::size_t mantissaEnd = std::min(number.find('e', point), number.size());
    const std::size_t lastKept = number.substr(0, mantissaEnd).find_last_not_of('0');
    const bool hasPlaces = point != number.size();
    output.append(number.substr(0, hasPlaces ? lastKept + 1 : mantissaEnd)).append(number.substr(mantissaEnd));
}

std::int32_t ScanInt32(std::u16string_view text)
{
    return Scan<std::int32_t>(text);
}

std::int32_t ScanInt32(std::string_view text)
{
    return Scan<std::int32_t>(text);
}

std::int64_t ScanInt64(std::u16string_view text)
{
    return Scan<std::int64_t>(text);
}

std::int64_t ScanInt64(std::string_view text)
{
    return Scan<std::int64_t>(text);
}

double ScanDouble(std::u16string_view text)
{
    return ScanReal(text);
}

double ScanDouble(std::string_view text)
{
    return ScanReal(text);
}

std::int32_t DetectInt32(std::u16string_view text, bool& inRange)
{
    return Detect<std::int32_t>(text, inRange);
}

std::int64_t DetectInt64(std::u16string_view text)
{
    bool inRange = true;
    return Detect<std::int64_t>(text, inRange);
}

}  // namespace Ulmo
