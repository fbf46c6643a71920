#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "headless/HeadlessCanvas.h"
#include "support/Geometry.h"

namespace kavrelon {

/// A headless canvas that keeps what is drawn on it, each kind in drawing order.
class RecordingCanvas : public HeadlessCanvas {
  public:
    using HeadlessCanvas::HeadlessCanvas;

    struct Text {
        TextFont font;
        Colour colour = 0;
        Rect place;
        std::string text;
    };
    struct Fill {
        Rect block;
        Colour colour = 0;
    };
    struct BulletAt {
        Bullet shape = Bullet::Disc;
        Rect place;
    };
    std::vector<Text> texts;
    std::vector<Fill> fills;
    std::vector<BulletAt> bullets;
    std::vector<Rect> pictures;

    /// The fonts that were asked for.
    std::map<FontId, TextFont> fonts;

    /// Forgets what was drawn.
    void clear();

    FontId font(const TextFont& font) override;
    void drawText(FontId font, Colour colour, Point at, std::string_view text) override;
    void fill(const Rect& block, Colour colour) override { fills.push_back({block, colour}); }
    void drawBullet(Bullet shape, const Rect& place, Colour) override { bullets.push_back({shape, place}); }
    void drawPicture(const Picture&, const Rect& place) override { pictures.push_back(place); }
};

}  // namespace kavrelon
