#include "forms/result_data.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "catalogue/boundary.h"
#include "objects/parameter.h"
#include "ulmo/format.h"
#include "ulmo/number_text.h"

namespace OrvPLC {

namespace {

using View = std::u16string_view;

void AppendItem(std::u16string& output, const char16_t* format, const ResultDataFields& item)
{
    std::array<std::u16string, 5> numbers;
    for (std::size_t word = 0; word < item.words.size(); ++word) Ulmo::AppendUnsigned(numbers[word], item.words[word]);
    Ulmo::AppendUnsigned(numbers[4], item.number);
    const View arguments[] = {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], item.name};
    Ulmo::Text::Format(format, output, arguments);
}

// Reads like a wide text stream of C++: skips leading blanks, reads decimal numbers, and fails for a number that does
// not fit its type.
class NumberStream {
public:
    explicit NumberStream(View text) : rest_(text) {}

    // A minus sign wraps, as it does for unsigned numbers of a stream.
    bool Read(std::uint16_t& number)
    {
        const std::optional<Digits> digits = ReadDigits();
        if (!digits || digits->magnitude > std::numeric_limits<std::uint16_t>::max()) return false;
        number = static_cast<std::uint16_t>(digits->negative ? 0 - digits->magnitude : digits->magnitude);
        return true;
    }

    bool Read(std::int32_t& number)
    {
        const std::optional<Digits> digits = ReadDigits();
        if (!digits || digits->magnitude > 0x7FFFFFFFu + (digits->negative ? 1 : 0)) return false;
        const auto magnitude = static_cast<std::int64_t>(digits->magnitude);
        number = static_cast<std::int32_t>(digits->negative ? -magnitude : magnitude);
        return true;
    }

    View Rest() const { return rest_; }

private:
    struct Digits {
        std::uint64_t magnitude;
        bool negative;
    };

    std::optional<Digits> ReadDigits()
    {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(u" \t\n\v\f\r"), rest_.size()));
        Digits digits{0, rest_.starts_with(u'-')};
        if (digits.negative || rest_.starts_with(u'+')) rest_.remove_prefix(1);
        const std::size_t length = std::min(rest_.find_first_not_of(u"0123456789"), rest_.size());
        if (length == 0) return std::nullopt;
        for (const char16_t digit : rest_.substr(0, length)) {
            if (digits.magnitude > 0xFFFFFFFFu) break;  // too large for every type already
            digits.magnitude = digits.magnitude * 10 + (digit - u'0');
        }
        rest_.remove_prefix(length);
        return digits;
    }

    View rest_;
};

// Takes an item from the front. False leaves the text, but not the item, as it was.
bool ReadItem(View& rest, ResultDataFields& item)
{
    NumberStream stream(rest);
    for (std::uint16_t& word : item.words) {
        if (!stream.Read(word)) return false;
    }
    std::int32_t number = 0;
    if (!stream.Read(number)) return false;
    item.number = static_cast<std::uint32_t>(number);

    const View text = stream.Rest();
    const std::size_t open = text.find(u'\'');
    if (open == text.npos) return false;
    const std::size_t close = text.find(u'\'', open + 1);
    if (close == text.npos) return false;
    item.name = text.substr(open + 1, close - open - 1);
    rest = text.substr(close + 1);
    return true;
}

void Skip(View& text, char16_t unit)
{
    text.remove_prefix(std::min(text.find_first_not_of(unit), text.size()));
}

}  // namespace

void AppendInternalItem(std::u16string& list, const ResultDataFields& item)
{
    if (!list.empty()) list += u", ";
    AppendItem(list, u"{0} {1} {2} {3} {4} '{5}'", item);
}

void AppendLiteralList(std::u16string& output, View internalForm)
{
    output += u"{ ";
    View separator;
    for (const ResultDataFields& item : ParseInternalForm(internalForm)) {
        output += separator;
        output += u"{ ";
        AppendItem(output, u"{0}, {1}, {2}, {3}, {4}, \"{5}\"", item);
        output += u" }";
        separator = u", ";
    }
    output += u" }";
}

std::vector<ResultDataFields> ParseInternalForm(View text)
{
    std::vector<ResultDataFields> items;
    ResultDataFields item;
    // Separators between items may be missing.
    for (View rest = text; !rest.empty() && ReadItem(rest, item);) {
        items.push_back(item);
        Skip(rest, u' ');
        Skip(rest, u',');
        Skip(rest, u' ');
    }
    return items;
}

void TOrvParameter::SetResultDataSet(const TOrvResultDataItem* items, std::size_t count)
{
    std::u16string text;
    for (std::size_t index = 0; index < count; ++index) {
        const TOrvResultDataItem& item = items[index];
        AppendInternalItem(text, {{item.field0, item.field1, static_cast<std::uint16_t>(item.field2),
                                   static_cast<std::uint16_t>(item.field3)},
                                  static_cast<std::uint32_t>(item.field4),
                                  ViewOf(item.name)});
    }
    SetResultDataText(text);
}

bool TOrvParameter::ReadResultDataSet(TOrvResultDataList& list)
{
    if (kind_ != ORV_KIND_ResultDataSet) return false;
    const Ulmo::CriticalSectionGuard guard(Lock());
    const std::vector<ResultDataFields> parsed = ParseInternalForm(Wide());
    Side& side = MakeSide();
    if (!parsed.empty() || length_ == 0) {
        Side fresh(nullptr);  // frees what it holds, also when a name cannot be allocated
        fresh.items.reserve(parsed.size());
        for (const ResultDataFields& item : parsed) {
            fresh.items.push_back({item.words[0], item.words[1], static_cast<std::int16_t>(item.words[2]),
                                   static_cast<std::int16_t>(item.words[3]), static_cast<std::int32_t>(item.number),
                                   NewBStr(item.name)});
        }
        side.items.swap(fresh.items);
    }
    list = {side.items.data(), side.items.size()};
    return true;
}

}  // namespace OrvPLC
