#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "gdi/GdiHandles.h"
#include "gdi/pcMemDC.h"
#include "terminal/TermWindow.h"
#include "terminal/screen/ScreenLine.h"
#include "terminal/win32/TermFont.h"

namespace kavrelon {

/// The drawing half of a terminal window; its members are those of `TermSurface`.
///
/// The window's class gives it a context of its own: colours and font stay selected there from one call to
/// the next, and a drawn cell costs one platform call.
class Win32TermSurface {
  public:
    /// Throws std::bad_alloc when the window has no context or no font to give.
    explicit Win32TermSurface(HWND window);
    Win32TermSurface(const Win32TermSurface&) = delete;
    Win32TermSurface& operator=(const Win32TermSurface&) = delete;
    /// The window is being destroyed: from now on nothing is drawn.
    void detach();

    /// Between the two calls nothing is drawn; the caller has everything painted afterwards. They may nest.
    void holdDrawing();
    void resumeDrawing();
    /// A message has come: meanwhile, what the platform wants painted may have changed.
    void messageCame() { unpaintedKnown_ = false; }
    /// The platform wants this area painted, now that all of what was to be painted is taken over.
    void paintBegins(Rect due);

    bool drawable() const { return held_ == 0 && IsWindowVisible(window_) != FALSE; }
    Rect dueArea() const { return due_; }
    void drawText(Point at, std::span<const std::uint8_t> text);
    void setPen(const Pen& pen);
    void drawPicture(const Picture& picture, const Rect& place, const Rect& clip);
    void invertBlock(const Rect& block);
    void clear();
    void clearOutsideGrid();
    void setGrid(const Rect& grid, Size cell);
    void scrollGrid(const Rect& block);

    void setFont(const FontChoice& font);
    void setFontSize(double points) { font_.setPoints(points); }
    std::string fontName() const { return font_.name(); }
    double fontSize() const { return font_.points(); }
    double pointsPerPixel() const { return font_.pointsPerPixel(); }
    Size measureCell() { return font_.cell(); }
    Size innerSize() const;

    bool hasMemory() const;
    bool beginMemory();
    void endMemory();
    bool clearMemory();
    bool keepBlock(const Rect& block);
    void scrollMemory(const Rect& block);
    void showMemory();
    void dropMemory() { memory_.emplace(); }

  private:
    using Bytes = std::span<const std::uint8_t>;

    void useFont();
    void makeFont();
    void select(HFONT font);
    const StyledFont& fontOf(const Glyph& glyph) const {
        return glyph.source == Glyph::Source::Line ? *lineFont_ : *textFont_;
    }
    void drawRun(Point at, Bytes run, Glyph::Source source);
    void drawClipped(Point at, Bytes run);
    void blacken(const Rect& block);
    bool makeMemory();

    HWND window_;
    HDC context_;
    /// What text and pictures are drawn on: the window's context, or that of the memory bitmap.
    HDC target_;
    TermFont font_;
    RealisedFont* realised_ = nullptr;
    HFONT selected_ = nullptr;
    // Of the font in use, in the pen's style; null until there is one.
    const StyledFont* textFont_ = nullptr;
    const StyledFont* lineFont_ = nullptr;
    Pen pen_;
    Rect grid_;
    Size cell_;
    /// One cell width after the other, as the text calls want them, for as many cells as one call draws.
    std::vector<int> advances_{0};
    Region uncovered_;
    Region bottomRow_;
    std::optional<pcMemDC> memory_{std::in_place};
    bool fontMissing_ = false;
    int held_ = 0;
    Rect due_;
    // What waits for its painting is scrolled along, and others may uncover a part of the window at any time.
    // So the next paint also covers all the way that the image may have moved since it was last known that
    // nothing was waiting.
    bool unpaintedKnown_ = false;
    int movedUp_ = 0;
};

}  // namespace kavrelon
