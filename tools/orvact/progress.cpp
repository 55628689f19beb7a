#include "progress.h"

#include <algorithm>

#include "console.h"

Progress::~Progress()
{
    PrintPassing("");
}

void Progress::Show(std::uint64_t taken, std::uint64_t count)
{
    constexpr std::uint64_t kWidth = 30;
    const Clock::time_point now = Clock::now();
    if (now < next_) return;
    // Ten times a second is as often as anybody looks.
    next_ = now + std::chrono::milliseconds(100);
    std::string line = std::to_string(count) + " " + counted_ + (count == 1 ? "" : "s");
    if (size_ > 0) {
        const std::uint64_t done = std::min(taken, size_);
        const auto full = static_cast<std::size_t>(done * kWidth / size_);
        line = "[" + std::string(full, '#') + std::string(kWidth - full, '.') + "] " +
               std::to_string(done * 100 / size_) + " %  " + line;
    }
    PrintPassing(line);
}
