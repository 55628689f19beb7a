#include "platform/crash_handler.h"

#include <execinfo.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>
#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "platform/configuration.h"
#include "platform/own_module.h"
#include "platform/text.h"

namespace Platform {

namespace {

constexpr std::u16string_view kKey = u"SOFTWARE\\Tessarine\\Ulmo";
constexpr std::array<int, 5> kSignals = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT};
constexpr std::size_t kHandlerStack = 64 * 1024;

// Made when the library is loaded: a handler of signals may not allocate.
constinit char reportName[1024] = {};  // empty: nothing is installed
constinit std::array<struct sigaction, kSignals.size()> previous = {};
constinit std::atomic<bool> reported{false};

// What cannot be written is lost: there is nobody to tell.
void WriteText(int file, const char* text)
{
    [[maybe_unused]] const ssize_t written = write(file, text, std::strlen(text));
}

void WriteNumber(int file, std::uint64_t number, unsigned base)
{
    char digits[32];
    char* first = digits + sizeof digits;
    *--first = '\0';
    do {
        *--first = "0123456789abcdef"[number % base];
        number /= base;
    } while (number != 0);
    WriteText(file, first);
}

void WriteMemoryMap(int file)
{
    const int map = open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
    if (map == -1) return;
    char block[1024];
    for (ssize_t size = 0; (size = read(map, block, sizeof block)) > 0;) {
        if (write(file, block, static_cast<std::size_t>(size)) != size) break;
    }
    close(map);
}

// Calls only what a handler of signals may call.
void WriteReport(int signal, const siginfo_t& information)
{
    // A file of that name is not written over: it may be the report of a crash or a trap that somebody laid.
    const int file = open(reportName, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file == -1) return;
    WriteText(file, "signal ");
    WriteNumber(file, static_cast<unsigned>(signal), 10);
    // The process sends itself this signal, which has no address.
    if (signal != SIGABRT) {
        WriteText(file, " at address 0x");
        WriteNumber(file, reinterpret_cast<std::uintptr_t>(information.si_addr), 16);
    }
    WriteText(file, "\n\nstack:\n");
    void* frames[128];
    backtrace_symbols_fd(frames, backtrace(frames, static_cast<int>(std::size(frames))), file);
    WriteText(file, "\nmemory map:\n");
    WriteMemoryMap(file);
    close(file);
}

// Passes the signal to the handler that was there before. The default action happens when the faulting instruction runs
// again, or when the signal is raised again after this handler has returned.
void HandOver(int signal, siginfo_t* information, void* context)
{
    std::size_t index = 0;
    // Ends: the handler is installed for these signals only.
    while (kSignals[index] != signal) ++index;
    const struct sigaction& action = previous[index];
    if (action.sa_flags & SA_SIGINFO) {
        action.sa_sigaction(signal, information, context);
    } else if (action.sa_handler == SIG_DFL || action.sa_handler == SIG_IGN) {
        sigaction(signal, &action, nullptr);
        if (information->si_code <= 0) raise(signal);  // sent, not caused by an instruction
    } else {
        action.sa_handler(signal);
    }
}

// On the crashed thread, maybe on the handler's own stack. A second crash, also one inside the report, goes straight to
// the handler before.
void Handle(int signal, siginfo_t* information, void* context)
{
    const int error = errno;
    if (!reported.exchange(true)) WriteReport(signal, *information);
    HandOver(signal, information, context);
    errno = error;
}

// A path that is too long for the name means no reports.
void ReadConfiguration()
{
    const auto folder = Configuration::ReadText(kKey, u"CrashDumpFolder");
    std::string name;
    if (!folder || folder->empty() || !ToNarrow(CodePage::Utf8, *folder + u'/' + ProgramName(), name)) return;
    name += '-' + std::to_string(getpid()) + '-' + std::to_string(std::time(nullptr)) + ".crash";
    if (name.size() < sizeof reportName) std::memcpy(reportName, name.c_str(), name.size() + 1);
}

// The thread that loads the library gets a stack for the handler, so that a stack that is used up is reported as well;
// a stack that the host has set stays.
void NeedHandlerStack()
{
    stack_t present{};
    if (sigaltstack(nullptr, &present) != 0 || !(present.ss_flags & SS_DISABLE)) return;
    static char stack[kHandlerStack];
    const stack_t own{stack, 0, sizeof stack};
    sigaltstack(&own, nullptr);
}

}  // namespace

void InstallCrashHandler()
try {
    ReadConfiguration();
    if (!reportName[0]) return;
    void* frame = nullptr;
    backtrace(&frame, 1);  // the first call loads a library, which a handler could not
    NeedHandlerStack();
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        struct sigaction action {};
        action.sa_sigaction = Handle;
        action.sa_flags = SA_SIGINFO | SA_ONSTACK;
        sigaction(kSignals[i], &action, &previous[i]);
    }
} catch (...) {  // no memory for a name: the process goes on without reports
}

// The library stays in memory on this system, but a program that contains its objects may call this.
void RemoveCrashHandler()
{
    if (!reportName[0]) return;
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        struct sigaction present {};
        sigaction(kSignals[i], nullptr, &present);
        if ((present.sa_flags & SA_SIGINFO) && present.sa_sigaction == Handle) {
            sigaction(kSignals[i], &previous[i], nullptr);
        }
    }
}

}  // namespace Platform
