#include "forms/markup_tags.h"

#include "forms/text_steps.h"
#include "ulmo/unit_search.h"

namespace OrvPLC {

namespace {

using View = std::u16string_view;

bool IsAsciiLetter(char16_t unit)
{
    return static_cast<unsigned>((unit | 0x20) - u'a') < 26;
}

bool LetterAt(View text, std::size_t at)
{
    return at < text.size() && IsAsciiLetter(text[at]);
}

std::size_t SkipName(View text, std::size_t at)
{
    while (at < text.size() && (Ulmo::IsWord(text[at]) || text[at] == u':' || text[at] == u'-')) ++at;
    return at;
}

}  // namespace

MarkupTags::MarkupTags(View text) : text_(text)
{
    const std::size_t last = text.rfind(u'>');
    lastEnd_ = last == text.npos ? 0 : last + 1;
}

bool MarkupTags::Next(View& tag)
{
    while (place_ < lastEnd_) {
        const std::size_t bracket = Ulmo::FindUnit(text_, u'<', place_);
        if (bracket >= lastEnd_) break;
        const std::size_t end = TagEnd(bracket);
        place_ = end != kNone ? end : bracket + 1;
        if (end == kNone) continue;
        tag = Between(text_, bracket, end);
        return true;
    }
    place_ = text_.size();
    return false;
}

// The place behind the tag whose bracket stands here, kNone when none begins.
std::size_t MarkupTags::TagEnd(std::size_t bracket)
{
    const std::size_t at = bracket + 1;
    if (StandsAt(text_, at, u'/')) return ClosingTagEnd(at + 1);
    if (StandsAt(text_, at, u'!')) return DeclarationEnd(at);
    if (LetterAt(text_, at) || StandsAt(text_, at, u'?')) return NamedTagEnd(SkipName(text_, at + 1));
    return kNone;
}

std::size_t MarkupTags::ClosingTagEnd(std::size_t name) const
{
    if (!LetterAt(text_, name)) return kNone;
    const std::size_t end = SkipBlanks(text_, SkipName(text_, name + 1));
    return StandsAt(text_, end, u'>') ? end + 1 : kNone;
}

std::size_t MarkupTags::DeclarationEnd(std::size_t mark)
{
    constexpr View kComment = u"!--";
    constexpr View kData = u"![CDATA[";
    const View here = text_.substr(mark);
    if (here.starts_with(kComment)) return EndBehind(commentEnd_, mark + kComment.size());
    return here.starts_with(kData) ? EndBehind(dataEnd_, mark + kData.size()) : kNone;
}

std::size_t MarkupTags::EndBehind(Landmark& landmark, std::size_t from)
{
    if (landmark.at < from || landmark.at == 0) landmark.at = text_.find(landmark.what, from);
    return landmark.at == kNone ? kNone : landmark.at + landmark.what.size();
}

// Attributes need a blank behind the name; without one the tag ends there.
std::size_t MarkupTags::NamedTagEnd(std::size_t behindName)
{
    if (behindName >= text_.size() || !Ulmo::IsSpace(text_[behindName])) {
        const std::size_t end =
            StandsAt(text_, behindName, u'/') || StandsAt(text_, behindName, u'?') ? behindName + 1 : behindName;
        return StandsAt(text_, end, u'>') ? end + 1 : kNone;
    }
    if (!walksAttributes_) {
        // Once for all tags of the text: what failed from a place fails for a later tag as well.
        attributes_ = names_ = bareValues_ = Visited(text_.size());
        walksAttributes_ = true;
    }
    choices_.clear();
    Add(Choice::Kind::Attribute, 0, behindName + 1);
    while (!choices_.empty()) {
        const Choice choice = choices_.back();
        choices_.pop_back();
        const std::size_t end = Try(choice);
        if (end != kNone) return end;
    }
    return kNone;
}

// Tries a choice: gives the end of the tag, or adds what has to be tried next, the first to be tried last.
std::size_t MarkupTags::Try(const Choice& choice)
{
    switch (choice.kind) {
    case Choice::Kind::Attribute: return TryAttribute(choice.last);
    case Choice::Kind::AttributeName: TryAttributeName(choice.last); break;
    case Choice::Kind::ProtectedQuote: TryProtectedQuotes(choice); break;
    case Choice::Kind::BareValue: TryBareValue(choice.last); break;
    case Choice::Kind::BareValueEnd:
        // The shorter end goes in first, so it is tried after all that follows the longer one.
        if (choice.last > choice.first) Add(Choice::Kind::BareValueEnd, choice.first, choice.last - 1);
        Add(Choice::Kind::Attribute, 0, choice.last);
        break;
    }
    return kNone;
}

// A name that is cut short would begin the next attribute with its rest and end where it ends, so names are whole.
std::size_t MarkupTags::TryAttribute(std::size_t at)
{
    if (!attributes_.Enter(at)) return kNone;
    at = SkipBlanks(text_, at);
    if (LetterAt(text_, at)) {
        Add(Choice::Kind::AttributeName, 0, SkipName(text_, at + 1));
        return kNone;
    }
    if (StandsAt(text_, at, u'/') || StandsAt(text_, at, u'?')) ++at;
    return StandsAt(text_, at, u'>') ? at + 1 : kNone;
}

void MarkupTags::TryAttributeName(std::size_t behind)
{
    if (!names_.Enter(behind)) return;
    const std::size_t equals = SkipBlanks(text_, behind);
    if (!StandsAt(text_, equals, u'=')) return Add(Choice::Kind::Attribute, 0, behind);
    const std::size_t value = equals + 1;
    if (value < text_.size() && !Ulmo::IsSpace(text_[value]) && text_[value] != u'>') {
        Add(Choice::Kind::BareValue, 0, value);
    }
    const std::size_t quote = SkipBlanks(text_, value);
    if (StandsAt(text_, quote, u'"') || StandsAt(text_, quote, u'\'')) TryQuotedValue(quote);
}

// A value in quotes ends at the first quote that follows no backslash, else at one that does, the last one first.
void MarkupTags::TryQuotedValue(std::size_t open)
{
    const char16_t mark = text_[open];
    std::size_t close = Ulmo::FindUnit(text_, mark, open + 1);
    bool isProtected = false;
    for (; close != kNone && close > open + 1 && text_[close - 1] == u'\\';
         close = Ulmo::FindUnit(text_, mark, close + 1)) {
        isProtected = true;
    }
    if (isProtected) Add(Choice::Kind::ProtectedQuote, open + 1, close == kNone ? text_.size() : close);
    if (close != kNone) Add(Choice::Kind::Attribute, 0, close + 1);
}

void MarkupTags::TryProtectedQuotes(const Choice& choice)
{
    const char16_t mark = text_[choice.first - 1];
    std::size_t quote = choice.last;
    do {
        if (quote == choice.first) return;
    } while (text_[--quote] != mark);
    Add(Choice::Kind::ProtectedQuote, choice.first, quote);
    Add(Choice::Kind::Attribute, 0, quote + 1);
}

// A value without quotes goes to the next blank or closing bracket, or is shorter. Ends that were tried for a value
// that begins further left are not tried again.
void MarkupTags::TryBareValue(std::size_t first)
{
    std::size_t end = first;
    while (end < text_.size() && !Ulmo::IsSpace(text_[end]) && text_[end] != u'>' && bareValues_.Enter(end + 1)) ++end;
    if (end > first) Add(Choice::Kind::BareValueEnd, first + 1, end);
}

}  // namespace OrvPLC
