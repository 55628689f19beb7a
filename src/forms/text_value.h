// The value of one parameter as the text gives it, before the catalogue's declared kind is applied.
#pragma once

#include "forms/markup_guard.h"
#include "forms/text_scanner.h"
#include "objects/parameter.h"

namespace OrvPLC {

// The value is new. Raises for a guid or date literal that is impossible.
void ReadTextValue(const FieldMatch& found, MarkupGuard& guard, TOrvParameter& value);

}  // namespace OrvPLC
