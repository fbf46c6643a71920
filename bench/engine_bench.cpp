#include <benchmark/benchmark.h>

#include <string>

#include "bench/Engines.h"

namespace kavrelon::bench {
namespace {

using MakeEngine = std::unique_ptr<Engine> (*)(ScreenExtent);

struct Contestant {
    const char* name;
    MakeEngine make;
};

constexpr Contestant kContestants[]{
    {"ours", [](ScreenExtent extent) { return makeOurEngine(extent, false); }},
    {"ours-painting", [](ScreenExtent extent) { return makeOurEngine(extent, true); }},
    {"vterm", makeVtermEngine},
};

void play(benchmark::State& state, const Contestant& contestant, const StreamKind& kind,
          ScreenExtent extent) {
    const std::string stream = kind.make(extent, kStreamLength);
    const auto engine = contestant.make(extent);
    for ([[maybe_unused]] auto _ : state) engine->play(stream);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(stream.size()));
}

void registerAll() {
    for (const ScreenExtent extent : kExtents) {
        const std::string size = std::to_string(extent.columns) + "x" + std::to_string(extent.lines);
        for (const StreamKind& kind : streamKinds()) {
            for (const Contestant& contestant : kContestants) {
                const std::string name = std::string(kind.name) + "/" + size + "/" + contestant.name;
                benchmark::RegisterBenchmark(name.c_str(),
                                             [&contestant, &kind, extent](benchmark::State& state) {
                                                 play(state, contestant, kind, extent);
                                             });
            }
        }
    }
}

[[maybe_unused]] const bool kRegistered = (registerAll(), true);

}  // namespace
}  // namespace kavrelon::bench
