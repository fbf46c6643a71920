#pragma once

#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "htmllabel/layout/Canvas.h"

namespace kavrelon {

/// A canvas that draws nothing and measures the same on every system: at 96 pixels per inch, a font of s
/// points has characters s x 0.6 pixels wide and lines s x 1.5 pixels high, both rounded up, with its
/// baseline at four fifths.
class HeadlessCanvas : public Canvas {
  public:
    explicit HeadlessCanvas(int pixelsPerInch = 96) : pixelsPerInch_(pixelsPerInch) {}

    int pixelsPerInch() const override { return pixelsPerInch_; }
    FontId font(const TextFont& font) override;
    FontMetrics metrics(FontId font) override;
    int textWidth(FontId font, std::string_view text) override;

    void drawText(FontId font, Colour colour, Point at, std::string_view text) override;
    void fill(const Rect& block, Colour colour) override;
    void drawBullet(Bullet shape, const Rect& place, Colour colour) override;
    void drawPicture(const Picture& picture, const Rect& place) override;
    void drawFocus(const Rect& place) override;

  private:
    using Key = std::tuple<std::string, float, bool, bool, bool>;

    int pixelsPerInch_;
    std::map<Key, FontId> ids_;
    std::vector<FontMetrics> fonts_;
};

}  // namespace kavrelon
