#include "platform/thread_slot.h"

#include <pthread.h>

namespace Platform {

namespace {

pthread_key_t Key(unsigned long index)
{
    return static_cast<pthread_key_t>(index);
}

}  // namespace

ThreadSlot::ThreadSlot(ThreadEnd threadEnd) : threadEnd_(threadEnd), index_(0), allocated_(false)
{
    pthread_key_t key = 0;
    if (pthread_key_create(&key, threadEnd) != 0) return;
    index_ = key;
    allocated_ = true;
}

void* ThreadSlot::Get() const
{
    return allocated_ ? pthread_getspecific(Key(index_)) : nullptr;
}

bool ThreadSlot::Set(void* block)
{
    return allocated_ && pthread_setspecific(Key(index_), block) == 0;
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
