#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "gdi/GdiHandles.h"
#include "htmllabel/layout/Canvas.h"

namespace kavrelon {

/// The fonts of a canvas, with their measures.
///
/// A document may ask for any number of fonts, but the platform has few objects to give: only the fonts used
/// last exist there, the others are made again when needed. What was measured is kept.
class GdiFonts {
  public:
    /// Fonts for what is compatible with `measuring`, a memory context that must outlive this object.
    explicit GdiFonts(HDC measuring);

    FontId number(const TextFont& font);
    FontMetrics metrics(FontId font);
    /// Pixels from one character's place to the next one's.
    int width(FontId font, std::string_view text);
    /// The same character by character, for drawing text as it was measured. Good until the next call.
    const INT* advances(FontId font, std::string_view text);
    /// The platform's font; null when the platform has none. Good until many others have been asked for: one
    /// must not stay selected while others are measured.
    HFONT handle(FontId font);

  private:
    static constexpr std::size_t kCharacters = 256;

    /// Face, height in pixels, and bits for bold, italic and underline: sizes that differ by less than a
    /// pixel share a font.
    using Key = std::tuple<std::string, int, int>;
    struct Entry {
        LOGFONTA description{};
        bool measured = false;
        FontMetrics metrics;
        std::array<std::uint16_t, kCharacters> advances{};
        Font handle;
    };

    Entry& measured(FontId font);

    HDC measuring_;
    std::map<Key, FontId> numbers_;
    std::vector<Entry> entries_;
    /// The fonts that exist, the one used last at the end.
    std::vector<FontId> live_;
    std::vector<INT> textAdvances_;
};

}  // namespace kavrelon
