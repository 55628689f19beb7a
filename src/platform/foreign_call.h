// The one way out of the library: calls of functions that the host or another library has given us. Whatever they raise
// can be caught here, whichever compiler built them.
#pragma once

#include <type_traits>

namespace Platform {

// Stands for a C++ exception of another compiler, of which nothing else is known.
struct ForeignException {};

// Runs the work. Raises ForeignException if it ended in a C++ exception of another compiler, which no catch clause of
// ours would see. Exceptions of ours pass through. The work must own nothing that needs a destructor: its frames are
// abandoned.
void RunForeign(void (*work)(void* context), void* context);

// Calls the work, a callable that calls the function outside and owns nothing, and gives its result. Raises what the
// function raises, or ForeignException.
template <class Work>
std::invoke_result_t<Work&> CallForeign(Work work)
{
    static_assert(std::is_trivially_destructible_v<Work>);
    const auto run = [](auto& guarded) {
        const auto call = [](void* context) { (*static_cast<std::remove_reference_t<decltype(guarded)>*>(context))(); };
        RunForeign(call, &guarded);
    };
    if constexpr (std::is_void_v<std::invoke_result_t<Work&>>) {
        run(work);
    } else {
        std::invoke_result_t<Work&> result{};
        auto keep = [&] { result = work(); };
        run(keep);
        return result;
    }
}

}  // namespace Platform
