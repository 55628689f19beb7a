/* How long a host waits for the library: from dlopen to the end of the first call, in a process of its own.
 *
 *     orv_load_time LIBRARY     prints microseconds: load, first call
 */
#define _POSIX_C_SOURCE 200809L
#include <dlfcn.h>
#include <stdint.h>
#include <stdio.h>
#include <time.h>

static double Now(void)
{
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return (double)time.tv_sec * 1e6 + (double)time.tv_nsec / 1e3;
}

int main(int argc, char** argv)
{
    double start, loaded;
    void* library;
    uint32_t (*count)(void);
    if (argc != 2) return 2;
    start = Now();
    library = dlopen(argv[1], RTLD_NOW);
    if (!library) {
        fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    loaded = Now();
    *(void**)&count = dlsym(library, "OrvAct_GetNumberOfActions");
    if (!count || count() != 429) return 1;
    printf("%.0f %.0f\n", loaded - start, Now() - loaded);
    return 0;
}
