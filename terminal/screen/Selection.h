#pragma once

#include <string>

#include "terminal/screen/GridLayout.h"

namespace kavrelon {

class Screen;

/// The rectangle of cells that the user marks with the mouse. Always a rectangle, never a run of lines.
///
/// The highlight, cells drawn in reverse, is on the window only: output goes on meanwhile, and what is copied
/// is what the cells hold by then.
class Selection {
  public:
    explicit Selection(Screen& screen) : screen_(screen) {}

    /// The left button went down: an old highlight goes, and both corners are the cell under the mouse.
    void begin(Point mouse);
    /// The mouse has moved with the left button held.
    void extend(Point mouse);
    /// The text of the marked cells.
    std::string text() const;
    /// The same text; empty cells stay empty.
    std::string shownText() const;
    /// Takes the highlight off.
    void drop();

  private:
    CellPlace start() const { return {SelStartCol_, SelStartRow_}; }
    void start(CellPlace place) {
        SelStartCol_ = place.column;
        SelStartRow_ = place.row;
    }
    CellPlace end() const { return {SelEndCol_, SelEndRow_}; }
    void end(CellPlace place) {
        SelEndCol_ = place.column;
        SelEndRow_ = place.row;
    }
    bool singleCell() const { return start() == end(); }
    void repaint(bool Selected);

    Screen& screen_;
    // Counted from 1.
    int SelStartCol_ = 1;
    int SelStartRow_ = 1;
    int SelEndCol_ = 1;
    int SelEndRow_ = 1;
};

}  // namespace kavrelon
