// Plays a benchmark stream through one engine and prints the stream's length, for instruction counts: run it
// once with a count of 0 and once with more, and the difference is the engine's work. `compare` plays it
// through both and fails where they show different text: then they have not done the same work.

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "bench/Engines.h"
#include "headless/NumberIn.h"

namespace {

using namespace kavrelon;
using namespace kavrelon::bench;

std::unique_ptr<Engine> makeEngine(std::string_view name, ScreenExtent extent) {
    if (name == "ours") return makeOurEngine(extent, false);
    if (name == "ours-painting") return makeOurEngine(extent, true);
    if (name == "vterm") return makeVtermEngine(extent);
    return nullptr;
}

int usage() {
    std::fputs("usage: stream_runner ours|ours-painting|vterm|compare STREAM COLSxROWS COUNT\nstreams:\n",
               stderr);
    for (const StreamKind& kind : streamKinds())
        std::fprintf(stderr, "  %-8s %s\n", kind.name, kind.description);
    return 2;
}

bool showTheSame(const Engine& one, const Engine& other, ScreenExtent extent) {
    for (int line = 0; line < extent.lines; ++line) {
        for (int column = 0; column < extent.columns; ++column) {
            if (one.shown(column, line) == other.shown(column, line)) continue;
            std::fprintf(stderr, "stream_runner: the engines differ in line %d, column %d\n", line, column);
            return false;
        }
    }
    return true;
}

bool compare(std::string_view stream, ScreenExtent extent) {
    const auto ours = makeOurEngine(extent, false);
    const auto vterm = makeVtermEngine(extent);
    ours->play(stream);
    vterm->play(stream);
    return showTheSame(*ours, *vterm, extent);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) return usage();
    const std::string_view size = argv[3];
    const std::size_t cross = std::min(size.find('x'), size.size() - 1);
    const auto columns = numberIn<int>(size.substr(0, cross));
    const auto lines = numberIn<int>(size.substr(cross + 1));
    const StreamKind* const kind = findStreamKind(argv[2]);
    if (kind == nullptr || columns < 20 || lines < 1) return usage();
    const ScreenExtent extent{*columns, *lines};
    const std::string stream = kind->make(extent, kStreamLength);
    if (argv[1] == std::string_view("compare")) return compare(stream, extent) ? 0 : 1;

    const auto engine = makeEngine(argv[1], extent);
    if (engine == nullptr) return usage();
    for (int count = numberIn<int>(argv[4]).value_or(0); count > 0; --count) engine->play(stream);
    std::printf("%zu\n", stream.size());
}
