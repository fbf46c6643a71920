#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "support/RuntimeError.h"
#include "terminal/ScreenLine.h"

namespace kavrelon {

/// The image of the character screen: 1025 row records of 1025 cells, of which record r + 1 holds screen row
/// r.
///
/// A record takes memory when it is first written, so a window pays for the rows that it uses. Scrolling
/// turns the order of the records and moves none of them. Each record knows how far it may differ from the
/// blank line, so that blanking a row costs what was written to it.
class ScreenBuffer {
  public:
    /// The line that blanking copies: spaces with `attr` in elements 1 to 1024.
    void setBlankLine(CellAttr attr);

    /// Stores a cell. Column and row may be -1 to 1023; anything else raises SubscriptOutOfRange.
    void put(int column, int row, std::uint8_t ch, CellAttr attr);

    /// Stores the same cell in columns `first` to `last`; one that lies outside raises SubscriptOutOfRange
    /// once those before it are stored.
    void fill(int first, int last, int row, std::uint8_t ch, CellAttr attr);

    /// A record for reading, 0 to 1024 (screen row + 1); a record never written reads as zeros.
    const ScreenLine& record(int index) const;

    /// Record r + 1 takes a copy of the blank line. Rows outside the buffer are left alone.
    void blankRow(int row);
    /// Blanks screen rows `first` to `last`.
    void blankRows(int first, int last);
    /// Records 2 to `lines` move one up, and record `lines` becomes blank. `lines` is bounded by the buffer.
    void scrollUp(int lines);

    /// The cells of a screen row for writing in place: element c + 1 is column c. The caller tells with
    /// `noteWritten` how far it has written before it calls anything else of this buffer.
    ScreenLine& rowForWriting(int row);
    /// Columns below `column` of the row may have been written in place.
    void noteWritten(int row, int column);

  private:
    struct Row {
        std::unique_ptr<ScreenLine> line;
        int extent = kStoredCells;  // elements from here on equal the blank line's
    };

    std::size_t slotOf(int index) const;
    Row& writableRow(int index);
    void blank(Row& row);
    void setRing(int size);

    std::array<Row, kStoredCells> rows_;
    // Records 1 to ringSize_ stand in turned order: record 1 is slot 1 + ringStart_.
    int ringSize_ = 0;
    int ringStart_ = 0;
    ScreenLine blankLine_;
};

}  // namespace kavrelon
