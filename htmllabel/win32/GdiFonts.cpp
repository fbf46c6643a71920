#include "htmllabel/win32/GdiFonts.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <utility>

#include "gdi/LogFont.h"
#include "support/Conversions.h"

namespace kavrelon {
namespace {

constexpr double kPointsPerInch = 72;
/// In pixels. No document needs more, and the platform's own limit is not much higher.
constexpr double kTallest = 2000;
constexpr std::size_t kMostFonts = 32;

int heightInPixels(float points, HDC context) {
    const double height = double{points} * GetDeviceCaps(context, LOGPIXELSY) / kPointsPerInch;
    return std::isfinite(height) ? roundHalfToEven(std::clamp(height, 1.0, kTallest)) : 1;
}

bool hasAnyOf(std::string_view text, std::initializer_list<std::string_view> parts) {
    return std::ranges::any_of(
        parts, [text](std::string_view part) { return text.find(part) != std::string_view::npos; });
}

/// A guess from the face's name, so that the platform replaces a missing face by a similar one.
BYTE pitchAndFamily(std::string face) {
    CharLowerBuffA(face.data(), static_cast<DWORD>(face.size()));
    if (hasAnyOf(face, {"courier", "mono", "console", "terminal", "fixed", "typewriter"})) {
        return FIXED_PITCH | FF_MODERN;
    }
    const bool serifs = hasAnyOf(face, {"times", "roman", "serif", "georgia", "garamond", "palatino"});
    return VARIABLE_PITCH | (serifs && !hasAnyOf(face, {"sans"}) ? FF_ROMAN : FF_SWISS);
}

LOGFONTA describe(const TextFont& font, int height) {
    LOGFONTA result =
        logFont(font.face, -height, {.bold = font.bold, .italic = font.italic, .underline = font.underline});
    result.lfCharSet = DEFAULT_CHARSET;
    result.lfPitchAndFamily = pitchAndFamily(font.face);
    return result;
}

}  // namespace

GdiFonts::GdiFonts(HDC measuring) : measuring_(measuring) {
    live_.reserve(kMostFonts);
}

FontId GdiFonts::number(const TextFont& font) {
    const int height = heightInPixels(font.points, measuring_);
    const int style = (font.bold ? 1 : 0) + (font.italic ? 2 : 0) + (font.underline ? 4 : 0);
    Key key(font.face, height, style);
    if (const auto known = numbers_.find(key); known != numbers_.end()) return known->second;
    // Before its number is known: where memory runs out in between, no number is without an entry.
    entries_.emplace_back().description = describe(font, height);
    return numbers_.emplace(std::move(key), static_cast<FontId>(entries_.size() - 1)).first->second;
}

GdiFonts::Entry& GdiFonts::measured(FontId font) {
    Entry& entry = entries_[font];
    if (entry.measured) return entry;
    const Selected selected(measuring_, handle(font));
    if (!selected) return entry;
    std::array<INT, kCharacters> widths{};
    TEXTMETRICA metrics{};
    // What the platform could not make or measure is asked for again.
    if (!GetCharWidth32A(measuring_, 0, kCharacters - 1, widths.data()) ||
        !GetTextMetricsA(measuring_, &metrics)) {
        return entry;
    }
    std::ranges::transform(widths, entry.advances.begin(), [](INT width) {
        return static_cast<std::uint16_t>(
            std::clamp<INT>(width, 0, std::numeric_limits<std::uint16_t>::max()));
    });
    entry.metrics = {static_cast<int>(metrics.tmAscent), static_cast<int>(metrics.tmDescent),
                     entry.advances[' ']};
    entry.measured = true;
    return entry;
}

FontMetrics GdiFonts::metrics(FontId font) {
    return measured(font).metrics;
}

int GdiFonts::width(FontId font, std::string_view text) {
    const auto& advances = measured(font).advances;
    int width = 0;
    for (const char ch : text) width += advances[static_cast<unsigned char>(ch)];
    return width;
}

const INT* GdiFonts::advances(FontId font, std::string_view text) {
    const auto& all = measured(font).advances;
    textAdvances_.clear();
    for (const char ch : text) textAdvances_.push_back(all[static_cast<unsigned char>(ch)]);
    return textAdvances_.data();
}

HFONT GdiFonts::handle(FontId font) {
    Entry& entry = entries_[font];
    const auto place = std::ranges::find(live_, font);
    if (place != live_.end()) {
        std::rotate(place, place + 1, live_.end());
        return entry.handle.get();
    }
    if (live_.size() == kMostFonts) {
        entries_[live_.front()].handle.reset();
        live_.erase(live_.begin());
    }
    entry.handle.reset(CreateFontIndirectA(&entry.description));
    if (entry.handle != nullptr) live_.push_back(font);
    return entry.handle.get();
}

}  // namespace kavrelon
