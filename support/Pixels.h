#pragma once

#include <cstdint>
#include <span>

#include "support/Geometry.h"

namespace kavrelon {

/// A pixel as the platform blends it: opacity in the high byte, then red, green and blue, each already
/// multiplied by the opacity.
using Pixel = std::uint32_t;

/// Whether no pixel lets through what is below it.
bool allOpaque(std::span<const Pixel> pixels) noexcept;

/// The pixel that looks like these two on a black and on a white ground, whose own opacity does not count.
Pixel seenOnBlackAndWhite(Pixel onBlack, Pixel onWhite) noexcept;

/// Scales a picture: each target pixel is the mean of the part of the source that it covers. Rows follow one
/// another without gaps. Throws std::bad_alloc.
void scalePixels(std::span<const Pixel> source, Size from, std::span<Pixel> target, Size to);

}  // namespace kavrelon
