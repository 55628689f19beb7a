#include "platform/crash_handler.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <exception>
#include <string>

#include "platform/configuration.h"
#include "platform/own_module.h"
#include "platform/windows/windows_api.h"

// Needs the types of the header above.
#include <dbghelp.h>

namespace Platform {

namespace {

constexpr std::u16string_view kKey = u"SOFTWARE\\Tessarine\\Ulmo";
constexpr DWORD kLongestWait = 30'000;  // milliseconds
constexpr ULONG kStackReserve = 32 * 1024;

// Made when the library is loaded: a crashed process may not be able to allocate.
constinit wchar_t dumpName[1024] = {};  // empty: no dump
constinit bool showsMessageBox = false;
constinit LPTOP_LEVEL_EXCEPTION_FILTER previousFilter = nullptr;
constinit std::terminate_handler previousTerminate = nullptr;
constinit std::atomic<bool> reported{false};

struct Crash {
    EXCEPTION_POINTERS* exception;
    DWORD threadId;
};

void WriteDump(const Crash& crash)
{
    using WriteDumpFunction = BOOL(WINAPI*)(HANDLE, DWORD, HANDLE, MINIDUMP_TYPE, PMINIDUMP_EXCEPTION_INFORMATION,
                                            PMINIDUMP_USER_STREAM_INFORMATION, PMINIDUMP_CALLBACK_INFORMATION);
    // Loaded only now, since most processes never crash; from the system's folder, where no other program puts files.
    const HMODULE library = LoadLibraryExW(L"dbghelp.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!library) return;
    const auto write =
        reinterpret_cast<WriteDumpFunction>(reinterpret_cast<void (*)()>(GetProcAddress(library, "MiniDumpWriteDump")));
    if (!write) return;
    const HANDLE file = CreateFileW(dumpName, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    MINIDUMP_EXCEPTION_INFORMATION information{crash.threadId, crash.exception, FALSE};
    write(GetCurrentProcess(), GetCurrentProcessId(), file, MiniDumpNormal, crash.exception ? &information : nullptr,
          nullptr, nullptr);
    CloseHandle(file);
}

DWORD WINAPI WriteDumpThread(void* crash)
{
    WriteDump(*static_cast<const Crash*>(crash));
    return 0;
}

// A thread that has used up its stack has no room for this.
void WriteDumpElsewhere(Crash& crash)
{
    const HANDLE thread = CreateThread(nullptr, 0, WriteDumpThread, &crash, 0, nullptr);
    if (!thread) return;
    // Not for ever: the new thread may wait for a lock that the crashed one holds.
    WaitForSingleObject(thread, kLongestWait);
    CloseHandle(thread);
}

// Once a process, whichever of the two handlers comes first.
void Report(EXCEPTION_POINTERS* exception)
{
    if (reported.exchange(true)) return;
    if (dumpName[0]) {
        Crash crash{exception, GetCurrentThreadId()};
        const bool stackUsedUp =
            exception && exception->ExceptionRecord->ExceptionCode == static_cast<DWORD>(EXCEPTION_STACK_OVERFLOW);
        stackUsedUp ? WriteDumpElsewhere(crash) : WriteDump(crash);
    }
    if (!showsMessageBox) return;
    const HMODULE library = LoadLibraryExW(L"user32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    const auto show = reinterpret_cast<decltype(&MessageBoxW)>(
        reinterpret_cast<void (*)()>(library ? GetProcAddress(library, "MessageBoxW") : nullptr));
    if (!show) return;
    show(nullptr, dumpName[0] ? dumpName : L"The program has failed.", L"OrvActions: crash", MB_OK | MB_ICONERROR);
}

LONG WINAPI Filter(EXCEPTION_POINTERS* exception)
{
    Report(exception);
    return previousFilter ? previousFilter(exception) : EXCEPTION_CONTINUE_SEARCH;
}

[[noreturn]] void Terminate()
{
    Report(nullptr);
    if (previousTerminate) previousTerminate();
    std::abort();
}

void ReadConfiguration()
{
    showsMessageBox = Configuration::ReadNumber(kKey, u"CrashMessageBox").value_or(0) != 0;
    std::u16string name = Configuration::ReadText(kKey, u"CrashDumpFolder").value_or(u"");
    if (name.empty()) return;
    if (!name.ends_with(u'\\')) name += u'\\';
    name += ProgramName();
    for (const DWORD number : {GetCurrentProcessId(), GetTickCount()}) {
        name += u'-';
        for (const char digit : std::to_string(number)) name += static_cast<char16_t>(digit);
    }
    name += u".dmp";
    if (name.size() < std::size(dumpName)) std::copy_n(AsWide(name.c_str()), name.size() + 1, dumpName);
}

}  // namespace

void InstallCrashHandler()
try {
    ReadConfiguration();
    previousFilter = SetUnhandledExceptionFilter(Filter);
    previousTerminate = std::set_terminate(Terminate);
    // Room for the filter on a stack that is used up. Only the loading thread gets it.
    ULONG reserve = kStackReserve;
    SetThreadStackGuarantee(&reserve);
} catch (...) {  // no memory for a name: the process goes on without reports
}

void RemoveCrashHandler()
{
    const auto present = SetUnhandledExceptionFilter(previousFilter);
    if (present != Filter) SetUnhandledExceptionFilter(present);  // installed after ours: leave it, it does not call us
    if (std::get_terminate() == Terminate) std::set_terminate(previousTerminate);
}

}  // namespace Platform
