// Does a step of an HTML engine's work on a document a given number of times and prints the document's
// length, for instruction counts: the difference between two runs is what the step costs.

#include <cstdio>
#include <string>
#include <string_view>

#include "bench/HtmlEngines.h"
#include "headless/HtmlDocuments.h"
#include "headless/NumberIn.h"

namespace {

using namespace kavrelon;
using namespace kavrelon::bench;

int usage() {
    std::fputs(
        "usage: html_runner STEP DOCUMENT LENGTH COUNT\n       html_runner print DOCUMENT LENGTH\nsteps:\n",
        stderr);
    for (const HtmlStep& step : htmlSteps())
        std::fprintf(stderr, "  %-14s %s\n", step.name, step.description);
    std::fputs("documents:\n", stderr);
    for (const HtmlDocumentKind& kind : htmlDocumentKinds())
        std::fprintf(stderr, "  %-14s %s\n", kind.name, kind.description);
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) return usage();
    const HtmlDocumentKind* const kind = findHtmlDocumentKind(argv[2]);
    const auto length = numberIn<std::size_t>(argv[3]);
    if (kind == nullptr || length < 200U) return usage();
    const std::string html = kind->make(*length);
    if (argc == 4 && argv[1] == std::string_view("print")) {
        return std::fwrite(html.data(), 1, html.size(), stdout) == html.size() ? 0 : 1;
    }

    const HtmlStep* const step = findHtmlStep(argv[1]);
    const auto count = argc == 5 ? numberIn<unsigned>(argv[4]) : std::nullopt;
    if (step == nullptr || !count) return usage();
    const auto work = step->prepare(html);
    for (unsigned left = *count; left > 0; --left) work();
    std::printf("%zu\n", html.size());
}
