#include "text_walk.h"

#include <algorithm>
#include <optional>

namespace {

constexpr std::size_t kNone = std::u16string_view::npos;

bool IsBlank(char16_t unit)
{
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == 0x85 || unit == 0xA0 || unit == 0x1680 ||
           (unit >= 0x2000 && unit <= 0x200A) || unit == 0x2028 || unit == 0x2029 || unit == 0x202F ||
           unit == 0x205F || unit == 0x3000;
}

bool IsDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

// Nearly as the library: beyond ASCII any unit that is no blank and no punctuation counts, since only remarks depend on
// it.
bool IsLetter(char16_t unit)
{
    const char16_t lower = unit | 0x20;
    const bool beyondAscii = unit >= 0xAA && !IsBlank(unit) && (unit < 0x2000 || unit > 0x206F);
    return (lower >= u'a' && lower <= u'z') || beyondAscii;
}

// The end of a tag that begins here, kNone for none.
std::size_t TagEnd(std::u16string_view text, std::size_t at)
{
    const auto behind = [&](std::u16string_view end) {
        const std::size_t found = text.find(end, at);
        return found == kNone ? kNone : found + end.size();
    };
    if (text.substr(at).starts_with(u"<!--")) return behind(u"-->");
    if (text.substr(at).starts_with(u"<![CDATA[")) return behind(u"]]>");
    const char16_t first = at + 1 < text.size() ? text[at + 1] : u'\0';
    if (first != u'?' && first != u'/' && !IsLetter(first)) return kNone;
    for (std::size_t i = at + 1; i < text.size(); ++i) {
        if (text[i] == u'>') return i + 1;
        // A value in quotes may hold a bracket.
        const bool opens = (text[i] == u'"' || text[i] == u'\'') && text[i - 1] == u'=';
        if (opens) i = text.find(text[i], i + 1);
        if (i == kNone || text[i] == u'<') return kNone;
    }
    return kNone;
}

// The double quotes inside markup end no string.
std::u16string Guarded(std::u16string_view text)
{
    std::u16string guarded(text);
    int left = 10'000;  // a text of openings only must not be walked for each of them
    for (std::size_t at = text.find(u'<'); at != kNone && left-- > 0; at = text.find(u'<', at + 1)) {
        const std::size_t end = TagEnd(text, at);
        if (end != kNone) std::replace(guarded.begin() + static_cast<std::ptrdiff_t>(at),
                                       guarded.begin() + static_cast<std::ptrdiff_t>(end), u'"', u'\'');
    }
    return guarded;
}

class Walker {
public:
    explicit Walker(std::u16string_view text) : guarded_(Guarded(text)), text_(guarded_), budget_(64 * text.size() + 64)
    {}

    TextWalk Walk()
    {
        std::size_t at = Header(0, walk_.name);
        // A text that begins with something else has its header at the beginning of a later line.
        for (std::size_t line = 0; at == kNone && (line = text_.find(u'\n', line)) != kNone;) {
            at = Header(++line, walk_.name);
            if (at != kNone) walk_.unread.push_back({{0, line}, false});
        }
        if (at != kNone) Parameters(at);
        if (budget_ == 0) walk_ = {};  // no remarks about a text that was made to be slow
        return std::move(walk_);
    }

private:
    char16_t At(std::size_t at) const { return at < text_.size() ? text_[at] : u'\0'; }

    std::size_t Blanks(std::size_t at)
    {
        while (at < text_.size() && IsBlank(text_[at])) ++at;
        return at;
    }

    std::size_t Digits(std::size_t at) const
    {
        while (IsDigit(At(at))) ++at;
        return at;
    }

    std::size_t Identifier(std::size_t at) const
    {
        if (!IsLetter(At(at))) return kNone;
        while (IsLetter(At(at)) || IsDigit(At(at))) ++at;
        return at;
    }

