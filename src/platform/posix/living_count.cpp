#include "platform/living_count.h"

namespace Platform::LivingCount {

constinit Share shares[kShares];
constinit thread_local Share* threadShare = nullptr;

Share& TakeShare() noexcept
{
    threadShare = shares;
    for (std::size_t i = 1; i < kShares; ++i) {
        // What its last thread counted is seen before the share is counted on.
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
