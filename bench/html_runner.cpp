// Does a step of an HTML engine's work on a document as often as it is told and prints the document's length,
// for instruction counts: the difference between two runs is what the step costs.

#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>

#include "bench/HtmlEngines.h"
#include "headless/HtmlDocuments.h"

namespace {

using namespace kavrelon;
using namespace kavrelon::bench;

/// The number that a whole text spells, -1 when it spells none.
int number(std::string_view text) {
    int value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && stop == text.data() + text.size() ? value : -1;
}

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
    const int length = number(argv[3]);
    if (kind == nullptr || length < 200) return usage();
    const std::string html = kind->make(static_cast<std::size_t>(length));
    if (argc == 4 && argv[1] == std::string_view("print")) {
        return std::fwrite(html.data(), 1, html.size(), stdout) == html.size() ? 0 : 1;
    }

    const HtmlStep* const step = findHtmlStep(argv[1]);
    if (step == nullptr || argc != 5 || number(argv[4]) < 0) return usage();
    const auto work = step->prepare(html);
    for (int count = number(argv[4]); count > 0; --count) work();
    std::printf("%zu\n", html.size());
}
