// The contents that all benchmarks use: a small action, the largest one, and one long string.
#pragma once

#include <OrvActions.h>

#include <string>

namespace OrvBench {

struct Workload {
    const char* name;
    TOrvHandle (*make)();  // through the interface, parameter by parameter
};

TOrvHandle MakeSmall();  // PanLeft: a named channel and a speed
TOrvHandle MakeLarge();  // LenelAccessEvent with all 21 parameters, 6 strings of 10 to 60 characters
TOrvHandle MakeLong();   // CustomAction with a string of 65,536 characters

inline constexpr Workload kWorkloads[] = {{"SMALL", MakeSmall}, {"LARGE", MakeLarge}, {"STR64K", MakeLong}};

std::u16string TextOf(TOrvHandle handle, bool plain = false);

}  // namespace OrvBench
