// How many objects of this library are alive. Every creation and every end of an object is counted, so each thread
// counts into a share of its own, without a locked instruction; the shares are summed up when someone asks.
//
// A thread takes its share when it first counts and gives it back when it ends; what it counted stays in the share.
// When all shares are taken a thread counts into the common one, with locked instructions. On Windows all threads do:
// asking the system for a pointer of the thread would cost as much.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace Platform::LivingCount {

// Two counters that only grow: the objects of one thread may end in another, so that neither alone says how many live.
struct alignas(64) Share {  // a cache line, so that threads do not slow each other down
    std::atomic<std::uint32_t> made{0};
    std::atomic<std::uint32_t> ended{0};
    std::atomic<bool> taken{false};
};

#if defined(_WIN32)
constexpr std::size_t kShares = 1;
#else
constexpr std::size_t kShares = 64;
#endif
extern Share shares[kShares];  // the first is the common one

#if defined(_WIN32)
inline Share& ShareOfThread() noexcept
{
    return shares[0];
}
#else
// Null until the thread counts. With initial-exec the access needs no call; the loader keeps little room for such
// variables, and this is one pointer.
extern constinit thread_local Share* threadShare __attribute__((tls_model("initial-exec")));
Share& TakeShare() noexcept;
void ThreadEnded() noexcept;  // of the calling thread, which may still count afterwards
inline Share& ShareOfThread() noexcept
{
    return threadShare ? *threadShare : TakeShare();
}
#endif

inline void Increase(std::atomic<std::uint32_t>& counter, const Share& share) noexcept
{
    if (&share == shares) {
        counter.fetch_add(1, std::memory_order_release);
    } else {
        counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_release);
    }
}
inline void ObjectMade() noexcept
{
    Share& share = ShareOfThread();
    Increase(share.made, share);
}
inline void ObjectEnded() noexcept
{
    Share& share = ShareOfThread();
    Increase(share.ended, share);
}

// While other threads make and end objects the answer may be too high by what they did meanwhile, and is never below 0:
// the ends are read first, and an object whose end was seen was made before.
inline std::uint32_t Read() noexcept
{
    std::uint32_t ended = 0;
    for (const Share& share : shares) ended += share.ended.load(std::memory_order_acquire);
    std::uint32_t made = 0;
    for (const Share& share : shares) made += share.made.load(std::memory_order_acquire);
    return made - ended;
}

}  // namespace Platform::LivingCount
