// What a diagnostic line costs that nobody wants to see.
#include <benchmark/benchmark.h>

#include "ulmo/debug_out.h"

namespace {

void DiagnosticLineFilteredOut(benchmark::State& state)
{
    Ulmo::DebugOut out("SomeModule");
    for (auto _ : state) out.Write(Ulmo::DebugLevelDebug, u"a line that is held back");
}
BENCHMARK(DiagnosticLineFilteredOut);

}  // namespace
