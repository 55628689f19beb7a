// With the failing allocator a library that LD_PRELOAD puts before another program. The number comes from the
// environment: ORV_FAIL_AT=17 refuses one allocation, ORV_FAIL_FROM=17 refuses all from there on. ORV_FAIL_COUNT names a
// file that receives how many there were. Counting begins with main: the objects that libraries make before it cannot
// report a lack of memory to anybody.
#include "failing_allocator.h"

#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

using Main = int (*)(int count, char** arguments, char** environment);

Main mainOfProgram = nullptr;

int ArmedMain(int count, char** arguments, char** environment)
{
    const char* one = std::getenv("ORV_FAIL_AT");
    const char* all = std::getenv("ORV_FAIL_FROM");
    void* frame = nullptr;
    backtrace(&frame, 1);  // the first call loads a library
    if (one || all) FailingAllocator::Arm(std::strtoull(one ? one : all, nullptr, 10), !one);
    return mainOfProgram(count, arguments, environment);
}

__attribute__((destructor)) void TellCount()
{
    const std::uint64_t asked = FailingAllocator::Disarm();
    const char* name = std::getenv("ORV_FAIL_COUNT");
    const int file = name ? open(name, O_WRONLY | O_CREAT | O_TRUNC, 0600) : -1;
    if (file == -1) return;
    dprintf(file, "%llu\n", static_cast<unsigned long long>(asked));
    close(file);
}

}  // namespace

// The C library's own, which the first instructions of a program call.
extern "C" __attribute__((visibility("default"))) int __libc_start_main(Main entry, int count, char** arguments, void (*begin)(), void (*end)(),
                                 void (*endOfLoader)(), void* stackEnd)
{
    using Start = int (*)(Main, int, char**, void (*)(), void (*)(), void (*)(), void*);
    const auto start = reinterpret_cast<Start>(dlsym(RTLD_NEXT, "__libc_start_main"));
    mainOfProgram = entry;
    return start(ArmedMain, count, arguments, begin, end, endOfLoader, stackEnd);
}
