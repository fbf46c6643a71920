// htmldump FILE: parses a document as the label does and prints a JSON line for each of its elements.

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "headless/LabelEngine.h"
#include "headless/NumberIn.h"
#include "tools/HtmlDump.h"

namespace {

using namespace kavrelon;

constexpr const char* kUsage =
    "usage: htmldump [--no-anchors] [--font-size POINTS] [--resolution PIXELS] [--layout WIDTH[xHEIGHT]] "
    "FILE (- is standard "
    "input)\n";
constexpr int kMalformed = 2;

struct Options {
    DocumentDefaults defaults{.EnableAnchors = true};
    int pixelsPerInch = 96;
    std::optional<Size> page;
    std::string file;
};

/// A finite number that is not negative, whole where `Number` is.
template <class Number>
std::optional<Number> measure(std::string_view text) {
    const auto number = numberIn<Number>(text);
    return number >= Number{0} && number <= std::numeric_limits<Number>::max() ? number : std::nullopt;
}

/// "WIDTH" or "WIDTHxHEIGHT".
std::optional<Size> pageSize(std::string_view text) {
    const std::size_t cross = std::min(text.find('x'), text.size());
    const auto width = measure<int>(text.substr(0, cross));
    const auto height = cross == text.size() ? 0 : measure<int>(text.substr(cross + 1));
    if (!width || !height) return std::nullopt;
    return Size{*width, *height};
}

/// Nothing when the command line is malformed.
std::optional<Options> parseOptions(int argc, char** argv) {
    Options options;
    int next = 1;
    for (; next + 1 < argc; ++next) {
        const std::string_view option = argv[next];
        if (option == "--no-anchors") {
            options.defaults.EnableAnchors = false;
        } else if (option == "--font-size") {
            const auto points = measure<float>(argv[++next]);
            if (!points) return std::nullopt;
            options.defaults.DefaultFontSize = *points;
        } else if (option == "--resolution") {
            const auto pixels = measure<int>(argv[++next]);
            if (!pixels) return std::nullopt;
            options.pixelsPerInch = *pixels;
        } else if (option == "--layout") {
            options.page = pageSize(argv[++next]);
            if (!options.page) return std::nullopt;
        } else {
            return std::nullopt;
        }
    }
    if (next >= argc) return std::nullopt;
    options.file = argv[next];
    return options;
}

void dump(const std::string& html, const Options& options) {
    LabelEngine label(options.pixelsPerInch);
    label.parse(html, options.defaults);
    if (!options.page) return dumpDocument(std::cout, label.document);
    label.layOut(*options.page, {.DefaultFontSize = options.defaults.DefaultFontSize});
    dumpDocument(std::cout, label.document);
    dumpLayout(std::cout, label.layout);
}

std::string readAll(std::istream& input) {
    return {std::istreambuf_iterator<char>(input), {}};
}

}  // namespace

int main(int argc, char** argv) {
    const std::optional<Options> options = parseOptions(argc, argv);
    if (!options) {
        std::cerr << kUsage;
        return kMalformed;
    }
    std::string html;
    if (options->file == "-") {
        html = readAll(std::cin);
    } else {
        std::ifstream file(options->file, std::ios::binary);
        if (!file) {
            std::cerr << options->file << ": cannot be opened\n";
            return kMalformed;
        }
        html = readAll(file);
    }
    dump(html, *options);
    return 0;
}
