#include "ulmo/date_time.h"

#include "ulmo/date_fault.h"
#include "ulmo/exceptions.h"
#include "ulmo/string_conversion.h"

namespace Ulmo {

namespace {

using Platform::SystemTime;

struct Part {
    DateTimeError code;
    std::u16string_view name;
    unsigned digits;
    unsigned low;
    unsigned high;
};

constexpr Part kYear = {DateTimeError::Year, u"year", 4, 1601, 9999};
constexpr Part kMonth = {DateTimeError::Month, u"month", 2, 1, 12};
constexpr Part kHour = {DateTimeError::Hour, u"hour", 2, 0, 23};
// No zone is further from Greenwich than 14 hours.
constexpr Part kBiasHour = {DateTimeError::Hour, u"hour", 2, 0, 14};
constexpr Part kMinute = {DateTimeError::Minute, u"minute", 2, 0, 59};
constexpr Part kSecond = {DateTimeError::Second, u"second", 2, 0, 59};
constexpr Part kMillisecond = {DateTimeError::Millisecond, u"millisecond", 3, 0, 999};

bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// Reads from the front of a text. Each step that can fail answers false and leaves the reason in the fault.
class Scanner {
public:
    Scanner(std::u16string_view text, DateFault& fault) : text_(text), fault_(fault) {}

    std::size_t Position() const { return position_; }
    bool AtEnd() const { return position_ == text_.size(); }
    bool AtDigit() const { return !AtEnd() && IsDigit(text_[position_]); }

    void SkipBlanks()
    {
        while (Take(u' ')) {
        }
    }

    bool Take(char16_t c)
    {
        if (AtEnd() || text_[position_] != c) return false;
        ++position_;
        return true;
    }

    // Steps over a word of upper-case ASCII letters, whatever the case of the text.
    bool TakeWord(std::u16string_view word)
    {
        if (text_.size() - position_ < word.size()) return false;
        for (std::size_t i = 0; i != word.size(); ++i) {
            const char16_t c = text_[position_ + i];
            if (c != word[i] && c != (word[i] | 0x20)) return false;
        }
        position_ += word.size();
        return true;
    }

    bool Expect(char16_t c) { return Take(c) || Fail({DateTimeError::Separator, {}, c, 0}); }

    bool ExpectEither(char16_t a, char16_t b, char16_t& taken)
    {
        taken = Take(a) ? a : b;
        return taken == a || Take(b) || Fail({DateTimeError::Separator, {}, a, b});
    }

    bool Number(const Part& part, std::uint16_t& value)
    {
        unsigned number = 0;
        unsigned digits = 0;
        // No more digits than the part has: the next one belongs to what follows.
        for (; digits != part.digits && AtDigit(); ++digits) number = number * 10 + (text_[position_++] - u'0');
        if (digits == 0 || number < part.low || number > part.high) {
            return Fail({part.code, part.name, part.low, part.high});
        }
        value = static_cast<std::uint16_t>(number);
        return true;
    }

    // Trailing blanks may follow, nothing else; `next` names what could have.
    bool ExpectEnd(std::u16string_view next)
    {
        SkipBlanks();
        return AtEnd() || Fail({DateTimeError::EndOfText, next});
    }

private:
    bool Fail(const DateFault& fault)
    {
        fault_ = fault;
        return false;
    }

