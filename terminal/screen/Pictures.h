#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>

#include "support/Geometry.h"
#include "support/Picture.h"
#include "terminal/screen/GridLayout.h"

namespace kavrelon {

class TermSurface;

/// The pictures that the host has put over the screen, by number. Where they overlap, a higher number covers
/// a lower one. They stay at their cells, whatever happens to the text below.
class Pictures {
  public:
    /// The most that a window shows. Each costs time whenever something below it changes.
    static constexpr std::size_t kMost = 64;

    struct Placed {
        CellRect place;
        std::shared_ptr<const Picture> picture;
    };

    bool empty() const { return pictures_.empty(); }
    const std::map<std::int16_t, Placed>& all() const { return pictures_; }
    /// Adds a picture, unless there are `kMost`. An older one of its number must have been removed.
    void add(std::int16_t number, Placed picture);
    void remove(std::int16_t number) { pictures_.erase(number); }

    /// The smallest rectangle that holds all of them. There must be one.
    CellRect extent() const;
    /// Whether a cell is below one of them. Column and row count from 1.
    bool cover(int column, int row) const;
    /// Whether nothing of a cell can be seen.
    bool hide(int column, int row) const;
    /// Draws the parts of the pictures that are in a block of the window.
    void draw(TermSurface& surface, const GridLayout& grid, const Rect& block) const;

  private:
    std::map<std::int16_t, Placed> pictures_;
};

}  // namespace kavrelon
