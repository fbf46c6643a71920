#include "headless/HeadlessCanvas.h"

#include <cmath>
#include <utility>

namespace kavrelon {

FontId HeadlessCanvas::font(const TextFont& font) {
    Key key{font.face, font.points, font.bold, font.italic, font.underline};
    if (const auto known = ids_.find(key); known != ids_.end()) return known->second;
    // Whole numbers first: 10 x 0.6 must not come out a little above 6.
    const double points = static_cast<double>(font.points) * pixelsPerInch_ / 96;
    const int height = static_cast<int>(std::ceil(points * 3 / 2));
    const int ascent = height * 4 / 5;
    // Before its number is known: where memory runs out in between, no number is without a font.
    fonts_.push_back({ascent, height - ascent, static_cast<int>(std::ceil(points * 3 / 5))});
    return ids_.emplace(std::move(key), static_cast<FontId>(fonts_.size() - 1)).first->second;
}

FontMetrics HeadlessCanvas::metrics(FontId font) {
    return fonts_[font];
}

int HeadlessCanvas::textWidth(FontId font, std::string_view text) {
    return fonts_[font].spaceWidth * static_cast<int>(text.size());
}

void HeadlessCanvas::drawText(FontId /*font*/, Colour /*colour*/, Point /*at*/, std::string_view /*text*/) {}
void HeadlessCanvas::fill(const Rect& /*block*/, Colour /*colour*/) {}
void HeadlessCanvas::drawBullet(Bullet /*shape*/, const Rect& /*place*/, Colour /*colour*/) {}
void HeadlessCanvas::drawPicture(const Picture& /*picture*/, const Rect& /*place*/) {}
void HeadlessCanvas::drawFocus(const Rect& /*place*/) {}

}  // namespace kavrelon
