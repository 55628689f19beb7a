// An action as text of the sibling product, through the two conversions of the interface.
#pragma once

#include <string>

#include "action_view.h"

// The action of a text of the sibling, which the caller closes; null, and why, when there is none.
TOrvHandle ReadSiblingText(const std::u16string& text, std::string& reason);

// The text of an action for the sibling; empty, and why, when it has no counterpart there.
std::u16string SiblingTextOf(const Action& action, std::string& reason);

// The name of the action that a text of the sibling of this name gives, "" when none does.
std::string ActionFromSibling(const std::string& name);
