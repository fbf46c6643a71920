#pragma once

#include <cstdint>

#include "terminal/screen/GridLayout.h"
#include "terminal/screen/Pictures.h"
#include "terminal/screen/TermSurface.h"

namespace kavrelon {

/// Puts cells on the window's surface, pictures over them, and both into the memory bitmap beside it when
/// that is in use. Every call draws: whether drawing is wanted at all is the screen's to know.
class Painter {
  public:
    void attach(TermSurface* surface) { surface_ = surface; }
    TermSurface* surface() const { return surface_; }

    GridLayout& grid() { return grid_; }
    const GridLayout& grid() const { return grid_; }

    bool UseMemoryDC() const { return UseMemoryDC_; }
    void UseMemoryDC(bool value) {
        UseMemoryDC_ = value;
        findDuties();
    }

    const Pictures& pictures() const { return pictures_; }
    // What the window shows of a change of the pictures is the caller's to draw.
    void addPicture(std::int16_t number, Pictures::Placed picture);
    void removePicture(std::int16_t number);
    void removePictures() noexcept;
    /// Between the two, pictures are left alone. At the end those over a block of the window are drawn, whose
    /// cells must all have been drawn.
    void holdPictures() { picturesHeld_ = true; }
    void resumePictures(const Rect& block);

    /// Draws one character; code 0 shows as a space.
    void DrawCell(std::uint8_t ch, int column, int row, const Pen& pen);
    /// Draws `count` spaces from a cell to the right. A count below 1 draws nothing.
    void drawBlanks(int column, int row, int count, const Pen& pen);
    void ClearWindow();
    /// Moves the grid's image up by one cell row.
    void scrollImage();

  private:
    void use(const Pen& pen);
    void findDuties() noexcept { onlyCells_ = !UseMemoryDC_ && pictures_.empty(); }
    void drawWithDuties(std::uint8_t ch, int column, int row, const Pen& pen);

    TermSurface* surface_ = nullptr;
    GridLayout grid_;
    Pen penInUse_;
    bool penKnown_ = false;
    bool UseMemoryDC_ = false;
    Pictures pictures_;
    bool picturesHeld_ = false;
    // Nothing beside the cells needs drawing: one question for each cell instead of several.
    bool onlyCells_ = true;
};

}  // namespace kavrelon
