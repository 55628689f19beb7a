// A recursive lock and its guard.
#pragma once

#include <mutex>

namespace Ulmo {

class CriticalSection {
public:
    void Enter() { mutex_.lock(); }
    void Leave() { mutex_.unlock(); }
    // For std::lock_guard and its kin.
    void lock() { Enter(); }
    void unlock() { Leave(); }

private:
    std::recursive_mutex mutex_;
};

using CriticalSectionGuard = std::lock_guard<CriticalSection>;

}  // namespace Ulmo
