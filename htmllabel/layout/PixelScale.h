#pragma once

#include <algorithm>

#include "support/Conversions.h"
#include "support/Geometry.h"

namespace kavrelon {

/// The numbers of a document are limited to this many pixels, so that no sum of them overflows.
inline constexpr int kMostPixels = 32767;

/// Turns the pixels of a document, of which an inch has 96, into those of a canvas, so that a document keeps
/// its proportions whatever the canvas's resolution.
class PixelScale {
  public:
    static constexpr int kPixelsPerInch = 96;

    explicit PixelScale(int pixelsPerInch = kPixelsPerInch) : pixelsPerInch_(pixelsPerInch) {}

    /// What is there at all gets one pixel at least.
    int operator()(int pixels) const {
        if (pixels <= 0 || pixelsPerInch_ == kPixelsPerInch) return pixels;
        const double scaled = static_cast<double>(pixels) * pixelsPerInch_ / kPixelsPerInch;
        return roundHalfToEven(std::clamp(scaled, 1.0, double{kMostPixels}));
    }
    Size operator()(Size size) const { return {(*this)(size.width), (*this)(size.height)}; }

  private:
    int pixelsPerInch_;
};

}  // namespace kavrelon
