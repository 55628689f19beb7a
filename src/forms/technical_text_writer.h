// Technical text: the form that the text reader reads back and that configurations and logs store. Nothing is escaped,
// so a string with a double quote inside does not read back the same.
#pragma once

#include <string>

#include "objects/action.h"

namespace OrvPLC {

class TOrvTechnicalTextWriter {
public:
    void Write(const TOrvAction& action);
    std::u16string Take() { return std::move(output_); }

private:
    void WriteName(std::u16string_view name);
    void WriteParameter(std::u16string_view name, const TOrvParameter& parameter);
    void WriteValue(const TOrvParameter& value);

    std::u16string output_;
    bool first_ = true;
};

// The text of any object; empty for a generic action. Raises when a date cannot be shown.
std::u16string TechnicalText(const TOrvMessage& message);

}  // namespace OrvPLC
