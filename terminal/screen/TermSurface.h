#pragma once

#include <cstdint>
#include <span>

#include "support/Geometry.h"
#include "terminal/screen/FontChoice.h"

namespace kavrelon {

class Picture;

/// The colours and the font style with which text is drawn.
struct Pen {
    Colour text = 0;
    Colour back = 0;
    bool italic = false;
    bool underline = false;
    bool operator==(const Pen&) const = default;
};

/// The drawing half of the terminal's platform seam: one surface of character cells.
///
/// All places and sizes are pixels of the window's inner area. Everything that reaches outside it is
/// clipped. Text and blocks are drawn at once, not collected. No call fails: a surface that cannot draw
/// (no window any more) ignores it.
class TermSurface {
  public:
    virtual ~TermSurface() = default;

    /// Whether what is drawn can be seen. It cannot while the window is hidden, nor while the whole of it is
    /// going to be painted anyway: in both cases a paint of all of it follows.
    virtual bool drawable() const = 0;
    /// What a paint has to draw: the part of the inner area that the platform wants.
    virtual Rect dueArea() const = 0;

    /// Draws single-byte characters from `at` to the right, one cell each, with an opaque background, in the
    /// pen last set. Each character advances by exactly one cell width, whatever the face says of it.
    virtual void drawText(Point at, std::span<const std::uint8_t> text) = 0;
    /// Colours and style of the text calls that follow; called only when they change.
    virtual void setPen(const Pen& pen) = 0;
    /// Draws a picture of its own platform scaled to `place`, but only what is in `clip`.
    virtual void drawPicture(const Picture& picture, const Rect& place, const Rect& clip) = 0;
    /// Inverts every pixel of the block; a second call restores it.
    virtual void invertBlock(const Rect& block) = 0;
    /// Fills the whole inner area with the window's own background colour, black.
    virtual void clear() = 0;
    /// Fills what is outside the grid with the background colour.
    virtual void clearOutsideGrid() = 0;
    /// Tells where the grid of cells is from now on. Draws nothing.
    virtual void setGrid(const Rect& grid, Size cell) = 0;
    /// Moves the pixels of a block of whole cells up by one cell height; the bottom row that it uncovers
    /// shows the window's background.
    virtual void scrollGrid(const Rect& block) = 0;

    /// Chooses the face and character set of the font and takes bold off; the size stays.
    virtual void setFont(const FontChoice& font) = 0;
    /// Sets the font's size in points, fractions allowed; at least 1.
    virtual void setFontSize(double points) = 0;
    /// The font's size in points.
    virtual double fontSize() const = 0;
    /// How many points one pixel of font height is (0.75 at 96 dots an inch).
    virtual double pointsPerPixel() const = 0;
    /// The cell that the current font needs: as wide as its widest character, at least 1 x 1; 0 x 0 while
    /// the platform cannot make the font.
    virtual Size measureCell() = 0;
    /// The window's inner area; 0 x 0 while minimised.
    virtual Size innerSize() const = 0;
    /// Asks for an inner area of this size. Ignored while the window is maximised or minimised; the desktop's
    /// size bounds it.
    virtual void requestInnerSize(Size size) = 0;

    // The memory bitmap. Without one, the operations on it do nothing.

    /// Whether there is one, as large as the inner area.
    virtual bool hasMemory() const = 0;
    /// Blanks the bitmap, made as large as the inner area, and has text and pictures drawn on it instead of
    /// the window until `endMemory`. False when the platform has none to give.
    virtual bool beginMemory() = 0;
    virtual void endMemory() = 0;
    /// Blanks the bitmap, made as large as the inner area, and copies it to the window. False when the
    /// platform has none to give.
    virtual bool clearMemory() = 0;
    /// Copies a block of the window into the bitmap. False when it cannot, since not all of the block was
    /// drawn: something covers it, or it is off the desktop.
    virtual bool keepBlock(const Rect& block) = 0;
    /// As `scrollGrid`, on the bitmap.
    virtual void scrollMemory(const Rect& block) = 0;
    /// Copies the whole bitmap to the window.
    virtual void showMemory() = 0;
    /// Gives the bitmap's memory back to the platform.
    virtual void dropMemory() = 0;
};

}  // namespace kavrelon
