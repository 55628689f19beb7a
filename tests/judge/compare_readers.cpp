#include "judge/compare_readers.h"

#include <cstdio>
#include <stdexcept>

#include "forms/describe.h"
#include "forms/markup_guard.h"
#include "forms/markup_tags.h"
#include "forms/special_forms.h"
#include "forms/text_parser.h"
#include "forms/text_pieces.h"
#include "forms/text_value.h"
#include "judge/pattern_reader.h"
#include "objects/match_action.h"
#include "ulmo/exceptions.h"

namespace OrvPLC::Judge {

namespace {

using View = std::u16string_view;

std::string Shown(View text)
{
    std::string shown;
    for (const char16_t unit : text) {
        if (unit >= 0x20 && unit < 0x7F) {
            shown += static_cast<char>(unit);
        } else {
            char code[8];
            std::snprintf(code, sizeof code, "\\x%04X", static_cast<unsigned>(unit));
            shown += code;
        }
    }
    return shown;
}

// Two accounts of one reading, a line a step.
class Account {
public:
    void Add(std::string_view step, std::size_t number = 0)
    {
        text_ += step;
        text_ += ' ';
        text_ += std::to_string(number);
        text_ += '\n';
    }
    void Add(std::string_view step, View text)
    {
        text_ += step;
        text_ += " '" + Shown(text) + "'\n";
    }
    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

// An empty string has no group that shows its form, nor has a resource without the text of its guid.
FieldMatch Normal(FieldMatch match)
{
    if (match.form == FieldMatch::Form::Resource && match.parts[0].empty()) {
        match.form = FieldMatch::Form::String;
        match.parts = {};
    }
    return match;
}

template <class Scanner>
void TellItems(View list, Account& account)
{
    Scanner scanner(list);
    for (ResultItemMatch item; scanner.FindResultItem(item);) {
        for (const View number : item.numbers) account.Add("item", number);
        account.Add("item", item.name);
        account.Add("after the item", scanner.Place());
    }
}

template <class Scanner>
void TellFields(Scanner& scanner, Account& account)
{
    for (FieldMatch found; scanner.FindField(found);) {
        const FieldMatch field = Normal(found);
        account.Add("name", field.name);
        account.Add("form", static_cast<std::size_t>(field.form));
        for (const View part : field.parts) account.Add("part", part);
        account.Add("after the field", scanner.Place());
        if (field.form == FieldMatch::Form::ResultData) TellItems<Scanner>(field.parts[0], account);
    }
    account.Add("closes", scanner.FindClose());
    account.Add("after all", scanner.Place());
}

template <class Scanner>
void Tell(View text, TextDialect dialect, Account& account)
{
    Scanner scanner(text, dialect);
    HeaderMatch header;
    const bool found = scanner.FindHeader(header);
    account.Add("header", found);
    if (found) {
        account.Add("prefix", header.prefix);
        account.Add("name", header.name);
        account.Add("after the header", scanner.Place());
    }
    TellFields(scanner, account);
    TellItems<Scanner>(text, account);
}

void TellByScanner(View text, Account& account)
{
    MarkupTags tags(text);
    for (View tag; tags.Next(tag);) account.Add("tag", tag);
    const MarkupGuard guard(text);
    account.Add("guarded", guard.Text());
    Tell<TextScanner>(guard.Text(), TextDialect::Own, account);
    Tell<TextScanner>(text, TextDialect::Sibling, account);
    account.Add("forms", (OrvPLC::HasGuidForm(text) ? 1u : 0u) + (OrvPLC::HasDateTimeForm(text) ? 2u : 0u) +
                             (OrvPLC::IsActionIdentifier(text) ? 4u : 0u));
}

void TellByPatterns(View text, Account& account)
{
    for (const View tag : FindTags(text)) account.Add("tag", tag);
    const PlainGuard guard{std::u16string(text)};
    account.Add("guarded", guard.Text());
    Tell<PatternScanner>(guard.Text(), TextDialect::Own, account);
    Tell<PatternScanner>(text, TextDialect::Sibling, account);
    account.Add("forms", (HasGuidForm(text) ? 1u : 0u) + (HasDateTimeForm(text) ? 2u : 0u) +
                             (IsActionIdentifier(text) ? 4u : 0u));
}

// A value by the rules of the language, each group tested for presence in their order.
void SetValue(const FieldMatch& found, PlainGuard& guard, TOrvParameter& value)
{
    using Form = FieldMatch::Form;
    if (found.form == Form::String && !HasGuidForm(found.parts[0]) && !HasDateTimeForm(found.parts[0])) {
        std::u16string restored(found.parts[0]);
        guard.Restore(restored);
        return value.SetString(restored);
    }
    MarkupGuard none(u"");
    ReadTextValue(found, none, value);
}

std::string ReadByPatterns(View text)
{
    PlainGuard guard{std::u16string(text)};
    PatternScanner scanner(guard.Text());
    HeaderMatch header;
    if (!scanner.FindHeader(header) || header.name.empty()) return "none 0";
    const std::string behindHeader = std::to_string(scanner.Place());
    if (header.prefix == u"?" || header.prefix == u"!") return "none " + behindHeader;
    const bool matches = header.prefix == u"@";
    ObjectPtr<TOrvAction> action(matches ? TOrvMatchAction::Create(header.name) : TOrvAction::Create(header.name));
    for (FieldMatch field; scanner.FindField(field);) {
        TOrvParameter value;
        SetValue(field, guard, value);
        const TOrvActionInternalInfo* entry = action->Entry();
        for (std::size_t i = 0; entry && !field.name.empty() && i < entry->Parameters.size(); ++i) {
            const TOrvParameterInternalInfo& info = entry->Parameters[i];
            if (Ulmo::LowerCase(field.name) != info.LowerName.view()) continue;
            value.Retype(info.Type, info.EnumType);
            break;
        }
        if (matches && Ulmo::LowerCase(field.name) == u"comment") {
            static_cast<TOrvMatchAction&>(*action).TakeDescription(SharedName::Copy(field.name), std::move(value));
        } else {
            action->Parameters().Put(field.name, std::move(value));
        }
    }
    if (!scanner.FindClose()) return "none " + std::to_string(scanner.Place());
    return Describe(*action) + " " + std::to_string(scanner.Place());
}

std::string ReadByScanner(View text)
{
    const ParsedText parsed = ParseActionText(text, ORV_EXPECT_ANY);
    return (parsed.object ? Describe(*parsed.object) : "none") + " " + std::to_string(parsed.consumed);
}

// What a reading gives, or how it fails. Raises std::runtime_error only if the engine gives up.
template <class Read>
std::string Outcome(Read read, View text)
{
    try {
        return read(text);
    } catch (const Ulmo::UlmoException& failure) {
        return "raised " + Ulmo::Utf8FromWide(failure.WideMessage());
    }
}

Comparison Compare(const std::string& byScanner, const std::string& byPatterns)
{
    if (byScanner == byPatterns) return {};
    return {Verdict::Differs, "by the scanner:\n" + byScanner + "\nby the patterns:\n" + byPatterns};
}

}  // namespace

Comparison CompareSteps(View text)
{
    Account byScanner;
    TellByScanner(text, byScanner);
    Account byPatterns;
    try {
        TellByPatterns(text, byPatterns);
    } catch (const std::runtime_error&) {
        return {Verdict::Undecided, {}};
    }
    return Compare(byScanner.Text(), byPatterns.Text());
}

Comparison CompareReadings(View text)
{
    const std::string byScanner = Outcome(ReadByScanner, text);
    try {
        return Compare(byScanner, Outcome(ReadByPatterns, text));
    } catch (const std::runtime_error&) {
        return {Verdict::Undecided, {}};
    }
}

}  // namespace OrvPLC::Judge
