// Calls into libraries that another compiler may have built.
#pragma once

#include <type_traits>

namespace Platform {

// Runs the work. False when it ended in a C++ exception of another compiler, which no catch clause of ours would see.
// Exceptions of ours pass through. The work must need no cleaning up: its frames are left without.
bool RunForeign(void (*work)(void* context), void* context);

template <class Work>
bool RunForeign(Work& work)
{
    static_assert(std::is_trivially_destructible_v<Work>);
    return RunForeign([](void* context) { (*static_cast<Work*>(context))(); }, &work);
}

}  // namespace Platform
