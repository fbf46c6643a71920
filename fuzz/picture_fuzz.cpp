// Whatever a picture file holds, its outline agrees with it and keeps to the limits; a scaled picture has no
// colours that were not in it; and a name that is accepted leads nowhere but into its folder.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "fuzz/Input.h"
#include "support/Bytes.h"
#include "support/PictureName.h"
#include "support/PictureOutline.h"
#include "support/Pixels.h"

namespace {

using namespace kavrelon;
using fuzz::Bytes;
using fuzz::FuzzInput;
using fuzz::require;

bool theSame(const PictureOutline& one, const PictureOutline& other) {
    return one.format == other.format && one.size == other.size && one.frame == other.frame &&
           one.at == other.at && one.canvas == other.canvas;
}

void checkOutline(Bytes file) {
    const auto outline = outlineOf(file);
    if (!outline) return;
    require(withinPictureLimits(outline->size), "a picture is not too large");
    require(withinPictureLimits(outline->around(outline->size)), "nor is what is around it");
    require(outline->at.x >= 0 && outline->at.y >= 0, "an image is on its canvas");
    require(outline->length > 0 && outline->length <= file.size(), "a picture ends in its file");
    // What is behind the picture does not count: decoders get the file without it.
    const auto cut = outlineOf(file.first(outline->length));
    require(cut && cut->length == outline->length && theSame(*cut, *outline), "a picture is complete");
}

void checkName(std::string_view name) {
    if (!isPlainFileName(name)) return;
    constexpr std::string_view kParts = "\\/:*?\"<>|";
    require(!name.empty() && name.find_first_of(kParts) == name.npos, "a name names a file of its folder");
    require(name.back() != ' ' && name.back() != '.', "a name is the file's whole name");
    require(std::ranges::none_of(name, [](char c) { return c >= 0 && c < ' '; }), "a name can be seen");
}

struct Range {
    unsigned least = std::numeric_limits<unsigned>::max();
    unsigned most = 0;
};

/// What one of a pixel's four parts amounts to in a picture.
Range rangeOf(const std::vector<Pixel>& pixels, unsigned shift) {
    Range range;
    for (const Pixel pixel : pixels) {
        const unsigned part = pixel >> shift & 255U;
        range = {std::min(range.least, part), std::max(range.most, part)};
    }
    return range;
}

void checkScaling(FuzzInput& input) {
    const Size from{input.below(40) + 1, input.below(40) + 1};
    const Size to{input.below(40) + 1, input.below(40) + 1};
    std::vector<Pixel> source(static_cast<std::size_t>(from.width * from.height));
    std::vector<Pixel> target(static_cast<std::size_t>(to.width * to.height));
    for (Pixel& pixel : source) {
        for (int part = 0; part < 4; ++part) pixel = pixel << 8U | input.byte();
    }
    scalePixels(source, from, target, to);
    for (const unsigned shift : {0U, 8U, 16U, 24U}) {
        const Range before = rangeOf(source, shift);
        const Range after = rangeOf(target, shift);
        require(after.least >= before.least && after.most <= before.most, "scaling mixes what is there");
    }
    require(from != to || source == target, "a picture of the right size stays as it is");
    require(!allOpaque(source) || allOpaque(target), "scaling makes no holes");
    const Pixel seen = seenOnBlackAndWhite(source.front(), source.back());
    require(source.front() != source.back() || seen >> 24U == 255,
            "what looks the same everywhere is opaque");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input({data, size});
    checkOutline({data, size});
    checkName(textOf({data, size}));
    checkName(input.text());
    checkScaling(input);
    return 0;
}
