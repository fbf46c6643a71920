#include "htmllabel/layout/ElementValues.h"

#include <algorithm>

#include "support/AsciiText.h"

namespace kavrelon {
namespace {

constexpr float kLeastPoints = 1;
constexpr float kMostPoints = 200;

bool equalUpper(char a, char b) {
    return asciiUpper(a) == b;
}

}  // namespace

bool givesAttribute(std::string_view raw, std::string_view name) {
    auto from = raw.begin();
    while (true) {
        from = std::search(from, raw.end(), name.begin(), name.end(), equalUpper);
        if (from == raw.end()) return false;
        const char before = from == raw.begin() ? ' ' : *(from - 1);
        from += static_cast<std::ptrdiff_t>(name.size());
        const auto next = std::find_if(from, raw.end(), [](char c) { return c != ' '; });
        if (next != raw.end() && *next == '=' && (before == ' ' || before == '"' || before == '\''))
            return true;
    }
}

bool isHeaderCell(const HTMLElement& cell) {
    return cell.strRaw.size() > 2 && asciiUpper(cell.strRaw[2]) == 'H';
}

int clampPixels(double value, int most) {
    if (!(value > 0)) return 0;
    return value < most ? static_cast<int>(value) : most;
}

float clampPoints(float points) {
    return points > kLeastPoints ? std::min(points, kMostPoints) : kLeastPoints;
}

Extent givenWidth(const HTMLElement& element) {
    const float width = element.sglWidth;
    if (width > 1) return {clampPixels(static_cast<double>(width)), 0};
    return {0, width > 0 ? width : 0};
}

Extent givenWidthOrNone(const HTMLElement& element) {
    if (element.sglWidth == 1.0F && !givesAttribute(element.strRaw, "WIDTH")) return {};
    return givenWidth(element);
}

int givenHeight(const HTMLElement& element) {
    return element.sglHeight > 1 ? clampPixels(static_cast<double>(element.sglHeight)) : 0;
}

Align givenAlign(const HTMLElement& element, Align inherited) {
    if (element.blnAlignCenter) return Align::Center;
    if (element.blnAlignRight) return Align::Right;
    if (inherited != Align::Left && givesAttribute(element.strRaw, "ALIGN")) return Align::Left;
    return inherited;
}

}  // namespace kavrelon
