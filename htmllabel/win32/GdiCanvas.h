#pragma once

#include <windows.h>

#include <optional>

#include "gdi/GdiHandles.h"
#include "htmllabel/layout/Canvas.h"
#include "htmllabel/win32/GdiFonts.h"

namespace kavrelon {

/// The colour as the platform knows it; system colours have their present values.
COLORREF toColorRef(Colour colour);

/// A canvas on the platform's drawing contexts. Made for one screen or printer, whose resolution determines
/// the sizes of fonts. It can measure at any time, and draws while it has a `Target`.
class GdiCanvas final : public Canvas {
  public:
    /// For the device that `like` draws on; null is the screen.
    explicit GdiCanvas(HDC like = nullptr);

    /// Pixels per inch.
    int resolutionX() const { return GetDeviceCaps(measuring_.get(), LOGPIXELSX); }
    int resolutionY() const { return GetDeviceCaps(measuring_.get(), LOGPIXELSY); }

    /// The point of the document that is at the top left corner of the target.
    void setOrigin(Point origin) { origin_ = origin; }

    /// Makes the canvas draw on a context for the length of a scope, and restores the context's state. The
    /// context's resolution should be the canvas's.
    class Target {
      public:
        Target(GdiCanvas& canvas, HDC context);
        ~Target();
        Target(const Target&) = delete;
        Target& operator=(const Target&) = delete;

      private:
        GdiCanvas& canvas_;
        int saved_;
    };

    int pixelsPerInch() const override { return resolutionY(); }
    FontId font(const TextFont& font) override { return fonts_.number(font); }
    FontMetrics metrics(FontId font) override { return fonts_.metrics(font); }
    int textWidth(FontId font, std::string_view text) override { return fonts_.width(font, text); }
    void drawText(FontId font, Colour colour, Point at, std::string_view text) override;
    void fill(const Rect& block, Colour colour) override;
    void drawBullet(Bullet shape, const Rect& place, Colour colour) override;
    void drawPicture(const Picture& picture, const Rect& place) override;
    void drawFocus(const Rect& place) override;

  private:
    RECT onTarget(const Rect& place) const;

    OwnedContext measuring_;
    GdiFonts fonts_;
    HDC target_ = nullptr;
    /// The font that is selected in the target.
    std::optional<FontId> selected_;
    Point origin_;
};

}  // namespace kavrelon