    // The closing quote of a string that opens here and after which the rest fits. A backslash protects a quote, unless
    // nothing else fits.
    template <class Fits>
    std::size_t Close(std::size_t open, Fits fits)
    {
        std::vector<std::size_t> guarded;
        std::size_t at = open + 1;
        for (; at < text_.size() && text_[at] != u'"'; ++at) {
            if (Spend() && text_[at] == u'\\' && At(at + 1) == u'"') guarded.push_back(at + 1);
            if (text_[at] == u'\\') ++at;
        }
        // The protected ones are tried after that, the last one first, as the library does.
        if (at < text_.size() && fits(at + 1)) return at;
        while (!guarded.empty() && !fits(guarded.back())) guarded.pop_back();
        return guarded.empty() ? kNone : guarded.back();
    }

    bool Spend() { return budget_ > 0 && --budget_ > 0; }

    std::size_t Header(std::size_t at, TextSpan& name)
    {
        at = Blanks(at);
        if (At(at) == u'@' || At(at) == u'!' || At(at) == u'?') at = Blanks(at + 1);
        const auto bracket = [this](std::size_t behind) { return At(Blanks(behind)) == u'('; };
        std::size_t end = kNone;
        if (At(at) == u'"') {
            const std::size_t close = Close(at, bracket);
            if (close == kNone) return kNone;
            name = {at + 1, close};
            end = close + 1;
        } else if ((end = Identifier(at)) == kNone || !bracket(end)) {
            return kNone;
        } else {
            name = {at, end};
        }
        return Blanks(end) + 1;
    }

    void Parameters(std::size_t at)
    {
        for (at = Blanks(at); at < text_.size() && text_[at] != u')' && budget_ > 0; at = Blanks(at)) {
            Spend();
            WalkedParameter parameter;
            const std::size_t behind = Parameter(at, parameter);
            if (behind != kNone && (At(behind) == u',' || At(behind) == u')')) {
                walk_.parameters.push_back(parameter);
                at = behind + (At(behind) == u',');
            } else {
                at = PassOver(at, behind, parameter);
            }
        }
        if (At(at) != u')') return;
        walk_.sound = true;
        const std::size_t rest = Blanks(at + 1);
        if (rest == text_.size()) return;
        std::size_t end = text_.size();
        while (IsBlank(text_[end - 1])) --end;
        walk_.behind = {rest, end};
        TextSpan name;
        walk_.secondAction = Header(rest, name) != kNone;
    }

    // A parameter that nothing ends is skipped as a whole, else a token.
    std::size_t PassOver(std::size_t at, std::size_t behind, const WalkedParameter& parameter)
    {
        std::size_t end = at + 1;
        if (behind != kNone) {
            end = parameter.value.end;
        } else if (const std::size_t word = Identifier(at); word != kNone) {
            end = word;
        } else if (At(at) == u'"') {
            const std::size_t close = Close(at, [](std::size_t) { return true; });
            end = close == kNone ? text_.size() : close + 1;
        } else if (IsDigit(At(at))) {
            end = Digits(at);
        }
        std::vector<UnreadText>& unread = walk_.unread;
        if (behind == kNone && !unread.empty() && Blanks(unread.back().span.end) == at && !unread.back().lacksComma) {
            unread.back().span.end = end;
        } else {
            unread.push_back({{at, end}, behind != kNone});
        }
        return end;
    }

    // After the value and the blanks that follow it; kNone when there is no parameter.
    std::size_t Parameter(std::size_t at, WalkedParameter& parameter)
    {
        std::size_t value = at;
        const std::size_t word = Identifier(at);
        const auto colon = [this](std::size_t behind) { return At(Blanks(behind)) == u':'; };
        if (word != kNone && colon(word)) {
            parameter.name = {at, word};
            value = Blanks(word) + 1;
        } else if (At(at) == u'"') {
            const std::size_t close = Close(at, colon);
            if (close != kNone) {
                parameter.name = {at + 1, close};
                value = Blanks(close + 1) + 1;
            }
        }
        value = Blanks(value);
        const std::size_t end = Value(value, parameter.form);
        parameter.value = {value, end};
        const bool named = parameter.name.end > 0;
        return end == kNone || (parameter.form == TextForm::Word && !named) ? kNone : Blanks(end);
    }

