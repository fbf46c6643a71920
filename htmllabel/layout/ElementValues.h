#pragma once

#include "htmllabel/document/HTMLElement.h"
#include "htmllabel/layout/Flow.h"

namespace kavrelon {

/// A number of a document as pixels: from 0 to `most`.
int clampPixels(double value, int most = kMostPixels);

/// A text size that can be drawn: from 1 to 200 points, and 1 for what is not a number.
float clampPoints(float points);

/// WIDTH: a fraction up to 1, pixels above 1, nothing below 0 and where none is given.
Extent givenWidth(const HTMLElement& element);
/// HEIGHT: pixels, or up to 100% a fraction of the page's height. A HEIGHT of 1 is one pixel, which counts as
/// nothing.
Extent givenHeight(const HTMLElement& element);
/// In the pixels of a canvas.
Extent scaled(const Extent& extent, const PixelScale& scale);
/// The larger of each.
Extent larger(const Extent& a, const Extent& b);
/// ALIGN of a block; `inherited` when there is none.
Align givenAlign(const HTMLElement& element, Align inherited);

}  // namespace kavrelon
