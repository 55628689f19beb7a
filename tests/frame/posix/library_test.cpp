// The end of the library inside a process that goes on, and a start after it.
#include <gtest/gtest.h>

#include <limits.h>
#include <signal.h>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>

#include "OrvActions.h"
#include "forms/sibling.h"
#include "objects/message.h"
#include "platform/library_events.h"
#include "platform/posix/configured.h"
#include "ulmo/debug_out.h"
#include "ulmo/exception_history.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {
namespace {

using Platform::LibraryEvents::Ended;
using Platform::LibraryEvents::Started;

bool WatchesForCrashes()
{
    struct sigaction present {};
    sigaction(SIGABRT, nullptr, &present);
    return (present.sa_flags & SA_SIGINFO) != 0;
}

// In both sets, of which the native one is selected afterwards.
std::string Texts()
{
    std::string texts;
    for (const OrvBool native : {OrvBool{0}, OrvBool{1}}) {
        TTalvecActionPlainInfo action{}, event{};
        TTalvecParameterPlainInfo field{};
        OrvAct_SetNativeTranslation(native);
        Talvec_Action_GetActionInfo(&action, ORV_ACTION_PanLeft);
        Talvec_Action_GetEventDescriptionInfo(&event);
        Talvec_Action_GetEventFieldInfo(&field, 0);
        texts.append(action.PlainNameA).append(action.PlainNameU).append(action.DescriptionA).append(event.PlainNameA);
        texts.append(Ulmo::Utf8FromWide(TerminatedView(action.PlainNameW)));
        texts.append(Ulmo::Utf8FromWide(TerminatedView(field.PlainNameW)));
    }
    return texts;
}

void WriteTexts()
{
    TTalvecActionPlainInfo action{};
    TTalvecParameterPlainInfo field{};
    action.Code = ORV_ACTION_PanLeft;
    action.PlainNameW = action.DescriptionW = field.PlainNameW = field.DescriptionW = Boundary(u"written");
    for (const OrvBool native : {OrvBool{0}, OrvBool{1}}) {
        OrvAct_SetNativeTranslation(native);
        Talvec_Action_SetActionPlainInfo(&action);
        Talvec_Action_SetEventDescriptionPlainInfo(&action);
        Talvec_Action_SetEventFieldPlainInfo(&field, 0);
    }
}

volatile sig_atomic_t handled = 0;
char hostsStack[1 << 16];

void HandleInHost(int, siginfo_t*, void*)
{
    handled = handled + 1;
}

void SetHostsHandler(int crash)
{
    struct sigaction own {};
    own.sa_sigaction = HandleInHost;
    own.sa_flags = SA_SIGINFO;
    sigaction(crash, &own, nullptr);
}

auto HandlerOf(int crash)
{
    struct sigaction present {};
    sigaction(crash, nullptr, &present);
    return present.sa_sigaction;
}

// What the host has for crashes: one that it does not care for, one that it handles, and a stack.
void SetHostsHandlers()
{
    SetHostsHandler(SIGILL);
    signal(SIGFPE, SIG_IGN);
    const stack_t stack{hostsStack, 0, sizeof hostsStack};
    sigaltstack(&stack, nullptr);
}

// The number of the first thing that is wrong, 0 when all is well.
int EndAndStart(const std::string& reports)
{
    const Configured configured{{"SOFTWARE\\Tessarine\\Ulmo", "CrashDumpFolder", reports}};
    const std::string texts = Texts();
    const auto before = HandlerOf(SIGSEGV);
    TOrvLastErrorInfo failure{};
    WriteTexts();
    TOrvHandle object = Talvec_Action_CreateActionByName(Boundary(u"Nobody"));
    const TOrvChannelValue channel{};
    OrvAct_SetVideoInput(object, &channel);  // which an unknown action refuses
    Ulmo::DebugOut("library").Write(Ulmo::DebugLevelInfo, u"line");
    SiblingConverter* const sibling = SetSibling(nullptr);
    SetSibling(sibling);
    if (Texts() == texts || WatchesForCrashes() || !sibling || !OrvAct_GetLastError(&failure)) return 1;
    Ended(false);
    SetHostsHandlers();
    if (SetSibling(nullptr) != nullptr) return 2;
    Started();
    stack_t stack{};
    sigaltstack(nullptr, &stack);
    if (!WatchesForCrashes() || stack.ss_sp != hostsStack) return 3;
    if (Texts() != texts) return 4;
    if (OrvAct_GetLastError(&failure) || !Ulmo::ExceptionHistory::Snapshot().empty()) return 5;
    if (SetSibling(sibling) != sibling) return 6;
    raise(SIGILL);  // the first one is reported, both go on to the host
    std::filesystem::rename(*std::filesystem::directory_iterator(reports), reports + "/first");
    raise(SIGFPE);
    if (handled != 1) return 7;
    SetHostsHandler(SIGBUS);  // what the host puts in the place of ours stays
    Ended(false);
    raise(SIGILL);
    if (WatchesForCrashes() || HandlerOf(SIGSEGV) != before || HandlerOf(SIGBUS) != HandleInHost) return 8;
    if (handled != 2) return 12;
    Started();
    if (Texts() != texts) return 9;
    for (int i = 0; i < PTHREAD_KEYS_MAX; ++i) {  // a slot that is not given back would be missing
        Ended(false);
        Started();
    }
    // What a system that tells of the end of threads makes of the calling thread's failure.
    OrvAct_SetVideoInput(object, &channel);
    if (!OrvAct_GetLastError(&failure) || Ulmo::ExceptionHistory::Snapshot().empty()) return 10;
    Platform::LibraryEvents::ThreadEnded();
    if (OrvAct_GetLastError(&failure)) return 11;
    OrvAct_CloseHandle(object);
    return 0;
}

TEST(LibraryDeathTest, GivesEverythingBackAndStartsAnew)
{
    const std::filesystem::path reports = testing::TempDir() + "orv_library_test";
    std::filesystem::create_directory(reports);
    EXPECT_EXIT(std::exit(EndAndStart(reports)), testing::ExitedWithCode(0), "");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(reports), {}), 1);
    std::filesystem::remove_all(reports);
}

}  // namespace
}  // namespace OrvPLC
