#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "htmllabel/layout/DisplayList.h"
#include "htmllabel/layout/Flow.h"

namespace kavrelon {

/// Sets tables: gives each cell its frame and width, and once the heights of the contents are known, places
/// rows, cells, borders and backgrounds. Open tables are on a stack.
class TablePlacer {
  public:
    /// `pageHeight` is what heights given in percent count from.
    TablePlacer(const Flow& flow, DisplayList& list, int pageHeight)
        : flow_(flow), list_(list), pageHeight_(pageHeight), cells_(flow.cells.size()) {}

    /// Begins a table of this outer width in `frame`, its top left corner at `place`, on this ground.
    void start(std::uint32_t table, std::uint32_t frame, Point place, int width, Colour ground);
    /// Ends the innermost table. Returns its height.
    int end();

    struct CellFrame {
        std::uint32_t frame = 0;
        int width = 0;  // of its content
        Colour ground = 0;
    };
    CellFrame startCell(std::uint32_t cell);
    void endCell(std::uint32_t cell, int contentHeight) { cells_[cell].contentHeight = contentHeight; }

  private:
    struct Open {
        std::uint32_t table = 0;
        std::uint32_t frame = 0;
        Point place;
        int width = 0;
        Colour ground = 0;  // of its cells
        std::size_t firstEdge = 0;
        std::size_t fill = 0;  // its items in the display list
        std::size_t border = 0;
    };
    struct Cell {
        std::uint32_t frame = 0;
        std::size_t fill = 0;
        std::size_t border = 0;
        int left = 0;  // in its table
        int width = 0;
        int contentHeight = 0;
    };

    int heightOf(const Extent& given) const;
    void setColumnEdges(const FlowTable& table, int width);
    int setRowTops(const FlowTable& table);
    void setCell(const Open& open, std::uint32_t index);
    std::size_t addItem(std::uint32_t frame, DrawKind kind, Colour colour, int thickness);

    const Flow& flow_;
    DisplayList& list_;
    int pageHeight_;
    std::vector<Cell> cells_;
    std::vector<Open> open_;
    std::vector<int>
        edges_;  // where the columns of the open tables begin and, plus the spacing, the last ends
    std::vector<int> tops_;  // likewise for the rows of the table that ends
    std::vector<int> widths_;
};

}  // namespace kavrelon
