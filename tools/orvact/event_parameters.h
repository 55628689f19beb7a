// The parameters of an event beside its columns.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "action_view.h"

// As the JSON form has them; null when there is no action or it has no such form.
nlohmann::ordered_json ParametersJson(const Action& action);

// Those that no column of the record shows, as a JSON object; "" when there is none. A zero in a text, which databases
// refuse, becomes U+FFFD.
std::string ParametersWithoutColumn(const Action& action);
