#include "headless/RecordingCanvas.h"

namespace kavrelon {

FontId RecordingCanvas::font(const TextFont& font) {
    const FontId id = HeadlessCanvas::font(font);
    fonts[id] = font;
    return id;
}

void RecordingCanvas::drawText(FontId font, Colour colour, Point at, std::string_view text) {
    const Rect place{at.x, at.y, at.x + textWidth(font, text), at.y + metrics(font).height()};
    texts.push_back({fonts.at(font), colour, place, std::string(text)});
}

void RecordingCanvas::clear() {
    texts.clear();
    fills.clear();
    bullets.clear();
    pictures.clear();
}

}  // namespace kavrelon
