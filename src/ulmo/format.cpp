#include "ulmo/format.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include "ulmo/string_conversion.h"

namespace Ulmo::Text {

namespace {

constexpr std::size_t kNone = std::u16string_view::npos;
constexpr std::size_t kWidthLimit = 512;

// There is no closing quote behind the format.
std::u16string ComposeMessage(std::string_view text, std::u16string_view format)
{
    return WideFromAnsi(text).append(u" :\"").append(format);
}

template <class Char>
class Formatter {
public:
    using View = std::basic_string_view<Char>;

    Formatter(View format, std::basic_string<Char>& output, std::span<const View> arguments)
        : format_(format), output_(output), arguments_(arguments)
    {}

    void Run()
    {
        while (Step()) {
        }
    }

private:
    // Takes the text up to the next brace and what the brace begins; false at the end.
    bool Step()
    {
        const std::size_t open = format_.find(Char('{'), position_);
        const std::size_t close = format_.find(Char('}'), position_);
        if (open == kNone && close == kNone) {
            output_.append(format_.substr(position_));
            return false;
        }
        if (close < open) {
            ClosingBrace(close);
        } else {
            output_.append(format_.substr(position_, open - position_));
            OpeningBrace(open, close);
        }
        return true;
    }

    void ClosingBrace(std::size_t close)
    {
        if (At(close + 1) != '}') Fail("Text::Format illegal end of format string:", close);
        output_.append(format_.substr(position_, close + 1 - position_));
        position_ = close + 2;
    }

    void OpeningBrace(std::size_t open, std::size_t close)
    {
        if (close != kNone && TakePlain(open, close)) return;
        if (At(open + 1) == '{') {
            output_.push_back(Char('{'));
            position_ = open + 2;
            return;
        }
        // Without a closing brace the position is always 0, wherever the brace stands: callers know it so.
        if (close == kNone) Fail("Text::Format illegal begin of format string:", 0);
        if (!TakePadded(open, close)) Fail("Text::Format illegal format string :", open);
    }

    // "{d}" and "{dd}".
    bool TakePlain(std::size_t open, std::size_t close)
    {
        const View number = format_.substr(open + 1, close - open - 1);
        if (number.empty() || number.size() > 2 || !AllDigits(number)) return false;
        output_.append(Argument(Decimal(number), "Text::Format illegal argument number :", open));
        position_ = close + 1;
        return true;
    }

    // "{d,width}" and "{d,-width}"; two digits of an argument number are allowed in the plain form only.
    bool TakePadded(std::size_t open, std::size_t close)
    {
        View field = format_.substr(open + 1, close - open - 1);
        if (field.size() < 3 || !AllDigits(field.substr(0, 1)) || field[1] != Char(',')) return false;
        const std::size_t index = Decimal(field.substr(0, 1));
        field.remove_prefix(2);
        const bool left = field.front() == Char('-');
        if (left) field.remove_prefix(1);
        if (field.empty() || !AllDigits(field)) return false;
        Pad(Argument(index, "Text::Format illegal argument number (,):", open), Decimal(field), left);
        position_ = close + 1;
        return true;
    }

    void Pad(View argument, std::size_t width, bool left)
    {
        // A width from outside must not become megabytes of blanks; beyond the limit it counts for nothing.
        if (width > kWidthLimit) width = 0;
        const std::size_t blanks = width > argument.size() ? width - argument.size() : 0;
        if (!left) output_.append(blanks, Char(' '));
        output_.append(argument);
        if (left) output_.append(blanks, Char(' '));
    }

    View Argument(std::size_t index, std::string_view fault, std::size_t position)
    {
        if (index >= arguments_.size()) Fail(fault, position);
        return arguments_[index];
    }

    Char At(std::size_t position) const { return position < format_.size() ? format_[position] : Char(0); }

    static bool AllDigits(View text)
    {
        return std::all_of(text.begin(), text.end(), [](Char c) { return c >= Char('0') && c <= Char('9'); });
    }

    // Stops above every limit in use, so that a long number does not run over.
    static std::size_t Decimal(View digits)
    {
        unsigned value = 0;
        for (const Char digit : digits) {
            value = std::min(value * 10 + static_cast<unsigned>(digit - Char('0')), 100000U);
        }
        return value;
    }

    [[noreturn]] void Fail(std::string_view fault, std::size_t position) const
    {
        std::u16string format;
        if constexpr (std::is_same_v<Char, char>) {
            format = WideFromAnsi(format_);
        } else {
            format = format_;
        }
        throw InvalidFormatStringException(fault, std::move(format), static_cast<std::uint32_t>(position));
    }

    View format_;
    std::basic_string<Char>& output_;
    std::span<const View> arguments_;
    std::size_t position_ = 0;
};

}  // namespace

InvalidFormatStringException::InvalidFormatStringException(std::string_view text, std::u16string format,
                                                           std::uint32_t position)
    : UlmoException(ComposeMessage(text, format)), format_(std::move(format)), position_(position)
{}

void Format(const char* format, std::string& output, std::span<const std::string_view> arguments)
{
    if (format) Formatter<char>(format, output, arguments).Run();
}

void Format(const char16_t* format, std::u16string& output, std::span<const std::u16string_view> arguments)
{
    if (format) Formatter<char16_t>(format, output, arguments).Run();
}

}  // namespace Ulmo::Text
