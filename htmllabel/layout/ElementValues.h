#pragma once

#include <string_view>

#include "htmllabel/document/HTMLElement.h"
#include "htmllabel/layout/Flow.h"

namespace kavrelon {

/// Whether a tag's source has this attribute (in upper case). Only the source tells, where a document can
/// give a field the value that it has by default.
bool givesAttribute(std::string_view raw, std::string_view name);

/// Whether a cell is a TH: TD and TH share one code.
bool isHeaderCell(const HTMLElement& cell);

/// A number of a document as pixels: from 0 to `most`.
int clampPixels(double value, int most = kMostPixels);

/// A text size that can be drawn: from 1 to 200 points, and 1 for what is not a number.
float clampPoints(float points);

/// WIDTH: a fraction up to 1, pixels above 1, nothing below 0.
Extent givenWidth(const HTMLElement& element);
/// WIDTH of tags whose record says 1.0 when none is given: then nothing.
Extent givenWidthOrNone(const HTMLElement& element);
/// HEIGHT in pixels; fractions count as nothing, since a page has no height of its own.
int givenHeight(const HTMLElement& element);

/// ALIGN of a block; `inherited` when there is none.
Align givenAlign(const HTMLElement& element, Align inherited);

}  // namespace kavrelon
