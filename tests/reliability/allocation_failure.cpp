// Makes memory run out at every place of every operation of the library, and looks at what is left: the answer or an
// error, the object as it was or whole, nothing leaked, the next call right.
//
//   reliability_allocation [--fresh] [--every N] [--only NAME] [--stacks]
//
// With --fresh each failure hits a process in which the operation has never run, so that what is made on first use is
// not there yet; for the operations that make such things.
//
// Prints figures as `name value` lines for the sheet; a finding is a line of its own. Exit status 1 with findings.
#include <execinfo.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

#include "failing_allocator.h"
#include "operation.h"

void AddOperations1(std::vector<Operation>& all);
void AddOperations2(std::vector<Operation>& all);
void AddOperations3(std::vector<Operation>& all);
void AddOperations4(std::vector<Operation>& all);

namespace {

const Surround kQuiet{[] {}, [] {}};
constexpr int kWarmUps = 3;

bool withStacks = false;
std::uint64_t points = 0, findings = 0, cases = 0, answered = 0, refused = 0;
std::map<std::string, std::uint64_t> byReason;

char current[160];  // for a crash: what was being done

void OnCrash(int signal)
{
    FailingAllocator::Disarm();
    [[maybe_unused]] ssize_t written = write(STDOUT_FILENO, "finding crash: ", 15);
    written = write(STDOUT_FILENO, current, std::strlen(current));
    written = write(STDOUT_FILENO, "\n", 1);
    void* frames[40];
    const std::size_t count = FailingAllocator::FailingStack(frames, std::size(frames));
    if (withStacks) backtrace_symbols_fd(frames, static_cast<int>(count), STDOUT_FILENO);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void Report(const std::string& reason)
{
    ++findings;
    ++byReason[reason];
    std::printf("finding %s: %s\n", reason.c_str(), current);
    if (!withStacks) return;
    std::fflush(stdout);
    void* frames[40];
    const std::size_t count = FailingAllocator::FailingStack(frames, std::size(frames));
    backtrace_symbols_fd(frames, static_cast<int>(count), STDOUT_FILENO);
}

bool Same(const Outcome& a, const Outcome& b)
{
    return a.answer == b.answer && a.error == b.error && a.state == b.state && a.threw == b.threw;
}

// How a refusal shows: a function that has a last error stores one, an operation throws std::bad_alloc. The block of a
// binary form is null instead. The object is as it was, or as the whole call leaves it.
void Judge(const Operation& operation, const Outcome& outcome, const Outcome& whole)
{
    if (outcome.otherThrown) return Report("something else than std::bad_alloc left the operation");
    if (Same(outcome, whole)) {
        ++answered;
        return;
    }
    ++refused;
    const bool nullBlock = operation.name == "StoreToBinary";
    if (!outcome.refused && !nullBlock) return Report("wrong answer");
    if (operation.storesError && outcome.error.empty()) return Report("refused without an error");
    if (!operation.isInterface && outcome.threw) return Report("thrown out of an exported function");
    if (operation.storesError && outcome.error != "error: std::bad_alloc" && outcome.error != whole.error) {
        return Report("refused with the error of something else, " + outcome.error);
    }
    if (outcome.state != outcome.before && outcome.state != whole.state) return Report("object half changed");
}

void FailOnce(const Operation& operation, unsigned variant, std::uint64_t number, bool all, const Outcome& whole)
{
    std::snprintf(current, sizeof current, "%s, input %u, allocation %u%s", operation.name.c_str(), variant,
                  static_cast<unsigned>(number), all ? " and all after it" : "");
    const Surround armed{[&] { FailingAllocator::Arm(number, all); }, [] { FailingAllocator::Disarm(); }};
    const std::uint32_t openBefore = OrvAct_GetNumberOfOpenHandles();
    const std::int64_t before = FailingAllocator::LiveBlocks();
    Judge(operation, operation.call(variant, armed), whole);
    const std::int64_t left = FailingAllocator::LiveBlocks() - before;
    // What a call keeps for the process is kept by the next one as well: only what each failure costs is a leak.
    if (left > 0) {
        const std::int64_t again = FailingAllocator::LiveBlocks();
        operation.call(variant, armed);
        if (FailingAllocator::LiveBlocks() > again) Report("leak");
    }
    if (OrvAct_GetNumberOfOpenHandles() != openBefore) Report("open object");
    if (!Same(operation.call(variant, kQuiet), whole)) Report("the next call answers otherwise");
    ++points;
}

void RunCase(const Operation& operation, unsigned variant)
{
    Outcome whole;
    std::snprintf(current, sizeof current, "%s, input %u, before any failure", operation.name.c_str(), variant);
    for (int i = 0; i < kWarmUps; ++i) whole = operation.call(variant, kQuiet);
    std::uint64_t asked = 0;
    const Surround counting{[] { FailingAllocator::Arm(0, false); }, [&] { asked = FailingAllocator::Disarm(); }};
    if (!Same(operation.call(variant, counting), whole)) return Report("the answer differs from call to call");
    ++cases;
    for (std::uint64_t number = 1; number <= asked; ++number) {
        FailOnce(operation, variant, number, false, whole);
        FailOnce(operation, variant, number, true, whole);
    }
}

// In a child: its first call is the one that fails. Gives what the child has to say, an exit status.
enum Verdict { kFine, kFinding, kBehindTheEnd };

int FailFirstCall(const Operation& operation, unsigned variant, std::uint64_t number, bool all)
{
    std::snprintf(current, sizeof current, "%s, input %u, allocation %u%s of a fresh process", operation.name.c_str(),
                  variant, static_cast<unsigned>(number), all ? " and all after it" : "");
    const Surround armed{[&] { FailingAllocator::Arm(number, all); }, [] { FailingAllocator::Disarm(); }};
    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    const Outcome outcome = operation.call(variant, armed);
    if (!FailingAllocator::Failed()) return kBehindTheEnd;
    if (OrvAct_GetNumberOfOpenHandles() != open) Report("open object");
    const Outcome whole = operation.call(variant, kQuiet);
    Judge(operation, outcome, whole);
    const Outcome again = operation.call(variant, kQuiet);
    if (!Same(again, whole)) Report("the next call answers otherwise");
    std::fflush(stdout);
    return findings ? kFinding : kFine;
}

int InChild(const std::function<int()>& work)
{
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) std::exit(work());  // what has been counted of the library's code is written then
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : int{kFinding};
}

std::uint64_t Count(const Operation& operation, unsigned variant)
{
    std::uint64_t asked = 0;
    operation.call(variant, {[] { FailingAllocator::Arm(0, false); }, [&] { asked = FailingAllocator::Disarm(); }});
    return asked;
}

// Where the first call asks for as much as later ones it makes nothing that stays: those places have been seen.
int AsksForMoreAtFirst(const Operation& operation)
{
    for (unsigned variant = 0; variant < Sample::Variants(operation.name); ++variant) {
        const std::uint64_t first = Count(operation, variant);
        Count(operation, variant);
        if (first != Count(operation, variant)) return 1;
    }
    return 0;
}

void RunCaseFresh(const Operation& operation, unsigned variant)
{
    ++cases;
    for (std::uint64_t number = 1;; ++number) {
        for (const bool all : {false, true}) {
            const int verdict = InChild([&] { return FailFirstCall(operation, variant, number, all); });
            if (verdict == kBehindTheEnd) return;
            ++points;
            if (verdict == kFinding) ++findings;
        }
    }
}

// The library remembers this many failures; from then on another one costs nothing.
void FillHistory()
{
    TOrvHandle object = Talvec_Action_CreateActionByName(reinterpret_cast<const OrvWChar*>(u"Nobody"));
    for (int i = 0; i < 600; ++i) OrvAct_SetVideoInput(object, nullptr);
    OrvAct_CloseHandle(object);
}

}  // namespace

