#include "terminal/screen/GridLayout.h"

#include <algorithm>
#include <cmath>

#include "terminal/screen/TermSurface.h"

namespace kavrelon {
namespace {

/// Font heights in pixels between which a fitting one is looked for. Smaller ones cannot be read.
constexpr int kSmallestFont = 6;
constexpr int kLargestFont = 200;

}  // namespace

CellRect CellRect::between(int column, int row, int oppositeColumn, int oppositeRow) {
    const auto [left, right] = std::minmax({column, oppositeColumn});
    const auto [top, bottom] = std::minmax({row, oppositeRow});
    return {left, top, right, bottom};
}

CellRect CellRect::within(const CellRect& other) const {
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
            std::min(bottom, other.bottom)};
}

Rect GridLayout::cellBlock(int column, int row, int columns) const {
    return blockOf({column + 1, row + 1, column + columns, row + 1});
}

Rect GridLayout::blockOf(const CellRect& cells) const {
    const Point from = cellOrigin(cells.left - 1, cells.top - 1);
    const Point to = cellOrigin(cells.right, cells.bottom);
    return {from.x, from.y, to.x, to.y};
}

CellRect GridLayout::cellsIn(const Rect& block) const {
    if (cellWidth_ < 1 || cellHeight_ < 1 || block.width() <= 0 || block.height() <= 0) return {1, 1, 0, 0};
    // Cells are whole pixels in size.
    const auto cells = [](int pixels, float size, auto round) {
        return static_cast<int>(round(static_cast<double>(pixels) / size));
    };
    const auto down = [](double value) { return std::floor(value); };
    const auto up = [](double value) { return std::ceil(value); };
    return {cells(block.left - left_, cellWidth_, down) + 1, cells(block.top - top_, cellHeight_, down) + 1,
            cells(block.right - left_, cellWidth_, up), cells(block.bottom - top_, cellHeight_, up)};
}

CellPlace GridLayout::cellAt(Point pixel, int columns, int lines) const {
    const auto nearest = [](int distance, float size, int count) {
        const double cell = std::floor(static_cast<double>(distance) / std::max(size, 1.0F)) + 1;
        return static_cast<int>(std::clamp<double>(cell, 1, std::max(count, 1)));
    };
    return {nearest(pixel.x - left_, cellWidth_, columns), nearest(pixel.y - top_, cellHeight_, lines)};
}

bool GridLayout::fitFont(TermSurface& surface, int columns, int lines) {
    const Size inner = surface.innerSize();
    const double pixel = surface.pointsPerPixel();
    const double before = surface.fontSize();
    bool measured = true;
    const auto fits = [&](int height) {
        surface.setFontSize(height * pixel);
        const Size cell = surface.measureCell();
        measured = measured && cell != Size{};
        return cell.width * columns <= inner.width && cell.height * lines <= inner.height;
    };
    int fitting = kSmallestFont;
    int tooLarge = kLargestFont + 1;
    while (measured && tooLarge - fitting > 1) {
        const int middle = (fitting + tooLarge) / 2;
        (fits(middle) ? fitting : tooLarge) = middle;
    }
    surface.setFontSize(measured ? fitting * pixel : before);
    return measured;
}

Size GridLayout::smallestGrid(TermSurface& surface, int columns, int lines) {
    const double before = surface.fontSize();
    surface.setFontSize(kSmallestFont * surface.pointsPerPixel());
    const Size cell = surface.measureCell();
    surface.setFontSize(before);
    return {cell.width * std::max(columns, 0), cell.height * std::max(lines, 0)};
}

void GridLayout::layOut(TermSurface& surface, int columns, int lines, bool fitFontToWindow) {
    columns = std::max(columns, 0);
    lines = std::max(lines, 0);
    const Size inner = surface.innerSize();
    laidOut_ = false;
    if (fitFontToWindow && inner.width > 0 && inner.height > 0 && !fitFont(surface, columns, lines)) return;

    const Size cell = surface.measureCell();
    if (cell == Size{}) return;
    laidOut_ = true;
    cellWidth_ = static_cast<float>(cell.width);
    cellHeight_ = static_cast<float>(cell.height);
    left_ = std::max((inner.width - columns * cell.width) / 2, 0);
    top_ = std::max((inner.height - lines * cell.height) / 2, 0);
    surface.setGrid({left_, top_, left_ + columns * cell.width, top_ + lines * cell.height}, cell);
}

}  // namespace kavrelon
