// What a person should know about an action that was read: where it says something else than it seems to.
#pragma once

#include <string_view>
#include <vector>

#include "action_view.h"
#include "report.h"
#include "text_walk.h"

// What the catalogue shows: unknown names, values of another kind than declared, numbers that an enum lacks.
void AddRemarks(const Action& action, std::vector<Remark>& remarks);

// The same with places, and what only the text shows: what was not read, and numbers that are too large.
void AddRemarks(const Action& action, std::u16string_view text, const TextWalk& walk, std::vector<Remark>& remarks);