    std::u16string_view text_;
    DateFault& fault_;
    std::size_t position_ = 0;
};

// Year, month and day with the same mark between them. Blanks may come before.
bool ScanDate(Scanner& scanner, SystemTime& time)
{
    char16_t separator = 0;
    scanner.SkipBlanks();
    if (!scanner.Number(kYear, time.year) || !scanner.ExpectEither(u'/', u'-', separator) ||
        !scanner.Number(kMonth, time.month) || !scanner.Expect(separator)) {
        return false;
    }
    return scanner.Number({DateTimeError::Day, u"day", 2, 1, Platform::DaysInMonth(time.year, time.month)}, time.day);
}

// `next` becomes what could follow the time.
bool ScanTime(Scanner& scanner, SystemTime& time, std::u16string_view& next)
{
    if (!scanner.Number(kHour, time.hour) || !scanner.Expect(u':') || !scanner.Number(kMinute, time.minute)) {
        return false;
    }
    next = u":Seconds";
    if (!scanner.Take(u':')) return true;
    if (!scanner.Number(kSecond, time.second)) return false;
    next = u",Milliseconds or .Milliseconds";
    if (!scanner.Take(u',') && !scanner.Take(u'.')) return true;
    next = {};
    return scanner.Number(kMillisecond, time.milliseconds);  // a plain number, deliberately: ",5" is 5 milliseconds
}

bool ScanDateAndTime(Scanner& scanner, SystemTime& time, std::u16string_view& next, DateFault& fault)
{
    if (!ScanDate(scanner, time)) return false;
    if (scanner.AtEnd()) return true;
    char16_t separator = 0;
    if (!scanner.ExpectEither(u' ', u'T', separator)) return false;
    if (separator == u' ') scanner.SkipBlanks();
    if (scanner.AtDigit()) return ScanTime(scanner, time, next);
    next = u"Hour";
    if (separator == u' ') return true;
    fault = {DateTimeError::TimeMissing, u"Time expected after T separator."};
    return false;
}

// Minutes; a text without a bias is a failure.
bool ScanBias(std::u16string_view text, std::int16_t& bias, DateFault& fault)
{
    Scanner scanner(text, fault);
    scanner.SkipBlanks();
    bias = 0;
    // A "Z" is a whole bias; after the other words, or without any, hours follow.
    if (!scanner.TakeWord(u"UTC") && !scanner.TakeWord(u"GMT") && scanner.TakeWord(u"Z")) {
        return scanner.ExpectEnd({});
    }
    scanner.SkipBlanks();
    const bool negative = scanner.Take(u'-');
    if (!negative) scanner.Take(u'+');
    scanner.SkipBlanks();
    std::uint16_t hours = 0;
    std::uint16_t minutes = 0;
    if (!scanner.Number(kBiasHour, hours)) return false;
    if (scanner.Take(u':') && !scanner.Number(kMinute, minutes)) return false;
    if (!scanner.ExpectEnd({})) return false;
    // East of Greenwich the minutes count against the hours, deliberately: "+01:30" gives -30. Whole hours are exact.
    bias = static_cast<std::int16_t>(negative ? hours * 60 + minutes : minutes - hours * 60);
    return true;
}

// False with the fault for what is no date; raises if the calendar refuses it.
bool ScanValue(std::u16string_view text, TUlmoDateTime& value, DateFault& fault)
{
    Scanner scanner(text, fault);
    SystemTime time;
    std::u16string_view next;
    if (!ScanDateAndTime(scanner, time, next, fault)) return false;
    std::uint64_t ticks = 0;
    if (!Platform::SystemTimeToFileTime(time, ticks)) ThrowLastError(u"Ulmo::SystemTimeToFileTime");
    std::int16_t bias = 0;
    if (!ScanBias(text.substr(scanner.Position()), bias, fault)) return false;
    // The text is the local time, so the bias takes it to UTC.
    const auto milliseconds = static_cast<std::int64_t>((ticks + 5000) / 10000);
    return TryMakeDateTime(milliseconds + std::int32_t{bias} * 60000, bias, value, fault);
}

}  // namespace

SystemTime StrToSystemTime(std::u16string_view text, std::size_t* used)
{
    DateFault fault;
    Scanner scanner(text, fault);
    SystemTime time;
    std::u16string_view next;
    if (!ScanDateAndTime(scanner, time, next, fault)) Raise(fault);
    if (used) {
        *used = scanner.Position();
    } else if (!scanner.ExpectEnd(next)) {
        Raise(fault);
    }
    return time;
}

SystemTime StrToSystemTime(std::string_view ansi, std::size_t* used)
{
    return StrToSystemTime(WideFromAnsi(ansi), used);
}

std::int16_t StrToBias(std::u16string_view text)
{
    std::int16_t bias = 0;
    DateFault fault;
    if (!ScanBias(text, bias, fault)) Raise(fault);
    return bias;
}

TUlmoDateTime FromText(std::u16string_view text)
{
    TUlmoDateTime value{};
    DateFault fault;
    if (!ScanValue(text, value, fault)) Raise(fault);
    return value;
}

TUlmoDateTime FromText(std::string_view ansi)
{
    return FromText(WideFromAnsi(ansi));
}

std::optional<TUlmoDateTime> TryFromText(std::u16string_view text)
{
    TUlmoDateTime value{};
    DateFault fault;
    return ScanValue(text, value, fault) ? std::optional(value) : std::nullopt;
}

}  // namespace Ulmo
