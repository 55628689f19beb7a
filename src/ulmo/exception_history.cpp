#include "ulmo/exception_history.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <mutex>

namespace Ulmo::ExceptionHistory {

namespace {

using Entry = std::pair<std::string, UlmoException>;

constexpr std::uint32_t kAlive = 0x591DB60E;  // a debugger finds the queue by this word

// Neither needs construction or destruction, so a failure that another static object raises early or late finds them
// usable.
constinit std::atomic<std::uint32_t> sentinel{0};
constinit std::deque<Entry>* queue = nullptr;

// Never destroyed, for threads that still raise failures at process end.
std::mutex& Section()
{
    static std::mutex& section = *new std::mutex;
    return section;
}

bool IsAlive()
{
    return sentinel.load(std::memory_order_acquire) == kAlive;
}

}  // namespace

void Start()
{
    const std::lock_guard<std::mutex> guard(Section());
    if (IsAlive()) return;
    queue = new std::deque<Entry>;
    sentinel.store(kAlive, std::memory_order_release);
}

void End()
{
    const std::lock_guard<std::mutex> guard(Section());
    sentinel.store(0, std::memory_order_release);
    delete queue;
    queue = nullptr;
}

void Remember(const UlmoException& failure)
{
    if (!IsAlive()) return;
    const std::lock_guard<std::mutex> guard(Section());
    if (!IsAlive()) return;  // ended while this thread waited
    queue->emplace_back(failure.GetClassName(), failure);
    while (queue->size() > kLimit) queue->pop_front();
}

std::vector<Entry> Snapshot()
{
    const std::lock_guard<std::mutex> guard(Section());
    return IsAlive() ? std::vector<Entry>(queue->begin(), queue->end()) : std::vector<Entry>();
}

}  // namespace Ulmo::ExceptionHistory
