#include "platform/thread_slot.h"

#include <pthread.h>

#include <atomic>

#include "platform/living_count.h"

namespace Platform {

namespace {

std::atomic<unsigned long> slotsMade{0};

pthread_key_t Key(unsigned long index)
{
    return static_cast<pthread_key_t>(index);
}

}  // namespace

constinit thread_local ThreadSlot::Cached ThreadSlot::cached = {};

void ThreadSlot::EndThread(void* block)
{
    // From the thread's own copy: the slot object may be gone by now.
    const ThreadEnd threadEnd = cached.threadEnd;
    cached = {};
    threadEnd(block);
    // The one hook at the end of a thread serves both.
    LivingCount::ThreadEnded();
}

ThreadSlot::ThreadSlot(ThreadEnd threadEnd) : threadEnd_(threadEnd), index_(0), allocated_(false)
{
    pthread_key_t key = 0;
    if (pthread_key_create(&key, EndThread) != 0) return;
    // A new number for each slot: a thread that has cached a block of an old one sees that it is not this.
    number_ = ++slotsMade;
    index_ = key;
    allocated_ = true;
}

void* ThreadSlot::Ask() const
{
    return allocated_ ? pthread_getspecific(Key(index_)) : nullptr;
}

bool ThreadSlot::Set(void* block)
{
    if (!allocated_ || pthread_setspecific(Key(index_), block) != 0) return false;
    cached = {number_, block, threadEnd_};
    return true;
}

void ThreadSlot::Free()
{
    if (allocated_) pthread_key_delete(Key(index_));
    allocated_ = false;
    number_ = 0;
}

}  // namespace Platform
