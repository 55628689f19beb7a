#include "judge/pattern_reader.h"

#include <algorithm>

#include "judge/patterns.h"

namespace OrvPLC::Judge {

namespace {

using View = std::u16string_view;
using Form = FieldMatch::Form;

// The groups of one form of value, after those of the name.
struct FormGroups {
    Form form;
    std::size_t first;  // group
    std::size_t count;
    std::size_t tested;  // the group whose presence shows the form
};

constexpr FormGroups kOwnForms[] = {{Form::Integer, 3, 1, 3},    {Form::Float, 4, 1, 4},
                                    {Form::String, 5, 1, 5},     {Form::Rect, 6, 4, 6},
                                    {Form::Channel, 10, 3, 11},  {Form::EventType, 13, 2, 13},
                                    {Form::Resource, 15, 2, 15}, {Form::ResultData, 17, 1, 17}};
constexpr FormGroups kSiblingForms[] = {
    {Form::Integer, 2, 1, 2},  {Form::Float, 3, 1, 3},       {Form::String, 4, 1, 4},    {Form::Rect, 5, 4, 5},
    {Form::Channel, 9, 3, 10}, {Form::EventType, 12, 2, 12}, {Form::Resource, 14, 2, 14}};

bool FitsWhole(const Expression& expression, View text)
{
    return PatternSearch(text.size()).FitsWhole(expression, text);
}

template <std::size_t count>
void TakeForm(const PatternSearch& search, const FormGroups (&forms)[count], FieldMatch& match)
{
    match.form = Form::String;
    match.parts = {};
    for (const FormGroups& groups : forms) {
        if (search[groups.tested].empty()) continue;
        match.form = groups.form;
        for (std::size_t part = 0; part < groups.count; ++part) match.parts[part] = search[groups.first + part];
        return;
    }
}

void ReplaceAll(std::u16string& text, View from, View to)
{
    for (std::size_t at = text.find(from); at != text.npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

}  // namespace

PatternScanner::PatternScanner(View text, TextDialect dialect)
    : search_(text.size()), text_(text), rest_(text), dialect_(dialect)
{}

bool PatternScanner::Find(const Expression& expression)
{
    if (!search_.Find(expression, rest_)) return false;
    rest_ = search_.Rest();
    return true;
}

bool PatternScanner::FindHeader(HeaderMatch& match)
{
    const bool own = dialect_ == TextDialect::Own;
    if (!Find(own ? OwnPatterns().header : SiblingPatterns().head)) return false;
    match.prefix = search_[1];
    match.name = own && search_[2].empty() ? search_[3] : search_[2];
    return true;
}

bool PatternScanner::FindField(FieldMatch& match)
{
    const bool own = dialect_ == TextDialect::Own;
    if (!Find(own ? OwnPatterns().parameter : SiblingPatterns().field)) return false;
    if (own) {
        match.name = search_[1].empty() ? search_[2] : search_[1];
        TakeForm(search_, kOwnForms, match);
    } else {
        match.name = search_[1];
        TakeForm(search_, kSiblingForms, match);
    }
    return true;
}

bool PatternScanner::FindClose()
{
    return Find(dialect_ == TextDialect::Own ? OwnPatterns().close : SiblingPatterns().tail);
}

bool PatternScanner::FindResultItem(ResultItemMatch& match)
{
    if (!Find(OwnPatterns().resultDataItem)) return false;
    for (std::size_t number = 0; number < match.numbers.size(); ++number) match.numbers[number] = search_[number + 1];
    match.name = search_[6];
    return true;
}

bool HasGuidForm(View text)
{
    return text.size() == 36 && FitsWhole(OwnPatterns().guid, text);
}

bool HasDateTimeForm(View text)
{
    return text.size() == 33 && FitsWhole(OwnPatterns().dateTime, text);
}

bool IsActionIdentifier(View text)
{
    return FitsWhole(OwnPatterns().identifier, text);
}

std::vector<View> FindTags(View text)
{
    std::vector<View> tags;
    PatternSearch search(text.size());
    for (View rest = text; search.Find(OwnPatterns().markupTag, rest); rest = search.Rest()) tags.push_back(search[0]);
    return tags;
}

PlainGuard::PlainGuard(std::u16string text) : text_(std::move(text))
{
    if (text_.starts_with(u'<') || text_.starts_with(u'>')) return;
    for (const View tag : FindTags(text_)) {
        if (tag.find(u'"') == tag.npos) continue;
        const auto isSame = [tag](const auto& pair) { return pair.first == tag; };
        if (std::any_of(tags_.begin(), tags_.end(), isSame)) continue;
        std::u16string guarded(tag);
        std::replace(guarded.begin(), guarded.end(), u'"', u'\'');
        tags_.emplace_back(tag, guarded);
    }
    for (const auto& [written, guarded] : tags_) ReplaceAll(text_, written, guarded);
}

void PlainGuard::Restore(std::u16string& value)
{
    std::erase_if(tags_, [&value](const auto& pair) {
        const auto& [written, guarded] = pair;
        if (value.find(guarded) == value.npos) return false;
        ReplaceAll(value, guarded, written);
        return true;
    });
}

}  // namespace OrvPLC::Judge
