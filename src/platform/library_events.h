// What the system tells a library: that it starts, that a thread ends, that it goes.
//
// The entry point of the platform calls the three functions, which the top floor defines. A program that contains the
// library's objects itself, as the unit tests do, starts and ends in the same way.
#pragma once

namespace Platform::LibraryEvents {

void Started();      // all static objects exist; no exported call has been made yet
void ThreadEnded();  // on the thread that ends
// With `processEnds` other threads may be running still, or may have been stopped anywhere, even inside a lock: then
// nothing may be touched that they could hold.
void Ended(bool processEnds);

}  // namespace Platform::LibraryEvents
