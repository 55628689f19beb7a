// Writes an action as the sibling product's text. Nothing is escaped, so a string with a double quote inside does not
// read back the same.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "bridge/converters.h"
#include "objects/action.h"

namespace HeskPLC {

// The converter that writes actions of this name, null if the sibling lacks the action.
const Converter* FindWritingConverter(std::u16string_view actionName);

class ActionTextWriter {
public:
    // Empty for an action without a counterpart. Raises SystemException for a date that cannot be shown. Reading values
    // as text counts as a write to the action.
    std::u16string Write(OrvPLC::TOrvAction& action);

    // For the writing of one action.
    void Begin(std::u16string_view name);
    void WriteFields(OrvPLC::TOrvAction& action, std::span<const FieldRow> fields);
    // A positional field is always written, as 0 or an empty text if the action lacks the parameter; a keyed field is
    // written only if the action has it.
    void WriteField(OrvPLC::TOrvAction& action, const Field& field);
    void WriteLiteral(std::u16string_view field);
    std::u16string Finish();

private:
    void Separate();

    std::u16string output_;
    bool first_ = true;
};

}  // namespace HeskPLC
