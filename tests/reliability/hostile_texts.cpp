// Series of texts made to hurt: every front, repeated piece and end together. What a reader does has to grow with the
// length of the text, not with its square.
//
//   reliability_texts UNITS
//
// Work is counted in instructions where the system counts them, else in time of the processor, by the least of three
// runs; a series is a finding when four times the text costs more than seven times the work and the work is large
// enough to be told from noise. Whether time shows it too is asked three times.
#include <linux/perf_event.h>
#include <malloc.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include <OrvActions.h>

namespace {

constexpr const char16_t* kFronts[] = {u"",    u"A(",   u"A(x: ", u"A(x: \"", u"A(x: {", u"A(x: 1, <a b=\"",
                                       u"?A(", u"A b\n"};
constexpr const char16_t* kPieces[] = {u"\\",
                                       u"\"",
                                       u"\\\"",
                                       u"{",
                                       u"}",
                                       u"{1,2,\"",
                                       u"{{1,1,1,1,1,\"\\\"},",
                                       u"(",
                                       u")",
                                       u":",
                                       u",",
                                       u"a:",
                                       u"a: 1, ",
                                       u" ",
                                       u"\n",
                                       u"1",
                                       u"1.",
                                       u"1e",
                                       u"<",
                                       u"<a b=\"",
                                       u"</a>",
                                       u"<!--\"",
                                       u"<![CDATA[\"",
                                       u"b=c=",
                                       u"x: \"<a/>\", ",
                                       u"\u2028",
                                       u"\xD800"};
constexpr const char16_t* kEnds[] = {u"", u")", u"\")", u"})", u">)", u": 1)"};
constexpr double kMostGrowth = 7;
constexpr std::uint64_t kNoiseInstructions = 20'000'000, kNoiseNanoseconds = 20'000'000;

class Work {
public:
    Work()
    {
        perf_event_attr wanted{};
        wanted.size = sizeof wanted;
        wanted.type = PERF_TYPE_HARDWARE;
        wanted.config = PERF_COUNT_HW_INSTRUCTIONS;
        wanted.exclude_kernel = 1;
        file_ = static_cast<int>(syscall(SYS_perf_event_open, &wanted, 0, -1, -1, 0UL));
    }
    bool CountsInstructions() const { return file_ != -1; }
    std::uint64_t Now() const
    {
        std::uint64_t count = 0;
        if (file_ != -1 && read(file_, &count, sizeof count) == sizeof count) return count;
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000'000U + static_cast<std::uint64_t>(time.tv_nsec);
    }

private:
    int file_;
};

std::u16string Series(const char16_t* front, const char16_t* piece, const char16_t* end, std::size_t units)
{
    std::u16string text = front;
    while (text.size() < units) text += piece;
    return text += end;
}

std::uint64_t Cost(const Work& work, const std::u16string& text)
{
    std::uint64_t least = ~std::uint64_t{0};
    for (int i = 0; i < 3; ++i) {
        const std::uint64_t start = work.Now();
        TOrvHandle object = OrvAct_CreateFromTextBufferW(reinterpret_cast<const OrvWChar*>(text.data()),
                                                         static_cast<std::uint32_t>(text.size()), 0, 0, nullptr);
        if (object) OrvAct_CloseHandle(object);
        OrvBStr converted = nullptr;
        Talvec_Action_ConvertHeskActionTextToOrvActionText(reinterpret_cast<const OrvWChar*>(text.c_str()), &converted);
        SysFreeString(converted);
        least = std::min(least, work.Now() - start);
    }
    return least;
}

}  // namespace

int main(int count, char** arguments)
{
    const std::size_t units = count > 1 ? std::strtoull(arguments[1], nullptr, 10) : 20'000;
    // Freed memory stays with the process: new pages cost the system more than the reader's work on them.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    const Work work;
    const std::uint64_t noise = work.CountsInstructions() ? kNoiseInstructions : kNoiseNanoseconds;
    std::uint64_t series = 0, findings = 0;
    double most = 0;
    for (const char16_t* front : kFronts) {
        for (const char16_t* piece : kPieces) {
            for (const char16_t* end : kEnds) {
                ++series;
                double growth = kMostGrowth;
                for (int i = 0; i < 3 && growth >= kMostGrowth; ++i) {
                    const std::uint64_t large = Cost(work, Series(front, piece, end, 4 * units));
                    growth = 0;
                    if (large < noise) break;
                    const std::uint64_t small = Cost(work, Series(front, piece, end, units));
                    growth = static_cast<double>(large) / static_cast<double>(small);
                }
                most = std::max(most, growth);
                if (growth < kMostGrowth) continue;
                ++findings;
                std::printf("finding series %llu: four times the text, %.1f times the work\n",
                            static_cast<unsigned long long>(series), growth);
            }
        }
    }
    std::printf("counted %s\nunits %zu and %zu\nseries %llu\nlargest_growth %.2f\nfindings %llu\n",
                work.CountsInstructions() ? "instructions" : "processor_time", units, 4 * units,
                static_cast<unsigned long long>(series), most, static_cast<unsigned long long>(findings));
    return findings != 0;
}
