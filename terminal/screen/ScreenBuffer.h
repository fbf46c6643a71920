#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "support/RuntimeError.h"
#include "terminal/screen/ScreenLine.h"

namespace kavrelon {

/// The image of the character screen: 1025 row records of 1025 cells. Record r + 1 holds screen row r.
///
/// A record takes memory when it is first written, so a window pays for the rows that it uses. Scrolling
/// turns the order of the records and moves none of them. Each record knows how far it may differ from the
/// blank line, so that blanking a row costs what was written to it.
class ScreenBuffer {
  public:
    /// The line that blanking copies: spaces with `attr` in elements 1 to 1024.
    void setBlankLine(CellAttr attr);

    /// Stores a cell. Column and row may be -1 to 1023; anything else raises SubscriptOutOfRange.
    void PutCell(int column, int row, Cell cell);

    /// Stores the same cell in columns `first` to `last`; one that lies outside raises SubscriptOutOfRange
    /// once those before it are stored.
    void fill(int first, int last, int row, Cell cell);

    /// A record for reading, 0 to 1024 (screen row + 1); a record never written reads as zeros.
    const ScreenLine& record(int index) const;

    /// Gets the memory of screen rows `first` to `last`, so that storing in them does not fail for want of
    /// it. Rows outside the buffer are left alone, here and below.
    void reserveRows(int first, int last);
    /// Screen rows `first` to `last` each take a copy of the blank line: all of them, or none when memory
    /// runs out.
    void blankRows(int first, int last);
    /// A screen row for writing in place. Good until the row is blanked or moved.
    struct RowInPlace {
        Cell* cells;  ///< of column 0
        int* extent;  ///< whoever writes sees to it that it is at least the last element written + 1
    };
    /// Row 0 to 1023.
    RowInPlace rowInPlace(int row) {
        Row& target = writableRow(row + 1);
        return target.inPlace();
    }

    /// Records 2 to `lines` move one up, and record `lines` becomes blank: the row that is returned. `lines`
    /// is bounded by the buffer; below 1 nothing happens, and no row is returned.
    RowInPlace moveRowsUp(int lines) {
        if (lines != ringSize_ && !setRing(lines)) return {};
        // Record 1, which becomes the last one. Before that: where there is no memory for it, nothing moves.
        Row& first = rows_[static_cast<std::size_t>(ringStart_) + 1];
        if (!first.line) allocate(first);
        if (++ringStart_ == ringSize_) ringStart_ = 0;
        blank(first);
        return first.inPlace();
    }

  private:
    struct Row {
        std::unique_ptr<ScreenLine> line;
        int extent = kStoredCells;  // elements from here on equal the blank line's

        RowInPlace inPlace() { return {line->Cells.data() + 1, &extent}; }
    };

    std::size_t slotOf(int index) const {
        if (index < 1 || index > ringSize_) return static_cast<std::size_t>(index);
        const int turned = index + ringStart_;
        return static_cast<std::size_t>(turned > ringSize_ ? turned - ringSize_ : turned);
    }
    Row& writableRow(int index) {
        Row& row = rows_[slotOf(index)];
        if (!row.line) allocate(row);
        return row;
    }
    // Kept out of the receive path, which needs the one once for a row and the other once for a size.
    [[gnu::cold, gnu::noinline]] static void allocate(Row& row);
    [[gnu::cold, gnu::noinline]] bool setRing(int lines);
    void blank(Row& row);

    std::array<Row, kStoredCells> rows_;
    // Records 1 to ringSize_ are a ring: record 1 is in slot 1 + ringStart_, and so on. Never empty, so that
    // a screen without lines does not count as the ring in use.
    int ringSize_ = 1;
    int ringStart_ = 0;
    ScreenLine BlankLine_;
};

}  // namespace kavrelon
