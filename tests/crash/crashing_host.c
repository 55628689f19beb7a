/* A host that loads the library and crashes.
 *
 *     crashing_host LIBRARY access|stack|abort|sent|late [previous]
 *
 * With "previous" it installs a handler of its own first, which ends the process with code 42.
 */
#if !defined(_WIN32)
#define _POSIX_C_SOURCE 200809L
#endif
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#if defined(_WIN32)
#include <windows.h>

static LONG WINAPI Previous(EXCEPTION_POINTERS* exception)
{
    (void)exception;
    ExitProcess(42);
}

static void Prepare(int previous)
{
    /* No box and no debugger of the system behind us. */
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    if (previous) SetUnhandledExceptionFilter(Previous);
}

static int Load(const char* path)
{
    return LoadLibraryA(path) != NULL;
}
#else
#include <dlfcn.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

static void Previous(int signal)
{
    (void)signal;
    exit(42);  /* and not _exit: what counts the code that has run writes it then */
}

static void Prepare(int previous)
{
    const struct rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    if (previous) {
        signal(SIGSEGV, Previous);
        signal(SIGABRT, Previous);
    }
}

static int Load(const char* path)
{
    return dlopen(path, RTLD_NOW) != NULL;
}
#endif

static int Recurse(volatile char* above)
{
    volatile char block[4096];
    block[0] = *above;
    return Recurse(block) + block[0];
}

static volatile int* volatile nowhere = (volatile int*)0xabc;

static void CrashLate(void)
{
    *nowhere = 1;
}

int main(int count, char** arguments)
{
    volatile char start = 0;
    if (count < 3) return 1;
    Prepare(count > 3 && strcmp(arguments[3], "previous") == 0);
    if (strcmp(arguments[2], "late") == 0) atexit(CrashLate);  /* runs when the library has ended */
    if (!Load(arguments[1])) {
        fprintf(stderr, "cannot load %s\n", arguments[1]);
        return 1;
    }
    if (strcmp(arguments[2], "access") == 0) *nowhere = 1;
    if (strcmp(arguments[2], "stack") == 0) return Recurse(&start);
    if (strcmp(arguments[2], "abort") == 0) abort();
#if !defined(_WIN32)
    if (strcmp(arguments[2], "sent") == 0) kill(getpid(), SIGSEGV);  /* no instruction would run into it again */
#endif
    return 1;
}
