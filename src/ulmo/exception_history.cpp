#include "ulmo/exception_history.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <type_traits>

#include "ulmo/critical_section.h"

namespace Ulmo::ExceptionHistory {

namespace {

using Entry = std::pair<std::string, UlmoException>;

constexpr std::uint32_t kAlive = 0x591DB60E;  // a debugger finds the queue by this word

// None of them needs construction or destruction, so a failure that another static object raises early or late, or a
// thread while the process ends, finds them usable.
constinit std::atomic<std::uint32_t> sentinel{0};
constinit std::deque<Entry>* queue = nullptr;  // made for the first failure
constinit CriticalSection section;
static_assert(std::is_trivially_destructible_v<CriticalSection>);

// Whether Start has run and End has not.
bool IsAlive()
{
    return sentinel.load(std::memory_order_acquire) == kAlive;
}

}  // namespace

void Start()
{
    const CriticalSectionGuard guard(section);
    sentinel.store(kAlive, std::memory_order_release);
}

void End()
{
    const CriticalSectionGuard guard(section);
    sentinel.store(0, std::memory_order_release);
    delete queue;
    queue = nullptr;
}

void Remember(const UlmoException& failure)
{
    // Without the lock first: before the start and after the end a failure costs nothing here.
    if (!IsAlive()) return;
    const CriticalSectionGuard guard(section);
    if (!IsAlive()) return;  // ended while this thread waited
    if (!queue) queue = new std::deque<Entry>;
    queue->emplace_back(failure.GetClassName(), failure);
    while (queue->size() > kLimit) queue->pop_front();
}

std::vector<Entry> Snapshot()
{
    const CriticalSectionGuard guard(section);
    return IsAlive() && queue ? std::vector<Entry>(queue->begin(), queue->end()) : std::vector<Entry>();
}

}  // namespace Ulmo::ExceptionHistory
