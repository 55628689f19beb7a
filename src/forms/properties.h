// An action as a bag of named texts, for callers that do not want to know its parameters.
#pragma once

#include <string>
#include <string_view>

#include "objects/action.h"

namespace OrvPLC {

// All parameters as a list of names and values in XML, in key order. Raises when a date cannot be shown.
std::u16string PropertiesText(const TOrvAction& action);

// All parameters on one line that looks like XML. No element is ever closed: deliberate, callers read it as a flat
// list.
std::u16string FlatXml(const TOrvAction& action);

// The text of a parameter, kept in it until it changes; null when the action has none of it. The key is a parameter's
// name or one of the well-known keys, in any case.
const char16_t* ReadProperty(TOrvAction& action, std::u16string_view key);

// A key that is not well-known stores a String under its lower-cased name.
void WriteProperty(TOrvAction& action, std::u16string_view key, std::u16string_view value);

}  // namespace OrvPLC
