#pragma once

#include <string_view>

#include "htmllabel/document/HTMLElement.h"
#include "htmllabel/layout/Flow.h"

namespace kavrelon {

/// Whether a tag's source gives this attribute (upper case). Some fields of the records have defaults that a
/// document can give as well; then only the source tells.
bool givesAttribute(std::string_view raw, std::string_view name);

/// Whether a cell is a TH: both kinds share one code.
bool isHeaderCell(const HTMLElement& cell);

/// A number of a document as pixels: from 0 to `most`.
int clampPixels(double value, int most = kMostPixels);

/// A size of text that can be drawn: from 1 to 200 points, and 1 for what is no number.
float clampPoints(float points);

/// WIDTH: up to 1 a fraction, above pixels, below 0 nothing.
Extent givenWidth(const HTMLElement& element);
/// WIDTH of tags whose record says 1.0 when nothing is given.
Extent givenWidthOrNone(const HTMLElement& element);
/// HEIGHT in pixels; fractions of what has no height count as nothing.
int givenHeight(const HTMLElement& element);

/// ALIGN of a block; `inherited` when there is none.
Align givenAlign(const HTMLElement& element, Align inherited);

}  // namespace kavrelon
