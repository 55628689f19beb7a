// Match actions that a command compares actions with.
#pragma once

#include <string>
#include <vector>

#include "action_view.h"

struct Pattern {
    Action action;
    std::string place;  // "patterns:3", or "" for one given as an argument
    std::string text;
};

// The match actions of an argument: of its text when it begins with '@', else of the file that it names. False, with a
// report, if one of them is not a match action: a missing pattern would change the answer.
bool ReadPatterns(const std::string& argument, std::vector<Pattern>& patterns);

// The same as a set that finds what matches, for any number of patterns.
orv::RuleSet RulesOf(const std::vector<Pattern>& patterns);

// Why the pattern refuses the action, a line for each parameter that does not fit; empty when it has another name.
std::vector<std::string> Refusals(const Pattern& pattern, const Action& action);
