// What the system reports to a library: that it was loaded, that a thread ends, that the library ends.
//
// The entry point of the platform calls the three functions; exports/library.cpp defines them. A program that contains
// the library's objects itself, as the unit tests do, starts and ends in the same way.
#pragma once

namespace Platform::LibraryEvents {

void Started();      // all static objects exist; no exported call has been made yet
void ThreadEnded();  // on the thread that ends
// With `processEnds` other threads may still be running, or may have been stopped anywhere, even inside a lock: then
// touch nothing that they could hold.
void Ended(bool processEnds);

}  // namespace Platform::LibraryEvents
