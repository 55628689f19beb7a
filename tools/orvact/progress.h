// A bar on the terminal of standard error for work that takes a while.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

class Progress {
public:
    // The size in bytes, 0 when not known; what is counted, in the singular.
    Progress(std::uint64_t size, std::string counted) : size_(size), counted_(std::move(counted)) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();  // removes the bar

    void Show(std::uint64_t taken, std::uint64_t count);

private:
    using Clock = std::chrono::steady_clock;

    std::uint64_t size_;
    std::string counted_;
    Clock::time_point next_ = Clock::now() + std::chrono::milliseconds(500);
};