int main(int count, char** arguments)
{
    bool fresh = false;
    std::size_t every = 1, seen = 0;
    std::string only;
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (argument == "--fresh") fresh = true;
        if (argument == "--stacks") withStacks = true;
        if (argument == "--every" && i + 1 < count) every = std::strtoull(arguments[++i], nullptr, 10);
        if (argument == "--only" && i + 1 < count) only = arguments[++i];
    }
    std::signal(SIGABRT, OnCrash);
    std::signal(SIGSEGV, OnCrash);
    void* frame = nullptr;
    backtrace(&frame, 1);  // the first call loads a library
    std::vector<Operation> all;
    AddOperations1(all);
    AddOperations2(all);
    AddOperations3(all);
    AddOperations4(all);
    Sample::EventRecord();  // holds an object
    Sample::Image();
    if (!fresh) FillHistory();
    std::size_t done = 0;
    for (const Operation& operation : all) {
        if (!only.empty() && operation.name != only) continue;
        if (seen++ % every != 0) continue;
        ++done;
        if (fresh && !InChild([&] { return AsksForMoreAtFirst(operation); })) continue;
        for (unsigned variant = 0; variant < Sample::Variants(operation.name); ++variant) {
            fresh ? RunCaseFresh(operation, variant) : RunCase(operation, variant);
        }
    }
    for (const auto& [reason, number] : byReason) {
        std::printf("%s times: %s\n", std::to_string(number).c_str(), reason.c_str());
    }
    const std::pair<const char*, std::uint64_t> figures[] = {{"operations", done}, {"cases", cases},
                                                             {"points", points},   {"answered", answered},
                                                             {"refused", refused}, {"findings", findings}};
    for (const auto& [name, value] : figures) {
        if (value || !fresh) std::printf("%s %s\n", name, std::to_string(value).c_str());
    }
    return findings != 0;
}
