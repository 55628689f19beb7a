// One function under a further name.
//
//     OrvBool OrvAct_CloseHandle(TOrvHandle handle)
//     {
//         ...
//     }
//     ORV_ALIAS(Talvec_Action_CloseHandle, OrvAct_CloseHandle);
//
// A public header declares both. A name that none declares does not compile, nor do declarations that differ.
#pragma once

#include <type_traits>

#define ORV_ALIAS(Name, Function)                                      \
    static_assert(std::is_same_v<decltype(Name), decltype(Function)>); \
    extern "C" decltype(Function) Name __attribute__((alias(#Function)))
