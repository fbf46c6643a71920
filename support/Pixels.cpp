#include "support/Pixels.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace kavrelon {
namespace {

/// A row or column of pixels in memory: those `step` apart.
struct Line {
    std::size_t start;
    std::size_t step;
};

/// The mean colour of a line from `begin` to `end`, both in units of 1/`unit` pixel.
Pixel mean(std::span<const Pixel> pixels, Line line, std::uint64_t begin, std::uint64_t end,
           std::uint64_t unit) {
    std::array<std::uint64_t, 4> sums{};
    for (std::uint64_t place = begin; place < end;) {
        const std::uint64_t index = place / unit;
        const std::uint64_t next = std::min((index + 1) * unit, end);
        const Pixel pixel = pixels[line.start + static_cast<std::size_t>(index) * line.step];
        for (std::size_t channel = 0; channel < sums.size(); ++channel) {
            sums[channel] += (pixel >> (8 * channel) & 0xFFU) * (next - place);
        }
        place = next;
    }
    Pixel result = 0;
    for (std::size_t channel = 0; channel < sums.size(); ++channel) {
        result |= static_cast<Pixel>((sums[channel] + (end - begin) / 2) / (end - begin)) << (8 * channel);
    }
    return result;
}

/// Scales lines of `from` pixels to lines of `to` pixels. Of a line that gets longer, each pixel is the mean
/// of as much as a pixel of the source, around its own middle: what is next to each other runs into one
/// another.
void scaleLine(std::span<const Pixel> source, Line in, std::size_t from, std::span<Pixel> target, Line out,
               std::size_t to) {
    const std::uint64_t unit = 2 * std::uint64_t{to};
    const std::uint64_t length = 2 * std::uint64_t{std::max(from, to)};
    const std::uint64_t end = from * unit;
    for (std::size_t index = 0; index < to; ++index) {
        // In halves, so that middles are whole numbers; less half of the length, where that is still inside.
        const std::uint64_t middle = (2 * std::uint64_t{index} + 1) * from;
        const std::uint64_t first = middle - std::min(middle, length / 2);
        target[out.start + index * out.step] =
            mean(source, in, first, std::min(middle + length / 2, end), unit);
    }
}

}  // namespace

bool allOpaque(std::span<const Pixel> pixels) noexcept {
    return std::ranges::all_of(pixels, [](Pixel pixel) { return pixel >> 24U == 0xFFU; });
}

Pixel seenOnBlackAndWhite(Pixel onBlack, Pixel onWhite) noexcept {
    const auto channel = [](Pixel pixel, int shift) { return pixel >> shift & 0xFFU; };
    const Pixel black = channel(onBlack, 8);
    // A pixel that is darker on white than on black inverts its background; no opacity does that. It counts
    // as opaque.
    const Pixel opacity = 0xFFU - (std::max(channel(onWhite, 8), black) - black);
    Pixel result = opacity << 24U;
    for (const int shift : {0, 8, 16}) result |= std::min(channel(onBlack, shift), opacity) << shift;
    return result;
}

void scalePixels(std::span<const Pixel> source, Size from, std::span<Pixel> target, Size to) {
    const auto fromWidth = static_cast<std::size_t>(from.width);
    const auto fromHeight = static_cast<std::size_t>(from.height);
    const auto toWidth = static_cast<std::size_t>(to.width);
    const auto toHeight = static_cast<std::size_t>(to.height);
    std::vector<Pixel> narrowed(toWidth * fromHeight);
    for (std::size_t row = 0; row < fromHeight; ++row) {
        scaleLine(source, {row * fromWidth, 1}, fromWidth, narrowed, {row * toWidth, 1}, toWidth);
    }
    for (std::size_t column = 0; column < toWidth; ++column) {
        scaleLine(narrowed, {column, toWidth}, fromHeight, target, {column, toWidth}, toHeight);
    }
}

}  // namespace kavrelon
