#include "ulmo/date_time.h"

#include "ulmo/date_fault.h"
#include "ulmo/exceptions.h"
#include "ulmo/number_text.h"

namespace Ulmo {

namespace {

// A value holds the milliseconds in its low 48 bits and the bias above them.
constexpr int kBiasShift = 48;
constexpr std::int64_t kLargestMilliseconds = 0xFFFFFFFFFFFF;

std::u16string SeparatorMessage(const DateFault& fault)
{
    std::u16string message = {u'\'', static_cast<char16_t>(fault.low), u'\''};
    if (fault.high != 0) message.append(u" or '").append(1, static_cast<char16_t>(fault.high)).append(u"'");
    return message.append(u" expected.");
}

std::u16string EndMessage(const DateFault& fault)
{
    std::u16string message = u"End of date/time string";
    if (!fault.text.empty()) message.append(u" or \"").append(fault.text).append(u"\"");
    return message.append(u" expected.");
}

std::u16string LimitsMessage(const DateFault& fault)
{
    std::u16string message = u"Invalid ";
    message.append(fault.text).append(u" part in date/time string. Expected a number from ");
    AppendUnsigned(message, fault.low);
    message.append(u" to ");
    AppendUnsigned(message, fault.high);
    return message.append(u".");
}

// The words are part of what callers have always seen.
std::u16string Message(const DateFault& fault)
{
    switch (fault.code) {
    case DateTimeError::Separator: return SeparatorMessage(fault);
    case DateTimeError::EndOfText: return EndMessage(fault);
    case DateTimeError::Transition:
    case DateTimeError::Mode:
    case DateTimeError::Range:
    case DateTimeError::TimeMissing: return std::u16string(fault.text);
    default: return LimitsMessage(fault);
    }
}

}  // namespace

void Raise(const DateFault& fault)
{
    throw EUlmoDateTime(Message(fault), static_cast<std::uint32_t>(fault.code));
}

bool TryMakeDateTime(std::int64_t utcMilliseconds, std::int16_t bias, TUlmoDateTime& value, DateFault& fault)
{
    if (utcMilliseconds < 0) {
        fault = {DateTimeError::Range,
                 u"SetUTCMilliseconds(): Internal milliseconds underflow. A year below 1601 is not supported."};
        return false;
    }
    if (utcMilliseconds > kLargestMilliseconds) {
        fault = {DateTimeError::Range, u"SetUTCMilliseconds(): Internal milliseconds overflow."};
        return false;
    }
    const std::uint64_t biasBits = static_cast<std::uint16_t>(bias);
    value.value = static_cast<std::uint64_t>(utcMilliseconds) | biasBits << kBiasShift;
    return true;
}

std::uint64_t UtcMilliseconds(TUlmoDateTime value)
{
    return value.value & static_cast<std::uint64_t>(kLargestMilliseconds);
}

std::int16_t Bias(TUlmoDateTime value)
{
    return static_cast<std::int16_t>(value.value >> kBiasShift);
}

TUlmoDateTime MakeDateTime(std::int64_t utcMilliseconds, std::int16_t bias)
{
    TUlmoDateTime value{};
    DateFault fault;
    if (!TryMakeDateTime(utcMilliseconds, bias, value, fault)) Raise(fault);
    return value;
}

}  // namespace Ulmo
