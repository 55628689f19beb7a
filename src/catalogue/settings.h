// The two process-wide switches, meant to be set at start. A thread may write one while others read it; nothing is
// ordered by them.
#pragma once

#include <atomic>
#include <cstdint>

#include "OrvActions/OrvTypes.h"

namespace OrvPLC::Settings {

template <class Value>
class Switch {
public:
    constexpr explicit Switch(Value value) : value_(value) {}
    operator Value() const noexcept { return value_.load(std::memory_order_relaxed); }
    void operator=(Value value) noexcept { value_.store(value, std::memory_order_relaxed); }

private:
    std::atomic<Value> value_;
};

// Plain names come from the native text set when true, from the neutral one when false. As the built-in texts are
// native, false makes built-in plain names read as the programmatic names until a caller writes the neutral set.
extern Switch<OrvBool> NativeTranslation;

// Parameters with a priority above this level are hidden from plain text and removed by the pruning stores.
extern Switch<std::uint32_t> PriorityLevel;

}  // namespace OrvPLC::Settings
