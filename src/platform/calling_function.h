// The name of the function that a call stands in, as a default argument: std::source_location does the same, but Clang
// 14 has it not.
#pragma once

#if defined(__GNUC__)
#define ORV_CALLING_FUNCTION __builtin_FUNCTION()
#else
#define ORV_CALLING_FUNCTION "a function"
#endif
