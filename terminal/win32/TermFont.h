#pragma once

#include <windows.h>

#include <array>
#include <bitset>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "gdi/GdiHandles.h"
#include "support/Geometry.h"
#include "terminal/FontFace.h"

namespace kavrelon {

/// How one byte is drawn.
struct Glyph {
    enum class Source : std::uint8_t {
        Byte,       ///< as the byte, in the text's font
        Character,  ///< as its Unicode character, in the text's font
        Line,       ///< as its Unicode character, in the font for lines
    };
    wchar_t character = L' ';
    /// Pixels from the cell's corner to where it is drawn: centred in proportional faces, and beyond the
    /// corner where lines of another face overlap the edges.
    std::int16_t offsetX = 0;
    std::int16_t offsetY = 0;
    Source source = Source::Byte;

    bool movedFromCorner() const { return offsetX != 0 || offsetY != 0; }
};

/// A font in one style: which of the bytes put a pixel outside their cell in it, and so have to be clipped.
struct StyledFont {
    Font font;
    std::bitset<256> clipped;
};

/// One size of a face: its cell, its fonts in all styles, and how each byte is drawn.
class RealisedFont {
  public:
    /// `height` is the characters' height in pixels. Lines are drawn from `lineFace` where there is one,
    /// stretched to the cell. Null when the platform has no font to give.
    static std::unique_ptr<RealisedFont> make(HDC context, const FontFace& face,
                                              const std::optional<FontFace>& lineFace, int height);

    int height() const { return height_; }
    Size cell() const { return cell_; }
    const Glyph& glyph(std::uint8_t byte) const { return glyphs_[byte]; }
    /// Created when first asked for. Owned by this object; the plain one while the platform has no other.
    const StyledFont& textFont(bool italic, bool underline);
    /// Always upright: slanted lines would not join.
    const StyledFont& lineFont(bool underline);

  private:
    RealisedFont(HDC context, const FontFace& face, const std::optional<FontFace>& lineFace, int height,
                 Font plain);
    void findClipped(StyledFont& styled) const;

    FontFace face_;
    std::optional<FontFace> lineFace_;
    int height_;
    Size cell_;
    std::array<StyledFont, 4> textFonts_;
    StyledFont lineFont_;
    std::array<Glyph, 256> glyphs_;
};

/// The font of a terminal window, chosen by name and size.
///
/// It measures on the window's context, and restores what was selected there. Where the platform runs out of
/// fonts, nothing that is known of a font that was not made is kept, and the last one made stays in use.
class TermFont {
  public:
    /// Throws std::bad_alloc when there is no font to begin with.
    explicit TermFont(HDC context);

    void choose(const FontChoice& choice);
    void setPoints(double points);
    /// The face in use.
    const std::string& name() const { return face_.name; }
    double points() const { return points_; }
    double pointsPerPixel() const;
    /// The cell that the font needs, at least 1 x 1; 0 x 0 while it cannot be made.
    Size cell();

    /// Whether the chosen font is another one than that in use.
    bool stale() const { return stale_; }
    /// Makes the chosen font the one in use, if it can be made. Those given out before must be off every
    /// context.
    void realise();
    /// The font in use; null when there was none yet.
    RealisedFont* inUse() const { return realised_.get(); }

  private:
    bool findFaces();

    HDC context_;
    FontChoice choice_{"", 0};
    /// The faces are those of the choice, and the font in use is one of them.
    bool facesFound_ = false;
    bool facesInUse_ = false;
    bool stale_ = true;
    double points_ = 0;
    int height_ = 0;
    FontFace face_;
    std::optional<FontFace> lineFace_;
    /// Cells by height: finding the size that fits a window asks for the same few again and again.
    std::map<int, Size> cells_;
    std::unique_ptr<RealisedFont> realised_;
};

}  // namespace kavrelon
