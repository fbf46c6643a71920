#pragma once

#include <cstdint>

#include "terminal/screen/GridLayout.h"
#include "terminal/screen/Pictures.h"
#include "terminal/screen/TermSurface.h"

namespace kavrelon {

/// Draws cells on the window's surface and pictures over them, and copies both to the memory bitmap when that
/// is in use. Every call draws; whether to draw at all is decided by the screen.
class Painter {
  public:
    void attach(TermSurface* surface) { surface_ = surface; }

    GridLayout& grid() { return grid_; }
    const GridLayout& grid() const { return grid_; }

    bool UseMemoryDC() const { return UseMemoryDC_; }
    void UseMemoryDC(bool value) {
        UseMemoryDC_ = value;
        noteExtras();
    }

    const Pictures& pictures() const { return pictures_; }
    // These three draw nothing: the caller repaints the cells that a picture covered or is to cover.
    void addPicture(std::int16_t number, Pictures::Placed picture);
    void removePicture(std::int16_t number);
    void removePictures() noexcept;
    /// From here on cells are drawn without the pictures over them.
    void holdPictures() { picturesHeld_ = true; }
    /// Draws the pictures over a block of the window, all of whose cells have been drawn since.
    void resumePictures(const Rect& block);

    /// Draws one character in a cell (0-based); code 0 shows as a space.
    void DrawCell(std::uint8_t ch, int column, int row, const Pen& pen);
    /// Draws `count` spaces from a cell to the right. A count below 1 draws nothing.
    void drawBlanks(int column, int row, int count, const Pen& pen);
    /// Clears the memory bitmap and shows it when it is in use, else the window.
    void ClearWindow();
    /// Moves the grid's image up by one cell row.
    void scrollImage();

  private:
    void use(const Pen& pen);
    void noteExtras() noexcept { noExtras_ = !UseMemoryDC_ && pictures_.empty(); }
    void drawWithExtras(std::uint8_t ch, int column, int row, const Pen& pen);

    TermSurface* surface_ = nullptr;
    GridLayout grid_;
    Pen penInUse_;
    bool penKnown_ = false;
    bool UseMemoryDC_ = false;
    Pictures pictures_;
    bool picturesHeld_ = false;
    // Neither pictures nor the memory bitmap: one question for each cell instead of two.
    bool noExtras_ = true;
};

}  // namespace kavrelon
