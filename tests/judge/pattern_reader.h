// Reads action text as its definition says, by searching for the patterns one after the other. Slow, and it gives up on
// texts that the engine cannot finish; the scanner is compared with it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "forms/text_scanner.h"
#include "judge/expression.h"

namespace OrvPLC::Judge {

// The counterpart of TextScanner. Raises std::runtime_error where the engine gives up.
class PatternScanner {
public:
    explicit PatternScanner(std::u16string_view text, TextDialect dialect = TextDialect::Own);

    bool FindHeader(HeaderMatch& match);
    bool FindField(FieldMatch& match);
    bool FindClose();
    bool FindResultItem(ResultItemMatch& match);

    std::size_t Place() const { return text_.size() - rest_.size(); }

private:
    bool Find(const Expression& expression);

    PatternSearch search_;
    std::u16string_view text_;
    std::u16string_view rest_;
    TextDialect dialect_;
};

bool HasGuidForm(std::u16string_view text);
bool HasDateTimeForm(std::u16string_view text);
bool IsActionIdentifier(std::u16string_view text);

// All tags of a text, front to back.
std::vector<std::u16string_view> FindTags(std::u16string_view text);

// The guard as it is defined: a list of pairs, replaced one after the other.
class PlainGuard {
public:
    explicit PlainGuard(std::u16string text);
    const std::u16string& Text() const { return text_; }
    void Restore(std::u16string& value);

private:
    std::u16string text_;
    std::vector<std::pair<std::u16string, std::u16string>> tags_;  // as written, guarded
};

}  // namespace OrvPLC::Judge
