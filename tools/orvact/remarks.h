// Remarks about an action that was read: where it differs from what its input seems to say.
#pragma once

#include <string_view>
#include <vector>

#include "action_view.h"
#include "report.h"
#include "text_walk.h"

// Remarks that need the catalogue: unknown names, values of another kind than declared, numbers that an enum lacks.
void AddRemarks(const Action& action, std::vector<Remark>& remarks);

// The same with places, and remarks that need the text: what was not read, and numbers that are too large.
void AddRemarks(const Action& action, std::u16string_view text, const TextWalk& walk, std::vector<Remark>& remarks);
