#include "forms/text_scanner.h"

#include "forms/result_list_walk.h"
#include "forms/text_steps.h"
#include "ulmo/unit_search.h"

namespace OrvPLC {

namespace {

using View = std::u16string_view;
using Form = FieldMatch::Form;

// What `^` takes for the end of a line.
bool EndsLine(char16_t unit)
{
    return unit == u'\n' || unit == u'\r' || unit == u'\f' || unit == u'\x85' || unit == u'\u2028' || unit == u'\u2029';
}

bool IsSign(char16_t unit)
{
    return unit == u'+' || unit == u'-';
}

bool IsExponentMark(View text, std::size_t at)
{
    return StandsAt(text, at, u'e') || StandsAt(text, at, u'E');
}

// Behind the digits of an exponent, with or without a sign; kNone when there are none.
std::size_t SkipExponent(View text, std::size_t at, bool mayHaveSign)
{
    if (mayHaveSign && at < text.size() && IsSign(text[at])) ++at;
    const std::size_t behind = SkipDigits(text, at);
    return behind > at ? behind : text.npos;
}

}  // namespace

TextScanner::TextScanner(View text, TextDialect dialect) : text_(text), dialect_(dialect)
{}

TextScanner::~TextScanner() = default;

void TextScanner::GoTo(std::size_t place)
{
    place_ = place;
    failedName_ = failedDigits_ = 0;
}

// The closing quote of the string that opens here, chosen so that `follow` accepts what comes after it. kNone if there
// is none.
template <class Follow>
std::size_t TextScanner::CloseOf(std::size_t open, FailedStrings& failed, Follow follow)
{
    if (open >= failed.from && open < failed.to) return kNone;
    StringCloses closes(text_, open,
                        dialect_ == TextDialect::Own ? Backslash::MayStandAlone : Backslash::ProtectsTheNextOne);
    for (std::size_t close = closes.Next(); close != kNone; close = closes.Next()) {
        if (!follow(close + 1)) continue;
        // All closing quotes between the two were tried and rejected, so no string that opens between them closes.
        if (closes.WentBack()) failed = {close, closes.LastPlace()};
        return close;
    }
    failed = {open, closes.LastPlace()};
    return kNone;
}

// Tries at the current place and at the beginning of each later line, blanks before it skipped. A line that begins
// within those blanks would try the same again.
template <class At>
bool TextScanner::FindAtLine(At at)
{
    for (std::size_t line = place_;;) {
        const std::size_t first = SkipBlanks(text_, line);
        const std::size_t behind = at(first);
        if (behind != kNone) {
            place_ = behind;
            return true;
        }
        std::size_t end = first;
        while (end < text_.size() && !EndsLine(text_[end])) ++end;
        if (end == text_.size()) return false;
        line = end + 1;
    }
}

bool TextScanner::FindHeader(HeaderMatch& match)
{
    return FindAtLine([&](std::size_t at) { return HeaderAt(at, match); });
}

bool TextScanner::FindClose()
{
    return FindAtLine([this](std::size_t at) { return StandsAt(text_, at, u')') ? at + 1 : kNone; });
}

std::size_t TextScanner::HeaderAt(std::size_t at, HeaderMatch& match)
{
    if (at >= text_.size()) return kNone;
    match.prefix = {};
    if (text_[at] == u'@' || text_[at] == u'!' || text_[at] == u'?') {
        match.prefix = text_.substr(at, 1);
        at = SkipBlanks(text_, at + 1);
        if (at >= text_.size()) return kNone;
    }
    std::size_t bracket = kNone;
    const auto bracketFollows = [&](std::size_t behind) {
        bracket = SkipBlanks(text_, behind);
        return StandsAt(text_, bracket, u'(');
    };
    if (Ulmo::IsAlpha(text_[at])) {
        const std::size_t behind = SkipLettersAndDigits(text_, at);
        if (!bracketFollows(behind)) return kNone;
        match.name = Between(text_, at, behind);
        return bracket + 1;
    }
    if (text_[at] != u'"' || dialect_ != TextDialect::Own) return kNone;
    const std::size_t close = CloseOf(at, failedHeaders_, bracketFollows);
    if (close == kNone) return kNone;
    match.name = Between(text_, at + 1, close);
    return bracket + 1;
}

bool TextScanner::FindField(FieldMatch& match)
{
    match.name = {};
    match.parts.fill({});
    for (std::size_t at = place_; at < text_.size(); ++at) {
        const std::size_t behind = FieldAt(at, match);
        if (behind == kNone) continue;
        place_ = behind;
        return true;
    }
    return false;
}

// A field whose first character stands here, blanks aside.
std::size_t TextScanner::FieldAt(std::size_t at, FieldMatch& match)
{
    const char16_t unit = text_[at];
    if (unit == u'{') return Braces(at, match);
    if (unit == u'"') {
        const std::size_t behind = dialect_ == TextDialect::Own ? NamedByString(at, match) : kNone;
        return behind != kNone ? behind : String(at, match);
    }
    // A match may begin in the middle of a word, where a name that failed as a whole would fail again.
    if (at >= failedName_ && Ulmo::IsAlpha(unit)) {
        const std::size_t behind = NamedByIdentifier(at, match);
        if (behind != kNone) return behind;
    }
    if (IsSign(unit) || unit == u'.') return Number(at, match);
    if (at < failedDigits_ || !Ulmo::IsDigit(unit)) return kNone;
    const std::size_t behind = Number(at, match);
    if (behind == kNone) failedDigits_ = SkipDigits(text_, at);
    return behind;
}

std::size_t TextScanner::NamedByIdentifier(std::size_t at, FieldMatch& match)
{
    const std::size_t behindName = SkipLettersAndDigits(text_, at);
    const std::size_t behind = ValueAfterColon(behindName, match);
    if (behind != kNone) {
        match.name = Between(text_, at, behindName);
    } else {
        failedName_ = behindName;
    }
    return behind;
}

std::size_t TextScanner::NamedByString(std::size_t at, FieldMatch& match)
{
    std::size_t behind = kNone;
    const std::size_t close = CloseOf(at, failedNames_, [&](std::size_t behindName) {
        behind = ValueAfterColon(behindName, match);
        return behind != kNone;
    });
    if (close == kNone) return kNone;
    match.name = Between(text_, at + 1, close);
    return behind;
}

std::size_t TextScanner::ValueAfterColon(std::size_t at, FieldMatch& match)
{
    at = SkipBlanks(text_, at);
    return StandsAt(text_, at, u':') ? Value(SkipBlanks(text_, at + 1), match) : kNone;
}

// A value with what separates it from the next one; gives the place behind both.
std::size_t TextScanner::Value(std::size_t at, FieldMatch& match)
{
    if (at >= text_.size()) return kNone;
    switch (text_[at]) {
    case u'"': return String(at, match);
    case u'{': return Braces(at, match);
    default: return Number(at, match);
    }
}

// Behind the blanks and the comma that end a value, or at the closing bracket. kNone when neither stands there.
std::size_t TextScanner::Separator(std::size_t at) const
{
    at = SkipBlanks(text_, at);
    if (StandsAt(text_, at, u')')) return at;
    return StandsAt(text_, at, u',') ? SkipBlanks(text_, at + 1) : kNone;
}

std::size_t TextScanner::Number(std::size_t at, FieldMatch& match)
{
    const std::size_t digits = IsSign(text_[at]) ? at + 1 : at;
    const std::size_t behind = SkipDigits(text_, digits);
    const std::size_t next = behind > digits ? Separator(behind) : kNone;
    if (next == kNone) return Float(at, digits, behind, match);
    match.form = Form::Integer;
    match.parts[0] = Between(text_, at, behind);
    return next;
}

// A float whose digits before the point, if any, end before `behind`. Our own text has 1.5 1. .5 1.5e3 1.e3 1e3, with a
// sign only in the exponent of a number with a point; the sibling's has 1.5 and 1.5e3. Deliberate.
std::size_t TextScanner::Float(std::size_t at, std::size_t digits, std::size_t behind, FieldMatch& match)
{
    const bool own = dialect_ == TextDialect::Own;
    std::size_t end = kNone;
    if (StandsAt(text_, behind, u'.')) {
        end = SkipDigits(text_, behind + 1);
        const bool hasWhole = behind > digits;
        const bool hasFraction = end > behind + 1;
        if (own ? !hasWhole && !hasFraction : !hasWhole || !hasFraction) return kNone;
        if (hasWhole && IsExponentMark(text_, end)) end = SkipExponent(text_, end + 1, true);
    } else if (own && behind > digits && IsExponentMark(text_, behind)) {
        end = SkipExponent(text_, behind + 1, false);
    }
    const std::size_t next = end != kNone ? Separator(end) : kNone;
    if (next == kNone) return kNone;
    match.form = Form::Float;
    match.parts[0] = Between(text_, at, end);
    return next;
}

std::size_t TextScanner::String(std::size_t open, FieldMatch& match)
{
    std::size_t next = kNone;
    const std::size_t close = CloseOf(open, failedStrings_, [&](std::size_t behind) {
        next = Separator(behind);
        return next != kNone;
    });
    if (close == kNone) return kNone;
    match.form = Form::String;
    match.parts[0] = Between(text_, open + 1, close);
    return next;
}

std::size_t TextScanner::Braces(std::size_t at, FieldMatch& match)
{
    const std::size_t first = SkipBlanks(text_, at + 1);
    if (StandsAt(text_, first, u'"')) return Resource(first, match);
    if (StandsAt(text_, first, u'{')) return dialect_ == TextDialect::Own ? ResultData(at, match) : kNone;
    const std::size_t next = NumbersInBraces(first, match);
    if (next == kNone) match.parts = {};  // numbers that are no value
    return next;
}

// Four numbers are a rectangle, two and a name a channel, one and a name an event type.
std::size_t TextScanner::NumbersInBraces(std::size_t at, FieldMatch& match)
{
    constexpr std::size_t kOfRect = 4;
    constexpr std::size_t kOfChannel = 2;
    for (std::size_t count = 0; count < kOfRect;) {
        const std::size_t behind = SkipDigits(text_, at);
        if (behind == at) return kNone;
        match.parts[count++] = Between(text_, at, behind);
        at = SkipBlanks(text_, behind);
        if (count == kOfRect) {
            match.form = Form::Rect;
            return StandsAt(text_, at, u'}') ? Separator(at + 1) : kNone;
        }
        if (!StandsAt(text_, at, u',')) return kNone;
        at = SkipBlanks(text_, at + 1);
        if (!StandsAt(text_, at, u'"')) continue;
        if (count > kOfChannel) return kNone;
        match.form = count == kOfChannel ? Form::Channel : Form::EventType;
        return NameBeforeBrace(at, match.parts[count]);
    }
    return kNone;
}

std::size_t TextScanner::Resource(std::size_t open, FieldMatch& match)
{
    View name;
    std::size_t next = kNone;
    const std::size_t close = CloseOf(open, failedGuids_, [&](std::size_t behind) {
        const std::size_t comma = SkipBlanks(text_, behind);
        if (!StandsAt(text_, comma, u',')) return false;
        const std::size_t nameOpen = SkipBlanks(text_, comma + 1);
        next = StandsAt(text_, nameOpen, u'"') ? NameBeforeBrace(nameOpen, name) : kNone;
        return next != kNone;
    });
    if (close == kNone) return kNone;
    match.form = Form::Resource;
    match.parts = {Between(text_, open + 1, close), name, {}, {}};
    return next;
}

// The string that ends a value in braces.
std::size_t TextScanner::NameBeforeBrace(std::size_t open, View& name)
{
    std::size_t next = kNone;
    const std::size_t close = CloseOf(open, failedNamesInBraces_, [&](std::size_t behind) {
        const std::size_t brace = SkipBlanks(text_, behind);
        next = StandsAt(text_, brace, u'}') ? Separator(brace + 1) : kNone;
        return next != kNone;
    });
    if (close != kNone) name = Between(text_, open + 1, close);
    return next;
}

std::size_t TextScanner::ResultData(std::size_t at, FieldMatch& match)
{
    if (!lists_) lists_ = std::make_unique<ResultListWalk>(text_);
    std::size_t next = kNone;
    const std::size_t behind = lists_->EndOf(SkipBlanks(text_, at + 1), [&](std::size_t place) {
        next = Separator(place);
        return next != kNone;
    });
    if (behind == kNone) return kNone;
    match.form = Form::ResultData;
    match.parts[0] = Between(text_, at, behind);
    return next;
}

bool TextScanner::FindResultItem(ResultItemMatch& match)
{
    for (std::size_t at = Ulmo::FindUnit(text_, u'{', place_); at != kNone; at = Ulmo::FindUnit(text_, u'{', at + 1)) {
        const std::size_t open = ResultItemHead(text_, at, match.numbers.data());
        if (open == kNone) continue;
        std::size_t brace = kNone;
        const std::size_t close = CloseOf(open, failedItems_, [&](std::size_t behind) {
            brace = SkipBlanks(text_, behind);
            return StandsAt(text_, brace, u'}');
        });
        if (close == kNone) continue;
        match.name = Between(text_, open + 1, close);
        place_ = brace + 1;
        return true;
    }
    return false;
}

}  // namespace OrvPLC
