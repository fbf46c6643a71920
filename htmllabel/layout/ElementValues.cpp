#include "htmllabel/layout/ElementValues.h"

#include <algorithm>

namespace kavrelon {
namespace {

constexpr float kLeastPoints = 1;
constexpr float kMostPoints = 200;

}  // namespace

int clampPixels(double value, int most) {
    if (!(value > 0)) return 0;
    return value < most ? static_cast<int>(value) : most;
}

float clampPoints(float points) {
    return points > kLeastPoints ? std::min(points, kMostPoints) : kLeastPoints;
}

Extent givenWidth(const HTMLElement& element) {
    if (!element.hasWidth) return {};
    const float width = element.sglWidth;
    if (width > 1) return {clampPixels(static_cast<double>(width)), 0};
    return {0, width > 0 ? width : 0};
}

Extent givenHeight(const HTMLElement& element) {
    const float height = element.sglHeight;
    if (height > 1) return {clampPixels(static_cast<double>(height)), 0};
    return {0, element.heightIsPercentage && height > 0 ? height : 0};
}

Extent scaled(const Extent& extent, const PixelScale& scale) {
    return {scale(extent.pixels), extent.fraction};
}

Extent larger(const Extent& a, const Extent& b) {
    return {std::max(a.pixels, b.pixels), std::max(a.fraction, b.fraction)};
}

Align givenAlign(const HTMLElement& element, Align inherited) {
    if (element.blnAlignCenter) return Align::Center;
    if (element.blnAlignRight) return Align::Right;
    return element.hasAlign ? Align::Left : inherited;
}

}  // namespace kavrelon
