#include "ulmo/date_time.h"

#include "platform/system_error.h"
#include "ulmo/checked_string.h"
#include "ulmo/date_fault.h"
#include "ulmo/exceptions.h"
#include "ulmo/string_conversion.h"

namespace Ulmo {

namespace {

using Platform::SystemTime;

// The marks of a fixed format.
struct Marks {
    char date;
    char separator;
    char milliseconds;
};

// Raises for a mode that is none of the fixed formats.
Marks MarksOf(TUlmoDateTimeStrMode mode)
{
    switch (mode & dtsmFormatMask) {
    case dtsmTechnical: return {'/', ' ', ','};
    case dtsmDashes: return {'-', ' ', '.'};
    case dtsmIso: return {'-', 'T', '.'};
    default: Raise({DateTimeError::Mode, u"Invalid value of TUlmoDateTimeStrMode & dtsmFormatMask"});
    }
}

void CheckContent(TUlmoDateTimeStrMode mode)
{
    if ((mode & dtsmModeMask) <= dtsmTimeOnly) return;
    Raise({DateTimeError::Mode, u"Invalid value of TUlmoDateTimeStrMode & dtsmModeMask"});
}

bool HasDate(TUlmoDateTimeStrMode mode)
{
    return (mode & dtsmModeMask) != dtsmTimeOnly;
}

bool HasTime(TUlmoDateTimeStrMode mode)
{
    return (mode & dtsmModeMask) != dtsmDateOnly;
}

// Digits and marks of one field group. The longest has five numbers of five digits.
template <class Char>
class FieldText {
public:
    // As "%0<digits>u": a larger number takes the digits that it needs.
    template <unsigned digits>
    void Number(unsigned value)
    {
        constexpr unsigned kLimit = digits == 2 ? 100 : digits == 3 ? 1000 : 10000;
        if (value < kLimit) {
            PutDigits<digits>(value);
        } else {
            Grow(value);
        }
    }

    void Mark(char mark) { text_[size_++] = static_cast<Char>(mark); }

    std::basic_string_view<Char> View() const { return {text_, size_}; }

private:
    template <unsigned digits>
    void PutDigits(unsigned value)
    {
        for (unsigned i = digits; i != 0; value /= 10) text_[size_ + --i] = static_cast<Char>('0' + value % 10);
        size_ += digits;
    }

    void Grow(unsigned value)
    {
        if (value < 1000) return PutDigits<3>(value);
        value < 10000 ? PutDigits<4>(value) : PutDigits<5>(value);
    }

