#include "platform/posix/registry_text.h"

#include <utility>

#include "platform/debug_output.h"
#include "platform/text.h"

namespace Platform {

namespace {

constexpr std::u16string_view kAnyRoot = u"HKEY_";
constexpr std::u16string_view kRoot = u"HKEY_LOCAL_MACHINE\\";

std::u16string_view Trim(std::u16string_view text)
{
    constexpr std::u16string_view kBlanks = u" \t\r";
    const std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::u16string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

// Removes the prefix, in any case.
bool TakePrefix(std::u16string_view& text, std::u16string_view prefix)
{
    if (!EqualIgnoringCase(text.substr(0, prefix.size()), prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

// What a line holds before a comment; not for data in quotes.
std::u16string_view WithoutComment(std::u16string_view text)
{
    return Trim(text.substr(0, text.find(u';')));
}

bool ReadHex(std::u16string_view digits, std::uint32_t& number)
{
    constexpr std::u16string_view kDigits = u"0123456789abcdefABCDEF";
    if (digits.empty() || digits.size() > 8) return false;
    number = 0;
    for (const char16_t digit : digits) {
        const std::size_t place = kDigits.find(digit);
        if (place == std::u16string_view::npos) return false;
        number = number << 4 | static_cast<std::uint32_t>(place < 16 ? place : place - 6);
    }
    return true;
}

}  // namespace

std::vector<RegistryEntry> RegistryReader::Run(std::u16string_view text)
{
    while (!text.empty()) {
        const std::size_t end = text.find(u'\n');
        ++lineNumber_;
        ReadLine(Trim(text.substr(0, end)));
        text.remove_prefix(end == std::u16string_view::npos ? text.size() : end + 1);
    }
    return std::move(found_);
}

void RegistryReader::ReadLine(std::u16string_view line)
{
    if (continued_) {
        continued_ = line.ends_with(u'\\');
    } else if (line.starts_with(u'[')) {
        ReadKey(line);
    } else if (line.starts_with(u'"') || line.starts_with(u'@')) {
        ReadValue(line);
    } else if (!line.empty() && !line.starts_with(u';') && !TakePrefix(line, u"Windows Registry Editor ") &&
               !TakePrefix(line, u"REGEDIT4")) {
        Complain("expected a [key], a \"name\"=value or a comment");
    }
}

void RegistryReader::ReadKey(std::u16string_view line)
{
    inKey_ = false;
    seenKey_ = true;
    // A key may have brackets in its name, so the closing bracket is the one that only a comment may follow.
    std::size_t end = line.find(u']');
    while (end != std::u16string_view::npos && !WithoutComment(line.substr(end + 1)).empty()) {
        end = line.find(u']', end + 1);
    }
    if (end == std::u16string_view::npos) {
        Complain("the key has no closing bracket");
        return;
    }
    std::u16string_view key = line.substr(1, end - 1);
    const bool removed = TakePrefix(key, u"-");
    if (!EqualIgnoringCase(key.substr(0, kAnyRoot.size()), kAnyRoot)) {
        Complain("the key does not begin with a root such as HKEY_LOCAL_MACHINE");
        return;
    }
    const bool ours = TakePrefix(key, kRoot) && EqualIgnoringCase(key, key_);
    inKey_ = ours && !removed;
    if (!ours || !removed) return;
    // A key with a minus sign removes what was said about it so far.
    found_.clear();
    places_.clear();
}

void RegistryReader::ReadValue(std::u16string_view line)
{
    if (!seenKey_) {
        Complain("a value before the first [key]");
        return;
    }
    std::u16string name;
    if (!TakePrefix(line, u"@") && !ReadQuoted(line, name)) return;
    line = Trim(line);
    if (!TakePrefix(line, u"=")) {
        Complain("expected = behind the name");
        return;
    }
    RegistryValue value;
    if (ReadData(Trim(line), value) && inKey_) Keep(std::move(name), std::move(value));
}

void RegistryReader::Keep(std::u16string name, RegistryValue value)
{
    std::u16string lower = name;
    LowerInPlace(lower.data(), lower.size());
    const auto [place, isNew] = places_.try_emplace(std::move(lower), found_.size());
    if (isNew) {
        found_.push_back({std::move(name), std::move(value)});
    } else {
        found_[place->second].value = std::move(value);
    }
}

// Takes a quoted text from the line, in which a backslash comes before quotes and backslashes.
bool RegistryReader::ReadQuoted(std::u16string_view& line, std::u16string& text)
{
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == u'"') {
            line.remove_prefix(i + 1);
            return true;
        }
        // What follows a backslash is taken as it is.
        if (line[i] == u'\\' && i + 1 < line.size()) ++i;
        text += line[i];
    }
    return Complain("the text has no closing quote");
}

// Types that are not needed here are skipped; their bytes may continue in the next lines.
bool RegistryReader::ReadData(std::u16string_view data, RegistryValue& value)
{
    if (TakePrefix(data, u"dword:")) {
        std::uint32_t number = 0;
        if (!ReadHex(WithoutComment(data), number)) return Complain("a dword has one to eight hexadecimal digits");
        value = number;
        return true;
    }
    if (data.starts_with(u'"')) {
        std::u16string text;
        if (!ReadQuoted(data, text)) return false;
        if (!data.empty() && !Trim(data).starts_with(u';')) return Complain("something follows the text");
        value = std::move(text);
        return true;
    }
    if (TakePrefix(data, u"hex")) {
        continued_ = data.ends_with(u'\\');
        return true;
    }
    return WithoutComment(data) == u"-" || Complain("expected dword:, hex: or a text in quotes");
}

bool RegistryReader::Complain(std::string_view what) const
{
    std::string message(fileName_);
    message += ':';
    message += std::to_string(lineNumber_);
    message += ": ";
    message += what;
    std::u16string wide;
    if (ToWide(CodePage::Utf8, message, wide)) WriteDebug(wide);
    return false;
}

}  // namespace Platform
