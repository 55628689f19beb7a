// Counts the allocations of the whole process, the library's included.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>

namespace OrvBench {

std::uint64_t Allocations();

// Reports the allocations of one iteration as the counter "allocs".
class AllocationCounter {
public:
    explicit AllocationCounter(benchmark::State& state) : state_(state), before_(Allocations()) {}
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;
    ~AllocationCounter()
    {
        const auto made = static_cast<double>(Allocations() - before_);
        state_.counters["allocs"] = made / static_cast<double>(state_.iterations());
    }

private:
    benchmark::State& state_;
    std::uint64_t before_;
};

}  // namespace OrvBench
