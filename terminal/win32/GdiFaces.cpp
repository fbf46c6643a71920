#include "terminal/win32/GdiFaces.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "gdi/GdiHandles.h"
#include "terminal/win32/OemCharacters.h"

namespace kavrelon {
namespace {

/// Fixed-pitch faces that are known to have the line-drawing characters, the best looking first.
constexpr std::array<const char*, 5> kLineFaces{"Consolas", "Lucida Console", "Courier New",
                                                "Liberation Mono", "DejaVu Sans Mono"};

/// Height at which a face is examined: large enough for gaps of a fraction of a small pixel to show.
constexpr int kExaminedHeight = -100;

int CALLBACK noteFace(const LOGFONTA*, const TEXTMETRICA*, DWORD, LPARAM found) {
    *reinterpret_cast<bool*>(found) = true;
    return 0;
}

bool isInstalled(HDC context, const char* name) {
    LOGFONTA wanted = logFont({.name = name}, 0);
    bool found = false;
    EnumFontFamiliesExA(context, &wanted, noteFace, reinterpret_cast<LPARAM>(&found), 0);
    return found;
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

bool lineDrawingJoins(HDC context, const TEXTMETRICA& font) {
    const Extent block = glyphExtent(context, kFullBlock, font);
    return block.fillsHeight && block.fillsWidth && glyphExtent(context, kLightVertical, font).fillsHeight &&
           glyphExtent(context, kLightHorizontal, font).fillsWidth;
}

/// Fills in what only the realised face tells.
FontFace examine(HDC context, FontFace face) {
    const LOGFONTA description = logFont(face, kExaminedHeight);
    const Font font(CreateFontIndirectA(&description));
    const Selected selected(context, font.get());
    TEXTMETRICA metrics{};
    GetTextMetricsA(context, &metrics);
    // The platform's bit says the opposite of its name.
    face.fixedPitch = (metrics.tmPitchAndFamily & TMPF_FIXED_PITCH) == 0;
    const bool bitmaps = (metrics.tmPitchAndFamily & TMPF_TRUETYPE) == 0;
    face.oemCodes = metrics.tmCharSet == OEM_CHARSET || metrics.tmCharSet == SYMBOL_CHARSET;
    face.linesKnown = hasLineDrawing(context);
    face.linesJoin = face.fixedPitch &&
                     ((face.linesKnown && lineDrawingJoins(context, metrics)) || (bitmaps && face.oemCodes));
    return face;
}

/// A face made for terminals may have the OEM characters at their codes and still not say so.
void trustOwnCodes(FontFace& face, const FontChoice& choice) {
    if (choice.charset != DEFAULT_CHARSET || face.linesKnown) return;
    face.oemCodes = true;
    face.linesJoin = face.fixedPitch;
}

}  // namespace

LOGFONTA logFont(const FontFace& face, int height) {
    LOGFONTA result{};
    const auto length = std::min(face.name.size(), sizeof result.lfFaceName - 1);
    std::copy_n(face.name.data(), length, result.lfFaceName);
    result.lfHeight = height;
    result.lfWeight = FW_NORMAL;
    result.lfCharSet = face.charset;
    result.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    return result;
}

std::optional<FontFace> findLineFace(HDC context) {
    for (const char* name : kLineFaces) {
        if (!isInstalled(context, name)) continue;
        const FontFace face = examine(context, {.name = name});
        if (face.linesJoin) return face;
    }
    return std::nullopt;
}

FontFace findFace(HDC context, const FontChoice& choice) {
    if (isInstalled(context, choice.name)) {
        FontFace face = examine(context, {.name = choice.name, .charset = choice.charset});
        trustOwnCodes(face, choice);
        return face;
    }
    if (const auto face = findLineFace(context)) return *face;
    const auto known =
        std::ranges::find_if(kLineFaces, [&](const char* name) { return isInstalled(context, name); });
    return examine(context, {.name = known == kLineFaces.end() ? "" : *known});
}

}  // namespace kavrelon
