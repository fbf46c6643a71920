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

/// The fonts of a canvas, with their measurements.
///
/// A document may ask for any number of fonts, but the platform's objects are few: only the fonts used last
/// exist there, and the others are made again when needed. Measurements are kept.
class GdiFonts {
  public:
    /// `measuring` is a memory context of the device that is drawn on, and must outlive this object.
    explicit GdiFonts(HDC measuring);

    FontId number(const TextFont& font);
    FontMetrics metrics(FontId font);
    /// The width of a text in pixels: the sum of its characters' advances.
    int width(FontId font, std::string_view text);
    /// The advance of each character, for drawing text as it was measured. Valid until the next call.
    const INT* advances(FontId font, std::string_view text);
    /// The platform's font; null when the platform has none. Valid until many others have been asked for: it
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
    /// The fonts that exist on the platform, the most recently used one at the end.
    std::vector<FontId> live_;
    std::vector<INT> textAdvances_;
};

}  // namespace kavrelon
