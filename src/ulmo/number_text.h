// Numbers as text and back, without a locale and the same on every system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Ulmo {

// Decimal text appended to the output.
void AppendDecimal(std::u16string& output, std::int64_t value);
void AppendDecimal(std::string& output, std::int64_t value);
void AppendUnsigned(std::u16string& output, std::uint64_t value);
void AppendUnsigned(std::string& output, std::uint64_t value);

// Decimal text from the target on, which has room for the longest. Returns the end of the text.
inline constexpr std::size_t kLongestDecimal = 20;
char16_t* WriteDecimal(char16_t* target, std::int64_t value);
char16_t* WriteUnsigned(char16_t* target, std::uint64_t value);

// How a double without decimal places is written: as a whole number (action text), or with ".0" behind it (JSON).
enum class TrailingPoint { Drop, Keep };

// A double with 15 significant digits as "%.15g" has it: exponents of at least two digits, no point before an
// exponent. Infinity is "inf" or "-inf", a value that is no number "nan" or "-nan", in both modes.
void AppendDouble(std::u16string& output, double value, TrailingPoint mode = TrailingPoint::Drop);

// A double as the C run-time of Windows has it in its general form, which is not that of "%g": exponents of ten from -1
// to digits - 1 in fixed notation, others with an exponent of at least two digits. Zeros at the end of the decimal
// places are cut and the point stays: "5.", "5.e-02". Appends nothing when the number has no such text.
void AppendGeneral(std::string& output, double value, int digits);

// The decimal scans of C: leading white space, a sign, digits up to the first other character. They never fail; no
// digits give 0, values out of range stop at the limit of the type. Only doubles have hexadecimal digits ("0x1.8p3").
std::int32_t ScanInt32(std::u16string_view text);
std::int32_t ScanInt32(std::string_view text);
std::int64_t ScanInt64(std::u16string_view text);
std::int64_t ScanInt64(std::string_view text);
double ScanDouble(std::u16string_view text);
double ScanDouble(std::string_view text);

// C's conversion with base 0: "0x" selects hexadecimal, a leading zero octal, and the digits from the first one that
// does not fit the base are dropped. `inRange` tells whether the value fits the type; out of range it is the limit.
std::int32_t DetectInt32(std::u16string_view text, bool& inRange);
std::int64_t DetectInt64(std::u16string_view text);

}  // namespace Ulmo
