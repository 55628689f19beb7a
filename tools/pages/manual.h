#pragma once

#include "command_page.h"

// A manual page in the macros of man(7); one stands for each command, as orvact-events-list(1).
std::string ManualPage(const CommandPage& page, const CommandPage& root);
