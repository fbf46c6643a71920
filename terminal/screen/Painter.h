#pragma once

#include <cstdint>

#include "support/Raised.h"
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
        missDrawing();
        if (!value && surface_ != nullptr) surface_->dropMemory();
        noteExtras();
    }
    /// Something that the screen shows was not drawn, or not in its place: the memory bitmap has to be drawn
    /// anew before it is shown.
    void missDrawing() { memoryStale_ = true; }
    /// Whether the memory bitmap is in use and holds what the window is to show.
    bool memoryKept() const { return UseMemoryDC_ && !memoryStale_ && surface_->hasMemory(); }

    /// For the length of a scope, cells and pictures are drawn on the memory bitmap, blank at first, and not
    /// on the window.
    class [[nodiscard]] MemoryDrawing {
      public:
        explicit MemoryDrawing(Painter& painter);
        ~MemoryDrawing();
        MemoryDrawing(const MemoryDrawing&) = delete;
        MemoryDrawing& operator=(const MemoryDrawing&) = delete;
        /// False when the platform has no bitmap to give.
        explicit operator bool() const { return begun_; }
        /// Everything was drawn: the bitmap is as good as the window.
        void complete() { painter_.memoryStale_ = false; }

      private:
        Painter& painter_;
        bool begun_;
    };

    const Pictures& pictures() const { return pictures_; }
    // These three draw nothing: the caller repaints the cells that a picture covered or is to cover.
    void addPicture(std::int16_t number, Pictures::Placed picture);
    void removePicture(std::int16_t number);
    /// Returns those that it has removed.
    Pictures removePictures() noexcept;
    /// For the length of a scope, cells are drawn without the pictures over them.
    Raised holdPictures() { return Raised(picturesHeld_); }
    /// Draws the pictures over a rectangle of cells.
    void drawPictures(const CellRect& cells);

    /// Draws one character in a cell (0-based); code 0 shows as a space.
    void DrawCell(std::uint8_t ch, int column, int row, const Pen& pen);
    /// Draws `count` spaces from a cell to the right. A count below 1 draws nothing.
    void drawBlanks(int column, int row, int count, const Pen& pen);
    /// Clears the memory bitmap and shows it when it is in use, else the window.
    void ClearWindow();
    /// Moves the image of a block of whole cells up by a row.
    void scrollImage(const Rect& block);

  private:
    void use(const Pen& pen);
    void noteExtras() noexcept { noExtras_ = !UseMemoryDC_ && pictures_.empty(); }
    void drawWithExtras(std::uint8_t ch, int column, int row, const Pen& pen);
    void keep(const Rect& block) {
        if (UseMemoryDC_ && !onMemory_ && !memoryStale_ && !surface_->keepBlock(block)) missDrawing();
    }

    TermSurface* surface_ = nullptr;
    GridLayout grid_;
    Pen penInUse_;
    bool penKnown_ = false;
    bool UseMemoryDC_ = false;
    bool memoryStale_ = true;
    bool onMemory_ = false;
    Pictures pictures_;
    bool picturesHeld_ = false;
    // Neither pictures nor the memory bitmap: one question for each cell instead of two.
    bool noExtras_ = true;
};

}  // namespace kavrelon
