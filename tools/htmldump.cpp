// htmldump FILE: parses a document as the label does and prints what it is made of, one JSON line each.

#include <charconv>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "tools/HtmlDump.h"

namespace {

using namespace kavrelon;

constexpr const char* kUsage =
    "usage: htmldump [--no-anchors] [--font-size POINTS] FILE (- is standard input)\n";
constexpr int kMalformed = 2;

struct Options {
    DocumentDefaults defaults{.EnableAnchors = true};
    std::string file;
};

std::optional<float> points(std::string_view text) {
    float value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool all = error == std::errc() && end == text.data() + text.size();
    return all && value >= 0 ? std::optional(value) : std::nullopt;
}

/// Nothing when the command line is malformed.
std::optional<Options> parseOptions(int argc, char** argv) {
    Options options;
    int next = 1;
    for (; next + 1 < argc; ++next) {
        const std::string_view option = argv[next];
        if (option == "--no-anchors") {
            options.defaults.EnableAnchors = false;
        } else if (option == "--font-size" && next + 2 < argc) {
            const std::optional<float> size = points(argv[++next]);
            if (!size) return std::nullopt;
            options.defaults.DefaultFontSize = *size;
        } else {
            return std::nullopt;
        }
    }
    if (next >= argc) return std::nullopt;
    options.file = argv[next];
    return options;
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
    HTMLDocument document;
    document.setDocument(html, options->defaults);
    dumpDocument(std::cout, document);
    return 0;
}
