// Makes memory run out at every place of the loading of the library, each in a process of its own. The host has to
// live: dlopen answers null, or the library is there and answers like any other.
//
//   reliability_load LIBRARY
#include <dlfcn.h>
#include <execinfo.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include <OrvActions.h>

#include "failing_allocator.h"

namespace {

enum Verdict { kRefused, kLeftUnstarted, kLoaded, kWrongAnswer, kBehindTheEnd };

const char* library = nullptr;

template <class Function>
Function* Find(void* module, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(module, name));
}

bool Answers(void* module)
{
    auto* create = Find<decltype(OrvAct_CreateFromTextBufferA)>(module, "OrvAct_CreateFromTextBufferA");
    auto* store = Find<decltype(OrvAct_StoreToTextBufferA)>(module, "OrvAct_StoreToTextBufferA");
    auto* close = Find<decltype(OrvAct_CloseHandle)>(module, "OrvAct_CloseHandle");
    auto* actions = Find<decltype(OrvAct_GetNumberOfActions)>(module, "OrvAct_GetNumberOfActions");
    auto* error = Find<decltype(OrvAct_GetLastError)>(module, "OrvAct_GetLastError");
    if (actions() != 429) return false;
    TOrvHandle handle = create("PanLeft (Camera: 7, Speed: 3)", ORV_LENGTH_TERMINATED, 0, 1, nullptr);
    if (!handle) return false;
    char text[200];
    const bool stored = store(handle, text, sizeof text, 0, 1, nullptr);
    const bool right = stored && std::string(text) == "PanLeft (Camera: 7, Speed: 3)";
    TOrvLastErrorInfo info{};
    const bool told = !store(handle, text, 3, 0, 1, nullptr) && error(&info) && info.code == ORV_ERROR;
    close(handle);
    return right && told;
}

int LoadOnce(std::uint64_t number, bool all)
{
    FailingAllocator::Arm(number, all);
    void* module = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    FailingAllocator::Disarm();
    if (!FailingAllocator::Failed()) return kBehindTheEnd;
    if (module) return Answers(module) ? kLoaded : kWrongAnswer;
    // Once there is memory again the host may try again. Here only the system refuses; at two of its last places it
    // keeps a library that is never to be closed, without ever starting it. That is counted apart.
    module = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    return module && Answers(module) ? kRefused : kLeftUnstarted;
}

}  // namespace

int main(int count, char** arguments)
{
    if (count < 2) return 2;
    library = arguments[1];
    void* frame = nullptr;
    backtrace(&frame, 1);  // the first call loads a library
    std::uint64_t points = 0, refused = 0, leftUnstarted = 0, loaded = 0, findings = 0;
    for (std::uint64_t number = 1;; ++number) {
        bool behindTheEnd = false;
        for (const bool all : {false, true}) {
            std::fflush(stdout);
            const pid_t child = fork();
            if (child == 0) std::exit(LoadOnce(number, all));  // the library's end has to bear it as well
            int status = 0;
            waitpid(child, &status, 0);
            const int verdict = WIFEXITED(status) ? WEXITSTATUS(status) : int{kWrongAnswer};
            behindTheEnd = behindTheEnd || verdict == kBehindTheEnd;
            if (verdict == kBehindTheEnd) break;
            ++points;
            refused += verdict == kRefused;
            leftUnstarted += verdict == kLeftUnstarted;
            loaded += verdict == kLoaded;
            if (verdict != kWrongAnswer) continue;
            ++findings;
            std::printf("finding %s: allocation %u%s while the library loads\n",
                        WIFEXITED(status) ? "wrong answer" : "the host ends", static_cast<unsigned>(number),
                        all ? " and all after it" : "");
        }
        if (behindTheEnd) break;
    }
    const std::pair<const char*, std::uint64_t> figures[] = {{"points", points},
                                                             {"refused", refused},
                                                             {"left_unstarted_by_the_system", leftUnstarted},
                                                             {"loaded", loaded},
                                                             {"findings", findings}};
    for (const auto& [name, value] : figures) std::printf("%s %s\n", name, std::to_string(value).c_str());
    return findings != 0;
}