    Char text_[40];
    std::size_t size_ = 0;
};

enum class Precision { Minutes, Seconds, Milliseconds };

Precision PrecisionOf(const SystemTime& time, TUlmoDateTimeStrMode mode)
{
    if (mode & dtsmNoSeconds) return Precision::Minutes;
    // Trailing zeros: first the milliseconds, then the seconds as well.
    if ((mode & dtsmShortenZeros) && time.milliseconds == 0) {
        return time.second != 0 ? Precision::Seconds : Precision::Minutes;
    }
    return mode & dtsmNoMilliseconds ? Precision::Seconds : Precision::Milliseconds;
}

template <class Char>
void AppendMark(FixedBuffer<Char>& buffer, char mark)
{
    const Char text = static_cast<Char>(mark);
    CheckedStringCchCopyEx(buffer, std::basic_string_view<Char>(&text, 1));
}

template <class Char>
void AppendDate(FixedBuffer<Char>& buffer, const SystemTime& time, const Marks& marks)
{
    FieldText<Char> text;
    text.template Number<4>(time.year);
    text.Mark(marks.date);
    text.template Number<2>(time.month);
    text.Mark(marks.date);
    text.template Number<2>(time.day);
    CheckedStringCchPrintfEx(buffer, text.View());
}

template <class Char>
void AppendTime(FixedBuffer<Char>& buffer, const SystemTime& time, const Marks& marks, Precision precision)
{
    FieldText<Char> text;
    text.template Number<2>(time.hour);
    text.Mark(':');
    text.template Number<2>(time.minute);
    if (precision != Precision::Minutes) {
        text.Mark(':');
        text.template Number<2>(time.second);
    }
    if (precision == Precision::Milliseconds) {
        text.Mark(marks.milliseconds);
        text.template Number<3>(time.milliseconds);
    }
    CheckedStringCchPrintfEx(buffer, text.View());
}

// Raises if the buffer is too small; it then holds what fits.
template <class Char>
std::size_t FixedText(std::span<Char> target, const SystemTime& time, TUlmoDateTimeStrMode mode)
{
    const Marks marks = MarksOf(mode);
    CheckContent(mode);
    FixedBuffer<Char> buffer{target.data(), target.size()};
    if (mode & dtsmQuotes) AppendMark(buffer, '"');
    if (HasDate(mode)) AppendDate(buffer, time, marks);
    if (HasDate(mode) && HasTime(mode)) AppendMark(buffer, marks.separator);
    if (HasTime(mode)) AppendTime(buffer, time, marks, PrecisionOf(time, mode));
    if (mode & dtsmQuotes) AppendMark(buffer, '"');
    return static_cast<std::size_t>(buffer.next - target.data());
}

Platform::DateStyle StyleOf(TUlmoDateTimeStrMode mode)
{
    if (mode & dtsmWeekday) return Platform::DateStyle::Weekday;
    return mode & dtsmLongDate ? Platform::DateStyle::Long : Platform::DateStyle::Short;
}

std::size_t LocaleText(std::span<char16_t> target, const SystemTime& time, TUlmoDateTimeStrMode mode)
{
    CheckContent(mode);
    std::size_t length = 0;
    if (HasDate(mode)) {
        length = Platform::FormatLocaleDate(time, StyleOf(mode), target);
        if (length == 0) ThrowLastError(u"TUlmoDateTime::SystemTimeToStr::GetDateFormat");
    }
    if (HasDate(mode) && HasTime(mode)) {
        if (target.size() - length < 2) {
            ThrowSystemError(Platform::kResultInsufficientBuffer, u"TUlmoDateTime::SystemTimeToStr");
        }
        target[length++] = u' ';
    }
    if (HasTime(mode)) {
        const bool withSeconds = (mode & dtsmNoSeconds) == 0;
        const std::size_t added = Platform::FormatLocaleTime(time, withSeconds, target.subspan(length));
        if (added == 0) ThrowLastError(u"TUlmoDateTime::SystemTimeToStr::GetTimeFormat");
        length += added;
    }
    return length;
}

// The wall clock of a value. An instant before 1601 there becomes a tick count that the calendar refuses.
SystemTime LocalTime(TUlmoDateTime value)
{
    const auto utc = static_cast<std::int64_t>(UtcMilliseconds(value));
    const std::int64_t ticks = (utc - Bias(value) * std::int64_t{60000}) * 10000;
    SystemTime time;
    if (!Platform::FileTimeToSystemTime(static_cast<std::uint64_t>(ticks), time)) {
        ThrowLastError(u"Ulmo::FileTimeToSystemTime");
    }
    return time;
}

std::u16string_view TextWithBias(TUlmoDateTime value, std::span<char16_t> buffer, TUlmoDateTimeStrMode mode,
                                 std::u16string_view prefix)
{
    const std::size_t length = SystemTimeToStr(buffer, LocalTime(value), mode);
    return {buffer.data(), length + BiasToStr(buffer.subspan(length), Bias(value), prefix)};
}

}  // namespace

std::size_t SystemTimeToStr(std::span<char16_t> buffer, const SystemTime& time, TUlmoDateTimeStrMode mode)
{
    return (mode & dtsmFormatMask) == dtsmLocale ? LocaleText(buffer, time, mode) : FixedText(buffer, time, mode);
}

std::size_t SystemTimeToStr(std::span<char> buffer, const SystemTime& time, TUlmoDateTimeStrMode mode)
{
    if ((mode & dtsmFormatMask) != dtsmLocale) return FixedText(buffer, time, mode);
    // The system writes wide text only, which is narrowed as a whole.
    DateText wide;
    const std::string narrow = AnsiFromWide({wide, LocaleText(wide, time, mode)});
    FixedBuffer<char> target{buffer.data(), buffer.size()};
    CheckedStringCchCopyEx(target, std::string_view(narrow));
    return narrow.size();
}

std::size_t BiasToStr(std::span<char16_t> buffer, std::int16_t bias, std::u16string_view prefix)
{
    constexpr std::u16string_view kFunction = u"Ulmo::BiasToStr";
    const bool iso = prefix == kIsoBiasPrefix;
    const auto minutes = static_cast<unsigned>(bias < 0 ? -bias : bias);
    // East of Greenwich the bias is negative and the text has a plus.
    FieldText<char16_t> text;
    if (iso && bias == 0) {
        text.Mark('Z');
    } else {
        text.Mark(bias > 0 ? '-' : '+');
        text.Number<2>(minutes / 60);
        text.Mark(':');
        text.Number<2>(minutes % 60);
    }
    FixedBuffer<char16_t> target{buffer.data(), buffer.size()};
    if (!iso) AppendChecked(target, prefix, kFunction);
    AppendChecked(target, text.View(), kFunction);
    return static_cast<std::size_t>(target.next - buffer.data());
}

std::u16string_view ToText(TUlmoDateTime value, DateText& buffer)
{
    return TextWithBias(value, buffer, dtsmTechnical, u" GMT");
}

std::u16string_view ToIsoText(TUlmoDateTime value, DateText& buffer)
{
    return TextWithBias(value, buffer, dtsmIso, kIsoBiasPrefix);
}

std::u16string_view ToLocaleText(TUlmoDateTime value, DateText& buffer, TUlmoDateTimeStrMode mode)
{
    return {buffer, SystemTimeToStr(std::span<char16_t>(buffer), LocalTime(value), mode)};
}

}  // namespace Ulmo
