// One pointer a thread, for the last error alone, with a hook that runs when a thread ends.
//
// Not thread_local: inside a MinGW DLL a thread_local with a destructor crashes at thread end and at unload, whereas a
// system slot that holds a plain block survives both.
#pragma once

namespace Platform {

class ThreadSlot {
public:
    using ThreadEnd = void (*)(void* block);

    // Takes a slot. Without one (the system has run out) every Get gives null and every Set false.
    // `threadEnd` gets the block of each thread that ends with one. On Windows the library's entry point must report
    // the end of threads with ThreadEnded(); on Linux the system calls the hook itself.
    explicit ThreadSlot(ThreadEnd threadEnd);
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    void* Get() const
    {
#if defined(_WIN32)
        return Ask();
#else
        return cached.owner == number_ ? cached.block : Ask();
#endif
    }
    bool Set(void* block);
    // Runs the hook for the calling thread and clears its slot.
    void ThreadEnded()
    {
        void* block = Get();
        if (!block) return;
        Set(nullptr);
        threadEnd_(block);
    }
    void Free();  // gives the slot back; the blocks of living threads are not freed

private:
#if !defined(_WIN32)
    // What the system holds for this thread, beside it: asking the system costs more than all else that a call does
    // around its work. A plain block needs no destructor, and the static model no call; a library may use a few such
    // bytes.
    struct Cached {
        unsigned long owner;  // the number of the slot, which no other slot ever has; 0 with an empty block at first
        void* block;
        ThreadEnd threadEnd;
    };
    static constinit thread_local Cached cached __attribute__((tls_model("initial-exec")));
    static void EndThread(void* block);
#endif
    void* Ask() const;  // the system

    ThreadEnd threadEnd_;
    [[maybe_unused]] unsigned long number_ = 0;  // 0 has no slot
    unsigned long index_;
    bool allocated_;
};

}  // namespace Platform
