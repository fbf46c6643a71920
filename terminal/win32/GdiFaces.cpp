#include "terminal/win32/GdiFaces.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "gdi/GdiHandles.h"
#include "gdi/LogFont.h"
#include "terminal/win32/OemCharacters.h"

namespace kavrelon {
namespace {

/// Height at which a face is examined: large enough for gaps of a fraction of a small pixel to show.
constexpr int kExaminedHeight = -100;

LOGFONTA fixedPitchFont(std::string_view name, BYTE charset, int height) {
    LOGFONTA result = logFont(name, height);
    result.lfCharSet = charset;
    result.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    return result;
}

int CALLBACK noteFace(const LOGFONTA*, const TEXTMETRICA*, DWORD, LPARAM found) {
    *reinterpret_cast<bool*>(found) = true;
    return 0;
}

bool hasLineDrawing(HDC context) {
    constexpr std::array<wchar_t, 4> needed{kLightVertical, kLightHorizontal, kDoubleCross, kFullBlock};
    std::array<WORD, needed.size()> glyphs{};
    const DWORD count = GetGlyphIndicesW(context, needed.data(), static_cast<int>(needed.size()),
                                         glyphs.data(), GGI_MARK_NONEXISTING_GLYPHS);
    return count == needed.size() && std::ranges::find(glyphs, 0xFFFF) == glyphs.end();
}

struct Extent {
    bool fillsHeight = false;
    bool fillsWidth = false;
};

Extent glyphExtent(HDC context, wchar_t character, const TEXTMETRICA& font) {
    constexpr MAT2 identity{{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    GLYPHMETRICS glyph{};
    if (GetGlyphOutlineW(context, character, GGO_METRICS, &glyph, 0, nullptr, &identity) == GDI_ERROR)
        return {};
    const POINT origin = glyph.gmptGlyphOrigin;
    return {
        .fillsHeight =
            origin.y >= font.tmAscent && static_cast<LONG>(glyph.gmBlackBoxY) - origin.y >= font.tmDescent,
        .fillsWidth = origin.x <= 0 && origin.x + static_cast<LONG>(glyph.gmBlackBoxX) >= glyph.gmCellIncX};
}

bool lineDrawingFillsCells(HDC context, const TEXTMETRICA& font) {
    const Extent block = glyphExtent(context, kFullBlock, font);
    return block.fillsHeight && block.fillsWidth && glyphExtent(context, kLightVertical, font).fillsHeight &&
           glyphExtent(context, kLightHorizontal, font).fillsWidth;
}

}  // namespace

bool GdiFaces::has(const char* name) {
    LOGFONTA wanted = fixedPitchFont(name, DEFAULT_CHARSET, 0);
    bool found = false;
    EnumFontFamiliesExA(context_, &wanted, noteFace, reinterpret_cast<LPARAM>(&found), 0);
    return found;
}

FaceFacts GdiFaces::factsOf(const FontChoice& choice) {
    const LOGFONTA description = fixedPitchFont(choice.name, choice.charset, kExaminedHeight);
    const Font font(CreateFontIndirectA(&description));
    const Selected selected(context_, font.get());
    if (!selected) failed_ = true;
    TEXTMETRICA metrics{};
    GetTextMetricsA(context_, &metrics);
    const bool hasLines = hasLineDrawing(context_);
    // The platform's bit for a fixed pitch says the opposite of its name.
    return {.fixedPitch = (metrics.tmPitchAndFamily & TMPF_FIXED_PITCH) == 0,
            .bitmaps = (metrics.tmPitchAndFamily & TMPF_TRUETYPE) == 0,
            .charset = metrics.tmCharSet,
            .hasLines = hasLines,
            .linesFillCells = hasLines && lineDrawingFillsCells(context_, metrics)};
}

LOGFONTA describe(const FontFace& face, int height) {
    return fixedPitchFont(face.name, face.charset, height);
}

}  // namespace kavrelon
