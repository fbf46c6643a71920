#include <benchmark/benchmark.h>

#include <string>

#include "bench/HtmlEngines.h"
#include "headless/HtmlDocuments.h"

namespace kavrelon::bench {
namespace {

void run(benchmark::State& state, const HtmlStep& step, const HtmlDocumentKind& kind) {
    const std::string html = kind.make(static_cast<std::size_t>(state.range(0)));
    const auto work = step.prepare(html);
    for ([[maybe_unused]] auto _ : state) work();
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(html.size()));
}

/// 8,000 opening signs, and 2,000 attributes: what the report compares with peers that are quick with them.
constexpr std::int64_t kManySigns = 8000;
constexpr std::int64_t kManyAttributes = 12007;

/// What a peer cannot do in any reasonable time: litehtml's work doubles with every table in a table.
bool takesForever(std::string_view step, std::string_view kind) {
    return step.starts_with("litehtml") && kind == "nested-tables";
}

void registerAll() {
    for (const HtmlDocumentKind& kind : htmlDocumentKinds()) {
        const bool hard = &kind != &htmlDocumentKinds().front();
        for (const HtmlStep& step : htmlSteps()) {
            if (takesForever(step.name, kind.name)) continue;
            const std::string name = std::string(kind.name) + "/" + step.name;
            auto* const entry = benchmark::RegisterBenchmark(
                name.c_str(), [&step, &kind](benchmark::State& state) { run(state, step, kind); });
            entry->Arg(2000);
            if (!hard) entry->Arg(32000);
            if (kind.name == std::string_view("signs")) entry->Arg(kManySigns);
            if (kind.name == std::string_view("attributes")) entry->Arg(kManyAttributes);
        }
    }
}

[[maybe_unused]] const bool kRegistered = (registerAll(), true);

}  // namespace
}  // namespace kavrelon::bench
