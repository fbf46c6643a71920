#pragma once

#include <cstdint>

#include "support/Geometry.h"

namespace kavrelon {

/// Where the label's parts are in its window, in pixels. Without scrolling the bars are empty.
struct LabelPlacement {
    Rect picViewPort;
    Rect vscScroll;
    Rect hscScroll;
    Rect shpCorner;
    bool shpCornerVisible = false;
    bool operator==(const LabelPlacement&) const = default;
};

/// What the positions of the parts depend on.
struct LabelOutline {
    /// The control's outer size in twips, and the screen's resolution.
    Size twips;
    double twipsPerPixelX = 15;
    double twipsPerPixelY = 15;
    /// The width of a vertical and the height of a horizontal scroll bar, in pixels.
    Size barThickness;
    bool EnableScroll = false;
    std::int16_t Appearance = 1;
    bool vscVisible = false;
    bool hscVisible = false;
};

/// Places the parts. The room for the vertical bar is reserved whether it is visible or not, so that the
/// width of the view port, and with it the layout, does not depend on the document's height.
LabelPlacement placeLabelParts(const LabelOutline& outline);

}  // namespace kavrelon
