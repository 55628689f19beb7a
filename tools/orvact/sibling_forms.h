// Which texts of the sibling product are known here.
#pragma once

#include <string>

// The name of the action that a text of the sibling of this name gives, "" when none does.
std::string ActionFromSibling(const std::string& name);
