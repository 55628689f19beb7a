#include "platform/thread_slot.h"

#include "platform/windows/windows_api.h"

namespace Platform {

ThreadSlot::ThreadSlot(ThreadEnd threadEnd)
    : threadEnd_(threadEnd), index_(TlsAlloc()), allocated_(index_ != TLS_OUT_OF_INDEXES)
{}

void* ThreadSlot::Ask() const
{
    return allocated_ ? TlsGetValue(index_) : nullptr;
}

bool ThreadSlot::Set(void* block)
{
    return allocated_ && TlsSetValue(index_, block);
}

void ThreadSlot::Free()
{
    if (allocated_) TlsFree(index_);
    allocated_ = false;
}

}  // namespace Platform