    std::size_t Value(std::size_t at, TextForm& form)
    {
        if (At(at) == u'"') return String(at, form);
        if (At(at) == u'{') return Braces(at, form);
        if (const std::size_t word = Identifier(at); word != kNone) {
            form = TextForm::Word;
            return word;
        }
        return Number(at, form);
    }

    std::size_t String(std::size_t at, TextForm& form)
    {
        form = TextForm::String;
        const std::size_t close = Close(at, [this](std::size_t behind) {
            const char16_t next = At(Blanks(behind));
            return next == u',' || next == u')' || next == u'}';
        });
        // Nothing fits after it: where it would end if the text were sound.
        const std::size_t any = close != kNone ? close : Close(at, [](std::size_t) { return true; });
        return any == kNone ? kNone : any + 1;
    }

    std::size_t Number(std::size_t at, TextForm& form)
    {
        if (At(at) == u'+' || At(at) == u'-') ++at;
        const std::size_t whole = Digits(at);
        std::size_t end = whole;
        form = TextForm::Integer;
        const auto exponent = [this](std::size_t from, bool sign) {
            std::size_t digits = from + 1;
            if (sign && (At(digits) == u'+' || At(digits) == u'-')) ++digits;
            const bool has = (At(from) | 0x20) == u'e' && Digits(digits) > digits;
            return has ? Digits(digits) : from;
        };
        if (At(whole) == u'.') {
            end = Digits(whole + 1);
            if (end == whole + 1 && whole == at) return kNone;  // a point alone
            if (whole > at) end = exponent(end, true);
        } else {
            if (whole == at) return kNone;
            end = exponent(whole, false);
        }
        if (end != whole) form = TextForm::Real;
        return end;
    }

    // The content decides what kind of braces these are: "nns" for two numbers and a string.
    std::size_t Braces(std::size_t at, TextForm& form)
    {
        std::string signature;
        const std::size_t end = Items(at, signature, 0);
        if (end == kNone) return kNone;
        struct Row {
            const char* signature;
            TextForm form;
        };
        constexpr Row kRows[] = {{"nnnn", TextForm::Rect},
                                 {"nns", TextForm::Channel},
                                 {"ns", TextForm::EventType},
                                 {"ss", TextForm::Resource}};
        for (const Row& row : kRows) {
            if (signature != row.signature) continue;
            form = row.form;
            return end;
        }
        form = TextForm::ResultData;
        const bool items = !signature.empty() && signature.find_first_not_of('l') == std::string::npos;
        return items ? end : kNone;
    }

    std::size_t Items(std::size_t at, std::string& signature, int depth)
    {
        for (at = Blanks(at + 1);;) {
            std::size_t end = kNone;
            std::string inner;
            if (IsDigit(At(at))) {
                end = Digits(at);
                signature += 'n';
            } else if (At(at) == u'"') {
                TextForm form{};
                end = String(at, form);
                signature += 's';
            } else if (At(at) == u'{' && depth == 0) {
                end = Items(at, inner, 1);
                if (inner != "nnnnns") return kNone;
                signature += 'l';
            }
            if (end == kNone) return kNone;
            at = Blanks(end);
            const bool comma = At(at) == u',';
            if (comma) at = Blanks(at + 1);
            if (At(at) == u'}') return !comma || signature.back() == 'l' ? at + 1 : kNone;
            if (!comma && signature.back() != 'l') return kNone;
        }
    }

    std::u16string guarded_;
    std::u16string_view text_;
    std::size_t budget_;
    TextWalk walk_;
};

}  // namespace

TextWalk WalkText(std::u16string_view text)
{
    return Walker(text).Walk();
}
