// The name of the calling function, as a default argument. std::source_location does the same, but Clang 14 lacks it.
#pragma once

#if defined(__GNUC__)
#define ORV_CALLING_FUNCTION __builtin_FUNCTION()
#else
#define ORV_CALLING_FUNCTION "a function"
#endif
