// Spells the literals of the built-in rows. For the generated catalogue_rows_*.cpp alone: a literal in both widths
// takes token pasting, hence macros.
#pragma once

#include "catalogue/builtin_rows.h"

#define ORV_TEXT(literal) ::OrvPLC::Builtin::Text{literal, u##literal}
#define ORV_NAME(literal, lower) ::OrvPLC::Builtin::Name{ORV_TEXT(literal), u##lower}
