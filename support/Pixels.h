#pragma once

#include <cstdint>
#include <span>

#include "support/Geometry.h"

namespace kavrelon {

/// A pixel as the platform blends it: opacity in the high byte, then red, green and blue, each already
/// multiplied by the opacity.
using Pixel = std::uint32_t;

/// Whether every pixel is fully opaque.
bool allOpaque(std::span<const Pixel> pixels) noexcept;

/// The pixel with opacity that looks like `onBlack` on a black background and like `onWhite` on a white one.
/// The opacity of these two is ignored.
Pixel seenOnBlackAndWhite(Pixel onBlack, Pixel onWhite) noexcept;

/// Scales a picture: each target pixel is the mean of the part of the source that it covers, and of no less
/// than a pixel of it. Rows follow one another without gaps. Throws std::bad_alloc.
void scalePixels(std::span<const Pixel> source, Size from, std::span<Pixel> target, Size to);

}  // namespace kavrelon
