#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "support/Geometry.h"
#include "support/Picture.h"

namespace kavrelon {

/// A font that a document asks for.
struct TextFont {
    std::string face;
    float points = 10;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool operator==(const TextFont&) const = default;
};

/// The number of a font that a canvas has made ready.
using FontId = std::uint32_t;

/// The measures of a font, in pixels.
struct FontMetrics {
    int ascent = 0;   // from the top of a line of text to its baseline
    int descent = 0;  // from there to the bottom
    int spaceWidth = 0;

    int height() const { return ascent + descent; }
};

enum class Bullet : std::uint8_t { Disc, Circle, Square };

/// What documents are measured with and drawn on. All places and sizes are pixels of the whole document.
///
/// Colours may be system colours. No call fails: what cannot be drawn is left out, and what cannot be
/// measured measures 0.
class Canvas {
  public:
    virtual ~Canvas() = default;

    /// The resolution, which says how large fonts are.
    virtual int pixelsPerInch() const = 0;

    /// Makes a font ready; the same font has the same number. Fonts stay ready as long as the canvas lives.
    virtual FontId font(const TextFont& font) = 0;
    virtual FontMetrics metrics(FontId font) = 0;
    /// The width of a line of single-byte text: the sum of its characters' advances.
    virtual int textWidth(FontId font, std::string_view text) = 0;

    /// Draws text over what is there already; `at` is the top left corner of its line.
    virtual void drawText(FontId font, Colour colour, Point at, std::string_view text) = 0;
    virtual void fill(const Rect& block, Colour colour) = 0;
    virtual void drawBullet(Bullet shape, const Rect& place, Colour colour) = 0;
    /// Draws a picture, which has to be of the canvas's own platform, scaled to `place`.
    virtual void drawPicture(const Picture& picture, const Rect& place) = 0;
    /// Draws the dotted frame of what has the keyboard focus, along the edge of `place`.
    virtual void drawFocus(const Rect& place) = 0;
};

}  // namespace kavrelon
