#include "platform/thread_slot.h"

#include <pthread.h>

#include <atomic>

namespace Platform {

namespace {

// What the system holds for this thread, beside it: asking the system costs more than all else that a call does around
// its work. A plain pointer needs no destructor, and the static model no call; a library may use a few such bytes.
struct Cached {
    unsigned long owner;  // the number of the slot, which no other slot ever has; 0 is none
    void* block;
    ThreadSlot::ThreadEnd threadEnd;
};
__attribute__((tls_model("initial-exec"))) thread_local Cached cached;

std::atomic<unsigned long> slotsMade{0};

void EndThread(void* block)
{
    const ThreadSlot::ThreadEnd threadEnd = cached.threadEnd;
    cached = {};
    threadEnd(block);
}

pthread_key_t Key(unsigned long index)
{
    return static_cast<pthread_key_t>(index);
}

}  // namespace

ThreadSlot::ThreadSlot(ThreadEnd threadEnd) : threadEnd_(threadEnd), number_(++slotsMade), index_(0), allocated_(false)
{
    pthread_key_t key = 0;
    if (pthread_key_create(&key, EndThread) != 0) return;
    index_ = key;
    allocated_ = true;
}

void* ThreadSlot::Get() const
{
    if (!allocated_) return nullptr;
    return cached.owner == number_ ? cached.block : pthread_getspecific(Key(index_));
}

bool ThreadSlot::Set(void* block)
{
    if (!allocated_ || pthread_setspecific(Key(index_), block) != 0) return false;
    cached = {number_, block, threadEnd_};
    return true;
}

void ThreadSlot::ThreadEnded()
{
    void* block = Get();
    if (!block) return;
    Set(nullptr);
    threadEnd_(block);
}

void ThreadSlot::Free()
{
    if (allocated_) pthread_key_delete(Key(index_));
    allocated_ = false;
}

}  // namespace Platform
