#pragma once

#include <cstdint>

#include "support/Conversions.h"
#include "support/Geometry.h"

namespace kavrelon {

class TermSurface;

/// A cell of the screen, counted as the buffer does: columns and rows from 1.
struct CellPlace {
    int column = 1;
    int row = 1;
    bool operator==(const CellPlace&) const = default;
};

/// A rectangle of cells as hosts count them: columns and rows from 1, both corners inside. It may reach
/// outside the screen.
struct CellRect {
    int left = 1;
    int top = 1;
    int right = 1;
    int bottom = 1;

    /// The rectangle between two corners in any order.
    static CellRect between(int column, int row, int oppositeColumn, int oppositeRow);
    /// The cells that are in both; it may be empty.
    CellRect within(const CellRect& other) const;
    bool empty() const { return left > right || top > bottom; }
    bool holds(int column, int row) const {
        return column >= left && column <= right && row >= top && row <= bottom;
    }
    bool operator==(const CellRect&) const = default;
};

/// Where the grid of cells is in the window: the size of a cell, and the grid's top left corner.
class GridLayout {
  public:
    /// Measures the surface's font and centres `columns` x `lines` cells in its inner area; a grid larger
    /// than that starts at the corner. With `fitFontToWindow` the font first takes the largest size whose
    /// grid fits. Tells the surface where the grid is. While the platform has no font to measure, the grid
    /// stays as it is, and is not laid out.
    void layOut(TermSurface& surface, int columns, int lines, bool fitFontToWindow);
    /// What so many cells take in the smallest font that fits a window; 0 x 0 while the platform has no font.
    /// Lays nothing out.
    static Size smallestGrid(TermSurface& surface, int columns, int lines);
    /// Whether the last layout could be made.
    bool laidOut() const { return laidOut_; }

    float cellWidth() const { return cellWidth_; }
    float cellHeight() const { return cellHeight_; }
    int left() const { return left_; }
    int top() const { return top_; }

    /// Top left pixel of a cell, 0-based; the products are rounded before the origin is added.
    Point cellOrigin(int column, int row) const {
        return {scaled(column, cellWidth_) + left_, scaled(row, cellHeight_) + top_};
    }
    /// The cell of a grid of this size under a pixel, or the nearest one to a pixel outside.
    CellPlace cellAt(Point pixel, int columns, int lines) const;
    /// The cells that a block of the window touches, of a grid without an end.
    CellRect cellsIn(const Rect& block) const;
    /// The pixels of `columns` cells from a cell to the right.
    Rect cellBlock(int column, int row, int columns = 1) const;
    /// The pixels of a rectangle of cells.
    Rect blockOf(const CellRect& cells) const;

  private:
    static int scaled(int cells, float size) { return roundHalfToEven(static_cast<float>(cells) * size); }
    static bool fitFont(TermSurface& surface, int columns, int lines);

    float cellWidth_ = 0;
    float cellHeight_ = 0;
    int left_ = 0;
    int top_ = 0;
    bool laidOut_ = false;
};

}  // namespace kavrelon
