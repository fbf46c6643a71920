#include "terminal/win32/TermFont.h"

#include <algorithm>
#include <new>
#include <utility>

#include "gdi/PixelBitmap.h"
#include "support/Conversions.h"
#include "terminal/win32/GdiFaces.h"
#include "terminal/win32/OemCharacters.h"

namespace kavrelon {
namespace {

constexpr double kPointsPerInch = 72;
constexpr double kInitialPoints = 10;
constexpr UINT kFirstPlain = 32;
constexpr UINT kLastPlain = 126;
constexpr UINT kLastByte = 255;

bool isPlain(UINT byte) {
    return byte >= kFirstPlain && byte <= kLastPlain;
}

/// Pixels by which another face's lines reach over each edge of the cell, to be clipped there: scaled to the
/// cell exactly, their ends may fall short of it by a part of a pixel.
constexpr int kLineOverlap = 1;

Font createFont(const FontFace& face, int height) {
    const LOGFONTA description = describe(face, -height);
    return Font(CreateFontIndirectA(&description));
}

/// Widths of the bytes and characters of a font that is selected, in pixels; 0 where the platform has none.
int widthOf(HDC context, const Glyph& glyph, UINT byte) {
    INT width = 0;
    if (glyph.source == Glyph::Source::Byte) {
        GetCharWidth32A(context, byte, byte, &width);
    } else {
        GetCharWidth32W(context, glyph.character, glyph.character, &width);
    }
    return width;
}

Glyph planGlyph(const FontFace& face, bool otherLines, UINT byte) {
    Glyph glyph{.character = oemCharacters()[byte]};
    if (isLineDrawing(glyph.character) && (otherLines || !face.oemCodes)) {
        glyph.source = Glyph::Source::Line;
    } else if (!face.oemCodes && !isPlain(byte)) {
        glyph.source = Glyph::Source::Character;
    }
    return glyph;
}

/// The cell of the font that is selected; none when the platform does not tell.
Size measure(HDC context, const FontFace& face) {
    TEXTMETRICA metrics{};
    if (!GetTextMetricsA(context, &metrics)) return {};
    std::array<INT, kLastByte + 1> widths{};
    // Each width is a glyph to be looked up, and a search for the size that fits asks for many sizes.
    const UINT lastWidth = face.fixedPitch ? kFirstPlain : face.oemCodes ? kLastByte : kLastPlain;
    GetCharWidth32A(context, kFirstPlain, lastWidth, widths.data());
    int widest = *std::ranges::max_element(widths);
    if (!face.fixedPitch && !face.oemCodes) {
        for (UINT byte = 1; byte <= kLastByte; ++byte) {
            const Glyph glyph = planGlyph(face, true, byte);
            if (glyph.source == Glyph::Source::Character)
                widest = std::max(widest, widthOf(context, glyph, byte));
        }
    }
    // No external leading: lines of frames have to touch.
    return {std::max(widest, 1), std::max(static_cast<int>(metrics.tmHeight), 1)};
}

// Which glyphs have to be clipped
//
// A clip rectangle makes a text call slower, and splits a run of characters. What a font says of its glyphs'
// extents is no measure of who needs one: smoothing spreads a picture by a pixel on either side, or does not,
// and most of those that might reach out never do. So every glyph is drawn once, in white on a black bitmap,
// in the middle of a frame as wide and as high as a cell: whatever is lit in the frame is outside the cell.

/// Draws a glyph in the middle of a bitmap of three by three cells. False when it could not be drawn.
bool drawProbe(HDC context, Size cell, const Glyph& glyph, char byte) {
    const auto draw = [&](auto textOut, const auto& character) {
        return textOut(context, cell.width, cell.height, ETO_OPAQUE, nullptr, &character, 1, &cell.width);
    };
    const BOOL drawn =
        glyph.source == Glyph::Source::Byte ? draw(ExtTextOutA, byte) : draw(ExtTextOutW, glyph.character);
    GdiFlush();
    return drawn != FALSE;
}

/// Whether anything is lit around the middle cell of such a bitmap; it is not lit afterwards. What is left in
/// the middle is covered by the background of the next glyph.
bool eraseFrame(std::span<Pixel> pixels, Size cell) {
    constexpr Pixel kColour = 0xFFFFFF;
    const auto width = static_cast<std::size_t>(cell.width);
    const auto height = static_cast<std::size_t>(cell.height);
    bool lit = false;
    const auto erase = [&](std::size_t first, std::size_t count) {
        for (Pixel& pixel : pixels.subspan(first, count)) {
            lit = lit || (pixel & kColour) != 0;
            pixel = 0;
        }
    };
    // Up to the cell, then from the right end of each of its rows to the left end of the next.
    erase(0, 3 * width * height + width);
    for (std::size_t row = height; row + 1 < 2 * height; ++row) erase((3 * row + 2) * width, 2 * width);
    erase((6 * height - 1) * width, (3 * height + 1) * width);
    return lit;
}

}  // namespace

std::unique_ptr<RealisedFont> RealisedFont::make(HDC context, const FontFace& face,
                                                 const std::optional<FontFace>& lineFace, int height) {
    Font plain = createFont(face, height);
    if (plain == nullptr) return nullptr;
    return std::unique_ptr<RealisedFont>(new RealisedFont(context, face, lineFace, height, std::move(plain)));
}

RealisedFont::RealisedFont(HDC context, const FontFace& face, const std::optional<FontFace>& lineFace,
                           int height, Font plain)
    : face_(face), lineFace_(lineFace), height_(height) {
    textFonts_[0].font = std::move(plain);
    const Selected selected(context, textFonts_[0].font.get());
    cell_ = measure(context, face);
    for (UINT byte = 0; byte <= kLastByte; ++byte) {
        Glyph& glyph = glyphs_[byte];
        glyph = planGlyph(face, lineFace.has_value(), byte);
        if (glyph.source == Glyph::Source::Line && lineFace) {
            glyph.offsetX = -kLineOverlap;
            glyph.offsetY = -kLineOverlap;
        } else if (!face.fixedPitch && byte != ' ') {
            glyph.offsetX = static_cast<std::int16_t>((cell_.width - widthOf(context, glyph, byte)) / 2);
        }
    }
    findClipped(textFonts_[0]);
}

void RealisedFont::findClipped(StyledFont& styled) const {
    styled.clipped.set();
    const PixelBitmap bitmap({3 * cell_.width, 3 * cell_.height});
    if (!bitmap) return;
    bitmap.paint([&](HDC context) {
        const Selected selected(context, styled.font.get());
        if (!selected) return;
        SetTextColor(context, RGB(255, 255, 255));
        SetBkColor(context, RGB(0, 0, 0));
        for (std::size_t byte = 0; byte <= kLastByte; ++byte) {
            const Glyph& glyph = glyphs_[byte];
            if (glyph.movedFromCorner() || !drawProbe(context, cell_, glyph, static_cast<char>(byte)))
                continue;
            styled.clipped[byte] = eraseFrame(bitmap.pixels(), cell_);
        }
    });
}

const StyledFont& RealisedFont::textFont(bool italic, bool underline) {
    StyledFont& styled = textFonts_[(italic ? 1U : 0U) + (underline ? 2U : 0U)];
    if (styled.font == nullptr) {
        LOGFONTA description = describe(face_, -height_);
        description.lfItalic = italic;
        description.lfUnderline = underline;
        styled.font.reset(CreateFontIndirectA(&description));
        if (styled.font != nullptr) findClipped(styled);
    }
    return styled.font != nullptr ? styled : textFonts_[0];
}

const StyledFont& RealisedFont::lineFont(bool underline) {
    if (lineFace_ && lineFont_.font == nullptr) {
        LOGFONTA description = describe(*lineFace_, cell_.height + 2 * kLineOverlap);
        description.lfWidth = cell_.width + 2 * kLineOverlap;
        lineFont_.font.reset(CreateFontIndirectA(&description));
        lineFont_.clipped.set();
    }
    return lineFont_.font != nullptr ? lineFont_ : textFont(false, underline);
}

TermFont::TermFont(HDC context) : context_(context) {
    setPoints(kInitialPoints);
    choose(fontMenuEntry(kFirstFontEntry).font);
    if (cell() == Size{}) throw std::bad_alloc();
}

void TermFont::choose(const FontChoice& choice) {
    choice_ = choice;
    facesFound_ = false;
    facesInUse_ = false;
    stale_ = true;
    findFaces();
}

bool TermFont::findFaces() {
    if (facesFound_) return true;
    GdiFaces faces(context_);
    FontFace face = findFace(faces, choice_);
    std::optional<FontFace> lineFace = face.linesJoin ? std::nullopt : findLineFace(faces);
    if (faces.failed()) return false;
    if (face != face_) cells_.clear();
    face_ = std::move(face);
    lineFace_ = std::move(lineFace);
    facesFound_ = true;
    return true;
}

void TermFont::setPoints(double points) {
    points_ = std::max(points, 1.0);
    height_ = std::max(roundHalfToEven(points_ / pointsPerPixel()), 1);
    stale_ = !facesInUse_ || realised_->height() != height_;
}

double TermFont::pointsPerPixel() const {
    return kPointsPerInch / std::max(GetDeviceCaps(context_, LOGPIXELSY), 1);
}

Size TermFont::cell() {
    if (!findFaces()) return {};
    if (const auto known = cells_.find(height_); known != cells_.end()) return known->second;
    const Font font = createFont(face_, height_);
    const Selected selected(context_, font.get());
    const Size measured = selected ? measure(context_, face_) : Size{};
    if (measured != Size{}) cells_.emplace(height_, measured);
    return measured;
}

void TermFont::realise() {
    // The search for faces is left to the layout, which asks for the cell: it takes too long for each text.
    if (!stale_ || !facesFound_) return;
    auto made = RealisedFont::make(context_, face_, lineFace_, height_);
    if (made == nullptr) return;
    realised_ = std::move(made);
    facesInUse_ = true;
    stale_ = false;
}

}  // namespace kavrelon
