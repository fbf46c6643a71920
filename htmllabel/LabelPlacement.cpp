#include "htmllabel/LabelPlacement.h"

#include <algorithm>

#include "support/Conversions.h"

namespace kavrelon {

namespace {

// The border's share of the control's outer size, in twips. Without scroll bars less is reserved.
int borderInset(const LabelOutline& outline) {
    const int flat = outline.EnableScroll ? 30 : 0;
    return outline.Appearance == 1 ? flat + 30 : flat;
}

// A part given in twips, in pixels; one whose size would be negative is empty.
Rect pixels(const LabelOutline& outline, Point corner, Size size) {
    const auto across = [&](int twips) { return roundHalfToEven(twips / outline.twipsPerPixelX); };
    const auto down = [&](int twips) { return roundHalfToEven(twips / outline.twipsPerPixelY); };
    const int left = across(corner.x);
    const int top = down(corner.y);
    return {left, top, left + across(std::max(size.width, 0)), top + down(std::max(size.height, 0))};
}

}  // namespace

LabelPlacement placeLabelParts(const LabelOutline& outline) {
    const int inset = borderInset(outline);
    LabelPlacement placement;
    if (!outline.EnableScroll) {
        placement.picViewPort =
            pixels(outline, {}, {outline.twips.width - inset, outline.twips.height - inset});
        return placement;
    }
    const Size bar{roundHalfToEven(outline.barThickness.width * outline.twipsPerPixelX),
                   roundHalfToEven(outline.barThickness.height * outline.twipsPerPixelY)};
    const int vscLeft = outline.twips.width - bar.width - inset;
    const int vscHeight = outline.twips.height - inset - (outline.hscVisible ? bar.height : 0);
    const int hscWidth = outline.vscVisible ? vscLeft : outline.twips.width;
    const int hscTop = vscHeight;
    placement.vscScroll = pixels(outline, {vscLeft, 0}, {bar.width, vscHeight});
    placement.hscScroll = pixels(outline, {0, hscTop}, {hscWidth, bar.height});
    placement.picViewPort = pixels(outline, {}, {vscLeft, vscHeight});
    placement.shpCorner = pixels(outline, {vscLeft, hscTop}, bar);
    placement.shpCornerVisible = true;
    return placement;
}

}  // namespace kavrelon
