// Reads one action from the sibling product's text: `CameraOn (5)`, `SystemError (3, 12, WindowsError: 5)`.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "bridge/converters.h"
#include "forms/text_scanner.h"
#include "objects/action.h"

namespace HeskPLC {

// One field of the text: its key, and the parts of the one kind of value that it has. Parts of other kinds are empty.
class ActionTextToken {
public:
    using Form = OrvPLC::FieldMatch::Form;

    explicit ActionTextToken(const OrvPLC::FieldMatch& found) : found_(found) {}

    std::u16string_view Key() const { return found_.name; }
    std::u16string_view Integer() const { return Part(Form::Integer, 0); }
    std::u16string_view String() const { return Part(Form::String, 0); }
    std::u16string_view Part(Form form, std::size_t part) const
    {
        return found_.form == form ? found_.parts[part] : std::u16string_view();
    }

private:
    OrvPLC::FieldMatch found_;
};

// One reading of a text, which outlives the parser.
class ActionTextParser {
public:
    // No action has this many fields. Further fields are checked and dropped, so that a long text costs no memory.
    static constexpr std::size_t kMostTokens = 32;

    explicit ActionTextParser(std::u16string_view text) : scanner_(text, OrvPLC::TextDialect::Sibling) {}

    // The action, or null for a text that is not an action, has a prefix or has no counterpart here. Raises
    // EUlmoDateTime for a text that should be a date, SystemException if the system cannot compare names.
    OrvPLC::ObjectPtr<OrvPLC::TOrvAction> Parse();

    // For the reading of one action's fields.
    const ActionTextToken* Current() const { return cursor_ < tokens_.size() ? &tokens_[cursor_] : nullptr; }
    void Advance() { ++cursor_; }  // also past the last token
    // Calls visit(token) for each field of the text. The result is whether the closing bracket follows the last one.
    template <class Visit>
    bool ForEachToken(Visit&& visit)
    {
        OrvPLC::FieldMatch found;
        scanner_.GoTo(fields_);
        while (scanner_.FindField(found)) visit(ActionTextToken(found));
        return scanner_.FindClose();
    }

private:
    bool Split();

    OrvPLC::TextScanner scanner_;
    std::u16string_view name_;
    std::size_t fields_ = 0;  // the place after the opening bracket
    std::vector<ActionTextToken> tokens_;
    std::size_t cursor_ = 0;
};

// Takes the field's value from the token at the cursor, if there is one and its key fits.
void ReadField(ActionTextParser& parser, OrvPLC::TOrvAction& action, const Field& field);
void ReadFields(ActionTextParser& parser, OrvPLC::TOrvAction& action, std::span<const FieldRow> fields);

}  // namespace HeskPLC
