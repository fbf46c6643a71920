#pragma once

#include <windows.h>

#include <array>
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
    /// Its picture may reach out of the cell and has to be clipped.
    bool clipped = false;

    bool drawnLike(const Glyph& other) const { return source == other.source && clipped == other.clipped; }
};

/// One size of a face: its cell, its fonts in all styles, and how each byte is drawn.
class RealisedFont {
  public:
    /// `height` is the characters' height in pixels. Lines are drawn from `lineFace` where there is one,
    /// stretched to the cell. Both faces must outlive this object.
    RealisedFont(HDC context, const FontFace& face, const FontFace* lineFace, int height);

    int height() const { return height_; }
    Size cell() const { return cell_; }
    const Glyph& glyph(std::uint8_t byte) const { return glyphs_[byte]; }
    /// Created when first asked for. Owned by this object; null when the platform has none.
    HFONT textFont(bool italic, bool underline);
    /// Always upright: slanted lines would not join.
    HFONT lineFont(bool underline);

  private:
    void createLineFont(const FontFace& lineFace);

    const FontFace& face_;
    int height_;
    Size cell_;
    std::array<Font, 4> textFonts_;
    Font lineFont_;
    std::array<Glyph, 256> glyphs_;
};

/// The font of a terminal window, chosen by name and size.
///
/// It measures on the window's context, and restores what was selected there. The fonts that it gives out
/// must be off the context before the choice or the size changes.
class TermFont {
  public:
    explicit TermFont(HDC context);

    void choose(const FontChoice& choice);
    void setPoints(double points);
    const std::string& name() const { return face_.name; }
    double points() const { return points_; }
    double pointsPerPixel() const;
    /// The cell that the font needs, at least 1 x 1.
    Size cell();

    /// Whether `realised` would make another font than the one it gave last.
    bool stale() const { return realised_ == nullptr || realised_->height() != height_; }
    /// The chosen font, made when it is not there yet.
    RealisedFont& realised();
    /// Lets the fonts go; they are made again when needed.
    void release() { realised_.reset(); }

  private:
    HDC context_;
    double points_ = 0;
    int height_ = 0;
    FontFace face_;
    std::optional<FontFace> lineFace_;
    /// Cells by height: finding the size that fits a window asks for the same few again and again.
    std::map<int, Size> cells_;
    std::unique_ptr<RealisedFont> realised_;
};

}  // namespace kavrelon
