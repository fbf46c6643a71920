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

/// Where the grid of cells is in the window: the size of a cell, and the grid's top left corner.
class GridLayout {
  public:
    /// Measures the surface's font and centres `columns` x `lines` cells in its inner area; a grid larger
    /// than that starts at the corner. With `fitFontToWindow` the font first takes the largest size whose
    /// grid fits. Tells the surface where the grid is.
    void layOut(TermSurface& surface, int columns, int lines, bool fitFontToWindow);

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
    /// The pixels of `columns` cells from a cell to the right.
    Rect cellBlock(int column, int row, int columns = 1) const;

  private:
    static int scaled(int cells, float size) { return roundHalfToEven(static_cast<float>(cells) * size); }
    void fitFont(TermSurface& surface, int columns, int lines) const;

    float cellWidth_ = 0;
    float cellHeight_ = 0;
    int left_ = 0;
    int top_ = 0;
};

}  // namespace kavrelon
