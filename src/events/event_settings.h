// What the installation says about event records.
#pragma once

namespace OrvPLC::EventSettings {

// Whether parameters that a caller adds under the name of a column fill that column. Written once, while the library
// loads.
extern bool StoreGenericParameters;

// Reads the configuration; what it does not say is false.
void Read() noexcept;

}  // namespace OrvPLC::EventSettings
