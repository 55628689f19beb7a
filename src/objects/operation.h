// What stands around an operation of the interface table.
//
// A foreign caller of the table cannot catch what this library throws. So nothing but memory exhaustion leaves an
// operation: any other failure ends it, with the outputs as the failed step left them. The exported functions have a
// frame of their own that stores the failure, so they do not go through here: they call what stands inside.
//
// An operation that only looks up or copies needs none of this, since all that can fail there is memory.
#pragma once

#include <new>

namespace OrvPLC {

template <class Work>
void InOperation(Work&& work)
{
    try {
        work();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        // The table has no way to tell more.
    }
}

}  // namespace OrvPLC
