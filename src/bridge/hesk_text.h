// From the sibling product's text to our own.
#pragma once

#include <string>

namespace HeskPLC {

// Replaces a text of the sibling by the technical text of its action, or by "" if it is not an action. Raises what the
// parser raises and what the writing of a date raises.
void ConvertHeskTextToOrvText(std::u16string& text);

}  // namespace HeskPLC
