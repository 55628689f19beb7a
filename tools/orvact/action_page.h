// An action as a page for people.
#pragma once

#include <string>

#include "action_view.h"

// A label and what the action is, its parameters as a table, and its texts.
void PrintAction(const Action& action, const std::string& label);

// A line below a page.
void Indented(const char* label, const std::string& text);
