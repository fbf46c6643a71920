#pragma once

#include "support/Geometry.h"

namespace kavrelon {

class TermSurface;

/// The block cursor on the window: one cell's pixels inverted, or not.
///
/// A burst of received data and a repaint each take the mark off and put it back; each remembers it in a flag
/// of its own, so that one may happen within the other.
class CursorMark {
  public:
    bool drawn() const { return drawn_; }

    /// Inverts the cell at `block`; a mark that is drawn stays where it is. Without a surface it only counts
    /// as drawn: the window is painted before anybody sees it.
    void show(TermSurface* surface, const Rect& block);
    /// Restores the cell where the mark was drawn. Without a surface the mark only counts as gone. Call it
    /// only for a mark that is drawn.
    void takeOff(TermSurface* surface);
    /// Something was drawn over the mark, or its window is gone.
    void forget() { drawn_ = false; }

    /// Set while a mark that was taken off waits to be put back.
    bool wantedAfterBurst = false;
    bool wantedAfterRepaint = false;

  private:
    bool drawn_ = false;
    bool inverted_ = false;
    Rect block_;
};

}  // namespace kavrelon
