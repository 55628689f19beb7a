// How a program makes an action, as source text.
#pragma once

#include <string>

#include "action_view.h"

// Both make the example of the catalogue, see ExampleAction. They compile after OrvActions.h and OrvActions.hpp; wide
// texts are written as on Linux, u"...".
std::string CodeInC(const ActionView& view, const Action& example);
std::string CodeInCpp(const ActionView& view, const Action& example);
