#include "platform/living_count.h"

namespace Platform::LivingCount {

constinit Share shares[kShares];
constinit thread_local Share* threadShare = nullptr;

Share& TakeShare() noexcept
{
    threadShare = shares;
    for (std::size_t i = 1; i < kShares; ++i) {
        // Acquire: this thread goes on from the counts of the one that had the share before.
        if (shares[i].taken.exchange(true, std::memory_order_acquire)) continue;
        threadShare = &shares[i];
        break;
    }
    return *threadShare;
}

void ThreadEnded() noexcept
{
    if (threadShare && threadShare != shares) threadShare->taken.store(false, std::memory_order_release);
    threadShare = nullptr;
}

}  // namespace Platform::LivingCount
