#pragma once

#include <cstdint>
#include <vector>

#include "terminal/TermWindow.h"

namespace kavrelon {

/// What one cell of a headless window shows.
struct ShownCell {
    std::uint8_t ch = ' ';
    Pen pen;
    bool inverted = false;
    /// The letter of the picture that was drawn over it last, 0 when none was.
    char picture = 0;
    bool operator==(const ShownCell&) const = default;
};

/// A grid of shown cells that grows to what is drawn on it, up to the largest screen.
class ShownCells {
  public:
    /// The cell for drawing, 0-based; null outside the largest screen.
    ShownCell* at(int column, int row);
    /// The cell as shown; one never drawn is blank.
    ShownCell shown(int column, int row) const;
    /// Moves the first `lines` rows up by one; the last of them becomes blank.
    void scrollUp(int lines);
    /// Keeps its memory, as a window does: drawing what was drawn once takes none.
    void clear() {
        for (auto& row : rows_) row.clear();
    }

  private:
    std::vector<std::vector<ShownCell>> rows_;
};

}  // namespace kavrelon
