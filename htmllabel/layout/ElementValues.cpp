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

int givenHeight(const HTMLElement& element) {
    return element.sglHeight > 1 ? clampPixels(static_cast<double>(element.sglHeight)) : 0;
}

Align givenAlign(const HTMLElement& element, Align inherited) {
    if (element.blnAlignCenter) return Align::Center;
    if (element.blnAlignRight) return Align::Right;
    return element.hasAlign ? Align::Left : inherited;
}

}  // namespace kavrelon
