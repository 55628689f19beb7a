// The value of one parameter as the text gives it, before the catalogue's declared kind is applied.
#pragma once

#include "forms/expression.h"
#include "forms/markup_guard.h"
#include "objects/parameter.h"

namespace OrvPLC {

// `found` holds a match of the parameter pattern and is used for further searches, which end the life of its groups.
// The value is new. Raises for a guid or date literal that is impossible.
void ReadTextValue(PatternSearch& found, MarkupGuard& guard, TOrvParameter& value);

}  // namespace OrvPLC
