// What extensions cost a host while it starts: parsing a document, and registering what it holds. Five parameters an
// action; a megabyte holds about 3,700 such actions, and 10,000 of them are 2.7 megabytes.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "catalogue/extension_reader.h"
#include "ulmo/xml_tree.h"

namespace OrvBench {
namespace {

using namespace OrvPLC;

std::string Document(std::int64_t actions)
{
    std::string text = "<PLC><actions>";
    for (std::int64_t i = 0; i < actions; ++i) {
        const std::string number = std::to_string(10000 + i);
        text += "<action name='Site" + number + "' code='" + number + "' class='Video'><params>";
        for (const char* parameter : {"name='Camera' type='MediaChannel'", "name='Speed' type='Int32'",
                                      "name='Text' type='String'", "name='On' type='Bool'", "name='At' type='Int64'"}) {
            text.append("<parameter ").append(parameter).append("/>");
        }
        text += "</params></action>";
    }
    return text + "</actions></PLC>";
}

void Report(benchmark::State& state, std::size_t size)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(size));
    state.counters["bytes"] = static_cast<double>(size);
}

void ExtensionParse(benchmark::State& state)
{
    const std::string document = Document(state.range(0));
    for (auto _ : state) {
        Ulmo::XMLTree tree;
        tree.Parse(document.c_str());
        benchmark::DoNotOptimize(tree.GetRoot().get());
    }
    Report(state, document.size());
}
BENCHMARK(ExtensionParse)->Arg(1250)->Arg(2500)->Arg(3700)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);

void ExtensionParseAndLoad(benchmark::State& state)
{
    const std::string document = Document(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto catalogue = std::make_unique<TOrvActionCatalogue>(TOrvActionCatalogue::Content::BuiltIn);
        state.ResumeTiming();
        ExtensionReader(*catalogue).Read(document.c_str());
        state.PauseTiming();
        if (!catalogue->FindActionByCode(static_cast<std::uint32_t>(9999 + state.range(0)))) {
            state.SkipWithError("the last action is missing");
        }
        catalogue.reset();
        state.ResumeTiming();
    }
    Report(state, document.size());
}
BENCHMARK(ExtensionParseAndLoad)->Arg(1250)->Arg(2500)->Arg(3700)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace OrvBench
