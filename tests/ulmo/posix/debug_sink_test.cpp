// What reaches the debug sink and the machine's log, which only a process of its own can watch.
#include <gtest/gtest.h>
#include <syslog.h>

#include <cstdlib>

#include "OrvActions/OrvSinks.h"
#include "configured.h"
#include "ulmo/debug_out.h"
#include "ulmo/event_log.h"

namespace {

using namespace Ulmo;

template <class Act>
[[noreturn]] void Watched(Act&& act)
{
    setenv("ORV_DEBUG_OUTPUT", "1", 1);
    act();
    std::exit(0);
}

TEST(DebugSinkDeathTest, ShowsTheModuleInFrontOfTheLine)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(Watched([] { Talvec_Action_EnumerateActionClassesInterface(nullptr); }), testing::ExitedWithCode(0),
                "^orv_unit_tests_exe INFO  \\[XXX,1\\] TTalvecActionClassPlainInfo 88\r\n$");
    EXPECT_EXIT(Watched([] {
                    const Configured configured{{"Software\\Tessarine\\Orv\\DebugOut", "DebugWindowSourcePrefix", 0u}};
                    DebugOut("s").Write(DebugLevelError, u"bare");
                }),
                testing::ExitedWithCode(0), "^ERROR \\[s,1\\] bare\r\n$");
    EXPECT_EXIT(Watched([] {
                    auto console = MakeCounted<DebugOutStreamer>();
                    console->Enable(DebugStreamerConsole);
                    DebugOut heard("s", console);
                    DebugOut out("s", {});
                    out.Write(0, u"nobody");
                    Diagnostics::End();
                    out.Write(0, u"late");
                    heard.Write(0, u"heard");
                    out.Write(4, u"hidden");
                }),
                testing::ExitedWithCode(0), "^STATOUT: late\nERROR \\[s,3\\] heard\r\n$");
}

// Of the lines of each level the mask of the log lets one through.
TEST(DebugSinkDeathTest, TheMachinesLogGetsTheLineInItsLevel)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(Watched([] {
                    openlog("orv", LOG_PERROR, LOG_USER);
                    auto streamer = MakeCounted<DebugOutStreamer>();
                    streamer->Enable(DebugStreamerEventLog);
                    DebugOut out("s", streamer);
                    for (const int shown : {LOG_ERR, LOG_WARNING, LOG_INFO}) {
                        setlogmask(LOG_MASK(shown));
                        out.Write(DebugLevelError, u"a");
                        out.Write(DebugLevelWarning, u"100% \u00C4");
                        out.Write(DebugLevelInfo, u"b");
                    }
                    Diagnostics::End();
                    if (const auto log = EventLog::Get()) log->Write(0, u"anew");
                }),
                testing::ExitedWithCode(0),
                "^Check for EventLogOutput dll\nLoad EventLogOutput result: 0\n"
                "orv: ERROR \\[s,1\\] a\norv: WARNG \\[s,5\\] 100% \u00C4\norv: INFO  \\[s,9\\] b\n"
                "Check for EventLogOutput dll\nLoad EventLogOutput result: 0\norv: anew\n$");
}

}  // namespace
