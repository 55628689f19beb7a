#pragma once

#include "command_page.h"

std::string BashCompletion(const CommandPage& root);
std::string ZshCompletion(const CommandPage& root);
std::string FishCompletion(const CommandPage& root);
